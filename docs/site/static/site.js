// What screen readers and keyboards need, and Furo leaves out.
"use strict";

document.addEventListener("DOMContentLoaded", () => {
  document.querySelector(".sidebar-drawer")?.setAttribute("aria-label", "Pages");
  document.querySelector(".toc-drawer")?.setAttribute("aria-label", "On this page");
  for (const caption of document.querySelectorAll(".sidebar-tree .caption")) caption.ariaLevel = 2;
  const article = document.querySelector("article");
  if (!document.querySelector("h1")) article?.insertAdjacentHTML("afterbegin", "<h1>Search</h1>");
  for (const block of document.querySelectorAll("pre")) {
    if (block.scrollWidth > block.clientWidth) block.tabIndex = 0;
  }
});
