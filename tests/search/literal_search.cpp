// The search exactly as the rules state it, step by step, with no shortcut: the oracle that every
// faster version of the engine's search is compared with. It shares the engine's global state
// (hash table, counters, principal variation, node count) and its small helpers.
#include "tests/search/literal_search.h"

#include <bit>
#include <cstring>
#include <initializer_list>

#include "control/input.h"
#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "movegen/legal.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "search/alpha_beta.h"
#include "search/iterate.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "search/tt.h"

namespace literal {

namespace {

int counter_row(int ply) { return ply < 0 ? 0 : ply >= counter_plies ? counter_plies - 1 : ply; }

// The node's pv move: row 0, column `row` of the last line, while that line reaches so far.
Move pv_move_at(int row) { return row < pv_length[0] ? pv_cell(0, row) : 0; }

// Sorts moves[0..n) by keys, descending: a move passes an earlier one only on a greater key.
void sort_by_keys(Move *moves, std::int32_t *keys, int n)
{
    for (int i = 1; i < n; i++) {
        const Move m = moves[i];
        const std::int32_t k = keys[i];
        int j = i;
        for (; j > 0 && keys[j - 1] < k; j--) {
            moves[j] = moves[j - 1];
            keys[j] = keys[j - 1];
        }
        moves[j] = m;
        keys[j] = k;
    }
}

// The evaluation after `move`, from the side of the mover.
std::int32_t score_after(const Board &board, Move move)
{
    Board child = board;
    apply_move(&child, move);
    return evaluate(child, board.white_to_move, 0);
}

struct bucket {
    Move moves[max_moves];
    std::int32_t keys[max_moves];
    int count = 0;
    void add(Move m, std::int32_t key)
    {
        moves[count] = m;
        keys[count++] = key;
    }
};

constexpr std::int32_t delta_margin = 120; // a capture must be able to come this close to best
constexpr std::int32_t en_passant_victim = 100;
constexpr std::int32_t check_margin = 180; // quiet checks only when stand-pat is this close
constexpr int quiet_check_limit = 10;

constexpr std::int32_t infinity = 2147483647;
constexpr std::uint32_t poll_mask = 0x7FF; // clock and input every 2048th node
constexpr std::int32_t quiescence_budget = 4, quiescence_budget_in_check = 6;
constexpr std::int32_t endgame_material = 2600; // both sides together
constexpr std::int32_t reverse_futility_margin[3] = { 0, 89, 179 };
constexpr std::int32_t futility_margin[3] = { 0, 139, 259 };
constexpr int futility_from_index[3] = { 0, 2, 4 };
constexpr int no_pruning = 9999;

// Squares d2, e2, d4, e4 and their black mirrors.
constexpr int d2 = 11, e2 = 12, d4 = 27, e4 = 28, d7 = 51, e7 = 52, d5 = 35, e5 = 36;

std::int32_t material_of_both(const Board &b)
{
    return 100 * std::popcount(b.white_pawns | b.black_pawns)
        + 300 * std::popcount(b.white_knights | b.black_knights)
        + 320 * std::popcount(b.white_bishops | b.black_bishops)
        + 500 * std::popcount(b.white_rooks | b.black_rooks)
        + 900 * std::popcount(b.white_queens | b.black_queens);
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

void order_moves(int ply, const Board &board, MoveList *list, std::uint64_t key)
{
    const int row = counter_row(ply);
    HashEntry entry;
    const Move hash_move = hash_probe(key, &entry) ? entry.move : 0;
    const Move pv_move = pv_move_at(row);

    Move found_pv = 0, found_hash = 0;
    bool has_pv = false, has_hash = false;
    bucket good, first, second, bad, other;
    for (int i = 0; i < list->count; i++) {
        const Move m = list->moves[i];
        const int from = move_from(m), to = move_to(m);
        if (pv_move && same_move(m, pv_move)) {
            found_pv = m;
            has_pv = true;
        } else if (hash_move && same_move(m, hash_move)) {
            found_hash = m;
            has_hash = true;
        } else if (m & move_capture) {
            const std::int32_t gain = capture_gain(m);
            if (gain >= 0)
                good.add(m, 7500 + gain);
            else
                bad.add(m, 3500 + gain);
        } else if (alpha_counts[row][from][to] > 0) {
            first.add(m, std::int32_t(8500 + alpha_counts[row][from][to]));
        } else if (cutoff_counts[row][from][to] > 0) {
            second.add(m, std::int32_t(6000 + cutoff_counts[row][from][to]));
        } else {
            other.add(m, score_after(board, m));
        }
    }

    int n = 0;
    if (has_pv) list->moves[n++] = found_pv;
    if (has_hash) list->moves[n++] = found_hash;
    for (bucket *b : { &good, &first, &second, &bad, &other }) {
        sort_by_keys(b->moves, b->keys, b->count);
        for (int i = 0; i < b->count; i++) list->moves[n++] = b->moves[i];
    }
}

void order_by_evaluation(const Board &board, MoveList *list)
{
    if (list->count < 2) return;
    std::int32_t keys[max_moves];
    for (int i = 0; i < list->count; i++) keys[i] = score_after(board, list->moves[i]);
    sort_by_keys(list->moves, keys, list->count);
}

std::int32_t quiescence(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta)
{
    poll_input();
    if (search_stop) return 0;

    // In check: every evasion is searched, whatever the budget, and there is no stand-pat.
    if (side_in_check(board)) {
        MoveList list;
        list.count = 0;
        generate_moves(board, &list);
        if (list.count == 0) return quiescence_mate_score;
        literal::order_by_evaluation(board, &list);
        for (int i = 0; i < list.count; i++) {
            poll_input();
            if (search_stop) return 0;
            Board child = board;
            apply_move(&child, list.moves[i]);
            const std::int32_t score = -literal::quiescence(child, depth - 1, -beta, -alpha);
            if (score >= beta) return beta;
            if (score > alpha) alpha = score;
        }
        return alpha;
    }

    const std::int32_t stand_pat = evaluate(board, board.white_to_move, 0);
    if (stand_pat >= beta) return beta;

    MoveList list;
    list.count = 0;
    generate_captures(board, &list);
    // No capture: the static score stands, below alpha too, and no quiet check is tried.
    if (list.count == 0) return stand_pat;

    std::int32_t best = stand_pat > alpha ? stand_pat : alpha;
    literal::order_by_evaluation(board, &list);
    for (int i = 0; i < list.count; i++) {
        poll_input();
        if (search_stop) return 0;
        const Move m = list.moves[i];
        // Delta rule: a plain capture that can't bring the score near the best is skipped.
        if (!(m & (move_gives_check | move_promoted))) {
            const std::int32_t victim = (m & move_en_passant)
                ? en_passant_victim
                : (move_captured(m) >= 1 && move_captured(m) <= 6
                        ? piece_values[move_captured(m) - 1]
                        : 0);
            if (victim > 0 && victim + stand_pat + delta_margin < best) continue;
        }
        Board child = board;
        apply_move(&child, m);
        const std::int32_t score = -literal::quiescence(child, depth, -beta, -best);
        if (score >= beta) return beta;
        if (score > best) best = score;
    }

    if (depth <= 0) return best;
    if (stand_pat + check_margin < best) return best;

    // A few quiet checks, best first by evaluation; each spends one unit of the budget.
    list.count = 0;
    generate_moves(board, &list);
    int kept = 0;
    for (int i = 0; i < list.count; i++) {
        const Move m = list.moves[i];
        if ((m & move_gives_check) && !(m & move_capture)) list.moves[kept++] = m;
    }
    list.count = kept;
    if (kept == 0) return best;
    literal::order_by_evaluation(board, &list);
    if (list.count > quiet_check_limit) list.count = quiet_check_limit;
    for (int i = 0; i < list.count; i++) {
        poll_input();
        if (search_stop) return 0;
        Board child = board;
        apply_move(&child, list.moves[i]);
        const std::int32_t score = -literal::quiescence(child, depth - 1, -beta, -best);
        if (score >= beta) return beta;
        if (score > best) best = score;
    }
    return best;
}

std::int32_t alpha_beta(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::uint64_t key, int parent_ply)
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

    // Horizon: quiescence settles the position.
    if (depth == 0) {
        const std::int32_t budget
            = side_in_check(board) ? quiescence_budget_in_check : quiescence_budget;
        const std::int32_t score = literal::quiescence(board, budget, cur_alpha, cur_beta);
        hash_store(key, score, bound_for(score, entry_alpha, entry_beta), 0, 0);
        return score;
    }

    const bool in_check = side_in_check(board);
    const bool endgame = depth >= 2 && material_of_both(board) <= endgame_material;
    const bool pieces = side_has_pieces(board);

    // Null move: if passing still fails high, so will a real move.
    if (depth > 2 && ply > 0 && !in_check && cur_beta <= mate_score - 1 && pieces) {
        const int reduction = depth > 5 ? 3 : 2;
        Board child = board;
        std::uint64_t child_key = key;
        apply_null_move(&child, &child_key);
        const std::int32_t score = -literal::alpha_beta(
            child, depth - 1 - reduction, -cur_beta, 1 - cur_beta, child_key, ply);
        if (score >= cur_beta) return cur_beta;
    }

    // Reverse futility: near the horizon, a static score far above beta is trusted.
    const bool futility_allowed = (depth == 1 || depth == 2) && ply > 0 && !in_check
        && cur_beta <= mate_score - 1 && pieces;
    std::int32_t static_score = 0;
    if (futility_allowed) {
        static_score = evaluate(board, board.white_to_move, 0);
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
        if (depth > 1)
            literal::order_moves(ply, board, &list, key);
        else
            literal::order_by_evaluation(board, &list);

        // Futility: far below alpha, quiet moves late in the list are not tried.
        int prune_from = no_pruning;
        if (futility_allowed && static_score + futility_margin[depth] < cur_alpha)
            prune_from = futility_from_index[depth];

        // Move loop.
        for (int i = 0; i < list.count; i++) {
            if (search_stop) return 0;
            const Move m = list.moves[i];
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
                if (i == 0) {
                    score = -literal::alpha_beta(child, d, -cur_beta, -cur_alpha, child_key, ply);
                } else {
                    bool full = true;
                    // Late-move reduction: a late quiet move is first tried one ply shallower.
                    if (depth > 2 && ply > 0 && i > 2 && !in_check && !passed_ext && quiet) {
                        const std::int32_t reduced = new_depth - 1 > 0 ? new_depth - 1 : 0;
                        score = -literal::alpha_beta(
                            child, reduced, -cur_alpha - 1, -cur_alpha, child_key, ply);
                        full = score > cur_alpha;
                    }
                    if (full) {
                        score = -literal::alpha_beta(
                            child, d, -cur_alpha - 1, -cur_alpha, child_key, ply);
                        if (cur_alpha < score && score < cur_beta)
                            score = -literal::alpha_beta(
                                child, d, -cur_beta, -cur_alpha, child_key, ply);
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

std::vector<search_row> iterate(const char **best)
{
    std::vector<search_row> rows;
    best_move_text[0] = '\0';
    search_stop = 0;
    single_reply = 0;
    search_start_ms = clock_ms_real();
    clear_counters();
    std::memset(pv_length, 0, sizeof pv_length);
    std::memset(pv_table, 0, sizeof pv_table);
    hash_clear();
    const std::uint64_t root_key = full_key(&current_board);
    node_count = 0;
    for (int depth = 1; depth <= search_depth_limit; depth++) {
        iteration_depth = depth;
        const std::int32_t score
            = literal::alpha_beta(current_board, depth, -infinity, infinity, root_key, -1);
        if (single_reply) {
            move_to_text(pv_cell(0, 0), best_move_text);
            break;
        }
        if (!search_stop) {
            build_pv_text();
            rows.push_back({ depth, std::uint64_t(std::int64_t(node_count)), score, pv_text });
            move_to_text(pv_cell(0, 0), best_move_text);
        }
    }
    *best = best_move_text;
    return rows;
}

} // namespace literal
