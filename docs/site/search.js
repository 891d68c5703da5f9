// The search: every word has to occur; names count before sentences, and beginnings before
// middles. `search_index` has rows of kind, name, address, one sentence, and the whole text in
// small letters.
"use strict";

const root = document.currentScript.dataset.root;
const field = document.querySelector("search input");
const results = document.getElementById("results");
let chosen = -1;

function score_of_word(word, name, sentence, text) {
  const place = name.indexOf(word);
  if (name === word) return 100;
  if (place === 0) return 50;
  if (place > 0) return /[a-z0-9]/.test(name[place - 1]) ? 20 : 40;
  if (sentence.includes(word)) return 6;
  return text.includes(word) ? 2 : 0;
}

function score(words, [kind, full_name, , sentence, text]) {
  const name = full_name.toLowerCase();
  const bare = name.split("::").pop();
  let sum = 0;
  for (const word of words) {
    const best = Math.max(score_of_word(word, name, sentence.toLowerCase(), text),
                          score_of_word(word, bare, "", ""));
    if (best === 0) return 0;
    sum += best;
  }
  return sum - name.length / 100 + (kind === "field" || kind === "constant" ? -3 : 0);
}

function find(query) {
  const words = query.toLowerCase().split(/\s+/).filter(Boolean);
  if (!words.length) return [];
  return search_index.map((row) => [score(words, row), row]).filter(([points]) => points > 0)
      .sort(([a], [b]) => b - a).slice(0, 20).map(([, row]) => row);
}

function element(tag, text, class_name) {
  const made = document.createElement(tag);
  made.textContent = text;
  if (class_name) made.className = class_name;
  return made;
}

function show() {
  const found = find(field.value);
  results.replaceChildren(...found.map(([kind, name, address, sentence], i) => {
    const item = document.createElement("li");
    item.id = `result-${i}`;
    item.setAttribute("role", "option");
    const link = document.createElement("a");
    link.href = root + address;
    link.tabIndex = -1;
    link.append(element("strong", name, kind === "guide" ? "" : "code"), element("small", kind));
    if (sentence) link.append(element("span", sentence));
    item.append(link);
    return item;
  }));
  if (!found.length && field.value.trim()) {
    results.append(element("li", "Nothing has all of these words.", "none"));
  }
  results.hidden = !field.value.trim();
  field.setAttribute("aria-expanded", String(!results.hidden));
  choose(found.length ? 0 : -1);
}

function choose(number) {
  results.children[chosen]?.removeAttribute("aria-selected");
  chosen = number;
  const item = results.children[chosen];
  if (!item?.id) return field.removeAttribute("aria-activedescendant");
  item.setAttribute("aria-selected", "true");
  item.scrollIntoView({block: "nearest"});
  field.setAttribute("aria-activedescendant", item.id);
}

function hide() {
  results.hidden = true;
  field.setAttribute("aria-expanded", "false");
}

field.addEventListener("input", show);
field.addEventListener("focus", () => { if (field.value.trim()) show(); });
field.addEventListener("keydown", (event) => {
  const count = results.children.length;
  if (event.key === "Escape") hide();
  else if (event.key === "Enter") results.children[chosen]?.querySelector("a")?.click();
  else if (event.key === "ArrowDown" && count) choose((chosen + 1) % count);
  else if (event.key === "ArrowUp" && count) choose((chosen + count - 1) % count);
  else return;
  event.preventDefault();
});
results.addEventListener("click", hide);
document.addEventListener("click", (event) => {
  if (!event.target.closest("search")) hide();
});
document.addEventListener("keydown", (event) => {
  if (event.key !== "/" || event.target === field) return;
  event.preventDefault();
  field.focus();
});

// The page in hand, in the middle of the list of pages.
const here = document.querySelector("#navigation [aria-current]");
const list = document.getElementById("navigation");
if (here && here.offsetTop > list.clientHeight) {
  list.scrollTop = here.offsetTop - list.clientHeight / 2;
}
