// Starts Korvane in a Web Worker and speaks to it in UCI lines. Lines go to the engine through a
// ring of bytes in a SharedArrayBuffer: the engine blocks on it while idle and looks into it
// during a search, so `stop` and `isready` are seen at once. Each line the engine prints comes
// back to every listener, without its line end.

// Ring layout, shared with the engine's browser module: two Int32 counters (bytes written, bytes
// read) that run on and wrap, then the data, a power of two in length.
const ringBytes = 1 << 16;

export function startEngine(args = ["--uci"]) {
  if (typeof SharedArrayBuffer !== "function" || !self.crossOriginIsolated) {
    const error = new Error("this page is not cross-origin isolated, so the engine cannot run");
    const failed = Promise.reject(error);
    failed.catch(() => {});
    return { send() {}, listen() { return () => {}; }, ready: failed, ended: failed, terminate() {} };
  }
  const shared = new SharedArrayBuffer(8 + ringBytes);
  const head = new Int32Array(shared, 0, 2);
  const data = new Uint8Array(shared, 8, ringBytes);
  const encoder = new TextEncoder();
  const listeners = new Set();
  const waiting = []; // encoded lines the ring had no room for yet
  let settle, finish;
  const ready = new Promise((resolve, reject) => (settle = { resolve, reject }));
  const ended = new Promise((resolve, reject) => (finish = { resolve, reject }));
  // A caller that never waits for these should not see an unhandled rejection.
  ready.catch(() => {});
  ended.catch(() => {});

  const worker = new Worker(new URL("./engine/engine-worker.js", import.meta.url));
  worker.onmessage = ({ data: message }) => {
    if (message.started) settle.resolve();
    if (typeof message.line === "string") for (const listen of listeners) listen(message.line);
    if (message.error) fail(message.error);
    if (typeof message.exit === "number") finish.resolve(message.exit);
  };
  worker.onerror = (event) => fail(event.message || "the engine's worker failed");
  function fail(why) {
    settle.reject(new Error(why));
    finish.reject(new Error(why));
  }
  worker.postMessage({ ring: shared, args });

  function flush() {
    while (waiting.length) {
      const bytes = waiting[0];
      const written = Atomics.load(head, 0);
      const free = ringBytes - ((written - Atomics.load(head, 1)) | 0);
      if (bytes.length > free) {
        setTimeout(flush, 1);
        return;
      }
      for (let i = 0; i < bytes.length; i++) data[(written + i) & (ringBytes - 1)] = bytes[i];
      Atomics.store(head, 0, (written + bytes.length) | 0);
      Atomics.notify(head, 0);
      waiting.shift();
    }
  }

  return {
    // Writes one command line; its line end is added here.
    send(line) {
      waiting.push(encoder.encode(`${String(line).replace(/[\r\n]+/g, " ")}\n`));
      if (waiting.length === 1) flush();
    },
    // Calls `listener` with every line the engine prints; returns a function that removes it.
    listen(listener) {
      listeners.add(listener);
      return () => listeners.delete(listener);
    },
    // Resolves once the worker answers, with the engine running.
    ready,
    // Resolves with main()'s exit code once the engine has ended (quit); rejects if it fails.
    ended,
    terminate() {
      worker.terminate();
    },
  };
}
