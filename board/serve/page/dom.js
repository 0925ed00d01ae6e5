// SPDX-License-Identifier: MIT
// Short ways to the document.

export const by = (id) => document.getElementById(id);

/** Makes an element: h("td", {className: "right"}, "text", child). */
export function h(name, properties = {}, ...children) {
  const element = Object.assign(document.createElement(name), properties);
  element.append(...children);
  return element;
}

/** Replaces what an element holds, unless it is the same already. */
export function say(element, text) {
  if (element.textContent !== text) element.textContent = text;
}

export function toast(text) {
  const element = h("div", { className: "toast" }, text);
  by("toasts").append(element);
  setTimeout(() => element.remove(), 7000);
}

export const two = (number) => String(number).padStart(2, "0");
export const time = ([hours, minutes, seconds]) => `${hours}:${two(minutes)}:${two(seconds)}`;

/** Runs a function soon, once for many requests. */
export function soon(work) {
  let waits = false;
  return () => {
    if (waits) return;
    waits = true;
    requestAnimationFrame(() => { waits = false; work(); });
  };
}
