// Builds the engine with Emscripten and lays out the page in web/dist: the page's own files,
// the engine's worker and module, and the board and rules libraries from node_modules.
//   npm --prefix web run build
// Environment: KORVANE_WASM_BUILD, the engine's build folder (default build-wasm beside web/);
// KORVANE_SOURCE, the source tree to build (default the checkout web/ is in); KORVANE_JOBS,
// parallel compile jobs (default 2).
import { execFileSync } from "node:child_process";
import { cpSync, existsSync, mkdirSync, rmSync } from "node:fs";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";

const web = resolve(dirname(fileURLToPath(import.meta.url)), "..");
const checkout = resolve(web, "..");
const tree = resolve(checkout, process.env.KORVANE_SOURCE || ".");
const buildDir = resolve(checkout, process.env.KORVANE_WASM_BUILD || "build-wasm");
const dist = join(web, "dist");

// Debian's emscripten finds its node modules only through NODE_PATH.
const env = { ...process.env };
if (!env.NODE_PATH && existsSync("/usr/share/nodejs")) env.NODE_PATH = "/usr/share/nodejs";
const run = (command, args) => execFileSync(command, args, { stdio: "inherit", env, cwd: tree });

run("emcmake", ["cmake", "-S", tree, "-B", buildDir, "-DCMAKE_BUILD_TYPE=Release",
  "-DKORVANE_TESTS=OFF", "-DKORVANE_POPCNT=OFF", "-DKORVANE_WERROR=ON"]);
run("cmake", ["--build", buildDir, "--target", "korvane-uci", "-j", process.env.KORVANE_JOBS || "2"]);

rmSync(dist, { recursive: true, force: true });
mkdirSync(join(dist, "engine"), { recursive: true });
const copy = (from, to) => cpSync(from, join(dist, to), { recursive: true });
for (const file of ["index.html", "app.js", "early.js", "engine.js", "coi.js", "style.css", "favicon.svg"])
  copy(join(web, "src", file), file);
copy(join(web, "src", "engine-worker.js"), "engine/engine-worker.js");
copy(join(buildDir, "korvane-uci.js"), "engine/korvane-uci.js");
copy(join(buildDir, "korvane-uci.wasm"), "engine/korvane-uci.wasm");
copy(join(checkout, "LICENSE"), "LICENSE");
const modules = join(web, "node_modules");
copy(join(modules, "cm-chessboard", "src"), "vendor/cm-chessboard/src");
copy(join(modules, "cm-chessboard", "assets", "chessboard.css"), "vendor/cm-chessboard/assets/chessboard.css");
copy(join(modules, "cm-chessboard", "assets", "pieces", "standard.svg"), "vendor/cm-chessboard/assets/pieces/standard.svg");
copy(join(modules, "cm-chessboard", "LICENSE"), "vendor/cm-chessboard/LICENSE");
copy(join(modules, "chess.js", "dist", "esm", "chess.js"), "vendor/chess.js/chess.js");
copy(join(modules, "chess.js", "dist", "esm", "chess.js.map"), "vendor/chess.js/chess.js.map");
copy(join(modules, "chess.js", "LICENSE"), "vendor/chess.js/LICENSE");
console.log(`the page is in ${dist}`);
