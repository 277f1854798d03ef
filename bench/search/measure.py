"""Figures of the engine through pipes: go depth 1 latency, resident memory after twenty
searches and after a game of movetime searches, and the overshoot of go movetime 100.

With --timing instead: the overshoot of 100 go movetime 100 searches in percentiles, by the
engine's own elapsed-time line and as seen through the pipe; how long a stop sent during a long
search takes to bring the bestmove line; and `ENGINE bench` with its wall time.

Usage: measure.py ENGINE [--timing]
"""
import os
import random
import statistics
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tests", "search_pipes"))
from uci_engine import Engine  # noqa: E402

# Varied positions for the movetime searches.
FENS = [
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
    "r1bq1rk1/pp2ppbp/2np1np1/8/3NP3/2N1BP2/PPPQ2PP/R3KB1R w KQ - 0 1",
    "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
    "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
    "8/5pk1/6p1/8/3R4/6P1/5PK1/3r4 w - - 0 1",
    "r1b2rk1/2q1b1pp/p2ppn2/1p6/3QP3/1BN1B3/PPP3PP/R4RK1 w - - 0 1",
    "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8",
    "8/8/8/4k3/8/8/4P3/4K3 w - - 0 1",
    "r1bqkb1r/pppp1ppp/2n2n2/4p3/2B1P3/5N2/PPPP1PPP/RNBQK2R w KQkq - 4 4",
]


def resident_kib(pid, field="VmRSS"):
    with open("/proc/%d/status" % pid) as status:
        for line in status:
            if line.startswith(field + ":"):
                return int(line.split()[1])
    return -1


def percentiles(values):
    """Median, 90th and 99th percentile (nearest rank) and maximum, as text."""
    ordered = sorted(values)

    def rank(p):
        return ordered[max(0, -(-len(ordered) * p // 100) - 1)]
    return "median %.1f, p90 %.1f, p99 %.1f, max %.1f ms" % (
        statistics.median(ordered), rank(90), rank(99), ordered[-1])


def timing(path):
    e = Engine(path)
    engine_over, pipe_over = [], []
    for i in range(100):
        e.send("position fen %s\n" % FENS[i % len(FENS)])
        e.send("isready\n")
        e.read_until("readyok", 10)
        start = time.monotonic()
        _, _, elapsed = e.search("go movetime 100")
        pipe_over.append((time.monotonic() - start) * 1000 - 100)
        engine_over.append(int(elapsed.split()[2]) - 100)
    print("go movetime 100 x100, elapsed minus limit, engine's line: " + percentiles(engine_over))
    print("go movetime 100 x100, elapsed minus limit, through the pipe: " + percentiles(pipe_over))

    stops = []
    rng = random.Random(1)
    for i in range(30):
        e.send("position fen %s\ngo depth 12\n" % FENS[i % len(FENS)])
        e.read_until("info depth 1 ", 10)
        time.sleep(0.15 + rng.random() * 0.2)
        sent = time.monotonic()
        e.send("stop\n")
        e.read_until("bestmove", 10)
        stops.append((time.monotonic() - sent) * 1000)
        e.read_until("elapsed time:", 5)
    print("stop during go depth 12 x30, stop to bestmove through the pipe: " + percentiles(stops))
    e.send("quit\n")
    e.wait(10)

    start = time.monotonic()
    done = subprocess.run([path, "bench"], stdout=subprocess.PIPE, timeout=600)
    took = time.monotonic() - start
    print(done.stdout.decode(), end="")
    print("korvane bench: exit status %d, %.1f s wall" % (done.returncode, took))


def main():
    path = sys.argv[1]
    if sys.argv[2:] == ["--timing"]:
        timing(path)
        return
    e = Engine(path)
    e.send("isready\n")
    e.read_until("readyok", 10)
    print("resident after start-up: %d KiB" % resident_kib(e.proc.pid))

    latencies = []
    for _ in range(20):
        e.send("position startpos\n")
        start = time.monotonic()
        e.search("go depth 1")
        latencies.append((time.monotonic() - start) * 1000)
    print("go depth 1 from the start position, send to bestmove: median %.2f ms, max %.2f ms"
          % (statistics.median(latencies), max(latencies)))
    print("resident after 20 go depth 1: %d KiB" % resident_kib(e.proc.pid))

    overshoot = []
    for i in range(100):
        e.send("position fen %s\n" % FENS[i % len(FENS)])
        start = time.monotonic()
        e.search("go movetime 100")
        overshoot.append((time.monotonic() - start) * 1000 - 100)
    print("go movetime 100, elapsed minus 100 ms over 100 searches: median %.1f ms, max %.1f ms"
          % (statistics.median(overshoot), max(overshoot)))
    print("peak resident after 120 searches: %d KiB" % resident_kib(e.proc.pid, "VmHWM"))
    e.send("quit\n")
    e.wait(10)

    # A game of forty movetime 100 searches in a fresh process.
    g = Engine(path)
    moves = []
    for _ in range(40):
        g.send("position startpos moves %s\n" % " ".join(moves) if moves else "position startpos\n")
        _, best, _ = g.search("go movetime 100")
        move = best.split()[1]
        if move == "0000":
            break
        moves.append(move)
    print("peak resident after a game of %d go movetime 100: %d KiB"
          % (len(moves), resident_kib(g.proc.pid, "VmHWM")))
    g.send("quit\n")
    g.wait(10)


if __name__ == "__main__":
    main()
