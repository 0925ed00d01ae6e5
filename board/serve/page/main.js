// SPDX-License-Identifier: MIT
// The page: tabs, colours, and the start.
import { fillLists } from "./colors.js";
import { connect, watch } from "./connection.js";
import { by } from "./dom.js";
import "./monitor.js";
import "./panels.js";
import "./board.js";
import "./calls.js";

const tabs = [...document.querySelectorAll("[role=tab]")];

function choose(tab, focus) {
  for (const other of tabs) {
    const chosen = other === tab;
    other.setAttribute("aria-selected", String(chosen));
    other.tabIndex = chosen ? 0 : -1;
    by(other.getAttribute("aria-controls")).hidden = !chosen;
  }
  if (focus) tab.focus();
  watch({ board: tab.id === "tab-board", calls: tab.id === "tab-calls" });
}

for (const tab of tabs) {
  tab.addEventListener("click", () => choose(tab, false));
  tab.addEventListener("keydown", ({ key }) => {
    const step = { ArrowRight: 1, ArrowLeft: -1 }[key];
    if (step) choose(tabs[(tabs.indexOf(tab) + step + tabs.length) % tabs.length], true);
  });
}

const THEMES = ["system", "light", "dark"];
function setTheme(theme) {
  if (theme === "system") delete document.documentElement.dataset.theme;
  else document.documentElement.dataset.theme = theme;
  by("theme").textContent = `Colours: ${theme}`;
  localStorage.setItem("theme", theme);
}
by("theme").addEventListener("click", () =>
  setTheme(THEMES[(THEMES.indexOf(localStorage.getItem("theme") ?? "system") + 1) % THEMES.length]));
setTheme(THEMES.includes(localStorage.getItem("theme")) ? localStorage.getItem("theme") : "system");

fillLists();
connect();
