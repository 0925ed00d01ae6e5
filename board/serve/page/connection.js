// SPDX-License-Identifier: MIT
// The WebSocket to the board: pictures come from it, states and answers; wishes and calls go to it.
import { toast } from "./dom.js";

const RETRY_MS = 1000;
const RESULTS = ["done", "the codec service didn't confirm it", "not allowed now", "the file can't be opened",
  "the file can't be read", "the file can't be written", "the longest time is reached"];

const listeners = new Map();
const open = new Map();
let socket = null;
let last = 0;
let wish = { picture: "monitor", board: false, calls: false, cells: false };

/** Calls the function with each message of that type; "picture", "link" and "reset" are made here. */
export function on(type, listener) {
  listeners.set(type, [...(listeners.get(type) ?? []), listener]);
}

function tell(type, message) {
  for (const listener of listeners.get(type) ?? []) listener(message);
}

function send(message) {
  if (socket?.readyState === WebSocket.OPEN) socket.send(JSON.stringify(message));
}

/** The token is behind the # of the address, which browsers send to no server. */
const token = () => location.hash.slice(1);

export function watch(change) {
  wish = { ...wish, ...change };
  send({ type: "watch", ...wish });
}

function ask(message) {
  return new Promise((resolve, reject) => {
    if (socket?.readyState !== WebSocket.OPEN) {
      reject(new Error("not connected"));
      return;
    }
    const id = ++last;
    open.set(id, { resolve, reject });
    send({ ...message, id });
  });
}

function show(promise, what) {
  return promise.then((answer) => {
    const result = what.startsWith("videoprocessing.") && !/\.(is|get|query|clear)_/.test(what) ? answer[0] : 0;
    if (result > 0) toast(`${what}: ${RESULTS[result] ?? result} (${result})`);
    return answer;
  }).catch((error) => {
    toast(`${what}: ${error.message}`);
    return null;
  });
}

/** Calls the daemon: call("videooverlay", "show_text", 1). Gives its answer, null if it failed; the user sees why. */
export function call(object, method, ...values) {
  return show(ask({ type: "call", object, method, arguments: values }), `${object}.${method}`);
}

/** Changes the board: order({do: "camera", what: "unplug"}). */
export function order(what) {
  return show(ask({ type: "order", ...what }), what.do);
}

async function onPicture(data) {
  const head = new DataView(data, 0, 8);
  const number = head.getUint32(0);
  const kind = head.getUint8(4) === 1 ? "recorded" : "monitor";
  const bitmap = await createImageBitmap(new Blob([new Uint8Array(data, 8)], { type: "image/jpeg" }));
  tell("picture", { bitmap, kind, number });
  bitmap.close();
  send({ type: "ack", n: number });
}

function onAnswers({ items }) {
  for (const { id, answer, error } of items) {
    const waiting = open.get(id);
    open.delete(id);
    if (error !== undefined) waiting?.reject(new Error(error));
    else waiting?.resolve(answer);
  }
}

export function connect() {
  socket = new WebSocket(`ws://${location.host}/live`, "halden-live");
  socket.binaryType = "arraybuffer";
  socket.onopen = () => {
    tell("reset");
    tell("link", true);
    send({ type: "hello", token: token() });
    send({ type: "watch", ...wish });
  };
  socket.onmessage = ({ data }) => {
    if (typeof data !== "string") {
      onPicture(data);
      return;
    }
    const message = JSON.parse(data);
    if (message.type === "answers") onAnswers(message);
    else tell(message.type, message);
  };
  socket.onclose = () => {
    tell("link", false);
    for (const { reject } of open.values()) reject(new Error("the connection is lost"));
    open.clear();
    setTimeout(connect, RETRY_MS);
  };
}

// Another token in the address: greet with it.
addEventListener("hashchange", () => send({ type: "hello", token: token() }));
