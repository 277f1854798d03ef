"""Integration cases of the engine over pipes. Usage: uci_pipes.py ENGINE CASE [SESSION]

`session NAME` runs one session of sessions.txt: its input lines (after "> ") are written to the
engine in one go, and everything the engine writes must equal the lines that follow them, with
each CR shown as \\r and the figures of elapsed times masked. `record` rewrites that output from
the engine as it is, for a deliberate change of behaviour.
"""
import difflib
import os
import re
import resource
import subprocess
import sys
import time

from uci_engine import EMULATOR, Engine, command, run, run_in_turns, without_times

START_KEY = "463b96181691fc9c"
LONG_SEARCH = "go depth 12"  # no time limit: only stop, quit or twelve iterations end it


def expect(condition, message):
    if not condition:
        raise AssertionError(message)


def start_long_search(e):
    e.send("position startpos\n" + LONG_SEARCH + "\n")
    e.read_until("info depth 3", 30)


def case_stop_is_prompt(path):
    e = Engine(path)
    start_long_search(e)
    time.sleep(0.2)
    sent = time.monotonic()
    e.send("stop\n")
    lines = e.read_until("bestmove", 10)
    took = time.monotonic() - sent
    expect(took < 0.2, "stop took %.3f s" % took)
    expect(all(l.startswith("info depth") for l in lines[:-1]), lines)
    e.read_until("elapsed time:", 5)
    # The stop has no lasting effect: the next search runs normally.
    e.send("position startpos\ngo depth 2\n")
    lines = e.read_until("bestmove ", 10)
    expect(len(lines) == 3 and lines[0].startswith("info depth 1 "), lines)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_lines_wait_for_bestmove(path):
    e = Engine(path)
    start_long_search(e)
    # A line sent during the search runs after it; the stop in the same write takes effect.
    e.send("isready\nposition startpos moves e2e4\nstop\n")
    lines = e.read_until("readyok", 10)
    expect(lines[-2].startswith("elapsed time:"), lines)
    expect(any(l.startswith("bestmove") for l in lines), lines)
    e.send("boardkey\n")
    key = e.read_until("static  key:", 5)[-1]
    expect(START_KEY not in key, "position ran after bestmove: " + key)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_stop_drops_rest_of_chunk(path):
    e = Engine(path)
    start_long_search(e)
    e.send("stop\nposition startpos moves e2e4\n")
    e.read_until("elapsed time:", 10)
    e.send("boardkey\n")
    key = e.read_until("static  key:", 5)[-1]
    expect(START_KEY in key, "the line behind stop should be lost: " + key)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_quit_in_two_pieces(path):
    e = Engine(path)
    start_long_search(e)
    e.send("qu")
    time.sleep(0.1)
    e.send("it\n")
    e.read_until("elapsed time:", 10)
    expect(e.wait(10) == 0, "exit status")


def case_line_begun_during_search_ends_after_it(path):
    e = Engine(path)
    e.send("position startpos\ngo depth 4\nqu")
    e.read_until("elapsed time:", 30)
    time.sleep(0.2)
    e.send("it\n")
    expect(e.wait(10) == 0, "exit status")


def case_quit_during_search(path):
    e = Engine(path)
    start_long_search(e)
    sent = time.monotonic()
    e.send("quit\n")
    e.read_until("bestmove", 10)
    e.read_until("elapsed time:", 5)
    expect(e.wait(10) == 0, "exit status")
    expect(time.monotonic() - sent < 1.0, "quit was slow")


def case_upper_case_quit_only_stops(path):
    e = Engine(path)
    start_long_search(e)
    e.send("QUIT\n")
    e.read_until("elapsed time:", 10)
    e.send("isready\n")
    e.read_until("readyok", 10)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_sixty_fifth_line_is_lost(path):
    e = Engine(path)
    start_long_search(e)
    e.send("".join("isready\n" for _ in range(70)) + "stop\n")
    e.read_until("elapsed time:", 10)
    e.send("uci\n")
    lines = e.read_until("uciok", 10)
    ready = sum(1 for l in lines if l == "readyok\r\n")
    expect(ready == 64, "%d readyok lines" % ready)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_long_line_is_cut(path):
    e = Engine(path)
    start_long_search(e)
    # Only the first 16383 characters count: the move at the end falls away.
    line = "position startpos moves" + " " * 19990 + "e2e4\n"
    e.send(line)
    time.sleep(0.1)
    e.send("stop\n")
    e.read_until("elapsed time:", 10)
    e.send("boardkey\n")
    key = e.read_until("static  key:", 5)[-1]
    expect(START_KEY in key, key)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_input_ends_during_search(path):
    e = Engine(path)
    e.send("position startpos\ngo movetime 400\n")
    sent = time.monotonic()
    e.close_input()
    lines = e.read_until("bestmove", 10)
    took = time.monotonic() - sent
    expect(took > 0.3, "the search ended early, after %.3f s" % took)
    expect(e.wait(10) == 0, "exit status")


def expect_run(path, text, wanted, status=0):
    out, code = run(path, text)
    expect(out == wanted, (text[:60], out[:400]))
    expect(code == status, "exit status %d" % code)


def case_raw_input(path):
    # Empty lines, lone CRs and blanks call nothing; CR LF ends a line like LF; the last line
    # needs no line end; 16383 characters make one command and the rest of the line the next.
    expect_run(path, "", "")
    expect_run(path, "\n\r\n\r\r\n   \n\t\nisready\r\n", "readyok\r\n")
    expect_run(path, "isready", "readyok\r\n")
    expect_run(path, " " * (16383 - 7) + "isready" + "isready\n", "readyok\r\nreadyok\r\n")
    expect_run(path, "x" * 20000 + "\nisready\n", "readyok\r\n")
    # The bare limits (go infinite) and a movetime beyond every integer end by themselves.
    out, code = run(path, "position startpos moves e2e4 e7e5\ngo infinite\n"
                    "go movetime 99999999999999999999\n", 30)
    expect(out.count("bestmove ") == 2 and code == 0, out)


def case_bench(path):
    # The counts themselves are pinned beside the positions and checked by the search
    # benchmark; here, the form that testing frameworks read: a line per position, then the
    # total, the only line that holds "nodes" or "nps".
    done = subprocess.run(command(path, ["bench"]), stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, timeout=300)
    expect(done.returncode == 0, "exit status %d" % done.returncode)
    lines = done.stdout.decode().split("\n")
    expect(lines[-1] == "" and len(lines) == 14, lines)
    expect(not any("nodes" in l or "nps" in l for l in lines[:-2]), lines)
    last = re.fullmatch(r"(\d+) nodes (\d+) nps", lines[-2])
    each = [re.search(r"alpha-beta +(\d+) +quiescence +(\d+)", l) for l in lines[:-2]]
    expect(last and int(last.group(2)) > 0 and all(each), lines)
    expect(int(last.group(1)) == sum(int(m.group(1)) + int(m.group(2)) for m in each), lines)


SESSIONS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "sessions.txt")


def read_sessions():
    """The session table: {name: (arguments, input, expected output)}, in file order."""
    sessions, name = {}, None
    for line in open(SESSIONS, encoding="latin-1").read().split("\n")[:-1]:
        if line.startswith("=== "):
            name, *args = line[4:].split()
            sessions[name] = (args, [], [])
        elif line.startswith("# ") or name is None:
            continue
        elif line.startswith(">"):
            sessions[name][1].append(line[2:] + "\n")
        else:
            sessions[name][2].append(line + "\n")
    return {k: (a, "".join(i), "".join(o)) for k, (a, i, o) in sessions.items()}


def session_output(path, args, text):
    # The standard dialect's sessions are written in turns, a GUI's way.
    out, code = (run_in_turns if "--uci" in args else run)(path, text, args=args)
    expect(code == 0, "exit status %d" % code)
    return without_times(out).replace("\r", "\\r")


def case_session(path, name):
    args, text, wanted = read_sessions()[name]
    out = session_output(path, args, text)
    if out != wanted:
        diff = difflib.unified_diff(wanted.split("\n"), out.split("\n"), "expected", "engine",
                                    lineterm="", n=2)
        raise AssertionError("session %s differs:\n%s" % (name, "\n".join(diff)))


def record_sessions(path):
    """Writes each session's output as the engine gives it now into the table."""
    text, sessions = open(SESSIONS, encoding="latin-1").read(), read_sessions()
    head = text[:re.search(r"^=== ", text, re.M).start()]
    body = []
    for block in text[len(head):].split("\n=== "):
        block = block[4:] if block.startswith("=== ") else block
        name = block.split()[0]
        kept = [l for l in block.split("\n")[1:] if l.startswith((">", "# "))]
        body.append("=== " + block.split("\n")[0] + "\n" + "".join(l + "\n" for l in kept)
                    + session_output(path, *sessions[name][:2]))
    open(SESSIONS, "w", encoding="latin-1").write(head + "".join(body))

DIALOGUES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "dialogues.txt")
# How much longer than a native release build the engine may take where that is slower: under
# the sanitizers or an emulator (CMake sets it). Only upper bounds of time are scaled.
TIME_SCALE = float(os.environ.get("KORVANE_TIME_SCALE", "1"))


def read_dialogue(name):
    """The arguments and steps of one dialogue of dialogues.txt."""
    args, steps, inside = None, [], False
    for line in open(DIALOGUES).read().split("\n"):
        if line.startswith("=== "):
            inside = line.split()[1] == name
            if inside:
                args = line.split()[2:]
        elif inside and line and not line.startswith("# "):
            steps.append(line)
    return args, steps


def expand(text):
    return re.sub(r"\{(\d+)\*(.)\}", lambda m: m.group(2) * int(m.group(1)), text)


def case_dialogue(path, name):
    args, steps = read_dialogue(name)
    expect(args is not None, "no dialogue " + name)
    e = Engine(path, args=args)
    last, mark, ended = [], time.monotonic(), time.monotonic()
    pv, best, pending = None, None, ""
    for n, step in enumerate(steps + ["flush"]):
        where = "%s step %d: %s" % (name, n + 1, step[:80])
        head, _, rest = step.partition(" ")
        if head == ">-":
            pending += expand(rest)
            continue
        if head.startswith(">"):
            pending += expand(rest + "\n") * int(head[1:] or 1)
            continue
        if pending:
            e.send(pending)
            pending, mark = "", time.monotonic()
        if head.startswith("<"):
            last = []
            for _ in range(int(head[1:] or 1)):
                last += e.read_until(rest, 10)
            ended = time.monotonic()
            for line in last:
                if line.startswith("info depth") and " pv " in line:
                    pv = line.split(" pv ")[1].split()[0]
                elif line.startswith("bestmove"):
                    best = (line.split()[1], pv)
        elif head == "lacks":
            expect(not any(rest in l for l in last), (where, last))
        elif head == "has":
            expect(any(rest in l for l in last), (where, last))
        elif head == "=":
            expect(last and last[-1].rstrip("\n") == rest, (where, last[-1:]))
        elif head == "took":
            took = (ended - mark) * 1000
            op, limit = rest.split()
            expect(took < float(limit) * TIME_SCALE if op == "<" else took > float(limit),
                   "%s: took %.0f ms" % (where, took))
        elif head == "pv":
            expect(best and best[0] == best[1], (where, best))
        elif head == "legal":
            e.send("%s moves %s\nisready\n" % (rest, best[0]))
            expect(e.read_until("readyok", 10) == ["readyok\n"], (where, best))
        elif head == "wait":
            time.sleep(float(rest) / 1000)
        elif head == "close":
            e.close_input()
            mark = time.monotonic()
        elif head == "exit":
            status = e.wait(10)
            took = (time.monotonic() - mark) * 1000
            expect(status == 0 and took < float(rest) * TIME_SCALE, "%s: status %d after %.0f ms"
                   % (where, status, took))
        elif head != "flush":
            raise AssertionError("unknown step " + where)


def case_standard_searches(path):
    # An analysis answers isready at once and ends only at stop, even after its deepest
    # iteration; ponderhit turns a ponder search into a timed one; stop and quit end perft.
    e = Engine(path, args=["--uci"])
    e.send("isready\nposition fen 6k1/5ppp/8/8/8/8/8/R5K1 w - - 0 1\ngo infinite\n")
    e.read_until("info depth 63 ", 10)
    e.send("isready\n")
    expect(e.read_until("readyok", 1) == ["readyok\n"], "isready during the analysis")
    expect(e.read_line(0.3) is None, "an analysis answered before stop")
    e.send("stop\n")
    expect(e.read_until("bestmove", 1) == ["bestmove a1a8\n"], "stop")
    e.send("position startpos\ngo ponder wtime 3000 btime 3000\n")
    e.read_until("info depth 2 ", 10)
    expect(not [l for l in e.read_lines(0.3) if l.startswith("bestmove")], "ponder answered")
    e.send("ponderhit\n")
    e.read_until("bestmove ", 2)
    e.send("go nodes 3000\n")
    lines = e.read_until("bestmove ", 10)
    expect(int(re.search(r" nodes (\d+) ", lines[-2]).group(1)) <= 3000, lines)
    for ending in ("stop", "quit"):
        e.send("perft 9\n")
        time.sleep(0.3)
        e.send(ending + "\n")
    expect(e.read_until("info string perft stopped", 2)[-1] == "info string perft stopped\n", "")
    expect(e.wait(5) == 0, "exit status after quit")


def case_multipv(path):
    # MultiPV 3 at depth 4 over a table of positions: distinct legal root moves (three, or as
    # many as there are), best first, each line legal, and line 1 the clear best where there is
    # one. The engine itself referees: a line it refuses in `position ... moves` is illegal.
    table = os.path.join(os.path.dirname(os.path.abspath(__file__)), "multipv.txt")
    e = Engine(path, args=["--uci"])
    e.send("setoption name MultiPV value 3\n")
    for row in open(table).read().split("\n"):
        if not row or row.startswith("#"):
            continue
        fen, best = row.split(" | ")
        e.send("position fen %s\nmovlist\nisready\n" % fen)
        legal = len(e.read_until("readyok", 5)) - 1
        e.send("go depth 4\n")
        lines = [l for l in e.read_until("bestmove", 30) if l.startswith("info depth 4 ")]
        moves = [re.search(r" pv (\S+)", l).group(1) for l in lines]
        scores = [int(re.search(r" score (?:cp|mate) (-?\d+)", l).group(1)) for l in lines]
        expect(len(lines) == min(3, legal) and len(set(moves)) == len(moves), (fen, lines))
        mates = [" mate " in l for l in lines]
        expect(mates == sorted(mates, reverse=True), lines)
        if not mates[0]:
            expect(scores == sorted(scores, reverse=True), lines)
        for line in lines:
            e.send("position fen %s moves %s\nisready\n" % (fen, line.split(" pv ")[1].strip()))
            expect(e.read_until("readyok", 5) == ["readyok\n"], ("illegal line", fen, line))
        expect(best == "-" or moves[0] == best, (fen, moves))
    e.send("quit\n")
    expect(e.wait(5) == 0, "exit status")


def case_node_uci(path):
    driver = os.path.join(os.path.dirname(os.path.abspath(__file__)), "node_uci")
    if EMULATOR or not os.path.isdir(os.path.join(driver, "node_modules")):
        print("skipped: node-uci is installed by `npm ci` in %s and drives a native engine"
              % driver)
        sys.exit(77)
    done = subprocess.run(["node", os.path.join(driver, "drive.mjs"), path], timeout=60)
    expect(done.returncode == 0, "node-uci")


def case_allocation_failure(path):
    if EMULATOR:
        print("skipped: an emulator maps far more address space than any limit that would refuse "
              "the hash table")
        sys.exit(77)
    def limit_memory():
        resource.setrlimit(resource.RLIMIT_AS, (256 << 20, 256 << 20))
    e = Engine(path, preexec_fn=limit_memory)
    # The engine may be gone before anything could be written to it: send nothing.
    status = e.wait(10)
    out = e.proc.stdout.read()
    err = e.proc.stderr.read()
    expect(status == 1, "exit status %d" % status)
    expect(err == b"Failed to allocate hash table\r\n", err)
    expect(out == b"", out)


def case_arguments(path):
    def call(*args):
        done = subprocess.run(command(path, args), stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=30)
        return done.stdout.decode(), done.stderr.decode(), done.returncode
    out, err, code = call("--version")
    expect(re.fullmatch(r"Korvane \d+\.\d+\.\d+ \((commit [0-9a-f]+|built outside a git checkout: "
                        r"commit unknown)\)\n", out) and (err, code) == ("", 0), (out, err, code))
    out, err, code = call("--help")
    expect(code == 0 and err == "" and "--lf" in out and "bench" in out and "perft" in out,
           (out, err, code))
    expect(call("-h") == (out, err, code), "-h is --help")
    # An unknown argument, even beside known ones, is named on stderr and nothing runs.
    for args in (["--bogus"], ["--lf", "uci"], ["-lf"]):
        out, err, code = call(*args)
        expect(code == 2 and out == "" and err.count("\n") == 1 and args[-1] in err
               and "--help" in err, (args, out, err, code))


def main():
    path, case, *rest = sys.argv[1:]
    if case == "record":
        record_sessions(path)
        return
    globals()["case_" + case](path, *rest)
    print("ok", case, *rest)


if __name__ == "__main__":
    main()
