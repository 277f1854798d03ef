"""Plays the engine against itself through pipes, as a tournament manager does, and checks that
every bestmove is a legal move of its position.

Usage: selfplay.py ENGINE [--games N] [--plies N] [--clock MS] [--increment MS] [--seed N]
"""
import argparse
import random
import sys
import time

from uci_engine import Engine

# Openings to vary the games: a few plies played before the engines take over.
OPENINGS = ["", "e2e4", "d2d4", "c2c4", "g1f3", "e2e4 c7c5", "e2e4 e7e5 g1f3", "d2d4 d7d5 c2c4",
            "e2e4 e7e6 d2d4 d7d5", "b1c3 g8f6", "f2f4 e7e5", "e2e4 d7d5 e4d5 d8d5"]


def play_game(white, black, opening, args):
    moves = opening.split()
    clocks = {"w": args.clock, "b": args.clock}
    keys = {}
    for engine in (white, black):
        engine.send("ucinewgame\n")
    while True:
        side = "w" if len(moves) % 2 == 0 else "b"
        engine = white if side == "w" else black
        position = "position startpos" + (" moves " + " ".join(moves) if moves else "")
        engine.send(position + "\n")
        legal = engine.legal_moves()
        if not legal:
            engine.send("go depth 1\n")
            best = engine.read_until("bestmove", 30)[-1]
            engine.read_until("elapsed time:", 5)
            if best != "bestmove 0000\r\n":
                raise AssertionError("no legal move, yet " + best)
            return "mate or stalemate", len(moves)
        engine.send("boardkey\n")
        key = engine.read_until("static  key:", 5)[-1].split()[-1]
        keys[key] = keys.get(key, 0) + 1
        if keys[key] >= 3:
            return "repetition", len(moves)
        if len(moves) >= args.plies:
            return "move limit", len(moves)
        go = "go wtime %d btime %d winc %d binc %d" % (
            clocks["w"], clocks["b"], args.increment, args.increment)
        started = time.monotonic()
        infos, best, _ = engine.search(go, timeout=30)
        used = int((time.monotonic() - started) * 1000)
        clocks[side] = max(1, clocks[side] - used) + args.increment
        move = best.split()[1]
        if not best.endswith("\r\n") or move not in legal:
            raise AssertionError("illegal bestmove %r after %r; legal %r" % (best, moves, legal))
        moves.append(move)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("engine")
    parser.add_argument("--games", type=int, default=2)
    parser.add_argument("--plies", type=int, default=60)
    parser.add_argument("--clock", type=int, default=2000)
    parser.add_argument("--increment", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    rng = random.Random(args.seed)
    white, black = Engine(args.engine), Engine(args.engine)
    total_plies = 0
    try:
        for game in range(args.games):
            opening = rng.choice(OPENINGS)
            result, plies = play_game(white, black, opening, args)
            total_plies += plies
            print("game %d: %s after %d plies (opening %r)" % (game + 1, result, plies, opening))
            sys.stdout.flush()
            white, black = black, white
        for engine in (white, black):
            engine.send("quit\n")
            if engine.wait(10) != 0:
                raise AssertionError("engine exit status")
    finally:
        white.kill()
        black.kill()
    print("%d games, %d plies, every move legal" % (args.games, total_plies))


if __name__ == "__main__":
    main()
