// The page in headless Chromium, served by the page's own server from web/dist (built first by
// `npm --prefix web run build`). KORVANE_NATIVE names the native build whose bench node count the
// browser's must equal (default build/korvane). Run: node --test tests/web/
import { execFileSync } from "node:child_process";
import { mkdirSync, readFileSync } from "node:fs";
import { request } from "node:http";
import { createRequire } from "node:module";
import { after, before, test } from "node:test";
import assert from "node:assert/strict";
import { benchLine, startServer, stopTimes } from "../../web/tools/probes.js";

const web = new URL("../../web/", import.meta.url);
const require = createRequire(new URL("package.json", web));
const { chromium } = require("playwright-core");
const { Chess } = require("chess.js");

let browser;
const servers = [];

async function serve(...extra) {
  const { base, child } = await startServer(...extra);
  servers.push(child);
  return base;
}

// A fresh page that records its console errors and uncaught exceptions.
async function openPage(url) {
  const context = await browser.newContext({ viewport: { width: 1200, height: 900 } });
  // Counts the page's wake-ups of the engine's ring: each line sent is one.
  await context.addInitScript(() => {
    const notify = Atomics.notify;
    window.linesSent = 0;
    Atomics.notify = (...args) => (window.linesSent++, notify(...args));
  });
  const page = await context.newPage();
  page.errors = [];
  page.on("console", (message) => message.type() === "error" && page.errors.push(message.text()));
  page.on("pageerror", (error) => page.errors.push(String(error)));
  await page.goto(url);
  await page.waitForFunction(() => window.korvane && window.crossOriginIsolated);
  await page.evaluate(() => window.korvane.ready);
  return page;
}

// Sends `lines` to the page's engine and resolves with what it printed up to and including the
// first line that `last` (a regular expression's source) matches.
function exchange(page, lines, last) {
  return page.evaluate(
    ([lines, last]) =>
      new Promise((resolve) => {
        const seen = [];
        const stop = window.korvane.listen((line) => {
          seen.push(line);
          if (new RegExp(last).test(line)) {
            stop();
            resolve(seen);
          }
        });
        for (const line of lines) window.korvane.send(line);
      }),
    [lines, last],
  );
}

// The board's squares and pieces, "e1:wk", sorted: from the widget's drawing in the page, and
// from a game of the test's own.
function boardShows(expected) {
  const shown = [...document.querySelectorAll("#board g[data-square][data-piece]")];
  return shown.map((g) => `${g.dataset.square}:${g.dataset.piece}`).sort().join(" ") === expected;
}

function placement(game) {
  return game.board().flat().filter(Boolean).map((p) => `${p.square}:${p.color}${p.type}`).sort().join(" ");
}

// The native build the browser's figures are held against.
function nativeEngine() {
  return process.env.KORVANE_NATIVE || new URL("../../build/korvane", import.meta.url).pathname;
}

let base;
before(async () => {
  base = await serve();
  browser = await chromium.launch({
    executablePath: process.env.CHROMIUM || "/usr/bin/chromium",
    args: ["--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
      "--disable-component-update", "--disable-sync"],
  });
});

after(async () => {
  await browser?.close();
  for (const child of servers) child.kill();
});

test("the server answers only the page's own files, with the isolation headers on every answer", { timeout: 120000 }, async () => {
  assert.match(base, /^http:\/\/127\.0\.0\.1:/);
  const cases = readFileSync(new URL("server_paths.txt", import.meta.url), "utf8")
    .split("\n")
    .filter((line) => line && !line.startsWith("#"))
    .map((line) => line.split(/\s+/));
  const failures = [];
  for (const [status, path] of cases) {
    const answer = await new Promise((resolve, reject) =>
      request(`${base}/`, { path }, (response) => {
        response.resume();
        resolve(response);
      })
        .on("error", reject)
        .end(),
    );
    const headers = answer.headers;
    if (String(answer.statusCode) !== status) failures.push(`${path}: status ${answer.statusCode}, not ${status}`);
    if (headers["cross-origin-opener-policy"] !== "same-origin" || headers["cross-origin-embedder-policy"] !== "require-corp")
      failures.push(`${path}: isolation headers missing`);
  }
  assert.deepEqual(failures, []);
});

test("the page loads clean, sends nothing by itself and its engine answers uci", { timeout: 120000 }, async () => {
  const page = await openPage(base);
  await page.waitForTimeout(300);
  assert.equal(await page.evaluate(() => window.linesSent), 0, "lines sent before the user acted");
  const start = await page.evaluate(() =>
    new Promise((resolve) => {
      const stop = window.korvane.listen((line) => {
        stop();
        resolve({ line, at: performance.now() });
      });
      window.korvane.send("isready");
    }),
  );
  assert.equal(start.line, "readyok", "the first line the engine prints answers the first command");
  console.log(`first readyok ${start.at.toFixed(0)} ms after navigation start`);
  const uci = await exchange(page, ["uci"], "^uciok$");
  assert.match(uci[0], /^id name Korvane/);
  assert.ok(uci.some((line) => /^option name Hash type spin default 16 min 1 max \d+$/.test(line)), uci.join("\n"));
  assert.ok(uci.some((line) => /^option name MultiPV type spin/.test(line)));
  assert.equal(await page.locator("#message").isHidden(), true);
  assert.deepEqual(page.errors, []);
  await page.context().close();
});

test("twenty engine moves against random replies are legal, and the page shows each", { timeout: 120000 }, async () => {
  const page = await openPage(base);
  await page.selectOption("#movetime", "100");
  // The replies are drawn from a seeded generator (KORVANE_SEED repeats a run).
  const seed = Number(process.env.KORVANE_SEED || Date.now() % 100000);
  console.log(`random replies from seed ${seed}`);
  let state = seed;
  const random = () => (state = (Math.imul(state, 1103515245) + 12345) >>> 0) >>> 8;
  const game = new Chess();
  let engineMoves = 0;
  while (engineMoves < 20) {
    if (game.isGameOver()) {
      await page.click("#new-game");
      game.reset();
    }
    const replies = game.moves({ verbose: true });
    const reply = replies[random() % replies.length];
    const heard = page.evaluate(
      () => new Promise((resolve) => {
        const stop = window.korvane.listen((line) => {
          if (line.startsWith("bestmove")) {
            stop();
            resolve(line);
          }
        });
      }),
    );
    heard.catch(() => {}); // left waiting when the reply ends the game
    await page.fill("#move-input", reply.lan);
    await page.press("#move-input", "Enter");
    game.move(reply.lan);
    if (game.isGameOver()) continue;
    const best = (await heard).split(" ")[1];
    assert.doesNotThrow(() => game.move(best), `engine move ${best} in ${game.fen()}`);
    engineMoves++;
    // The page plays the move it heard, and only that one, on its board too.
    await page.waitForFunction((fen) => document.getElementById("fen-input").placeholder === fen, game.fen());
    await page.waitForFunction(boardShows, placement(game), { timeout: 3000 });
    if (engineMoves === 10) {
      mkdirSync(new URL("test-output/", web), { recursive: true });
      await page.click("#explain");
      await page.waitForSelector("#explain-chart .term");
      await page.screenshot({ path: new URL("test-output/midgame.png", web).pathname });
    }
  }
  assert.deepEqual(page.errors, []);
  await page.context().close();
});

test("bad input is refused on the page and the game goes on", { timeout: 120000 }, async () => {
  const page = await openPage(base);
  await page.selectOption("#colour", "none");
  const cases = [
    ["#move-input", "e4"],
    ["#move-input", "Ke2"], // legal after 1. e4 only for White; Black to move
    ["#fen-input", "not a fen"],
    ["#fen-input", "7k/8/8/8/8/8/8/KR5R w - - 0 1"], // the side not to move in check
  ];
  for (const [field, text] of cases) {
    await page.fill(field, text);
    await page.press(field, "Enter");
    await page.waitForTimeout(200);
  }
  assert.equal(await page.locator("#moves li").allTextContents().then((rows) => rows.join("|")), "e4");
  await page.waitForFunction(() => /refuses/.test(document.getElementById("message").textContent));
  // A table larger than the browser gives: said on the page, and the engine goes on.
  await page.evaluate(() => window.korvane.send("setoption name Hash value 2048"));
  await page.waitForFunction(() => /memory/.test(document.getElementById("message").textContent));
  assert.deepEqual(await exchange(page, ["isready"], "readyok"), ["readyok"]);
  const fen = await page.locator("#fen-input").getAttribute("placeholder");
  assert.match(fen, /PPPP1PPP\/RNBQKBNR b KQkq/);
  // The explain panel draws the native build's own report of the position, White against Black,
  // and its sum from White's view (the engine gives it from the side to move's).
  await page.click("#explain");
  await page.waitForSelector("#explain-chart .total");
  const report = execFileSync(nativeEngine(), ["--uci"], {
    input: `position fen ${fen}\nboardscore\nquit\n`,
    encoding: "utf8",
  });
  const drawn = await page.evaluate(() => {
    const values = {};
    for (const row of document.querySelectorAll("#explain-chart .term"))
      for (const side of ["White", "Black"])
        values[`${side} ${row.dataset.term}`] = row.querySelector(`.bar.${side.toLowerCase()}`).textContent;
    return values;
  });
  const terms = report.split("\n").filter((line) => /^(White|Black) .+: -?\d+$/.test(line));
  assert.ok(terms.length > 10);
  const differing = terms.filter((line) => {
    const [, term, value] = /^(.+): (-?\d+)$/.exec(line);
    return (drawn[term] ?? "0") !== value; // a term left out of the chart is zero for both
  });
  assert.deepEqual(differing, []);
  const sum = Number(/boardscore: (-?\d+)/.exec(report)[1]);
  const total = await page.locator("#explain-chart .total").textContent();
  assert.ok(total.startsWith(`Evaluation ${sum < 0 ? "+" : ""}${(-sum / 100).toFixed(2)} `), total);
  await page.context().close();
});

test("stop ends a search at once, and a reload leaves one worker", { timeout: 120000 }, async () => {
  const page = await openPage(base);
  const times = await page.evaluate(stopTimes, 20);
  console.log(`stop answered in ${times[10].toFixed(2)} ms median, ${times[19].toFixed(2)} ms worst`);
  // The search looks into the ring about once a millisecond: half the stops are answered within
  // a few, and none waits for the search to end by itself (it never would).
  assert.ok(times[10] <= 5, `stop answered in ${times[10]} ms median`);
  assert.ok(times[19] < 500, `a stop took ${times[19]} ms`);
  // Nothing follows a stopped search's bestmove but the answers to later commands.
  assert.deepEqual(await exchange(page, ["isready"], "readyok"), ["readyok"]);
  // A perft asks for input far more slowly than a search, and sees stop as soon (perft 7 from
  // the start runs for minutes).
  const perft = await page.evaluate(
    () =>
      new Promise((resolve) => {
        let sent = 0;
        const stop = window.korvane.listen((line) => {
          if (line === "info string perft stopped") {
            stop();
            resolve(performance.now() - sent);
          }
        });
        window.korvane.send("perft 7");
        setTimeout(() => {
          sent = performance.now();
          window.korvane.send("stop");
        }, 300);
      }),
  );
  assert.ok(perft < 1000, `perft saw stop after ${perft} ms`);
  // Black mates at once: the analysis shows it from White's view, in SAN, and runs on until Stop.
  await page.selectOption("#colour", "none");
  await page.fill("#fen-input", "3r2k1/5ppp/8/8/8/8/5PPP/6K1 b - - 0 1");
  await page.press("#fen-input", "Enter");
  await page.waitForFunction(() => /^3r2k1/.test(document.getElementById("fen-input").placeholder));
  await page.click("#analyse");
  await page.waitForFunction(() => {
    const cells = [...(document.querySelector("#lines tbody tr")?.cells || [])].map((c) => c.textContent);
    return cells[1] === "#-1" && cells[2] === "1… Rd1#";
  });
  await page.waitForTimeout(300);
  assert.equal(await page.locator("#stop").isEnabled(), true);
  await page.reload();
  await page.waitForFunction(() => window.korvane);
  await page.evaluate(() => window.korvane.ready);
  await page.waitForTimeout(300);
  assert.equal(page.workers().length, 1);
  await page.context().close();
});

test("bench in the browser counts the native build's nodes", { timeout: 120000 }, async () => {
  const expected = execFileSync(nativeEngine(), ["bench"], { encoding: "utf8" }).trim().split("\n").at(-1);
  const page = await openPage(base);
  const last = await page.evaluate(benchLine);
  console.log(`bench: browser ${last}, native ${expected}`);
  assert.equal(last.split(" ")[0], expected.split(" ")[0]);
  await page.context().close();
});

test("without the isolation headers the page isolates itself through its service worker", { timeout: 120000 }, async () => {
  const plain = await serve("--no-isolation");
  const page = await openPage(plain);
  assert.deepEqual(await exchange(page, ["isready"], "readyok"), ["readyok"]);
  assert.deepEqual(page.errors, []);
  await page.context().close();
  // A browser that allows no service worker: the page says why there is no engine, once, and
  // the board still plays.
  const context = await browser.newContext({ serviceWorkers: "block" });
  const bare = await context.newPage();
  await bare.goto(plain);
  await bare.waitForFunction(() => /SharedArrayBuffer/.test(document.getElementById("message").textContent));
  await bare.fill("#move-input", "e4");
  await bare.press("#move-input", "Enter");
  assert.equal(await bare.locator("#moves li").allTextContents().then((rows) => rows.join("|")), "e4");
  assert.equal(await bare.evaluate(() => performance.getEntriesByType("navigation")[0].type), "navigate");
  await context.close();
});
