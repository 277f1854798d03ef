// Applying moves to a copy of a Board (there is no undo), and the history of keys that answers
// the repetition question.
#pragma once

#include <cstdint>

#include "position/board.h"

// Plays `move` (from, to, promoted and promotion are read) for the side to move. A double step
// always sets the en-passant file, and the promoted bit decides a promotion.
void apply_move(Board *board, Move move);

// The same, keeping `*key` up to date. A double step sets the file only when an enemy pawn stands
// beside the arrival square, and a non-zero promotion field decides a promotion.
void apply_move_keyed(Board *board, Move move, std::uint64_t *key);

// The key apply_move_keyed most likely gives after `move`, from a board with key `key` and the
// side to move `white`, read from the move word alone: the castling rook, lost rights, the
// en-passant file and the pawn taken en passant are left out, so for those moves it is wrong.
// Good for fetching the child's table slot early, never for a probe.
std::uint64_t likely_key_after(std::uint64_t key, bool white, Move move);

// The side to move passes.
void apply_null_move(Board *board, std::uint64_t *key);

constexpr int key_history_size = 16384;
extern std::uint64_t key_history[key_history_size];
extern std::int32_t key_history_count;

void push_key(std::uint64_t key);
void pop_key();
void clear_key_history();
// 1 when `key` stands at least three times in the history.
int is_third_repetition(std::uint64_t key);
