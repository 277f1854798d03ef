// Move ordering: the three sorters, the per-ply counters of moves that raised alpha or cut off,
// and the principal-variation store that the ordering reads and alpha-beta writes.
#pragma once

#include <climits>
#include <cstdint>

#include "position/board.h"

// Room for the standard dialect's deep searches. The fixed dialect's search uses the first 13
// counter rows (deeper nodes read row 12) and lays out its lines 13 cells a row, a line longer than
// its row running on into the next one; counter_rows and pv_stride say what the running search
// uses.
constexpr int counter_plies = 64;
constexpr int pv_rows = 80, pv_columns = 64;
extern int counter_rows; // set from the dialect by each search: 13, or counter_plies
extern int pv_stride; // likewise 13, or pv_columns

// Indexed [ply][from][to], with no colour or piece: a quiet move that raised alpha, or that cut
// off, between those squares at that ply, in any position of the search.
extern std::uint32_t alpha_counts[counter_plies][64][64];
extern std::uint32_t cutoff_counts[counter_plies][64][64];

// Triangular store of the principal variation, one flat array: cell (r, c) is element
// r * pv_stride + c, and row p holds the best line from ply p in columns p and up; a 0 word
// ends a line. pv_length[p] is the column just behind the last move of row p.
extern Move pv_table[pv_rows * pv_columns];
extern std::int32_t pv_length[pv_rows];

inline Move &pv_cell(int row, int column) { return pv_table[row * pv_stride + column]; }

// A move is quiet for the counters when it neither checks, captures nor promotes.
constexpr bool is_quiet(Move m)
{
    return (m & (move_gives_check | move_capture | move_promoted)) == 0;
}

// Two words name the same move when they agree in from, to, promotion and promoted.
constexpr bool same_move(Move a, Move b)
{
    constexpr Move mask = move_promoted | move_promotion_mask | 0xFFF;
    return (a & mask) == (b & mask);
}

// Value of the piece that `move` takes: a pawn for en passant, 0 for a move that takes nothing.
constexpr std::int32_t victim_value(Move move)
{
    return (move & move_en_passant) ? value_of(pawn) : value_of(move_captured(move));
}

// Victim's value minus the attacker's (the king attacks at 0).
std::int32_t capture_gain(Move move);

// Sets both counter tables to 0.
void clear_counters();

// Marks an evaluation that was not worked out; evaluate never comes near this value.
constexpr std::int32_t unknown_eval = INT32_MIN;

// The same evaluation from the other side: evaluate(b, 1) is -evaluate(b, 0) for every board.
constexpr std::int32_t negate_eval(std::int32_t e) { return e == unknown_eval ? e : -e; }

// The full ordering of a node at `ply` with key `key`: the pv move, the hash move, good captures,
// counted quiet moves, bad captures, then the rest by the evaluation after the move. Every move
// of `list` comes out exactly once. When `child_evals` isn't null, it receives for each move of
// the sorted list the evaluation after it from the mover's side, or unknown_eval where none was
// needed.
void order_moves(int ply, const Board &board, MoveList *list, std::uint64_t key,
    std::int32_t *child_evals = nullptr);

// Sorts `list` by the evaluation after each move, from the mover's side, best first; moves of
// equal score keep their order. When `child_evals` isn't null, it receives those evaluations in
// the sorted order (unknown_eval for a list of one move, which needs none).
void order_by_evaluation(const Board &board, MoveList *list, std::int32_t *child_evals = nullptr);

// Gives each move one score (into `scores`, count entries) and sorts `list` by it, best first:
// the pv move 12000, captures 9000 or 5500 plus the gain, counted quiet moves 7000 or 4000 plus
// the count, the rest by evaluation.
void score_moves(int ply, const Board &board, MoveList *list, std::int32_t *scores);
