// Quiescence search over Board copies: no hash table, no key, no draw test, no node count.
#include "search/quiescence.h"

#include "control/input.h"
#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "movegen/attacked.h"
#include "position/apply.h"
#include "search/ordering.h"

namespace {

constexpr std::int32_t delta_margin = 120; // a capture must be able to come this close to best
constexpr std::int32_t check_margin = 180; // quiet checks only when stand-pat is this close
constexpr int quiet_check_limit = 10;

// The captured value that the delta rule weighs; 0 for a capture that gives check or promotes,
// which the rule never skips.
std::int32_t delta_victim(Move m)
{
    return (m & (move_gives_check | move_promoted)) ? 0 : victim_value(m);
}

// What a child after `m` is told of its check status: the check bit of a generated word says
// exactly whether its side to move is in check, so it need not test its king's square again.
template <Shortcuts s> std::int32_t child_check(Move m)
{
    if constexpr (s.check_bit) return (m & move_gives_check) ? 1 : 0;
    return -1;
}

// Sorts `list` by evaluation; with the shortcut, the evaluations go into `child_evals` to be
// handed down.
template <Shortcuts s>
void order_list(const Board &board, MoveList *list, std::int32_t *child_evals)
{
    order_by_evaluation(board, list, s.hand_down_evals ? child_evals : nullptr);
}

// Whether a move list goes through the delta rule: the captures do, evasions and quiet checks
// don't.
enum class delta_rule : bool { off, on };

// The loop that every list of a node runs: each move of `list`, in order, is searched with the
// budget `depth` and the window (*best, beta), and *best rises to the best score. Returns true
// when the node ends here, with its score in *best: beta on a cut-off, 0 when the stop flag is
// up. With the delta rule on, a plain capture that can't bring the score near the best, even
// with the margin, is skipped.
template <Shortcuts s, delta_rule delta>
bool search_list(const Board &board, const MoveList &list, const std::int32_t *child_evals,
    std::int32_t depth, std::int32_t beta, std::int32_t *best, std::int32_t stand_pat = 0)
{
    for (int i = 0; i < list.count; i++) {
        poll_input();
        if (search_stop) {
            *best = 0;
            return true;
        }
        const Move m = list.moves[i];
        if constexpr (delta == delta_rule::on) {
            const std::int32_t victim = delta_victim(m);
            if (victim > 0 && victim + stand_pat + delta_margin < *best) continue;
        }
        Board child = board;
        apply_move(&child, m);
        const std::int32_t child_eval
            = s.hand_down_evals ? negate_eval(child_evals[i]) : unknown_eval;
        const std::int32_t score
            = -quiescence_with<s>(child, depth, -beta, -*best, child_eval, child_check<s>(m));
        if (score >= beta) {
            *best = beta;
            return true;
        }
        if (score > *best) *best = score;
    }
    return false;
}

} // namespace

std::uint64_t quiescence_node_count = 0;

bool side_in_check(const Board &board)
{
    if (board.white_to_move) return attacked_by_black(board, first_square(board.white_king));
    return attacked_by_white(board, first_square(board.black_king));
}

template <Shortcuts s>
std::int32_t quiescence_with(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::int32_t known_eval, std::int32_t known_check)
{
    quiescence_node_count++;
    clock_tick();
    poll_input();
    if (search_stop) return 0;

    // The ordering of every list below evaluates each child from the mover's side; the child's
    // own evaluation for its side to move is the negative, so it is handed down, not redone.
    std::int32_t child_evals[max_moves];
    MoveList list;
    list.count = 0;

    // In check: every evasion is searched, whatever the budget, and there is no stand-pat.
    if (known_check >= 0 ? known_check != 0 : side_in_check(board)) {
        legal_moves<s>(board, &list);
        if (list.count == 0) return quiescence_mate_score;
        order_list<s>(board, &list, child_evals);
        search_list<s, delta_rule::off>(board, list, child_evals, depth - 1, beta, &alpha);
        return alpha;
    }

    const std::int32_t stand_pat
        = known_eval != unknown_eval ? known_eval : evaluate(board, board.white_to_move, 0);
    if (stand_pat >= beta) return beta;

    // The captures alone, in the generator's order; the full list is made only if quiet checks
    // are wanted after them.
    legal_captures<s>(board, &list);
    // No capture: the static score stands, below alpha too, and no quiet check is tried.
    if (list.count == 0) return stand_pat;

    std::int32_t best = stand_pat > alpha ? stand_pat : alpha;
    // A capture that the delta rule skips against the first best is skipped wherever it stands,
    // since the best only rises: it is left out before the sort, which saves its evaluation and
    // leaves the order of the others as it was.
    if constexpr (s.delta_before_sort) {
        int kept = 0;
        for (int i = 0; i < list.count; i++) {
            const std::int32_t v = delta_victim(list.moves[i]);
            if (v > 0 && v + stand_pat + delta_margin < best) continue;
            list.moves[kept++] = list.moves[i];
        }
        list.count = kept;
    }
    order_list<s>(board, &list, child_evals);
    // Captures are free: the budget stays as it is.
    if (search_list<s, delta_rule::on>(board, list, child_evals, depth, beta, &best, stand_pat))
        return best;

    if (depth <= 0) return best;
    if (stand_pat + check_margin < best) return best;

    // A few quiet checks, best first by evaluation; each spends one unit of the budget.
    MoveList all;
    all.count = 0;
    legal_moves<s>(board, &all);
    list.count = 0;
    for (int i = 0; i < all.count; i++) {
        const Move m = all.moves[i];
        if ((m & move_gives_check) && !(m & move_capture)) list.moves[list.count++] = m;
    }
    if (list.count == 0) return best;
    order_list<s>(board, &list, child_evals);
    if (list.count > quiet_check_limit) list.count = quiet_check_limit;
    search_list<s, delta_rule::off>(board, list, child_evals, depth - 1, beta, &best);
    return best;
}

template std::int32_t quiescence_with<engine_shortcuts>(
    Board, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t);
template std::int32_t quiescence_with<no_shortcuts>(
    Board, std::int32_t, std::int32_t, std::int32_t, std::int32_t, std::int32_t);
