// What screen readers and keyboards need and Furo leaves out, and the order of what a search finds.
"use strict";

// First a name that is asked for exactly, then the guide, then the reference.
const rank = ([page, title, anchor, description, score]) => {
  const query = new URLSearchParams(window.location.search).get("q") || "";
  const asked = query.trim().toLowerCase();
  const name = title.split(" (")[0].split("::").pop().toLowerCase();
  if (description && name === asked) return score + 200;
  if (/^(reference|names)/.test(page)) return score;
  const bonus = title.includes(" > ") ? 60 : 100;  // a section of a page, or all of it
  return score + bonus + (name.startsWith(asked) ? 20 : 0);
};

document.addEventListener("DOMContentLoaded", () => {
  if (window.Scorer) Scorer.score = rank;
  document.querySelector(".sidebar-drawer")?.setAttribute("aria-label", "Pages");
  document.querySelector(".toc-drawer")?.setAttribute("aria-label", "On this page");
  for (const caption of document.querySelectorAll(".sidebar-tree .caption")) caption.ariaLevel = 2;
  const article = document.querySelector("article");
  if (!document.querySelector("h1")) article?.insertAdjacentHTML("afterbegin", "<h1>Search</h1>");
  for (const block of document.querySelectorAll("pre")) {
    if (block.scrollWidth > block.clientWidth) block.tabIndex = 0;
  }
});
