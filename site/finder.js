// The function finder. The address after # is a function's name, or the filters: #from.space=RGB&to.layout=P2&search=nv12.
"use strict";

const ofImage = [["space", "colours"], ["type", "samples"], ["layout", "layout"], ["sampling", "sampling"]];
const filters = [
  { side: "from", title: "From", facets: ofImage },
  { side: "to", title: "To", facets: ofImage },
  { side: "", title: "Conversion", facets: [["matrix", "matrix"], ["place", "in place"], ["family", "family"]] },
];
const facets = filters.flatMap(({ side, facets }) => facets.map(([key]) => (side ? side + "." : "") + key));
const byName = new Map(pxlcc.functions.map((f) => [f.name, f]));
const at = (id) => document.getElementById(id);
const search = at("search"), list = at("list"), detail = at("detail"), finder = at("finder");
const chosen = {};  // facet: value
const selects = {};

const valueOf = (f, facet) => facet.split(".").reduce((o, key) => o[key], f);

function element(tag, attributes = {}, ...children) {
  const made = document.createElement(tag);
  for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
  made.append(...children);
  return made;
}

const haystacks = new Map(pxlcc.functions.map((f) => [f,
  [f.name, f.summary, f.matrix, f.header, pxlcc.families[f.family][0], ...f.alike].join(" ").toLowerCase()]));

function matches(f, words, except) {
  const passes = (facet) => chosen[facet] === undefined || String(valueOf(f, facet)) === chosen[facet];
  return facets.every((facet) => facet === except || passes(facet)) && words.every((word) => haystacks.get(f).includes(word));
}

const labels = {
  family: (value) => pxlcc.families[value][0],
  layout: (value) => value + " – " + pxlcc.layouts[value],
  type: (value) => value + " – " + pxlcc.elements[value],
};

function words() {
  return search.value.toLowerCase().split(/\s+/).filter(Boolean);
}

// Each list offers what the other filters leave, with how many functions have it.
function fillSelects() {
  for (const facet of facets) {
    const select = selects[facet], counts = new Map();
    for (const f of pxlcc.functions) {
      const value = String(valueOf(f, facet));
      if (matches(f, words(), facet)) counts.set(value, (counts.get(value) || 0) + 1);
    }
    const label = labels[facet.split(".").pop()] || ((value) => value);
    const values = [...counts.keys()].sort((a, b) => label(a).localeCompare(label(b), "en", { numeric: true }));
    if (chosen[facet] !== undefined && !counts.has(chosen[facet])) values.push(chosen[facet]);
    select.replaceChildren(element("option", { value: "" }, "any"), ...values.map((value) =>
      element("option", { value }, `${label(value)} (${counts.get(value) || 0})`)));
    select.value = chosen[facet] ?? "";
    select.classList.toggle("set", chosen[facet] !== undefined);
  }
}

function fillList() {
  const found = pxlcc.functions.filter((f) => matches(f, words()));
  at("count").textContent = found.length === 1 ? "1 function" : `${found.length} functions`;
  list.replaceChildren(...found.map((f) => element("li", {}, element("a", { href: "#" + f.name },
    element("code", {}, f.name), element("small", {}, f.summary)))));
  markCurrent();
}

function filtersAsAddress() {
  const parts = facets.filter((facet) => chosen[facet] !== undefined).map((facet) => [facet, chosen[facet]]);
  if (search.value) parts.push(["search", search.value]);
  return "#" + new URLSearchParams(parts);
}

function refresh() {
  fillSelects();
  fillList();
}

function filtersChanged() {
  history.replaceState(null, "", filtersAsAddress());
  showDetail(null);
  refresh();
}

// ---- one function

function table(kind, head, rows) {
  const cell = (tag, content) => element(tag, {}, ...(Array.isArray(content) ? content : [content]));
  return element("div", { class: "wide", tabindex: "0" }, element("table", { class: kind },
    element("thead", {}, element("tr", {}, ...head.map((text) => cell("th", text)))),
    element("tbody", {}, ...rows.map((row) => element("tr", {}, ...row.map((content) => cell("td", content)))))));
}

function answers(list) {
  return list.map(([wrong, status]) => {
    const kind = status === "pxlStatusOk" ? "fine" : status === "pxlStatusOddSize" ? "warning" : "error";
    const text = element("span", { class: "answer" }, status === "pxlStatusOk" ? wrong : wrong + " → ");
    if (status !== "pxlStatusOk") text.append(element("code", { class: kind, title: pxlcc.statuses[status] }, status));
    return text;
  });
}

function nameLink(f) {
  return element("a", { href: "#" + f.name }, element("code", {}, f.name), " ");
}

// The same conversion in other types and layouts, and the way back.
function relatives(f) {
  const same = (a, b) => a.space === b.space && a.sampling === b.sampling;
  const stem = f.name.split("_")[0];
  const forms = pxlcc.functions.filter((g) => g !== f && g.name.split("_")[0] === stem && g.matrix === f.matrix);
  const back = pxlcc.functions.filter((g) => g !== f && stem.includes("To") && same(g.from, f.to) && same(g.to, f.from)
    && g.from.type === f.to.type && g.to.type === f.from.type && g.matrix === f.matrix);
  const exact = back.filter((g) => g.from.layout === f.to.layout && g.to.layout === f.from.layout);
  return [["Other forms", forms], ["The way back", exact.length ? exact : back]].filter(([, found]) => found.length);
}

function copyButton(text) {
  const button = element("button", { type: "button" }, "Copy");
  button.addEventListener("click", async () => {
    await navigator.clipboard.writeText(text);
    button.textContent = "Copied";
  });
  return button;
}

function describe(f) {
  const [family, familyPage, speedPage, formulas] = pxlcc.families[f.family];
  const [sectionTitle, sectionText] = pxlcc.sections[f.section];
  const side = ({ space, type, layout, sampling }) =>
    [space, type, layout, sampling === "full" ? "" : sampling].filter(Boolean).join(" ");
  const documentation = element("div");
  documentation.innerHTML = f.text;  // made by the generator from the headers
  const wholeGroup = element("details", f.text.length < 300 ? { open: "" } : {},
    element("summary", {}, `Of the whole group: ${sectionTitle}`));
  const section = element("div");
  section.innerHTML = sectionText;
  wholeGroup.append(section);
  const parts = [
    element("a", { class: "back", href: filtersAsAddress() }, "← all results"),
    element("h1", {}, f.name), element("p", {}, f.summary),
    element("ul", { class: "facts" }, element("li", {}, `${side(f.from)} → ${side(f.to)}`),
      element("li", {}, "matrix: " + f.matrix),
      ...(f.place === "yes" ? [element("li", {}, "in place")] : []), element("li", {}, f.header)),
    element("pre", { tabindex: "0" }, f.declaration),
    element("h2", {}, "Arguments and statuses"),
    table("parameters", ["Parameter", "What it is", "Answers"],
      f.parameters.map(([text, meaning, list]) => [element("code", {}, text), meaning, answers(list)])),
    element("h2", {}, "What it does"), documentation, wholeGroup,
    element("p", {}, element("a", { href: `${familyPage}#${f.name}` }, `In the family: ${family}`), ". ",
      element("a", { href: formulas }, "Formulas to the last bit"), "."),
    element("div", { class: "heading" }, element("h2", {}, "Example"), copyButton(f.example)),
    element("pre", { tabindex: "0" }, f.example),
  ];
  if (f.speeds.length) {
    const row = ([place, target, ns, copies, ratio, library]) =>
      [place, target, ns, copies, ratio ? `${ratio} (${library})` : "–"];
    parts.push(element("h2", {}, "Speed"),
      table("speeds", ["Image", "Target", "ns a pixel", "copies", "best other library, over ours"], f.speeds.map(row)),
      element("p", { class: "hint" }, "One thread, one machine, one run; copies: time over that of a plain copy of the same bytes. ",
        element("a", { href: speedPage }, "Tables and charts of the family"), ", ",
        element("a", { href: "performance.html" }, "how to read them"), "."));
  }
  for (const [title, found] of relatives(f)) {
    parts.push(element("h2", {}, title), element("p", {}, ...found.map(nameLink)));
  }
  return parts;
}

let shown = null;

function showDetail(f) {
  shown = f;
  finder.classList.toggle("chosen", f !== null);
  detail.hidden = f === null;
  document.title = (f ? f.name : "Function finder") + " – pxlCC";
  if (f) detail.replaceChildren(...describe(f));
  markCurrent();
}

function markCurrent() {
  for (const link of list.querySelectorAll("a")) {
    const current = shown !== null && link.hash === "#" + shown.name;
    current ? link.setAttribute("aria-current", "true") : link.removeAttribute("aria-current");
    if (current) link.scrollIntoView({ block: "nearest" });
  }
}

// ---- address, keys, beginning

function followAddress() {
  const name = decodeURIComponent(location.hash.slice(1));
  if (byName.has(name)) {
    showDetail(byName.get(name));
    detail.scrollTop = 0;
    if (finder.offsetTop < window.scrollY) window.scrollTo(0, 0);
    detail.focus({ preventScroll: true });
    return;
  }
  const parts = new URLSearchParams(location.hash.slice(1));
  for (const facet of facets) {
    if (parts.has(facet)) chosen[facet] = parts.get(facet);
    else delete chosen[facet];
  }
  search.value = parts.get("search") ?? "";
  showDetail(null);
  refresh();
}

function moveFocus(step) {
  const links = [...list.querySelectorAll("a")], now = links.indexOf(document.activeElement);
  const next = now + step;
  if (next < 0) search.focus();
  else if (links.length) links[Math.min(next, links.length - 1)].focus();
}

document.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey) return;
  const inField = event.target.matches("input, select, textarea");
  if (event.key === "/" && !inField) {
    event.preventDefault();
    if (shown && getComputedStyle(search).display === "none") location.hash = filtersAsAddress();
    search.focus();
    search.select();
  } else if (["ArrowDown", "ArrowUp"].includes(event.key) && (event.target === search || list.contains(event.target))) {
    event.preventDefault();
    moveFocus(event.key === "ArrowDown" ? 1 : -1);
  } else if (event.key === "Enter" && event.target === search) {
    list.querySelector("a")?.click();
  } else if (event.key === "Escape" && shown) {
    const name = shown.name;
    history.pushState(null, "", filtersAsAddress());
    showDetail(null);
    (list.querySelector(`a[href="#${name}"]`) || search).focus();
  }
});

for (const { side, title, facets: own } of filters) {
  const set = element("fieldset", {}, element("legend", {}, title));
  for (const [key, text] of own) {
    const facet = (side ? side + "." : "") + key, select = element("select", { name: facet });
    selects[facet] = select;
    select.addEventListener("change", () => {
      if (select.value === "") delete chosen[facet];
      else chosen[facet] = select.value;
      filtersChanged();
    });
    set.append(element("label", {}, text, select));
  }
  at("selects").append(set);
}
search.addEventListener("input", filtersChanged);
at("reset").addEventListener("click", () => {
  for (const facet of facets) delete chosen[facet];
  search.value = "";
  filtersChanged();
});
window.addEventListener("hashchange", followAddress);
if (window.matchMedia("(max-width: 44rem)").matches) at("more").open = false;
refresh();
followAddress();
