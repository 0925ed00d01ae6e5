// SPDX-License-Identifier: MIT
// The overlay's colours: names, and what the board's palettes hold now.
import { h } from "./dom.js";

export const NAMES = ["transparent", "white", "dark red", "dark green", "teal", "navy", "purple", "teal (7)",
  "grey, part", "silver", "red", "green", "yellow", "navy, half", "magenta", "black"];

let palettes = { foreground: [], background: [] };

export function setPalettes({ foreground, background }) {
  palettes = { foreground, background };
}

export function swatch(kind, index) {
  const element = h("span", { className: "swatch", title: NAMES[index] ?? String(index) });
  element.style.background = palettes[kind][index] ?? "";
  return element;
}

/** Fills the lists of colours; the attribute names the one that is chosen at first. */
export function fillLists() {
  for (const list of document.querySelectorAll("select[data-colors]"))
    list.append(...NAMES.map((name, index) =>
      h("option", { value: index, selected: index === Number(list.dataset.colors) }, `${index} ${name}`)));
}
