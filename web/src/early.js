// Starts the page's engine as soon as the page is parsed, while the board's and the rules'
// scripts are still loading: fetching and compiling the engine is most of the wait for the first
// readyok. Not while the isolation service worker is about to reload the page.
import { startEngine } from "./engine.js";

export const pageEngine = window.korvaneIsolation === "reloading" ? null : startEngine(["--uci"]);
