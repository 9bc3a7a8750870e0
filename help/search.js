// Searches the help without a server. The texts are in search-texts.js, which the first search loads.
// Case, accents, and whether one writes ä, ae or a make no difference.
"use strict";
(() => {
  const place = document.getElementById("search");
  const say = place.dataset;
  const most = 20;
  let texts = null;

  // The plain letters, and for each of them where it was in the text.
  function fold(text) {
    let folded = "";
    const from = [];
    for (let at = 0; at < text.length; ++at) {
      const plain = text[at].toLowerCase().replace("ß", "ss").replace("’", "'").normalize("NFD").replace(/[\u0300-\u036f]/g, "");
      if (plain === "e" && /[aou]$/.test(folded) && from[from.length - 1] === at - 1) continue; // ä and ae are one
      for (const letter of plain) {
        folded += letter;
        from.push(at);
      }
    }
    return { folded, from };
  }

  function prepare() {
    return searchTexts.map(([target, page, part, keywords, text]) => ({
      target, text, title: part ? `${page}: ${part}` : page, isPage: !part,
      inTitle: fold(part || page).folded, inKeywords: fold(keywords).folded, inText: fold(text)
    }));
  }

  function worth(word, text) {
    const at = text.indexOf(word);
    if (at < 0) return 0;
    return new RegExp(`(^|[^a-z0-9])${word.replace(/[^a-z0-9]/g, "\\$&")}`).test(text) ? 2 : 1;
  }

  function search(query) {
    const words = fold(query).folded.split(/\s+/).filter(Boolean);
    const found = [];
    for (const entry of words.length ? texts : []) {
      const worths = words.map((word) => 12 * worth(word, entry.inTitle) + 6 * worth(word, entry.inKeywords) +
        worth(word, entry.inText.folded));
      if (!worths.includes(0)) found.push({ entry, worth: worths.reduce((sum, each) => sum + each) + entry.isPage });
    }
    return { words, found: found.sort((one, other) => other.worth - one.worth).map((each) => each.entry) };
  }

  function excerpt(entry, words) {
    const { folded, from } = entry.inText;
    const word = words.find((each) => folded.includes(each));
    const line = document.createElement("p");
    if (!word) {
      line.append(entry.text.slice(0, 140));
      return line;
    }
    const at = folded.indexOf(word);
    const begin = from[at], end = at + word.length < from.length ? from[at + word.length] : entry.text.length;
    const first = entry.text.lastIndexOf(" ", Math.max(0, begin - 50)) + 1;
    const mark = document.createElement("mark");
    mark.append(entry.text.slice(begin, end));
    const rest = entry.text.slice(end, end + 90);
    const isCut = end + 90 < entry.text.length;
    line.append((first > 0 ? "… " : "") + entry.text.slice(first, begin), mark,
      isCut ? rest.replace(/\S*$/, "…") : rest);
    return line;
  }

  function show(input, status, list) {
    const { words, found } = search(input.value);
    status.textContent = words.length === 0 ? "" : found.length === 0 ? say.none : `${say.found} ${found.length}`;
    list.replaceChildren(...found.slice(0, most).map((entry) => {
      const item = document.createElement("li");
      const link = document.createElement("a");
      link.href = entry.target;
      link.textContent = entry.title;
      item.append(link, excerpt(entry, words));
      return item;
    }));
  }

  function build() {
    place.innerHTML = '<form role="search"><label for="query"></label> <input id="query" type="search" ' +
      'autocomplete="off" spellcheck="false"></form><p role="status"></p><ol></ol>';
    const [form, status, list] = place.children;
    const input = form.querySelector("input");
    form.querySelector("label").textContent = say.label;
    const refresh = () => {
      if (texts) return show(input, status, list);
      if (document.querySelector("script[src='search-texts.js']")) return;
      const script = document.createElement("script");
      script.src = "search-texts.js";
      script.onload = () => {
        texts = prepare();
        show(input, status, list);
      };
      document.head.append(script);
    };
    input.addEventListener("input", refresh);
    form.addEventListener("submit", (event) => {
      event.preventDefault();
      list.querySelector("a")?.click();
    });
    place.addEventListener("keydown", (event) => move(event, input, list, refresh));
    document.addEventListener("keydown", (event) => {
      if (event.key !== "/" || event.target === input || event.ctrlKey || event.altKey || event.metaKey) return;
      event.preventDefault();
      input.focus();
    });
    if (input.value) refresh(); // after a step back
  }

  // The arrow keys walk through what was found; Escape ends the search.
  function move(event, input, list, refresh) {
    const stops = [input, ...list.querySelectorAll("a")];
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (step) {
      event.preventDefault();
      stops[stops.indexOf(document.activeElement) + step]?.focus();
    } else if (event.key === "Escape") {
      input.value = "";
      input.focus();
      refresh();
    }
  }

  build();
})();
