// The alpha-beta node: mate-distance clamp, hash probe, horizon, null move, futility rules,
// extensions, a one-ply late-move reduction, draws and the principal variation.
#include "search/alpha_beta.h"

#include "control/input.h"
#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "movegen/attacks.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "search/tt.h"

std::int32_t node_count = 0;
std::int32_t iteration_depth = 0;
std::int32_t single_reply = 0;

namespace {

constexpr std::int32_t infinity = 2147483647;
constexpr std::uint32_t poll_mask = 0x7FF; // clock and input every 2048th node
constexpr std::int32_t quiescence_budget = 4, quiescence_budget_in_check = 6;
constexpr std::int32_t endgame_material = 2600; // both sides together
constexpr std::int32_t reverse_futility_margin[3] = { 0, 89, 179 };
constexpr std::int32_t futility_margin[3] = { 0, 139, 259 };
constexpr int futility_from_index[3] = { 0, 2, 4 };
constexpr int no_pruning = 9999;

std::int32_t material_of_both(const Board &b)
{
    return value_of(pawn) * square_count(b.white_pawns | b.black_pawns)
        + value_of(knight) * square_count(b.white_knights | b.black_knights)
        + value_of(bishop) * square_count(b.white_bishops | b.black_bishops)
        + value_of(rook) * square_count(b.white_rooks | b.black_rooks)
        + value_of(queen) * square_count(b.white_queens | b.black_queens);
}

bool side_has_pieces(const Board &b)
{
    if (b.white_to_move)
        return (b.white_rooks | b.white_knights | b.white_bishops | b.white_queens) != 0;
    return (b.black_rooks | b.black_knights | b.black_bishops | b.black_queens) != 0;
}

// Takes the child's line at ply + 1 into row `ply`, behind `move`.
void update_pv(int ply, Move move)
{
    pv_cell(ply, ply) = move;
    const int n = pv_length[ply + 1];
    for (int c = ply + 1; c < n; c++) pv_cell(ply, c) = pv_cell(ply + 1, c);
    pv_length[ply] = n;
}

} // namespace

bool is_passed_pawn_push(const Board &board, Move move)
{
    if (move_mover(move) != pawn || (move & move_capture)) return false;
    const int from = move_from(move), to = move_to(move);
    const int file = square_file(to);
    if (square_file(from) != file) return false;
    Bitboard files = file_a << file;
    if (file > 0) files |= files >> 1;
    if (file < 7) files |= files << 1;
    const int rank = square_rank(to);
    if (board.white_to_move) {
        if (rank < 5) return false;
        const Bitboard above = rank == 7 ? 0 : ~Bitboard(0) << (8 * (rank + 1));
        return (board.black_pawns & files & above) == 0;
    }
    if (rank > 2) return false;
    const Bitboard below = (Bitboard(1) << (8 * rank)) - 1;
    return (board.white_pawns & files & below) == 0;
}

bool is_opening_root(const Board &b)
{
    if (b.white_to_move)
        return b.white_rooks == start_board.white_rooks
            && b.white_knights == start_board.white_knights
            && b.white_bishops == start_board.white_bishops
            && b.white_queens == start_board.white_queens && b.white_king == start_board.white_king
            && b.white_oo && b.white_ooo && (b.white_pawns & square_bit(d2))
            && (b.white_pawns & square_bit(e2));
    return b.black_rooks == start_board.black_rooks && b.black_knights == start_board.black_knights
        && b.black_bishops == start_board.black_bishops
        && b.black_queens == start_board.black_queens && b.black_king == start_board.black_king
        && b.black_oo && b.black_ooo && (b.black_pawns & square_bit(d7))
        && (b.black_pawns & square_bit(e7));
}

std::int32_t opening_steering(const Board &board, Move move)
{
    const int mover = move_mover(move), from = move_from(move), to = move_to(move);
    if (mover == knight) return -160;
    if (mover != pawn) return 0;
    if (board.white_to_move) {
        if (from != d2 && from != e2) return 0;
        return to == d4 || to == e4 ? 130 : 70;
    }
    if (from != d7 && from != e7) return 0;
    return to == d5 || to == e5 ? 130 : 70;
}

std::int32_t alpha_beta(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::uint64_t key, int parent_ply, std::int32_t known_eval, std::int32_t known_check)
{
    // Early exits and bookkeeping.
    if (search_stop) return 0;
    const int ply = parent_ply + 1;
    // Rows beyond the table are never read; only long chains of extensions reach them.
    if (ply < pv_rows) pv_length[ply] = ply + 1;
    node_count = std::int32_t(std::uint32_t(node_count) + 1);
    const bool opening_root = ply == 0 && is_opening_root(board);
    if ((std::uint32_t(node_count) & poll_mask) == poll_mask) {
        check_deadline();
        poll_input();
    }

    // Mate-distance clamp: no score here can beat a mate already found nearer the root.
    const std::int32_t entry_alpha = alpha > ply - mate_score ? alpha : ply - mate_score;
    const std::int32_t entry_beta = beta < mate_score - 1 - ply ? beta : mate_score - 1 - ply;
    if (entry_alpha >= entry_beta) return entry_alpha;

    // Hash probe: an entry at least as deep may end the node or narrow its window.
    std::int32_t cur_alpha = entry_alpha, cur_beta = entry_beta;
    HashEntry entry;
    if (hash_probe(key, &entry) && entry.depth >= depth) {
        const std::int32_t s = entry.score;
        if (entry.bound == bound_exact) return s;
        if (entry.bound == bound_lower) cur_alpha = entry_alpha > s ? entry_alpha : s;
        if (entry.bound == bound_upper) cur_beta = entry_beta < s ? entry_beta : s;
        if (cur_alpha >= cur_beta) return s;
    }

    // The check bit of the parent's move answers this where there was one.
    const bool in_check = known_check >= 0 ? known_check != 0 : side_in_check(board);

    // Horizon: quiescence settles the position.
    if (depth == 0) {
        const std::int32_t budget = in_check ? quiescence_budget_in_check : quiescence_budget;
        const std::int32_t score
            = quiescence(board, budget, cur_alpha, cur_beta, known_eval, in_check ? 1 : 0);
        hash_store(key, score, bound_for(score, entry_alpha, entry_beta), 0, 0);
        return score;
    }

    const bool endgame = depth >= 2 && material_of_both(board) <= endgame_material;
    const bool pieces = side_has_pieces(board);

    // Null move: if passing still fails high, so will a real move.
    if (depth > 2 && ply > 0 && !in_check && cur_beta <= mate_score - 1 && pieces) {
        const int reduction = depth > 5 ? 3 : 2;
        Board child = board;
        std::uint64_t child_key = key;
        apply_null_move(&child, &child_key);
        const std::int32_t score
            = -alpha_beta(child, depth - 1 - reduction, -cur_beta, 1 - cur_beta, child_key, ply);
        if (score >= cur_beta) return cur_beta;
    }

    // Reverse futility: near the horizon, a static score far above beta is trusted.
    const bool futility_allowed = (depth == 1 || depth == 2) && ply > 0 && !in_check
        && cur_beta <= mate_score - 1 && pieces;
    std::int32_t static_score = 0;
    if (futility_allowed) {
        static_score
            = known_eval != unknown_eval ? known_eval : evaluate(board, board.white_to_move, 0);
        if (static_score - reverse_futility_margin[depth] > cur_beta) return static_score;
    }

    MoveList list;
    list.count = 0;
    generate_moves(board, &list);

    std::int32_t best_score = -infinity;
    Move best_move = 0;
    if (list.count == 0) {
        // Checkmate or stalemate.
        best_score = in_check ? ply - mate_score : 0;
    } else if (ply == 0 && list.count == 1) {
        // A forced reply at the root is played without a search.
        single_reply = 1;
        pv_cell(0, 0) = list.moves[0];
        best_score = 0;
    } else {
        // The evaluations that the ordering makes are the children's own, seen from the other
        // side: they are handed down rather than worked out again.
        std::int32_t child_evals[max_moves];
        if (depth > 1)
            order_moves(ply, board, &list, key, child_evals);
        else
            order_by_evaluation(board, &list, child_evals);

        // Futility: far below alpha, quiet moves late in the list are not tried.
        int prune_from = no_pruning;
        if (futility_allowed && static_score + futility_margin[depth] < cur_alpha)
            prune_from = futility_from_index[depth];

        // Move loop.
        for (int i = 0; i < list.count; i++) {
            if (search_stop) return 0;
            const Move m = list.moves[i];
            const std::int32_t child_eval = negate_eval(child_evals[i]);
            const bool quiet = is_quiet(m);
            const int check_ext = (m & move_gives_check) && depth <= 3 && !in_check ? 1 : 0;
            const int passed_ext = endgame && is_passed_pawn_push(board, m) ? 1 : 0;
            if (!passed_ext && i >= prune_from && quiet) continue;
            const std::int32_t new_depth = depth - 1 + check_ext + passed_ext;

            Board child = board;
            std::uint64_t child_key = key;
            apply_move_keyed(&child, m, &child_key);
            push_key(child_key);
            std::int32_t score;
            if (is_third_repetition(child_key) || child.fifty_move == 50) {
                score = 0; // a draw, not searched
            } else {
                const std::int32_t d = new_depth > 0 ? new_depth : 0;
                const std::int32_t check = (m & move_gives_check) ? 1 : 0;
                if (i == 0) {
                    score = -alpha_beta(
                        child, d, -cur_beta, -cur_alpha, child_key, ply, child_eval, check);
                } else {
                    bool full = true;
                    // Late-move reduction: a late quiet move is first tried one ply shallower.
                    if (depth > 2 && ply > 0 && i > 2 && !in_check && !passed_ext && quiet) {
                        const std::int32_t reduced = new_depth - 1 > 0 ? new_depth - 1 : 0;
                        score = -alpha_beta(child, reduced, -cur_alpha - 1, -cur_alpha, child_key,
                            ply, child_eval, check);
                        full = score > cur_alpha;
                    }
                    if (full) {
                        score = -alpha_beta(child, d, -cur_alpha - 1, -cur_alpha, child_key, ply,
                            child_eval, check);
                        if (cur_alpha < score && score < cur_beta)
                            score = -alpha_beta(
                                child, d, -cur_beta, -cur_alpha, child_key, ply, child_eval, check);
                    }
                }
            }
            pop_key();

            if (opening_root) score += opening_steering(board, m);
            if (score > best_score) {
                best_score = score;
                best_move = m;
            }
            if (best_score >= cur_beta) {
                if (ply <= iteration_depth) {
                    if (quiet) cutoff_counts[ply][move_from(m)][move_to(m)]++;
                    update_pv(ply, m);
                }
                break;
            }
            if (best_score > cur_alpha) {
                cur_alpha = best_score;
                if (ply <= iteration_depth) {
                    if (quiet) alpha_counts[ply][move_from(m)][move_to(m)]++;
                    update_pv(ply, m);
                }
            }
        }
    }

    hash_store(key, best_score, bound_for(best_score, entry_alpha, entry_beta), depth, best_move);
    return best_score;
}
