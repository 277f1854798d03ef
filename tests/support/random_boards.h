// Random boards for the property and comparison tests and the evaluation benchmark, from the
// caller's fixed seed.
#pragma once

#include <random>
#include <vector>

#include "position/board.h"

// A board that looks like a game position: one king each on squares not side by side (each at
// home half of the time), rooks on their corners half of the time, up to `max_pieces` other
// pieces on free squares, no pawn on the first or last rank; random castling flags and side to
// move, and now and then an en-passant file that no pawn made.
Board random_position(std::mt19937_64 &rng, int max_pieces);

// A board outside every contract: each of the twelve sets drawn on its own, so sets overlap,
// kings may be missing or many, and pawns may stand anywhere.
Board random_garbage(std::mt19937_64 &rng);

// The positions of a game of random legal moves from `start`, `start` included: `plies` moves or
// fewer if the game ends in mate or stalemate first. The moves played go to `moves` when given.
std::vector<Board> random_game(std::mt19937_64 &rng, int plies, const Board &start = start_board,
    std::vector<Move> *moves = nullptr);
