// What the measuring script and the browser tests both do: start the page's server, and time
// `stop` and run bench in a page, through window.korvane.
import { spawn } from "node:child_process";
import { fileURLToPath } from "node:url";

// Starts tools/serve.js on a free loopback port with `extra` arguments; resolves with its base
// URL and the server's process.
export function startServer(...extra) {
  const script = fileURLToPath(new URL("serve.js", import.meta.url));
  const child = spawn(process.execPath, [script, "--port", "0", ...extra]);
  return new Promise((resolve, reject) => {
    child.stdout.on("data", (chunk) => {
      const at = /at (http:\/\/\S+)/.exec(String(chunk));
      if (at) resolve({ base: at[1], child });
    });
    child.on("exit", (code) => reject(new Error(`the server ended with ${code}`)));
  });
}

// Run in the page (page.evaluate): `tries` times after one warm-up, starts an infinite search,
// sends stop 30 ms after its first info line and times the wait for bestmove. Resolves with the
// times in milliseconds, sorted.
export async function stopTimes(tries) {
  const times = [];
  for (let i = 0; i <= tries; i++) {
    const took = await new Promise((resolve) => {
      let sent = 0;
      const stop = window.korvane.listen((line) => {
        if (line.startsWith("info depth") && !sent) {
          sent = -1;
          setTimeout(() => {
            sent = performance.now();
            window.korvane.send("stop");
          }, 30);
        }
        if (line.startsWith("bestmove")) {
          stop();
          resolve(performance.now() - sent);
        }
      });
      window.korvane.send("position startpos");
      window.korvane.send("go infinite");
    });
    if (i > 0) times.push(took);
  }
  return times.sort((a, b) => a - b);
}

// Run in the page: bench in a second engine; resolves with its last line,
// "<nodes> nodes <nps> nps".
export function benchLine() {
  return new Promise((resolve) => {
    const engine = window.korvane.start(["bench"]);
    engine.listen((line) => {
      if (!/^\d+ nodes \d+ nps$/.test(line)) return;
      engine.terminate();
      resolve(line);
    });
  });
}
