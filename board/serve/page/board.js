// SPDX-License-Identifier: MIT
// The board: camera, codec stand-in, faults, judgements, registers, trace.
import { on, order } from "./connection.js";
import { by, h, say } from "./dom.js";

const TRACE_LINES = 400;

const chips = new Map();
let chosen = "fpga";

// --- Switches

function fill(list, words) {
  if (list.options.length !== words.length) list.replaceChildren(...words.map((word) => h("option", {}, word)));
}

function faultLine({ operation, pass, left, short, hits }) {
  const what = short ? "transfers half" : "fails";
  const when = pass > 0 ? `, after ${pass} calls` : "";
  const long = left === null ? "" : `, ${left} more`;
  return `${operation} ${what}${when}${long}; so far ${hits}`;
}

on("switches", (message) => {
  fill(by("codec-mode"), message.modes);
  fill(by("fault").operation, message.operations);
  if (document.activeElement !== by("codec-mode")) by("codec-mode").value = message.codecMode;
  if (document.activeElement !== by("codec-delay")) by("codec-delay").value = message.codecDelay;
  by("tracing").checked = message.tracing;
  say(by("camera-state"), message.plugged ? "plugged" : "unplugged");
  by("camera-state").className = `state ${message.plugged ? "good" : "bad"}`;
  say(by("codec-state"), `${message.codecState}, frame ${message.codecFrame} ${message.codecFile}`);
  by("faults").replaceChildren(...message.faults.map((fault) => h("li", { className: "wrong" }, faultLine(fault))));
  drawSources(message.sources ?? ["test"]);
});

function drawSources(sources) {
  const place = by("camera-sources");
  if (place.childElementCount === sources.length) return;
  place.replaceChildren(...sources.map((what) => {
    const element = h("button", { type: "button" }, `${what} picture`);
    element.addEventListener("click", () => order({ do: "camera", what }));
    return element;
  }));
}

by("codec-mode").addEventListener("change", ({ target }) => order({ do: "codec", mode: target.value }));
by("codec-delay").addEventListener("change", ({ target }) => order({ do: "codec-delay", ms: Number(target.value) }));
by("tracing").addEventListener("change", ({ target }) => order({ do: "trace", on: target.checked }));
by("fault").addEventListener("submit", (event) => {
  event.preventDefault();
  const { operation, nth, count, short } = event.target;
  order({ do: "fault", operation: operation.value, nth: Number(nth.value), count: Number(count.value), short: short.checked });
});

// --- Judgements

on("judgements", ({ judgements }) => {
  by("judgements").replaceChildren(...(judgements.length
    ? judgements.map((line) => h("li", { className: "wrong" }, line))
    : [h("li", { className: "quiet" }, "Nothing forbidden was done.")]));
});

// --- Registers

function fieldElement({ name, value, file, differs }) {
  const element = h("span", { className: "field" }, `${name}=`);
  element.append(differs ? h("b", {}, String(value)) : String(value));
  if (differs) element.append(`(${file})`);
  return element;
}

function rowOf({ name, window: part, address, value, file, differs, help, fields }) {
  const row = h("tr", { className: differs ? "changed" : "" },
    h("td", { title: `${part} ${address}${help ? ` · ${help}` : ""}` }, `${differs ? "* " : ""}${name}`),
    h("td", {}, value), h("td", {}, differs ? file : ""), h("td", {}));
  for (const field of fields)
    if (!field.reserved)
      row.lastChild.append(fieldElement({ ...field, differs: file !== null && field.value !== field.file }), " ");
  return row;
}

function drawRegisters() {
  const chip = chips.get(chosen);
  if (!chip) return;
  const word = by("find-register").value.trim().toLowerCase();
  const only = by("changed-only").checked;
  const wanted = chip.registers.filter((register) =>
    (!only || register.differs) &&
    (!word || register.name.toLowerCase().includes(word) || register.fields.some(({ name }) => name.includes(word))));
  by("registers").tBodies[0].replaceChildren(...wanted.map(rowOf));
  by("chip-fault").hidden = !chip.fault;
  say(by("chip-fault"), chip.fault);
}

on("chip", (message) => {
  chips.set(message.chip, message);
  const place = by("chips");
  if (!place.querySelector(`[value="${message.chip}"]`)) {
    const input = h("input", { type: "radio", name: "chip", value: message.chip, checked: message.chip === chosen });
    input.addEventListener("change", () => { chosen = message.chip; drawRegisters(); });
    place.append(h("label", {}, input, h("span", {}, message.chip)));
  }
  if (message.chip === chosen) drawRegisters();
});
by("changed-only").addEventListener("change", drawRegisters);
by("find-register").addEventListener("input", drawRegisters);

// --- Trace

let lastLine = 0;
on("reset", () => { lastLine = 0; });
on("trace", ({ items }) => {
  const list = by("trace");
  const atEnd = list.scrollTop + list.clientHeight >= list.scrollHeight - 8;
  for (const { n, line } of items) {
    if (n <= lastLine) continue;
    lastLine = n;
    list.append(h("li", {}, line));
  }
  while (list.childElementCount > TRACE_LINES) list.firstChild.remove();
  if (atEnd) list.scrollTop = list.scrollHeight;
});
by("panel-board").addEventListener("click", ({ target }) => {
  if (target.dataset?.order?.includes("clear-trace")) by("trace").replaceChildren();
});
