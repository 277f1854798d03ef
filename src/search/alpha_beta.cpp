// The alpha-beta node, in numbered steps from the stop test to the store: mate-distance clamp,
// hash probe, horizon, null move, futility rules, extensions, a one-ply late-move reduction,
// draws and the principal variation. Each step that takes more than a few lines is a function
// above alpha_beta, headed by its step number.
#include "search/alpha_beta.h"

#include "control/input.h"
#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "movegen/attacks.h"
#include "position/apply.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "search/tt.h"

std::int32_t node_count = 0;
std::int32_t iteration_depth = 0;
std::int32_t single_reply = 0;
Move root_moves[max_moves];
std::int32_t root_move_count = -1;
Move root_best_move = 0;
std::int32_t root_unsteered_score = 0;

namespace {

// The dialect's rules of the tree, copied here at the start of each search.
struct TreeRules {
    bool fifty_from_hundred = false;
    bool relative_mates = false; // also: the root does not end on its own table entry
    bool searches_single_reply = false;
    bool empty_line_for_draws = false;
};
TreeRules rules;

constexpr std::int32_t mate_bound = mate_score - 1000; // scores beyond it are mates

// A mate score as the table keeps it when mates count from their node: the distance from this
// node instead of from the root, so that the entry reads right at any ply of any later search.
std::int32_t score_to_table(std::int32_t score, int ply)
{
    if (!rules.relative_mates) return score;
    return score > mate_bound ? score + ply : score < -mate_bound ? score - ply : score;
}

std::int32_t score_from_table(std::int32_t score, int ply)
{
    if (!rules.relative_mates) return score;
    return score > mate_bound ? score - ply : score < -mate_bound ? score + ply : score;
}

// Whether a child with this count of half-moves since a pawn move or capture is a draw.
bool fifty_move_draw(std::uint16_t count)
{
    return rules.fifty_from_hundred ? count >= 100 : std::uint8_t(count) == 50;
}

// A mate given by the move that reaches a hundred half-moves is a mate, not a draw, by the rules
// of chess; the fixed dialect counts the draw alone. Seldom asked: only at the count's end.
template <Shortcuts s> bool mated_at_fifty(const Board &child)
{
    if (!rules.fifty_from_hundred || !side_in_check(child)) return false;
    MoveList list;
    list.count = 0;
    legal_moves<s>(child, &list);
    return list.count == 0;
}

constexpr std::uint32_t poll_mask = 0x7FF; // clock and input every 2048th node
constexpr std::int32_t quiescence_budget = 4, quiescence_budget_in_check = 6;
constexpr std::int32_t endgame_material = 2600; // both sides together
constexpr std::int32_t reverse_futility_margin[3] = { 0, 89, 179 };
constexpr std::int32_t futility_margin[3] = { 0, 139, 259 };
constexpr int futility_from_index[3] = { 0, 2, 4 };
constexpr int no_pruning = 9999;

std::int32_t material_of_both(const Board &b)
{
    // A square that garbled sets give both colours counts once.
    return material_of_counts(square_count(b.white_pawns | b.black_pawns),
        square_count(b.white_knights | b.black_knights),
        square_count(b.white_bishops | b.black_bishops),
        square_count(b.white_rooks | b.black_rooks), square_count(b.white_queens | b.black_queens));
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

// What a node knows once its window is settled, for the steps after the probe.
struct Node {
    std::uint64_t key = 0;
    std::int32_t depth = 0;
    int ply = 0;
    std::int32_t entry_alpha = 0, entry_beta = 0; // the window after the mate-distance clamp
    std::int32_t cur_alpha = 0, cur_beta = 0; // the window in use, narrowed by the probe
    bool in_check = false;
    bool endgame = false; // little material left; only worked out at depth 2 and more
    bool opening_root = false; // root moves get the opening steering
    bool futility_allowed = false; // both futility rules may apply; static_score is then set
    std::int32_t static_score = 0;
};

// Step 4: the hash probe. An entry at least as deep narrows the window in use, and ends the node
// with its score (into *score) when it is exact or closes the window.
bool probe_ends_node(Node *node, std::int32_t *score)
{
    node->cur_alpha = node->entry_alpha;
    node->cur_beta = node->entry_beta;
    // A root that searches only some of its moves neither reads nor writes its own entry; a
    // root whose table lives on searches its moves to name one, whatever the entry says.
    if (node->ply == 0 && (root_move_count >= 0 || rules.relative_mates)) return false;
    HashEntry entry;
    if (!hash_probe(node->key, &entry) || entry.depth < node->depth) return false;
    const std::int32_t s = score_from_table(entry.score, node->ply);
    *score = s;
    if (entry.bound == bound_exact) return true;
    if (entry.bound == bound_lower) node->cur_alpha = node->entry_alpha > s ? node->entry_alpha : s;
    if (entry.bound == bound_upper) node->cur_beta = node->entry_beta < s ? node->entry_beta : s;
    return node->cur_alpha >= node->cur_beta;
}

// Step 6: at the horizon quiescence settles the position, with a larger budget in check; its
// score is stored at depth 0 with no move.
template <Shortcuts s>
std::int32_t horizon(const Board &board, const Node &node, std::int32_t known_eval)
{
    const std::int32_t budget = node.in_check ? quiescence_budget_in_check : quiescence_budget;
    const std::int32_t check = s.check_bit ? (node.in_check ? 1 : 0) : -1;
    const std::int32_t score
        = quiescence_with<s>(board, budget, node.cur_alpha, node.cur_beta, known_eval, check);
    // A table kept for later searches takes nothing from a stopped search.
    if (!(rules.relative_mates && search_stop))
        hash_store(node.key, score_to_table(score, node.ply),
            bound_for(score, node.entry_alpha, node.entry_beta), 0, 0);
    return score;
}

// Step 8: a null move that still fails high. Passing leaves the key history as it was.
template <Shortcuts s> bool null_move_fails_high(const Board &board, const Node &node)
{
    const int reduction = node.depth > 5 ? 3 : 2;
    Board child = board;
    std::uint64_t child_key = node.key;
    apply_null_move(&child, &child_key);
    const std::int32_t score = -alpha_beta_with<s>(child, node.depth - 1 - reduction,
        -node.cur_beta, 1 - node.cur_beta, child_key, node.ply, unknown_eval, -1);
    return score >= node.cur_beta;
}

// Step 14: the score of move `m`, the `index`th of the list, searched from `board` at
// `new_depth`: a principal-variation search with a one-ply late-move reduction. A child that is a
// draw by repetition or by the fifty-move count scores 0 unsearched.
template <Shortcuts s>
std::int32_t search_move(const Board &board, const Node &node, Move m, int index,
    std::int32_t new_depth, bool reducible, std::int32_t child_eval)
{
    Board child = board;
    std::uint64_t child_key = node.key;
    apply_move_keyed(&child, m, &child_key);
    push_key(child_key);
    std::int32_t score = 0;
    if (is_third_repetition(child_key)
        || (fifty_move_draw(child.fifty_move) && !mated_at_fifty<s>(child))) {
        // A draw has no line of its own behind the move.
        if (rules.empty_line_for_draws && node.ply + 1 < pv_rows)
            pv_length[node.ply + 1] = node.ply + 1;
    } else {
        const std::int32_t d = new_depth > 0 ? new_depth : 0;
        const std::int32_t check = !s.check_bit ? -1 : (m & move_gives_check) ? 1 : 0;
        const std::int32_t alpha = node.cur_alpha, beta = node.cur_beta;
        if (index == 0) {
            score = -alpha_beta_with<s>(
                child, d, -beta, -alpha, child_key, node.ply, child_eval, check);
        } else {
            bool full = true;
            // A late quiet move is first tried one ply shallower, with a null window.
            if (reducible && index > 2) {
                const std::int32_t reduced = new_depth - 1 > 0 ? new_depth - 1 : 0;
                score = -alpha_beta_with<s>(
                    child, reduced, -alpha - 1, -alpha, child_key, node.ply, child_eval, check);
                full = score > alpha;
            }
            if (full) {
                score = -alpha_beta_with<s>(
                    child, d, -alpha - 1, -alpha, child_key, node.ply, child_eval, check);
                if (alpha < score && score < beta)
                    score = -alpha_beta_with<s>(
                        child, d, -beta, -alpha, child_key, node.ply, child_eval, check);
            }
        }
    }
    pop_key();
    return score;
}

// Step 15: a move that raised alpha or cut off is remembered by the counters (when quiet) and
// by the principal variation, in the rows that the iteration reads.
void remember_move(const Node &node, Move m, bool cutoff)
{
    if (node.ply > iteration_depth) return;
    if (is_quiet(m)) (cutoff ? cutoff_counts : alpha_counts)[node.ply][move_from(m)][move_to(m)]++;
    update_pv(node.ply, m);
}

// Steps 12 to 15: orders the list and walks it. Returns false when the stop flag was found up at
// the head of a move; else true, with the best score and move in *best and *best_move.
template <Shortcuts s>
bool move_loop(const Board &board, Node &node, MoveList *list, std::int32_t *best, Move *best_move)
{
    // Step 12. Ordering. The evaluations that it makes are the children's own, seen from the
    // other side: they are handed down rather than worked out again.
    std::int32_t child_evals[max_moves];
    std::int32_t *evals = s.hand_down_evals ? child_evals : nullptr;
    if (node.depth > 1)
        order_moves(node.ply, board, list, node.key, evals);
    else
        order_by_evaluation(board, list, evals);

    // Step 13. Futility: far below alpha, quiet moves late in the list are not tried.
    int prune_from = no_pruning;
    if (node.futility_allowed && node.static_score + futility_margin[node.depth] < node.cur_alpha)
        prune_from = futility_from_index[node.depth];

    for (int i = 0; i < list->count; i++) {
        if (search_stop) return false;
        const Move m = list->moves[i];
        // The next move's slot is fetched while this one is searched.
        if (i + 1 < list->count)
            hash_prefetch(likely_key_after(node.key, board.white_to_move, list->moves[i + 1]));
        const bool quiet = is_quiet(m);
        // Step 14. Extensions, pruning, and the search of the child.
        const int check_ext = (m & move_gives_check) && node.depth <= 3 && !node.in_check ? 1 : 0;
        const int passed_ext = node.endgame && is_passed_pawn_push(board, m) ? 1 : 0;
        if (!passed_ext && i >= prune_from && quiet) continue;
        const bool reducible
            = node.depth > 2 && node.ply > 0 && !node.in_check && !passed_ext && quiet;
        std::int32_t score
            = search_move<s>(board, node, m, i, node.depth - 1 + check_ext + passed_ext, reducible,
                s.hand_down_evals ? negate_eval(child_evals[i]) : unknown_eval);
        const std::int32_t steering = node.opening_root ? opening_steering(board, m) : 0;
        score += steering;

        // Step 15. A new best; a cut-off ends the loop.
        if (score > *best) {
            *best = score;
            *best_move = m;
            if (node.ply == 0) {
                root_best_move = m;
                root_unsteered_score = score - steering;
            }
        }
        if (*best >= node.cur_beta) {
            remember_move(node, m, true);
            break;
        }
        if (*best > node.cur_alpha) {
            node.cur_alpha = *best;
            remember_move(node, m, false);
        }
    }
    return true;
}

} // namespace

void set_tree_rules(const Dialect &d)
{
    rules.fifty_from_hundred = d.fifty_from_hundred;
    rules.relative_mates = d.keeps_table;
    rules.searches_single_reply = d.searches_single_reply;
    rules.empty_line_for_draws = d.standard;
}

void keep_root_moves(MoveList *list, const Move *moves, int count)
{
    int kept = 0;
    for (int i = 0; i < list->count; i++)
        for (int j = 0; j < count; j++)
            if (same_move(list->moves[i], moves[j])) {
                list->moves[kept++] = list->moves[i];
                break;
            }
    list->count = kept;
}

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

template <Shortcuts s>
std::int32_t alpha_beta_with(Board board, std::int32_t depth, std::int32_t alpha, std::int32_t beta,
    std::uint64_t key, int parent_ply, std::int32_t known_eval, std::int32_t known_check)
{
    // Step 1. A raised stop flag ends every node at once.
    if (search_stop) return 0;

    // Step 2. Initialise the node: its ply, its row of the principal variation (rows beyond the
    // table are never read; only long chains of extensions reach them), the node count, the clock
    // at every 256th node of either kind (clock_tick), and at every 2048th node the clock and the
    // input.
    Node node { .key = key, .depth = depth, .ply = parent_ply + 1 };
    if (node.ply < pv_rows) pv_length[node.ply] = node.ply + 1;
    node_count = std::int32_t(std::uint32_t(node_count) + 1);
    clock_tick();
    node.opening_root = node.ply == 0 && is_opening_root(board);
    if ((std::uint32_t(node_count) & poll_mask) == poll_mask) {
        check_deadline();
        poll_input();
    }

    // Step 3. Mate-distance clamp: no score here can beat a mate already found nearer the root.
    const int ply = node.ply;
    node.entry_alpha = alpha > ply - mate_score ? alpha : ply - mate_score;
    node.entry_beta = beta < mate_score - 1 - ply ? beta : mate_score - 1 - ply;
    if (node.entry_alpha >= node.entry_beta) return node.entry_alpha;

    // Step 4. Hash probe: an entry at least as deep may end the node or narrow its window.
    std::int32_t score;
    if (probe_ends_node(&node, &score)) return score;

    // Step 5. Check: the check bit of the parent's move answers it where there was one.
    node.in_check = known_check >= 0 ? known_check != 0 : side_in_check(board);

    // Step 6. Horizon: quiescence settles the position.
    if (depth == 0) return horizon<s>(board, node, known_eval);

    // Step 7. Material: the passed-pawn extension needs an endgame, null move and futility
    // need pieces besides pawns.
    node.endgame = depth >= 2 && material_of_both(board) <= endgame_material;
    const bool pruning_allowed
        = ply > 0 && !node.in_check && node.cur_beta <= mate_score - 1 && side_has_pieces(board);

    // Step 8. Null move: if passing still fails high, so will a real move.
    if (depth > 2 && pruning_allowed && null_move_fails_high<s>(board, node)) return node.cur_beta;

    // Step 9. Reverse futility: near the horizon, a static score far above beta is trusted.
    node.futility_allowed = (depth == 1 || depth == 2) && pruning_allowed;
    if (node.futility_allowed) {
        node.static_score
            = known_eval != unknown_eval ? known_eval : evaluate(board, board.white_to_move, 0);
        if (node.static_score - reverse_futility_margin[depth] > node.cur_beta)
            return node.static_score;
    }

    // Step 10. Generate the moves.
    MoveList list;
    list.count = 0;
    legal_moves<s>(board, &list);
    if (ply == 0 && root_move_count >= 0) keep_root_moves(&list, root_moves, root_move_count);

    // Step 11. Nothing to search: checkmate or stalemate, or a forced reply at the root, which is
    // played without a search.
    std::int32_t best_score = -infinity;
    Move best_move = 0;
    if (list.count == 0) {
        best_score = node.in_check ? ply - mate_score : 0;
    } else if (ply == 0 && list.count == 1 && !rules.searches_single_reply) {
        single_reply = 1;
        pv_cell(0, 0) = list.moves[0];
        best_score = 0;
    } else if (!move_loop<s>(board, node, &list, &best_score, &best_move)) {
        return 0; // steps 12 to 15 found the stop flag up
    }

    // Step 16. Store the result, its bound taken against the window on entry. A table kept for
    // later searches takes nothing from a stopped search: a child cut short scores 0.
    if ((ply > 0 || root_move_count < 0) && !(rules.relative_mates && search_stop))
        hash_store(key, score_to_table(best_score, ply),
            bound_for(best_score, node.entry_alpha, node.entry_beta), depth, best_move);
    return best_score;
}

template std::int32_t alpha_beta_with<engine_shortcuts>(Board, std::int32_t, std::int32_t,
    std::int32_t, std::uint64_t, int, std::int32_t, std::int32_t);
template std::int32_t alpha_beta_with<no_shortcuts>(Board, std::int32_t, std::int32_t, std::int32_t,
    std::uint64_t, int, std::int32_t, std::int32_t);
