// Random boards for the comparison tests, from a fixed seed.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "position/board.h"

// A board a game could plausibly reach: one king each on squares not side by side, up to
// `max_pieces` other pieces on free squares, no pawn on the first or last rank, random castling
// flags and side to move.
Board random_position(std::mt19937_64 &rng, int max_pieces);

// A board outside every contract: each of the twelve sets drawn on its own, so sets overlap,
// kings may be missing or many, and pawns may stand anywhere.
Board random_garbage(std::mt19937_64 &rng);

// The positions of a game of random legal moves from the start position, the start included:
// `plies` moves or fewer if the game ends in mate or stalemate first.
std::vector<Board> random_game(std::mt19937_64 &rng, int plies);
