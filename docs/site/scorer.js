// How found pages are ranked: a name that is asked for exactly comes first, then the guide, then
// the reference. Sphinx reads Scorer; its numbers are the usual ones.
var Scorer = {
  score: ([page, title, anchor, description, score]) => {
    const query = new URLSearchParams(window.location.search).get("q") || "";
    const asked = query.trim().toLowerCase();
    const name = title.split(" (")[0].split("::").pop().toLowerCase();
    if (description && name === asked) return score + 200;
    if (/^(reference|names)/.test(page)) return score;
    if (page === "README" && asked.includes("start")) return score + 200;
    const bonus = title.includes(" > ") ? 60 : 100;  // a section of a page, or all of it
    return score + bonus + (name.startsWith(asked) ? 20 : 0);
  },
  objNameMatch: 11,
  objPartialMatch: 6,
  objPrio: {0: 15, 1: 5, 2: -5},
  objPrioDefault: 0,
  title: 15,
  partialTitle: 7,
  term: 5,
  partialTerm: 2,
};
