"use strict";
{
  const contents = document.getElementById("contents");
  const index = document.getElementById("index");
  const list = index.querySelector("ul");
  const field = document.getElementById("find");
  const found = document.getElementById("found");

  // The contents stand open beside the text, and are folded where they would stand before it, as on
  // phones.
  const beside = matchMedia("(min-width: 60.01rem)");
  const arrange = () => {
    contents.open = beside.matches;
    field.placeholder = beside.matches ? "press /" : "";
  };
  beside.addEventListener("change", arrange);
  arrange();

  // "color" finds Color, and "emitter" Emmiter.
  const plain = (text) => text.toLowerCase().replaceAll("color", "color").replace(/(.)\1+/g, "$1");
  const entries = [...list.children].map((element) => ({
    element,
    label: plain(element.querySelector("a").textContent),
    words: plain(element.textContent),
  }));

  // How well an entry answers, 0 the best; undefined where a word is missing.
  const rank = (entry, text) => {
    const words = text.split(/\s+/);
    if (!words.every((word) => entry.words.includes(word))) return undefined;
    if (entry.label === text) return 0;
    if (entry.label.startsWith(text)) return 1;
    return words.every((word) => entry.label.includes(word)) ? 2 : 3;
  };

  const filter = () => {
    const text = plain(field.value.trim());
    const ranks = new Map(entries.map((entry) => [entry, rank(entry, text)]));
    for (const [entry, at] of ranks) {
      entry.element.hidden = at === undefined;
      entry.element.classList.toggle("by-item", at === 3);
    }
    const answers = entries.filter((entry) => ranks.get(entry) !== undefined);
    answers.sort((a, b) => ranks.get(a) - ranks.get(b));
    list.append(...answers.map((entry) => entry.element));
    contents.hidden = index.open = text !== "";
    const count = answers.length;
    found.textContent = text && (count === 1 ? "1 entry" : `${count || "No"} entries`);
  };
  const clear = () => {
    field.value = "";
    filter();
    field.focus();
  };

  const links = () => [...list.querySelectorAll("li:not([hidden]) a")];
  field.addEventListener("input", filter);
  field.addEventListener("keydown", (event) => {
    if (event.key === "Enter" && field.value.trim()) links()[0]?.click();
    else if (event.key === "ArrowDown" && index.open) links()[0]?.focus();
    else if (event.key === "Escape") clear();
    else return;
    event.preventDefault();
  });
  list.addEventListener("keydown", (event) => {
    const shown = links();
    const at = shown.indexOf(document.activeElement);
    if (event.key === "ArrowDown") shown[at + 1]?.focus();
    else if (event.key === "ArrowUp") (shown[at - 1] ?? field).focus();
    else if (event.key === "Escape") clear();
    else return;
    event.preventDefault();
  });
  document.addEventListener("keydown", (event) => {
    if (event.key !== "/" || event.ctrlKey || event.metaKey || event.target === field) return;
    field.select();
    event.preventDefault();
  });
  field.closest(".find").hidden = false;
  filter();
}
