// SPDX-License-Identifier: MIT
// The picture, the grid over it, and the texts on it, which can be dragged, edited and moved with the keys.
import { NAMES, setPalettes, swatch } from "./colors.js";
import { call, on, watch } from "./connection.js";
import { by, h, say, soon } from "./dom.js";

const WIDTH = 720, HEIGHT = 576, COLUMNS = 53, ROWS = 26;
const MOVES = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

const stage = by("stage"), boxes = by("boxes"), canvas = by("picture"), lines = by("lines");
const pen = canvas.getContext("2d", { alpha: false });
const elements = new Map(); // of the texts, by handle
let kind = "monitor";
let places = null;
let texts = [];
let cells = null;
let pointed = null;  // the cell under the pointer or the cursor
let drag = null;     // {text, element, x, y, column, row}
let shown = 0;       // pictures, for the rate
let mayChange = false;

const limit = (value, most) => Math.max(0, Math.min(most, value));
const place = () => places?.[kind];
const usable = () => place()?.cellWidth > 0 && place()?.cellHeight > 0;

function put(element, column, row, columns) {
  const { x, y, cellWidth, cellHeight } = place();
  const style = element.style;
  style.left = `${(x + column * cellWidth) / WIDTH * 100}%`;
  style.top = `${(y + row * cellHeight) / HEIGHT * 100}%`;
  style.width = `${columns * cellWidth / WIDTH * 100}%`;
  style.height = `${cellHeight / HEIGHT * 100}%`;
}

/** The cell at a point of the window; outside of the grid too. */
function cellAt({ clientX, clientY }) {
  const area = stage.getBoundingClientRect();
  const { x, y, cellWidth, cellHeight } = place();
  return {
    column: Math.floor(((clientX - area.left) / area.width * WIDTH - x) / cellWidth),
    row: Math.floor(((clientY - area.top) / area.height * HEIGHT - y) / cellHeight),
  };
}

const inGrid = ({ column, row }) => column >= 0 && column < COLUMNS && row >= 0 && row < ROWS;
const columnsOf = (text) => Math.max(1, Math.min(text.text.length, COLUMNS - text.x));
const textsAt = ({ column, row }) =>
  texts.filter((text) => text.shown && text.y === row && text.x <= column && column < text.x + text.text.length);

// --- Drawing

const drawLines = soon(() => {
  const ink = lines.getContext("2d");
  ink.clearRect(0, 0, WIDTH, HEIGHT);
  if (lines.hidden || !usable()) return;
  const { x, y, cellWidth, cellHeight } = place();
  for (let column = 0; column <= COLUMNS; ++column) {
    ink.fillStyle = column % 10 === 0 ? "rgb(255 255 255 / 75%)" : "rgb(255 255 255 / 30%)";
    ink.fillRect(Math.round(x + column * cellWidth), y, 1, ROWS * cellHeight);
  }
  for (let row = 0; row <= ROWS; ++row) {
    ink.fillStyle = row % 5 === 0 ? "rgb(255 255 255 / 75%)" : "rgb(255 255 255 / 30%)";
    ink.fillRect(x, Math.round(y + row * cellHeight), COLUMNS * cellWidth, 1);
  }
});

function labelOf(text) {
  return `Text ${text.handle}: ${text.text || "empty"}, column ${text.x}, row ${text.y}`;
}

const drawBoxes = soon(() => {
  const wanted = usable() ? texts.filter((text) => text.shown && text.x < COLUMNS && text.y < ROWS) : [];
  const handles = new Set(wanted.map((text) => text.handle));
  for (const [handle, element] of elements)
    if (!handles.has(handle) && drag?.element !== element) {
      element.remove();
      elements.delete(handle);
    }
  for (const text of wanted) {
    let element = elements.get(text.handle);
    if (!element) {
      element = h("div", { className: "box", tabIndex: 0 });
      element.dataset.handle = text.handle;
      element.setAttribute("role", "button");
      elements.set(text.handle, element);
      boxes.append(element);
    }
    element.setAttribute("aria-label", labelOf(text));
    element.title = `${text.handle}: ${text.text}`;
    if (drag?.element !== element) put(element, text.x, text.y, columnsOf(text));
  }
  drawCursor();
});

function drawCursor() {
  let cursor = boxes.querySelector(".cursor");
  const visible = usable() && pointed && inGrid(pointed) && (document.activeElement === stage || !lines.hidden);
  if (!visible) {
    cursor?.remove();
    return;
  }
  if (!cursor) {
    cursor = h("div", { className: "cursor" });
    boxes.append(cursor);
  }
  put(cursor, pointed.column, pointed.row, 1);
}

function sayCell() {
  const element = by("cell");
  if (!pointed || !inGrid(pointed)) {
    say(element, "Point at a cell.");
    return;
  }
  const { column, row } = pointed;
  const parts = [`Cell ${column},${row}`];
  const at = 2 * (row * COLUMNS + column);
  if (cells?.length > at + 1) {
    const [code, color] = [cells[at], cells[at + 1]];
    const letter = code > 0x20 && code < 0x7f ? ` '${String.fromCharCode(code)}'` : "";
    parts.push(`   0x${code.toString(16).padStart(2, "0")}${letter}   `, swatch("foreground", color >> 4),
      NAMES[color >> 4], " on ", swatch("background", color & 15), NAMES[color & 15]);
  }
  for (const text of textsAt(pointed)) parts.push(`   text ${text.handle}`);
  element.replaceChildren(...parts);
}

function point(cell) {
  if (pointed?.column === cell?.column && pointed?.row === cell?.row) return;
  pointed = cell;
  sayCell();
  drawCursor();
}

// --- Changing texts

const textOf = (element) => texts.find((text) => text.handle === Number(element.dataset.handle));

function move(text, column, row) {
  text.x = limit(column, COLUMNS - 1);
  text.y = limit(row, ROWS - 1);
  drawBoxes();
  return call("videooverlay", "set_text_position", text.handle, text.x, text.y);
}

/** An input in the place of the text, or of a new one. */
function edit(text, column, row) {
  const input = h("input", { className: "editor", value: text?.text ?? "", spellcheck: false, maxLength: 200 });
  input.setAttribute("aria-label", text ? `Words of text ${text.handle}` : "Words of the new text");
  const back = document.activeElement;
  put(input, column, row, Math.min(COLUMNS - column, Math.max(12, (text?.text.length ?? 0) + 2)));
  let over = false;
  const finish = async (keep) => {
    if (over) return;
    over = true;
    const value = input.value;
    input.remove();
    back?.focus?.();
    if (!keep || value === (text?.text ?? "")) return;
    if (text) await call("videooverlay", "set_text_string", text.handle, value);
    else await createText({ text: value, x: column, y: row, foreground: 12, background: 5 });
  };
  input.addEventListener("keydown", (event) => {
    event.stopPropagation();
    if (event.key === "Enter") finish(true);
    if (event.key === "Escape") finish(false);
  });
  input.addEventListener("blur", () => finish(true));
  stage.append(input);
  input.focus();
  input.select();
}

export function editHandle(handle) {
  const text = texts.find((candidate) => candidate.handle === handle);
  if (text && usable()) edit(text, limit(text.x, COLUMNS - 4), limit(text.y, ROWS - 1));
}

export async function createText({ text, x, y, foreground, background }) {
  const answer = await call("videooverlay", "create_text");
  if (!answer) return;
  const handle = answer[0];
  await Promise.all([
    call("videooverlay", "set_text_position", handle, x, y),
    call("videooverlay", "set_text_colors", handle, foreground, background),
    call("videooverlay", "set_text_string", handle, text),
    call("videooverlay", "show_text", handle),
  ]);
}

// --- Pointer and keys

boxes.addEventListener("pointerdown", (event) => {
  const element = event.target.closest(".box");
  if (!element || event.button !== 0 || !mayChange) return;
  const text = textOf(element);
  if (!text) return;
  const { column, row } = cellAt(event);
  element.setPointerCapture(event.pointerId);
  element.focus();
  drag = { text, element, dx: column - text.x, dy: row - text.y, column: text.x, row: text.y };
  event.preventDefault();
});

boxes.addEventListener("pointermove", (event) => {
  if (!drag) return;
  const { column, row } = cellAt(event);
  drag.column = limit(column - drag.dx, COLUMNS - 1);
  drag.row = limit(row - drag.dy, ROWS - 1);
  if (drag.column !== drag.text.x || drag.row !== drag.text.y) drag.element.classList.add("dragged");
  put(drag.element, drag.column, drag.row, columnsOf(drag.text));
});

function drop(keep) {
  if (!drag) return;
  const { text, element, column, row } = drag;
  drag = null;
  element.classList.remove("dragged");
  if (keep && (column !== text.x || row !== text.y)) move(text, column, row);
  else drawBoxes();
}
boxes.addEventListener("pointerup", () => drop(true));
boxes.addEventListener("pointercancel", () => drop(false));
boxes.addEventListener("dblclick", (event) => {
  const element = event.target.closest(".box");
  if (element && mayChange) editHandle(Number(element.dataset.handle));
});

boxes.addEventListener("keydown", (event) => {
  const element = event.target.closest(".box");
  const text = element && textOf(element);
  if (!text || !mayChange) return;
  if (event.key === "Escape" && drag) drop(false);
  else if (MOVES[event.key]) {
    const step = event.shiftKey ? 5 : 1;
    move(text, text.x + MOVES[event.key][0] * step, text.y + MOVES[event.key][1] * step);
    point({ column: text.x, row: text.y });
  } else if (event.key === "Enter" || event.key === "F2") editHandle(text.handle);
  else if (event.key === "Delete") call("videooverlay", "destroy_text", text.handle);
  else if (event.key === "h" || event.key === "H") call("videooverlay", "hide_text", text.handle);
  else return;
  event.preventDefault();
  event.stopPropagation();
});

boxes.addEventListener("focusin", (event) => {
  const text = event.target.closest(".box") && textOf(event.target.closest(".box"));
  if (text) point({ column: text.x, row: text.y });
});

stage.addEventListener("keydown", (event) => {
  if (event.target !== stage || !usable()) return;
  if (MOVES[event.key]) {
    const from = pointed && inGrid(pointed) ? pointed : { column: 0, row: 0 };
    const step = event.shiftKey ? 5 : 1;
    point({
      column: limit(from.column + MOVES[event.key][0] * step, COLUMNS - 1),
      row: limit(from.row + MOVES[event.key][1] * step, ROWS - 1),
    });
  } else if (event.key === "Enter" && mayChange && pointed && inGrid(pointed)) {
    const text = textsAt(pointed)[0];
    if (text) editHandle(text.handle);
    else edit(null, pointed.column, pointed.row);
  } else return;
  event.preventDefault();
});
stage.addEventListener("focus", () => { if (!pointed) point({ column: 0, row: 0 }); drawCursor(); });
stage.addEventListener("blur", drawCursor);
stage.addEventListener("pointermove", (event) => { if (usable() && !drag) point(cellAt(event)); });
stage.addEventListener("pointerleave", () => { if (!drag) point(null); });

// --- From the board

on("picture", ({ bitmap, kind: of }) => {
  if (of !== kind) return;
  pen.drawImage(bitmap, 0, 0);
  canvas.dataset.pictures = ++shown;
});
on("geometry", (message) => {
  places = message;
  setPalettes(message);
  drawBoxes();
  drawLines();
});
on("texts", (message) => {
  texts = message.texts;
  drawBoxes();
  sayCell();
});
on("cells", (message) => {
  cells = Uint8Array.from(atob(message.cells), (letter) => letter.charCodeAt(0));
  sayCell();
});
on("hello", (message) => { mayChange = message.mayChange; });

let before = 0;
setInterval(() => {
  const pictures = shown - before;
  before = shown;
  say(by("rate"), pictures > 0 ? `${pictures} ${pictures === 1 ? "picture" : "pictures"} a second` : "still");
}, 1000);

for (const choice of document.querySelectorAll("input[name=picture]"))
  choice.addEventListener("change", () => {
    kind = choice.value;
    watch({ picture: kind });
    drawBoxes();
    drawLines();
  });
by("grid").addEventListener("change", ({ target }) => {
  lines.hidden = !target.checked;
  drawLines();
  drawCursor();
});
const frame = () => stage.classList.toggle("framed", by("frames").checked);
by("frames").addEventListener("change", frame);
frame();
watch({ cells: true });
document.addEventListener("visibilitychange", () => watch({ picture: document.hidden ? "none" : kind }));
