// The page: a game against Korvane, an analysis of the shown position and the engine's own
// term-by-term evaluation of it. The engine runs in a worker and is spoken to in standard UCI;
// the page is one more GUI. It sends nothing before the user acts.
import { Chessboard, COLOR, INPUT_EVENT_TYPE } from "./vendor/cm-chessboard/src/Chessboard.js";
import { Chess, validateFen } from "./vendor/chess.js/chess.js";
import { startEngine } from "./engine.js";
import { pageEngine } from "./early.js";

const $ = (id) => document.getElementById(id);
const stored = "korvane-game";

// ---- state ----------------------------------------------------------------------------------

let game = new Chess();
let gameId = 0; // bumped whenever the game is replaced, so a late bestmove is not played into it
let analysing = false; // the user asked for analysis until Stop
let current = null; // the engine's running task: { kind, ends(line), done(line), stopping }
let queued = []; // what to start, in order, once the running task has ended
let engineUp = false;

// ---- messages -------------------------------------------------------------------------------

function showMessage(text, kind = "error") {
  const box = $("message");
  box.textContent = text;
  box.className = kind;
  box.hidden = false;
}

function clearMessage() {
  $("message").hidden = true;
}

function setState(text) {
  $("engine-state").textContent = text;
}

// ---- the board ------------------------------------------------------------------------------

const board = new Chessboard($("board"), {
  position: game.fen(),
  assetsUrl: "vendor/cm-chessboard/assets/",
  style: { pieces: { file: "pieces/standard.svg" }, animationDuration: 150 },
});

function userColour() {
  return $("colour").value;
}

// The user moves when analysing, when playing both sides, or on their own turn while the engine
// is not choosing a move.
function userMayMove() {
  if (game.isGameOver()) return false;
  if (analysing || userColour() === "none" || !engineUp) return true;
  return game.turn() === userColour() && !(current && current.kind === "move");
}

board.enableMoveInput((event) => {
  switch (event.type) {
    case INPUT_EVENT_TYPE.moveInputStarted: {
      const piece = game.get(event.squareFrom);
      return userMayMove() && !!piece && piece.color === game.turn();
    }
    case INPUT_EVENT_TYPE.validateMoveInput: {
      const legal = play({ from: event.squareFrom, to: event.squareTo, promotion: $("promotion").value });
      return legal;
    }
    case INPUT_EVENT_TYPE.moveInputFinished:
      // Castling, en passant and promotion move more than the dragged piece.
      if (board.getPosition() !== game.fen().split(" ")[0]) board.setPosition(game.fen(), true);
      return true;
    default:
      return true;
  }
});

// ---- the game -------------------------------------------------------------------------------

// Plays the user's move (SAN, UCI or { from, to, promotion }); false when it is not legal here.
function play(move) {
  let made;
  try {
    made = game.move(move);
  } catch {
    return false;
  }
  if (!made) return false;
  clearMessage();
  afterChange(false);
  return true;
}

function parseTypedMove(text) {
  const uci = /^([a-h][1-8])-?([a-h][1-8])([qrbn])?$/i.exec(text);
  if (uci) return { from: uci[1].toLowerCase(), to: uci[2].toLowerCase(), promotion: (uci[3] || "q").toLowerCase() };
  return text;
}

// Redraws what depends on the position, saves the game and lets the engine go on.
function afterChange(redraw = true) {
  if (redraw) board.setPosition(game.fen(), true);
  renderMoves();
  $("fen-input").value = "";
  $("fen-input").placeholder = game.fen();
  save();
  showGameEnd();
  if (analysing) whenIdle(startAnalysis);
  else maybeEngineMove();
}

function showGameEnd() {
  let end = "";
  if (game.isCheckmate()) end = `Checkmate: ${game.turn() === "w" ? "Black" : "White"} wins.`;
  else if (game.isStalemate()) end = "Stalemate: a draw.";
  else if (game.isThreefoldRepetition()) end = "Threefold repetition: a draw.";
  else if (game.isInsufficientMaterial()) end = "Insufficient material: a draw.";
  else if (game.isDraw()) end = "Fifty-move rule: a draw.";
  if (end) showMessage(end, "note");
}

function renderMoves() {
  const list = $("moves");
  list.replaceChildren();
  const history = game.history();
  const firstBlack = history.length && game.history({ verbose: true })[0].color === "b";
  const moves = firstBlack ? ["…", ...history] : history;
  for (let i = 0; i < moves.length; i += 2) {
    const item = document.createElement("li");
    item.textContent = moves.slice(i, i + 2).join(" ");
    list.append(item);
  }
  list.scrollTop = list.scrollHeight;
}

function newGame(fen) {
  cancelTask();
  game = fen ? new Chess(fen) : new Chess();
  gameId++;
  clearLines();
  clearMessage();
  afterChange();
}

function save() {
  try {
    sessionStorage.setItem(stored, JSON.stringify({ pgn: game.pgn(), colour: userColour() }));
  } catch {
    // storage full or refused: the game goes on unsaved
  }
}

function restore() {
  try {
    const saved = JSON.parse(sessionStorage.getItem(stored) || "null");
    if (!saved) return;
    const loaded = new Chess();
    loaded.loadPgn(saved.pgn);
    game = loaded;
    if (saved.colour) $("colour").value = saved.colour;
  } catch {
    // a saved game that does not load is dropped
  }
}

// The position as the engine is told it: the FEN after the last capture or pawn move, then the
// moves since, so that the engine sees repetitions and the command stays short.
function positionCommand() {
  const history = game.history({ verbose: true });
  let from = history.length;
  while (from > 0 && !history[from - 1].captured && history[from - 1].piece !== "p") from--;
  const base = from > 0 ? history[from - 1].after : history.length ? history[0].before : game.fen();
  const moves = history.slice(from).map((m) => m.lan);
  return `position fen ${base}${moves.length ? ` moves ${moves.join(" ")}` : ""}`;
}

// ---- the engine's tasks ---------------------------------------------------------------------

let engine = null; // started once the page knows whether it is isolated

// Runs `start` now if the engine is idle, else after the running task, which it stops unless
// `interrupt` is false. Each start checks again what it is for, since the game may have moved on.
function whenIdle(start, interrupt = true) {
  if (!engineUp) return;
  if (!current) {
    start();
    return;
  }
  queued.push(start);
  if (interrupt) stopTask(false);
}

function stopTask(cancel) {
  if (!current || current.kind === "explain" || current.kind === "check") return;
  if (cancel) current.cancelled = true;
  if (!current.stopping) {
    current.stopping = true;
    engine.send("stop");
  }
}

function cancelTask() {
  stopTask(true);
}

function begin(task, lines) {
  current = task;
  for (const line of lines) engine.send(line);
  updateButtons();
}

function onEngineLine(line) {
  if (line.startsWith("info string") && !(current && current.kind === "check")) {
    const said = line.slice(12);
    if (/memory/.test(said))
      showMessage(`The browser did not give the engine the memory it asked for: ${said}. A smaller table (Table) works.`);
    else showMessage(`Engine: ${said}`, "note");
  }
  if (!current) return;
  if (current.kind !== "explain" && line.startsWith("info ") && / pv /.test(line)) showInfo(line, current);
  current.lines.push(line);
  if (!current.ends(line)) return;
  const done = current;
  current = null;
  done.done(line);
  while (!current && queued.length) queued.shift()();
  updateButtons();
}

function searchTask(kind, extra) {
  return {
    kind,
    gameId,
    ply: game.history().length,
    root: new Chess(game.fen()),
    lines: [],
    ends: (line) => line.startsWith("bestmove"),
    ...extra,
  };
}

function maybeEngineMove() {
  if (!engineUp || analysing || game.isGameOver()) return;
  if (userColour() === "none" || game.turn() === userColour()) return;
  whenIdle(startEngineMove);
}

function startEngineMove() {
  if (analysing || game.isGameOver() || userColour() === "none" || game.turn() === userColour()) return;
  clearLines();
  const task = searchTask("move", {
    done(line) {
      const move = line.split(/\s+/)[1];
      if (task.cancelled || task.gameId !== gameId || task.ply !== game.history().length) return;
      if (!move || move === "0000" || move === "(none)") return;
      try {
        game.move({ from: move.slice(0, 2), to: move.slice(2, 4), promotion: move[4] });
      } catch {
        showMessage(`The engine answered a move this page cannot play: ${move}`);
        return;
      }
      afterChange();
    },
  });
  begin(task, [positionCommand(), `go movetime ${$("movetime").value}`]);
}

function startAnalysis() {
  if (!analysing) return;
  clearLines();
  const task = searchTask("analysis", { done() {} });
  begin(task, [positionCommand(), "go infinite"]);
}

function explain() {
  const fen = game.fen();
  whenIdle(() =>
    begin(
      {
        kind: "explain",
        lines: [],
        ends: (line) => line.startsWith("boardscore:"),
        done() {
          drawExplanation(this.lines, fen);
        },
      },
      [`position fen ${fen}`, "boardscore"],
    ),
  );
}

// Asks the engine whether it takes `fen`, then sets up the position only if it does.
function checkAndSetPosition(fen) {
  whenIdle(() =>
    begin(
      {
        kind: "check",
        lines: [],
        ends: (line) => line === "readyok",
        done() {
          const refusal = this.lines.find((l) => l.startsWith("info string"));
          if (refusal) showMessage(`The engine refuses this FEN (${refusal.slice(12)}); the game goes on.`);
          else newGame(fen);
        },
      },
      [`position fen ${fen}`, "isready"],
    ),
  );
}

// ---- the analysis panel ---------------------------------------------------------------------

const shownLines = new Map();

function clearLines() {
  shownLines.clear();
  $("lines").tBodies[0].replaceChildren();
}

// Score in pawns from White's view; the engine gives it from the side to move's.
function formatScore(kind, value, whiteToMove) {
  const white = whiteToMove ? value : -value;
  if (kind === "mate") return `#${white}`;
  const pawns = (white / 100).toFixed(2);
  return white > 0 ? `+${pawns}` : pawns;
}

function sanLine(root, uciMoves) {
  const board = new Chess(root.fen());
  const parts = [];
  for (const uci of uciMoves.slice(0, 16)) {
    const number = board.moveNumber();
    const white = board.turn() === "w";
    let move;
    try {
      move = board.move({ from: uci.slice(0, 2), to: uci.slice(2, 4), promotion: uci[4] });
    } catch {
      break;
    }
    if (white) parts.push(`${number}. ${move.san}`);
    else parts.push(parts.length ? move.san : `${number}… ${move.san}`);
  }
  return parts.join(" ");
}

function showInfo(line, task) {
  const words = line.split(/\s+/);
  const field = (name) => {
    const at = words.indexOf(name);
    return at >= 0 ? words[at + 1] : undefined;
  };
  const at = words.indexOf("score");
  if (at < 0) return;
  const multipv = Number(field("multipv") || 1);
  const pv = words.slice(words.indexOf("pv") + 1);
  shownLines.set(multipv, {
    depth: field("depth"),
    score: formatScore(words[at + 1], Number(words[at + 2]), task.root.turn() === "w"),
    line: sanLine(task.root, pv),
  });
  const body = $("lines").tBodies[0];
  body.replaceChildren();
  for (const key of [...shownLines.keys()].sort((a, b) => a - b)) {
    const shown = shownLines.get(key);
    const row = body.insertRow();
    for (const text of [shown.depth, shown.score, shown.line]) row.insertCell().textContent = text;
  }
}

// ---- the explain panel ----------------------------------------------------------------------

function drawExplanation(lines, fen) {
  const terms = new Map();
  let total = null;
  for (const line of lines) {
    const term = /^(White|Black) (.+): (-?\d+)$/.exec(line);
    if (term) {
      const entry = terms.get(term[2]) || { White: 0, Black: 0 };
      entry[term[1]] = Number(term[3]);
      terms.set(term[2], entry);
    }
    const sum = /^boardscore: (-?\d+)$/.exec(line);
    if (sum) total = Number(sum[1]);
  }
  const whiteToMove = fen.split(" ")[1] === "w";
  const chart = $("explain-chart");
  chart.replaceChildren();
  const heading = document.createElement("p");
  heading.className = "total";
  heading.textContent = `Evaluation ${formatScore("cp", total, whiteToMove)} (pawns, White's view)`;
  chart.append(heading);
  const largest = Math.max(1, ...[...terms.values()].flatMap((e) => [Math.abs(e.White), Math.abs(e.Black)]));
  const quiet = [];
  for (const [name, values] of terms) {
    if (!values.White && !values.Black) {
      quiet.push(name);
      continue;
    }
    const row = document.createElement("div");
    row.className = `term${/Penalty/.test(name) ? " penalty" : ""}`;
    row.dataset.term = name;
    const bar = (side) => {
      const cell = document.createElement("span");
      cell.className = `bar ${side.toLowerCase()}`;
      const fill = document.createElement("span");
      fill.style.width = `${(100 * Math.abs(values[side])) / largest}%`;
      cell.title = `${side}: ${values[side]}`;
      cell.append(fill, document.createTextNode(String(values[side])));
      return cell;
    };
    const label = document.createElement("span");
    label.className = "name";
    label.textContent = name;
    row.append(bar("White"), label, bar("Black"));
    chart.append(row);
  }
  if (quiet.length) {
    const note = document.createElement("p");
    note.className = "hint";
    note.textContent = `Zero for both sides: ${quiet.join(", ")}.`;
    chart.append(note);
  }
}

// ---- controls -------------------------------------------------------------------------------

function updateButtons() {
  const searching = !!current && (current.kind === "move" || current.kind === "analysis");
  $("stop").disabled = !searching;
  $("analyse").disabled = !engineUp || analysing;
  $("explain").disabled = !engineUp;
  if (!engineUp) return;
  if (current && current.kind === "move") setState("Korvane is thinking…");
  else if (analysing) setState("analysing");
  else setState("ready");
}

$("new-game").addEventListener("click", () => {
  analysing = false;
  newGame();
});

$("take-back").addEventListener("click", () => {
  cancelTask();
  if (!game.history().length) return;
  game.undo();
  // Against the engine, take back to the user's own turn.
  if (!analysing && engineUp && userColour() !== "none" && game.turn() !== userColour() && game.history().length)
    game.undo();
  gameId++;
  clearMessage();
  afterChange();
});

$("flip").addEventListener("click", () => {
  board.setOrientation(board.getOrientation() === COLOR.white ? COLOR.black : COLOR.white, true);
});

$("colour").addEventListener("change", () => {
  if (userColour() !== "none") board.setOrientation(userColour() === "b" ? COLOR.black : COLOR.white);
  save();
  maybeEngineMove();
});

$("move-form").addEventListener("submit", (event) => {
  event.preventDefault();
  const text = $("move-input").value.trim();
  if (!text) return;
  if (!userMayMove()) {
    showMessage("It is not your move now.");
    return;
  }
  if (play(parseTypedMove(text))) {
    board.setPosition(game.fen(), true);
    $("move-input").value = "";
  } else {
    showMessage(`"${text}" is not a legal move in this position; the game goes on.`);
  }
});

$("fen-form").addEventListener("submit", (event) => {
  event.preventDefault();
  const fen = $("fen-input").value.trim().replace(/\s+/g, " ");
  if (!fen) return;
  const verdict = validateFen(fen);
  if (!verdict.ok) {
    showMessage(`That FEN is not a position: ${verdict.error} The game goes on.`);
    return;
  }
  analysing = false;
  if (engineUp) checkAndSetPosition(fen);
  else newGame(fen);
});

async function copy(text, what) {
  try {
    await navigator.clipboard.writeText(text);
    showMessage(`${what} copied.`, "note");
  } catch {
    showMessage(`${what}: ${text}`, "note");
  }
}

$("copy-fen").addEventListener("click", () => copy(game.fen(), "FEN"));

function pgnText() {
  const copyOf = new Chess();
  copyOf.loadPgn(game.pgn());
  copyOf.setHeader("Event", "Korvane in the browser");
  copyOf.setHeader("Date", new Date().toISOString().slice(0, 10).replaceAll("-", "."));
  const you = userColour();
  if (engineUp && you !== "none") {
    copyOf.setHeader("White", you === "w" ? "You" : "Korvane");
    copyOf.setHeader("Black", you === "b" ? "You" : "Korvane");
  }
  return copyOf.pgn();
}

$("copy-pgn").addEventListener("click", () => copy(pgnText(), "PGN"));

$("save-pgn").addEventListener("click", () => {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([`${pgnText()}\n`], { type: "application/x-chess-pgn" }));
  link.download = "korvane-game.pgn";
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 1000);
});

$("analyse").addEventListener("click", () => {
  analysing = true;
  whenIdle(startAnalysis);
  updateButtons();
});

$("stop").addEventListener("click", () => {
  const wasAnalysing = analysing;
  analysing = false;
  stopTask(false);
  updateButtons();
  if (wasAnalysing) whenIdle(() => maybeEngineMove());
});

// Sets an engine option between tasks: an analysis restarts with it, a move being chosen is not
// cut short.
function setOption(name, value) {
  whenIdle(
    () => {
      engine.send(`setoption name ${name} value ${value}`);
      if (analysing) startAnalysis();
    },
    !(current && current.kind === "move"),
  );
}

$("multipv").addEventListener("change", () => setOption("MultiPV", $("multipv").value));
$("hash").addEventListener("change", () => setOption("Hash", $("hash").value));
$("explain").addEventListener("click", explain);

function engineStopped(why) {
  engineUp = false;
  current = null;
  queued = [];
  analysing = false;
  setState("engine stopped");
  showMessage(`${why} The game is kept.`);
  updateButtons();
}

// ---- start ----------------------------------------------------------------------------------

restore();
board.setPosition(game.fen());
$("fen-input").placeholder = game.fen(); // the shown position's FEN, greyed, until one is typed
if (userColour() === "b") board.setOrientation(COLOR.black);
renderMoves();
updateButtons();

function startUp() {
  engine = pageEngine || startEngine(["--uci"]);
  const { send, listen, ready, ended } = engine;
  window.korvane = { send, listen, ready, ended, start: startEngine };
  engine.listen(onEngineLine);
  engine.ended.then(
    () => engineStopped("The engine has ended (it was told to quit); reload the page to start it again."),
    (error) => engineUp && engineStopped(`The engine stopped: ${error.message}. Reload the page to start it again.`),
  );
  engine.ready.then(
    () => {
      engineUp = true;
      updateButtons();
    },
    (error) => {
      setState("engine unavailable");
      const why =
        typeof SharedArrayBuffer !== "function" || !window.crossOriginIsolated
          ? "The engine needs SharedArrayBuffer, which this browser gives only to a cross-origin isolated page, and this page could not be isolated (its host sends no isolation headers and the service worker could not add them)."
          : `The engine could not start: ${error.message}.`;
      showMessage(`${why} You can still play both sides on the board.`);
    },
  );
  window.addEventListener("pagehide", () => engine.terminate());
}

// While the isolation service worker is being installed the page is about to reload; it starts
// the engine only if that fails.
if (window.korvaneIsolation === "reloading") window.addEventListener("korvane-isolation", startUp, { once: true });
else startUp();
