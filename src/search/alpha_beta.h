// Alpha-beta: the principal-variation search over Board copies that every node, root included,
// runs through.
#pragma once

#include <climits>
#include <cstdint>

#include "control/dialect.h"
#include "position/board.h"
#include "search/shortcuts.h"

constexpr std::int32_t mate_score = 10000; // a side mated at ply p scores p - mate_score
constexpr std::int32_t infinity = 2147483647; // the root's window is (-infinity, infinity)

extern std::int32_t node_count; // alpha_beta entries in this search, across iterations
extern std::int32_t iteration_depth; // root depth of the running iteration
extern std::int32_t single_reply; // set when the root has exactly one legal move

// When root_move_count is not -1, the root searches only the legal moves that stand in
// root_moves (MultiPV's later lines, `go searchmoves`).
extern Move root_moves[max_moves];
extern std::int32_t root_move_count;
// The root's best move in the last root search, and its score without the opening steering.
extern Move root_best_move;
extern std::int32_t root_unsteered_score;

// The rules of the tree that the dialect decides: when the fifty-move count draws, whether the
// table's mate scores count from their node (a table kept from search to search) or from the
// root, whether the root trusts its own table entry, and whether a single reply is searched.
void set_tree_rules(const Dialect &dialect);
// Keeps the moves of `list` that stand among the `count` words of `moves`, in their order in the
// list.
void keep_root_moves(MoveList *list, const Move *moves, int count);

// Score of `board` for its side to move, with the shortcuts `s`. `depth` is the remaining depth
// (never negative), `key` the Zobrist key of `board`, `parent_ply` the caller's ply (-1 at the
// root). Fail-soft inside the move loop. Returns 0 at once when search_stop is up; such a score
// means nothing. `known_eval`, when not INT32_MIN (unknown_eval), is evaluate of `board` for its
// side to move, already worked out by the parent's ordering. `known_check` is 1 or 0 when the
// parent knows whether the side to move is in check (the check bit of its move), -1 when it
// doesn't.
// The engine runs it with engine_shortcuts, the tests with no_shortcuts as well.
template <Shortcuts s>
std::int32_t alpha_beta_with(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::uint64_t key, int parent_ply, std::int32_t known_eval, std::int32_t known_check);

// True when the side to move in `board` pushes a pawn straight on to its sixth rank or beyond
// (white) or third or below (black) with no enemy pawn ahead on its own or a neighbouring file.
bool is_passed_pawn_push(const Board &board, Move move);

// True when the side to move has its pieces, castling rights and centre pawns as at the start:
// root moves then get the opening steering.
bool is_opening_root(const Board &board);

// The change that the opening steering makes to a root move's score.
std::int32_t opening_steering(const Board &board, Move move);
