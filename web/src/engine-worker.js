// The engine's Web Worker: runs Korvane's main() with the arguments the page gives, reading its
// standard input from the page's shared ring and posting each line it prints.
// Messages in: { ring: SharedArrayBuffer, args: string[] }, once.
// Messages out: { started: true } when the module runs, { line } per line printed,
// { exit: code } when main() returns, { error } when the module cannot start.
"use strict";

self.onmessage = (event) => {
  self.onmessage = null;
  const { ring, args } = event.data;
  try {
    importScripts("korvane-uci.js");
  } catch (error) {
    self.postMessage({ error: `the engine's script did not load: ${error.message}` });
    return;
  }
  self.createKorvane({
    arguments: args,
    korvaneRing: { head: new Int32Array(ring, 0, 2), data: new Uint8Array(ring, 8) },
    print: (line) => self.postMessage({ line }),
    printErr: (line) => self.postMessage({ line, stderr: true }),
    onRuntimeInitialized: () => self.postMessage({ started: true }),
    onExit: (code) => self.postMessage({ exit: code }),
    onAbort: (what) => self.postMessage({ error: `the engine stopped: ${what}` }),
  }).catch((error) => self.postMessage({ error: `the engine did not start: ${error.message || error}` }));
};
