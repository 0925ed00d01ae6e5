// SPDX-License-Identifier: MIT
// The log of the bus: who called what, and the answer.
import { on } from "./connection.js";
import { by, h, soon } from "./dom.js";

const MOST = 400;
const entries = new Map(); // by number, the oldest first

function isWanted({ kind, what, who }, word) {
  if (kind === "signal" && !by("calls-signals").checked) return false;
  if (kind === "call" && !by("calls-getters").checked && /\.(get|is|query)_/.test(what)) return false;
  return !word || what.toLowerCase().includes(word) || who.toLowerCase().includes(word);
}

/** Long names may break behind their parts. */
function breakable(text) {
  return text.split(/(?<=[._(])/).flatMap((part) => [part, h("wbr")]);
}

function rowOf({ time, who, what, arguments: values, answer, error, ms, kind }) {
  return h("tr", { className: `${kind}${error ? " error" : ""}` },
    h("td", {}, time), h("td", {}, who), h("td", { className: "what" }, ...breakable(`${what}(${values})`)),
    h("td", { className: "answer" }, answer ?? ""), h("td", { className: "right" }, ms === undefined ? "" : ms.toFixed(1)));
}

const draw = soon(() => {
  const word = by("calls-find").value.trim().toLowerCase();
  const rows = [...entries.values()].filter((entry) => isWanted(entry, word)).reverse().map(rowOf);
  by("calls").tBodies[0].replaceChildren(...rows);
  by("calls-none").hidden = rows.length > 0;
});

on("calls", ({ items }) => {
  for (const entry of items) entries.set(entry.n, entry);
  for (const number of entries.keys()) {
    if (entries.size <= MOST) break;
    entries.delete(number);
  }
  draw();
});
on("reset", () => { entries.clear(); draw(); });
on("hello", ({ log }) => {
  by("calls-none").textContent = log ? "Calls show here as they come."
    : "This bus doesn't let anybody listen: only the daemon's own answers to this page are known.";
});
for (const id of ["calls-getters", "calls-signals"]) by(id).addEventListener("change", draw);
by("calls-find").addEventListener("input", draw);
by("calls-clear").addEventListener("click", () => { entries.clear(); draw(); });
