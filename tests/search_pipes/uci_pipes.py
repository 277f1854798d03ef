"""Integration cases of the engine over pipes. Usage: uci_pipes.py ENGINE CASE"""
import re
import resource
import subprocess
import sys
import time

from uci_engine import Engine, run, without_elapsed, without_time, without_times

START_KEY = "463b96181691fc9c"
LONG_SEARCH = "go depth 12"  # no time limit: only stop, quit or twelve iterations end it


def expect(condition, message):
    if not condition:
        raise AssertionError(message)


def case_reference_lines(path):
    e = Engine(path)
    e.send("uci\nisready\n")
    e.read_until("readyok", 10)
    e.send("position startpos\n")
    infos, best, elapsed = e.search("go depth 5")
    expect([without_time(l) for l in infos] == [
        "info depth 1 time T nodes 21 score cp 476 pv d2d3 \n",
        "info depth 2 time T nodes 66 score cp 131 pv d2d4 d7d5 \n",
        "info depth 3 time T nodes 166 score cp 375 pv e2e4 d7d5 \n",
        "info depth 4 time T nodes 658 score cp 402 pv e2e3 e7e5\n",
        "info depth 5 time T nodes 3116 score cp 419 pv e2e4 d7d5\n"], infos)
    expect(best == "bestmove e2e4\r\n", best)
    expect(elapsed.startswith("elapsed time: ") and elapsed.endswith(" ms\n"), elapsed)
    e.send("position fen 8/8/8/4k3/8/8/4P3/4K3 w - - 0 1\n")
    infos, best, _ = e.search("go depth 6")
    expect([without_time(l) for l in infos] == [
        "info depth 1 time T nodes 8 score cp 128 pv e2e3 \n",
        "info depth 2 time T nodes 26 score cp 101 pv e2e3 e5d6 \n",
        "info depth 3 time T nodes 118 score cp 114 pv e2e3 e5d5 e1d1 d5e4\n",
        "info depth 4 time T nodes 263 score cp 101 pv e2e3 e5d5 e1d1 d5c6 \n",
        "info depth 5 time T nodes 875 score cp 103 pv e2e3 e5d6 e1d1 d6c7 d1c1\n",
        "info depth 6 time T nodes 1396 score cp 103 pv e2e3 e5d6 e1d1 d6c7 e3e4 c7b6 \n"],
        infos)
    expect(best == "bestmove e2e3\r\n", best)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


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
    e.send("position startpos\n")
    infos, best, _ = e.search("go depth 2")
    expect(len(infos) == 2 and best.startswith("bestmove "), infos)
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


def case_odd_go_arguments(path):
    # The limits of every go line are pinned in frontend_tests; here, that a search under the
    # bare limits (go infinite) and one under a movetime beyond every integer end by themselves.
    e = Engine(path)
    e.send("position startpos moves e2e4 e7e5\n")
    for line in ["go infinite", "go movetime 99999999999999999999"]:
        infos, best, _ = e.search(line, 20)
        expect(best.startswith("bestmove ") and best.endswith("\r\n"), best)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


def case_garbled_boards(path):
    e = Engine(path)
    # Without exactly one king of each colour the answer comes at once.
    for fen in ["8/8/8/8/8/8/8/8 w - - 0 1", "k7/8/8/8/8/8/8/KK6 w - - 0 1",
                "8/8/8/8/8/8/8/K7 b - - 0 1", "kk6/8/8/8/8/8/8/K7 w - - 0 1", "8/8/8/8 w - -",
                "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQ1BNR w KQkq - 0 1"]:
        e.send("position fen %s\n" % fen)
        infos, best, _ = e.search("go depth 4", 5)
        expect(infos == [] and best == "bestmove 0000\r\n", (fen, infos, best))
        e.send("sortedmoves\nisready\n")
        expect(e.read_until("readyok", 5) == ["readyok\r\n"], fen)
    e.send("quit\n")
    expect(e.wait(10) == 0, "exit status")


START_MOVES = ["a2a3", "a2a4", "b2b3", "b2b4", "c2c3", "c2c4", "d2d3", "d2d4", "e2e3", "e2e4",
               "f2f3", "f2f4", "g2g3", "g2g4", "h2h3", "h2h4", "b1a3", "b1c3", "g1f3", "g1h3"]


def expect_run(path, text, wanted, status=0):
    out, code = run(path, text)
    expect(out == wanted, (text[:60], out[:400]))
    expect(code == status, "exit status %d" % code)


def case_session_start_and_end(path):
    # Nothing is printed unasked; quit ends the session and the lines behind it are not read.
    expect_run(path, "", "")
    expect_run(path, "uci\nisready\nucinewgame\nposition startpos\nquit\nisready\n",
               "id name Korvane 1.0 \r\nid author Brennik Dolmar\r\nuciok\r\nreadyok\r\n")
    # Empty lines, lone CRs and blanks call nothing; CR LF ends a line like LF; the last line
    # needs no line end.
    expect_run(path, "\n\r\n\r\r\n   \n\t\nisready\r\n", "readyok\r\n")
    expect_run(path, "isready", "readyok\r\n")
    # 16383 characters make one command; the rest of the line is the next command.
    expect_run(path, " " * (16383 - 7) + "isready" + "isready\n", "readyok\r\nreadyok\r\n")
    expect_run(path, "x" * 20000 + "\nisready\n", "readyok\r\n")


def case_movlist_and_perft(path):
    expect_run(path, "movlist\n", "".join(m + "\n" for m in START_MOVES))
    expect_run(path, "position fen 4k3/P7/8/8/8/8/8/4K3 w - - 0 1\nmovlist\n",
               "a7a8q\na7a8r\na7a8b\na7a8n\ne1d1\ne1f1\ne1d2\ne1e2\ne1f2\n")
    # Mate and stalemate list nothing.
    expect_run(path, "position startpos moves f2f3 e7e5 g2g4 d8h4\nmovlist\n"
               "position fen 7k/5Q2/6K1/8/8/8/8/8 b - - 0 1\nmovlist\n", "")
    out, _ = run(path, "perft 2\nperft 1\nperft 0\nperft x\nperft\nperft   \nperft -1\n"
                 "perft -2147483648\n")
    expect(without_elapsed(out) == "".join(m + ": 20\r\n" for m in START_MOVES) + "2=400\n<elapsed>"
           + "".join(m + "\r\n" for m in START_MOVES) + "1=20\n<elapsed>"
           + "0=1\n<elapsed>0=1\n<elapsed>", out)
    # Perft leaves the game as it found it.
    game = "position startpos moves e2e4 c7c5\n"
    before, _ = run(path, game + "boardkey\nmovlist\n")
    after, _ = run(path, game + "perft 2\nboardkey\nmovlist\n")
    expect(without_elapsed(after).split("<elapsed>")[1] == before, after)


def case_boardscore(path):
    out, _ = run(path, "boardscore\n")
    lines = out.split("\n")
    expect(len(lines) == 50 and lines[0] == "White Rook Mobility: 4"
           and lines[24] == "Black Rook Mobility: 4" and lines[48] == "boardscore: 0", out)
    # The score is for the side to move: black here.
    out, _ = run(path, "position fen 2r2rk1/pp2bppp/2n1bn2/q2p4/3P4/P1NBBN2/1PQ2PPP/2R2RK1 b - - 3 15"
                 "\nboardscore\n")
    expect(out.endswith("\nboardscore: -10\n"), out[-100:])


def case_allocation_failure(path):
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


def case_lf_output(path):
    # With --lf every CR LF is a plain LF and nothing else differs, over a whole session.
    session = ("uci\nisready\nposition startpos moves e2e4\ngo depth 4\nprintboard\nperft 2\n"
               "boardscore\nboardkey\nmovlist\nsortedmoves\nhelp\nquit\n")
    crlf, code = run(path, session)
    expect(code == 0, "exit status %d" % code)
    lf, code = run(path, session, args=["--lf"])
    expect(code == 0, "exit status %d" % code)
    crlf, lf = without_times(crlf), without_times(lf)
    expect(crlf.count("\r\n") > 30 and "\r" not in lf, lf[:200])
    expect(lf == crlf.replace("\r\n", "\n"), (crlf[:300], lf[:300]))


def case_arguments(path):
    def call(*args):
        done = subprocess.run([path, *args], stdin=subprocess.DEVNULL, capture_output=True,
                              timeout=30)
        return done.stdout.decode(), done.stderr.decode(), done.returncode
    out, err, code = call("--version")
    expect((out, err, code) == ("Korvane 1.0\n", "", 0), (out, err, code))
    out, err, code = call("--help")
    expect(code == 0 and err == "" and "--lf" in out and "bench" in out, (out, err, code))
    # An unknown argument, even beside known ones, is named on stderr and nothing runs.
    for args in (["--bogus"], ["--lf", "uci"], ["-lf"]):
        out, err, code = call(*args)
        expect(code == 2 and out == "" and err.count("\n") == 1 and args[-1] in err
               and "--help" in err, (args, out, err, code))


# Alpha-beta and quiescence nodes of the benchmark's fixed-depth searches.
BENCH_NODES = 1256603


def case_bench(path):
    done = subprocess.run([path, "bench"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          timeout=300)
    expect(done.returncode == 0, "exit status %d" % done.returncode)
    lines = done.stdout.decode().split("\n")
    expect(lines[-1] == "" and len(lines) == 14, lines)
    # Readers take the first line that holds "nodes" or "nps": only the last may.
    expect(not any("nodes" in l or "nps" in l for l in lines[:-2]), lines)
    last = re.fullmatch(r"(\d+) nodes (\d+) nps", lines[-2])
    expect(last and int(last.group(1)) == BENCH_NODES and int(last.group(2)) > 0, lines[-2])


def main():
    path, case = sys.argv[1], sys.argv[2]
    globals()["case_" + case](path)
    print("ok", case)


if __name__ == "__main__":
    main()
