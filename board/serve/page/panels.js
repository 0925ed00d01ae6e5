// SPDX-License-Identifier: MIT
// The panels of the daemon: texts, message, counter, recorder, playback, still image, input, window.
import { NAMES, swatch } from "./colors.js";
import { call, on, order } from "./connection.js";
import { by, h, say, time } from "./dom.js";
import { createText, editHandle } from "./monitor.js";

let texts = [];
let status = {};

// --- Buttons that say in the page what they do

document.addEventListener("click", ({ target }) => {
  const button = target.closest("button[data-call], button[data-order], button[data-file], button[data-counter]");
  if (!button) return;
  const { call: method, order: wish, file, counter } = button.dataset;
  if (method) call(...method.split("."), ...JSON.parse(button.dataset.arguments ?? "[]"));
  else if (wish) order(JSON.parse(wish));
  else if (file) call(...file.split("."), by(button.dataset.from).value);
  else call("videooverlay", counter, Number(by("counter-sender").value));
});

// --- Texts

function button(label, title, work) {
  const element = h("button", { type: "button", title }, label);
  element.addEventListener("click", work);
  return element;
}

function rowOf(text) {
  const handle = text.handle;
  return h("tr", { className: text.shown ? "" : "hiddentext" },
    h("td", {}, String(handle)),
    h("td", { className: "words" }, text.text || "(empty)"),
    h("td", {}, `${text.x},${text.y}`),
    h("td", { title: `${NAMES[text.foreground] ?? ""} on ${NAMES[text.background] ?? ""}` },
      swatch("foreground", text.foreground), swatch("background", text.background)),
    h("td", {}, text.counter ? "counter" : text.id ? String(text.id) : ""),
    h("td", {},
      button(text.shown ? "Hide" : "Show", `${text.shown ? "Hide" : "Show"} text ${handle}`,
        () => call("videooverlay", text.shown ? "hide_text" : "show_text", handle)), " ",
      button("Edit", `Edit the words of text ${handle}`, () => editHandle(handle)), " ",
      button("×", `Remove text ${handle}`, () => call("videooverlay", "destroy_text", handle))));
}

function drawTexts() {
  const body = by("texts").tBodies[0];
  const focus = body.contains(document.activeElement)
    ? [...body.querySelectorAll("button")].indexOf(document.activeElement) : -1;
  body.replaceChildren(...texts.map(rowOf));
  if (focus >= 0) body.querySelectorAll("button")[focus]?.focus();
  by("no-texts").hidden = texts.length > 0;
}

on("texts", (message) => {
  texts = message.texts;
  drawTexts();
});
let palette = "";
on("geometry", (message) => {
  const now = String(message.foreground) + message.background;
  if (now !== palette) drawTexts();
  palette = now;
});

function valuesOf(form) {
  const numbers = [...form.querySelectorAll("input[type=number], select")].map((field) => [field.name, Number(field.value)]);
  return { ...Object.fromEntries(new FormData(form)), ...Object.fromEntries(numbers) };
}

function onSubmit(id, work) {
  by(id).addEventListener("submit", (event) => {
    event.preventDefault();
    work(valuesOf(event.target), event.submitter);
  });
}

onSubmit("new-text", createText);
onSubmit("message", ({ text, foreground, background, x, y, seconds }) =>
  call("videooverlay", "draw_temp_text", text, foreground, background, x, y, seconds));
onSubmit("window", ({ width, height, x, y }, pressed) =>
  pressed?.value === "position" ? call("videodisplay", "set_video_position", x, y)
    : call("videodisplay", "set_video_size", width, height));

// --- Counter

by("counter-zero").addEventListener("click", () =>
  call("videooverlay", "set_videocounter", Number(by("counter-sender").value), 0, 0, 0, 0));

/** The text with the id 102 shows the counter. */
by("counter-show").addEventListener("click", async () => {
  const found = await call("videooverlay", "get_text_handle_by_id", 102);
  if (!found) return;
  let handle = found[0];
  if (!handle) {
    handle = (await call("videooverlay", "create_text"))?.[0];
    if (!handle) return;
    await call("videooverlay", "set_text_id", handle, 102);
    await call("videooverlay", "set_text_position", handle, 44, 25);
    const [sender, ...values] = status.counter ?? [0, 0, 0, 0, 0];
    if (!status.active) await call("videooverlay", "set_videocounter", sender, ...values);
  }
  await call("videooverlay", "show_text", handle);
});

// --- State

function setState(id, word, className) {
  say(by(id), word);
  by(id).className = `state ${className}`;
}

const stateOf = (running, paused) => running ? ["running", "good"] : paused ? ["paused", "warn"] : ["stopped", ""];

function lamp(id, word, className) {
  say(by(id), word);
  by(id).className = `lamp ${className}`;
}

on("status", (message) => {
  status = message;
  const { daemon } = message;
  lamp("lamp-daemon", daemon ? "haldend runs" : "haldend is away", daemon ? "good" : "bad");
  by("notice").hidden = daemon;
  say(by("notice"), daemon ? "" : "haldend isn't on the bus. The page goes on when it comes back.");
  if (!daemon || message.counter === undefined) {
    for (const id of ["input", "recorder", "overlay"]) lamp(`lamp-${id}`, id, "");
    return;
  }
  const camera = message.input === 0;
  const recorder = stateOf(message.recording, message.recordingPaused);
  const playback = stateOf(message.playing, message.playingPaused);
  lamp("lamp-input", camera ? "camera signal" : "no signal", camera ? "good" : "bad");
  lamp("lamp-overlay", message.overlay ? "overlay on" : "overlay off", message.overlay ? "good" : "");
  lamp("lamp-recorder", playback[1] ? `playback ${playback[0]}` : `recorder ${recorder[0]}`, playback[1] || recorder[1]);
  setState("input-state", camera ? "camera signal" : "no signal", camera ? "good" : "bad");
  setState("recorder-state", ...recorder);
  setState("playback-state", ...playback);
  say(by("counter"), time(message.counter.slice(1)) + (message.active ? ` · sender ${message.counter[0]}` : ""));
  say(by("recorder-time"), time(message.recordingTime));
  say(by("window-state"), `Now ${message.width} × ${message.height} pixels${message.codec ? "" : ". The codec service isn't on the bus."}`);
});

on("switches", ({ codecState, codecFrame, codecFile }) => {
  const seconds = Math.floor(codecFrame / 25);
  const playing = codecState.startsWith("playing");
  say(by("playback-time"), time(playing ? [Math.floor(seconds / 3600), Math.floor(seconds / 60) % 60, seconds % 60] : [0, 0, 0]));
  by("playback-time").title = playing ? codecFile : "";
});

on("link", (up) => {
  lamp("lamp-link", up ? "connected" : "disconnected", up ? "good" : "bad");
  if (!up) {
    by("notice").hidden = false;
    say(by("notice"), "The board's page server doesn't answer. This page connects again by itself.");
  } else if (status.daemon !== false) by("notice").hidden = true;
});

on("hello", ({ mayChange, board }) => {
  by("leave").hidden = mayChange;
  by("leave").title = "The address lacks the right token behind #: this page shows everything, and changes nothing.";
  for (const part of document.querySelectorAll("[data-changes]")) part.disabled = !mayChange;
  document.body.classList.toggle("readonly", !mayChange);
  document.querySelector("h1").title = board;
});
