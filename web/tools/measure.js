// Measures the page in headless Chromium against the native build, on this machine:
//   node web/tools/measure.js [native engine, default build/korvane]
// after `npm --prefix web run build`. Prints the time from navigation start to the first
// readyok (5 fresh loads), bench's node count and speed in the browser and natively (5 runs
// each, taken in turn, so that each pair sees the same load), the time from `stop` to `bestmove`
// (20 tries after one warm-up) and the size of web/dist.
import { execFileSync } from "node:child_process";
import { createRequire } from "node:module";
import { fileURLToPath } from "node:url";
import { benchLine, startServer, stopTimes } from "./probes.js";

const web = new URL("../", import.meta.url);
const { chromium } = createRequire(new URL("package.json", web))("playwright-core");
const native = process.argv[2] || fileURLToPath(new URL("../build/korvane", web));

const { base, child: server } = await startServer();
const browser = await chromium.launch({ executablePath: process.env.CHROMIUM || "/usr/bin/chromium" });
const median = (values) => [...values].sort((a, b) => a - b)[Math.floor(values.length / 2)];

async function freshPage() {
  const page = await (await browser.newContext()).newPage();
  await page.goto(base);
  await page.waitForFunction(() => window.korvane);
  return page;
}

const firstReady = [];
for (let i = 0; i < 5; i++) {
  const page = await freshPage();
  firstReady.push(
    await page.evaluate(async () => {
      await window.korvane.ready;
      return new Promise((resolve) => {
        window.korvane.listen((line) => line === "readyok" && resolve(performance.now()));
        window.korvane.send("isready");
      });
    }),
  );
  await page.context().close();
}

const page = await freshPage();
const runs = { browser: [], native: [] };
for (let i = 0; i < 5; i++) {
  const line = await page.evaluate(benchLine);
  runs.browser.push(line.split(" ").map(Number));
  const nativeLine = execFileSync(native, ["bench"], { encoding: "utf8" }).trim().split("\n").at(-1);
  runs.native.push(nativeLine.split(" ").map(Number));
}

const stops = await page.evaluate(stopTimes, 20);
await browser.close();
server.kill();

const size = execFileSync("du", ["-sk", fileURLToPath(new URL("dist", web))], { encoding: "utf8" });
const ratios = runs.browser.map((run, i) => (100 * run[2]) / runs.native[i][2]);
console.log(`first readyok after navigation start: ${firstReady.map((t) => t.toFixed(0)).join(", ")} ms`);
console.log(`bench nodes: browser ${runs.browser.map((r) => r[0]).join(", ")}; native ${runs.native.map((r) => r[0]).join(", ")}`);
console.log(`bench nps: browser ${runs.browser.map((r) => r[2]).join(", ")}; native ${runs.native.map((r) => r[2]).join(", ")}`);
console.log(`bench speed, browser over native in each pair: ${ratios.map((r) => r.toFixed(1)).join(", ")}%; median ${median(ratios).toFixed(1)}%`);
console.log(`stop to bestmove: median ${median(stops).toFixed(2)} ms, worst ${Math.max(...stops).toFixed(2)} ms`);
console.log(`web/dist: ${size.split("\t")[0]} KiB`);
