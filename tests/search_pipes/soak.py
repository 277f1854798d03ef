"""Plays many games through pipes, as a tournament manager does, and checks the engine all along.

Usage: soak.py ENGINE [--opponent PATH] [--games N] [--plies N] [--clock MS] [--increment MS]
               [--random-plies N] [--seed N] [--hang-seconds S] [--max-rss-mb N]

ENGINE plays against a second process of itself, or against any UCI engine given by --opponent.
Each game starts with ucinewgame from an opening of the list below followed by up to
--random-plies random legal plies; each move is asked for with "position startpos moves ..." and
"go wtime btime winc binc", and the clocks run on the wall time each search took. The engine
(ENGINE, which answers movlist and boardkey) referees every position: each bestmove, of either
side, must be in its movlist; each of its own info lines must have the engine's form. Games end by
mate or stalemate, a third repetition (boardkey) or the ply limit; a search that overruns its
clock is counted and the game goes on.

Abnormal endings: an illegal or malformed bestmove, a malformed info line, a process that dies
(crash) or gives no bestmove within --hang-seconds (hang), a resident size above --max-rss-mb
(leak), and anything a sanitizer writes on standard error. Each is reported with the moves that led
to it; the process concerned is started afresh and the series goes on. The exit status is 1 if
there was any.
"""
import argparse
import os
import random
import re
import select
import sys
import time

from uci_engine import Engine

# Openings to vary the games: a few plies played before the engines take over.
OPENINGS = ["", "e2e4", "d2d4", "c2c4", "g1f3", "e2e4 c7c5", "e2e4 e7e5 g1f3", "d2d4 d7d5 c2c4",
            "e2e4 e7e6 d2d4 d7d5", "b1c3 g8f6", "f2f4 e7e5", "e2e4 d7d5 e4d5 d8d5",
            "e2e4 c7c6 d2d4 d7d5", "d2d4 g8f6 c2c4 e7e6", "e2e4 e7e5 g1f3 b8c6 f1b5 a7a6",
            "d2d4 g8f6 c2c4 g7g6 b1c3 f8g7", "c2c4 e7e5 b1c3 g8f6", "e2e4 g7g6 d2d4 f8g7"]

MOVE = r"[a-h][1-8][a-h][1-8][qrbnk]?"
# The pv field: moves divided by blanks, mostly with a blank after the last one.
INFO = re.compile(r"info depth (\d+) time (\d+) nodes (\d+) score cp (-?\d+) pv (%s(?: %s)* ?)?\n\Z"
                  % (MOVE, MOVE))
BESTMOVE = re.compile(r"bestmove (%s|0000)\r\n\Z" % MOVE)
SANITIZER = re.compile(r"runtime error|AddressSanitizer|LeakSanitizer|UndefinedBehaviorSanitizer")


class Abnormal(Exception):
    def __init__(self, kind, detail, engine):
        super().__init__(detail)
        self.kind, self.detail, self.engine = kind, detail, engine


class Player:
    """One engine process; `korvane` when it is the engine under test (it answers movlist)."""

    def __init__(self, path, korvane):
        self.path, self.korvane = path, korvane
        self.start()

    def start(self):
        self.engine = Engine(self.path)
        self.peak_rss_kb = 0
        self.send("uci\n")
        self.read_until("uciok", 30)
        self.send("isready\n")
        self.read_until("readyok", 30)

    def alive(self):
        return self.engine.proc.poll() is None

    def send(self, text):
        try:
            self.engine.send(text)
        except (BrokenPipeError, OSError):
            raise Abnormal("crash", "the pipe closed (exit status %r)" % self.engine.proc.poll(), self)

    def read_until(self, prefix, timeout):
        try:
            return self.engine.read_until(prefix, timeout)
        except AssertionError as error:
            try:  # an end of output may come just before the exit
                self.engine.proc.wait(1)
            except Exception:
                pass
            kind = "hang" if self.alive() else "crash"
            raise Abnormal(kind, "%s (exit status %r)" % (error, self.engine.proc.poll()), self)

    def rss_kb(self):
        """Resident size now and its peak, from /proc (0 where there is no /proc)."""
        try:
            with open("/proc/%d/status" % self.engine.proc.pid) as status:
                fields = dict(line.split(":", 1) for line in status if ":" in line)
            now, peak = int(fields["VmRSS"].split()[0]), int(fields["VmHWM"].split()[0])
        except (OSError, KeyError, ValueError):
            return 0, 0
        self.peak_rss_kb = max(self.peak_rss_kb, peak)
        return now, peak

    def stop(self, graceful=True):
        """Ends the process, with quit when `graceful`; returns what it wrote on standard error."""
        if graceful and self.alive():
            try:
                self.engine.send("quit\n")
                self.engine.proc.wait(30)
            except Exception:
                pass
        self.engine.kill()
        # Read to the end, but not past a second of silence (a child may hold the pipe open).
        text = b""
        while select.select([self.engine.proc.stderr], [], [], 1)[0]:
            chunk = os.read(self.engine.proc.stderr.fileno(), 65536)
            if not chunk:
                break
            text += chunk
        return text.decode("latin-1")


def search(player, go, hang_seconds):
    """Sends the go line; returns the move. Checks the bestmove line and, for the engine under
    test, every info line."""
    player.send(go + "\n")
    lines = player.read_until("bestmove", hang_seconds)
    best = lines[-1]
    # The engine ends its bestmove line with CR LF and follows it with the elapsed time; another
    # engine may end it with LF alone and may add a ponder move.
    if player.korvane:
        player.read_until("elapsed time:", hang_seconds)
    elif BESTMOVE.match(best.split(" ponder ")[0].rstrip("\r\n") + "\r\n"):
        best = best.split(" ponder ")[0].rstrip("\r\n") + "\r\n"
    if not BESTMOVE.match(best):
        raise Abnormal("bad bestmove", repr(best), player)
    if player.korvane:
        depth = 0
        for line in lines[:-1]:
            match = INFO.match(line)
            if not match or int(match.group(1)) != depth + 1 or int(match.group(1)) > 12:
                raise Abnormal("bad info line", repr(line), player)
            depth += 1
    return best.split()[1]


def play_game(white, black, rng, args, stats):
    moves = OPENINGS[rng.randrange(len(OPENINGS))].split()
    try:
        return play_moves(white, black, moves, rng, args, stats)
    except Abnormal as error:
        error.moves = list(moves)
        raise


def play_moves(white, black, moves, rng, args, stats):
    random_plies = rng.randint(0, args.random_plies)
    clocks = {"w": args.clock, "b": args.clock}
    keys = {}
    for player in (white, black):
        player.send("ucinewgame\n")
    while True:
        side = "w" if len(moves) % 2 == 0 else "b"
        mover = white if side == "w" else black
        referee = mover if mover.korvane else (black if side == "w" else white)
        position = "position startpos" + (" moves " + " ".join(moves) if moves else "")
        referee.send(position + "\n")
        referee.send("movlist\nisready\n")
        legal = [l.strip() for l in referee.read_until("readyok", args.hang_seconds)[:-1]]
        referee.send("boardkey\n")
        key_lines = referee.read_until("current key:", args.hang_seconds)[-2:]
        key = key_lines[0].split()[-1]
        if not key_lines[0].startswith("static  key:") or key_lines[1].split()[-1] != key:
            raise Abnormal("key", "boardkey shows %r" % key_lines, referee)
        keys[key] = keys.get(key, 0) + 1
        if not legal:
            if mover.korvane:  # no move to give: the fallback's 0000
                mover.send(position + "\n")
                if search(mover, "go depth 1", args.hang_seconds) != "0000":
                    raise Abnormal("bad bestmove", "a move where there is none", mover)
            return "mate or stalemate", moves
        if keys[key] >= 3:
            return "repetition", moves
        if len(moves) >= args.plies:
            return "ply limit", moves
        if random_plies > 0:
            moves.append(rng.choice(legal))
            random_plies -= 1
            continue
        if mover is not referee:
            mover.send(position + "\n")
        go = "go wtime %d btime %d winc %d binc %d" % (
            clocks["w"], clocks["b"], args.increment, args.increment)
        started = time.monotonic()
        move = search(mover, go, args.hang_seconds)
        used = int((time.monotonic() - started) * 1000)
        stats["searches"] += 1
        if move not in legal:
            raise Abnormal("illegal move", "bestmove %s not in movlist %r" % (move, legal), mover)
        moves.append(move)
        # A search that overran its clock is counted, and the game goes on with 1 ms left.
        if used >= clocks[side]:
            stats["overruns"] += 1
        clocks[side] = max(1, clocks[side] - used) + args.increment


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("engine")
    parser.add_argument("--opponent", help="another UCI engine (default: ENGINE again)")
    parser.add_argument("--games", type=int, default=2)
    parser.add_argument("--plies", type=int, default=200)
    parser.add_argument("--clock", type=int, default=2000)
    parser.add_argument("--increment", type=int, default=20)
    parser.add_argument("--random-plies", type=int, default=4)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--hang-seconds", type=float, default=20)
    parser.add_argument("--max-rss-mb", type=int, default=1024)
    args = parser.parse_args()
    rng = random.Random(args.seed)
    players = [Player(args.engine, True), Player(args.opponent or args.engine, not args.opponent)]
    stats = {"plies": 0, "searches": 0, "overruns": 0}
    endings, abnormal, stderr_reports = {}, [], []
    started = time.monotonic()
    for game in range(args.games):
        white, black = players[game % 2], players[1 - game % 2]
        try:
            result, moves = play_game(white, black, rng, args, stats)
            endings[result] = endings.get(result, 0) + 1
            stats["plies"] += len(moves)
        except Abnormal as error:
            line = "position startpos moves " + " ".join(error.moves)
            abnormal.append((game + 1, error.kind, error.detail, line))
            print("game %d: ABNORMAL %s: %s after %s" % (game + 1, error.kind, error.detail, line))
            text = error.engine.stop(error.kind != "hang")
            if text:
                stderr_reports.append(text)
                print(text)
            error.engine.start()
            continue
        for player in players:
            _, peak = player.rss_kb()
            if peak > args.max_rss_mb * 1024:
                abnormal.append((game + 1, "leak", "peak resident %d KiB" % peak, ""))
        if (game + 1) % 50 == 0 or game + 1 == args.games:
            now, peak = players[0].rss_kb()
            print("%d games, %d plies, %.0f s; engine resident %d KiB, peak %d KiB" % (
                game + 1, stats["plies"], time.monotonic() - started, now, peak))
            sys.stdout.flush()
    peak = players[0].peak_rss_kb
    for player in players:
        text = player.stop()
        if player.engine.proc.returncode not in (0, None) and not text:
            abnormal.append((0, "exit status", str(player.engine.proc.returncode), ""))
        if text:
            stderr_reports.append(text)
    for text in stderr_reports:
        if SANITIZER.search(text):
            abnormal.append((0, "sanitizer", text[:2000], ""))
    print("games %d, plies %d, searches %d, clock overruns %d, %.0f s" % (
        args.games, stats["plies"], stats["searches"], stats["overruns"],
        time.monotonic() - started))
    print("endings: " + ", ".join("%s %d" % item for item in sorted(endings.items())))
    print("peak resident size of the engine over the session: %d KiB" % peak)
    print("abnormal endings: %d" % len(abnormal))
    for game, kind, detail, line in abnormal:
        print("  game %d: %s: %s %s" % (game, kind, detail, line))
    return 1 if abnormal else 0


if __name__ == "__main__":
    sys.exit(main())
