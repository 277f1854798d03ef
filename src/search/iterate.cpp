// Iterative deepening and the result of a search.
#include "search/iterate.h"

#include <cstring>
#include <utility>

#include "control/input.h"
#include "eval/evaluate.h"
#include "movegen/attacked.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "search/alpha_beta.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "search/tt.h"

namespace {

std::int32_t elapsed_now() { return elapsed_ms(clock_ms_real(), search_start_ms); }

// The lines of one iteration: the score, the root move, the stored line (row 0 of the table, so
// that the best one can be put back for the next iteration's ordering) and its text.
struct line_slot {
    std::int32_t rank; // the score the choice goes by, the root's opening steering included
    std::int32_t score; // the score reported
    Move root;
    Move moves[pv_columns];
    std::int32_t length;
    char text[pv_text_size];
};
line_slot slots[most_lines];
line_slot *order[most_lines];

// Copies the first word of `text` (or nothing) to `out`.
void first_word(const char *text, char *out)
{
    int n = 0;
    while (text[n] && text[n] != ' ' && n < move_text_size - 1) {
        out[n] = text[n];
        n++;
    }
    out[n] = '\0';
}

// Writes row 0 of pv_table as text to `text`. The line stops before its first word that is not
// a legal move in the position reached, so a GUI replaying it never meets an illegal move; in the
// fixed dialect the blank in front of that word stays.
template <Shortcuts s> void pv_line_text(char *text)
{
    text[0] = '\0';
    int length = 0;
    const int n = pv_length[0];
    Board board = current_board;
    for (int i = 0; i < n && i < pv_stride; i++) {
        const Move m = pv_cell(0, i);
        if (m == 0) break;
        // A word left over from another branch can end the stored line: the text stops there.
        MoveList list;
        list.count = 0;
        legal_moves<s>(board, &list);
        bool legal = false;
        for (int j = 0; j < list.count && !legal; j++) legal = same_move(list.moves[j], m);
        if (!legal) break;
        char word[8];
        move_to_text(m, word);
        const int size = int(std::strlen(word));
        std::memcpy(text + length, word, std::size_t(size));
        length += size;
        if (i < n - 1) text[length++] = ' ';
        text[length] = '\0';
        apply_move(&board, m);
    }
}

// The root moves the search may play: every legal one, or those of the request among them (all
// of them again when none of those is legal). Returns false when some legal moves are left out.
template <Shortcuts s> bool root_candidates(const SearchRequest &request, MoveList *list)
{
    list->count = 0;
    legal_moves<s>(current_board, list);
    if (request.root_move_count < 0) return true;
    MoveList kept = *list;
    keep_root_moves(&kept, request.root_moves, request.root_move_count);
    if (kept.count == 0 || kept.count == list->count) return true;
    *list = kept;
    return false;
}

// The iteration at `depth`, `lines` lines of the root moves in `candidates` (each later line
// searches the moves the earlier ones have not taken). Returns the number of lines found before
// a stop.
template <Shortcuts s>
int search_lines(const Dialect &d, int depth, int lines, const MoveList &candidates,
    bool every_move, std::uint64_t root_key)
{
    iteration_depth = depth;
    int found = 0;
    for (; found < lines; found++) {
        // A single line of every move searches the root as it stands.
        root_move_count = -1;
        if (lines > 1 || !every_move) {
            root_move_count = 0;
            for (int i = 0; i < candidates.count; i++) {
                bool taken = false;
                for (int k = 0; k < found && !taken; k++)
                    taken = same_move(candidates.moves[i], slots[k].root);
                if (!taken) root_moves[root_move_count++] = candidates.moves[i];
            }
        }
        const std::int32_t score = alpha_beta_with<s>(
            current_board, depth, -infinity, infinity, root_key, -1, unknown_eval, -1);
        if (search_stop || single_reply) break;
        line_slot &slot = slots[found];
        slot.rank = score;
        slot.score = d.reports_steering ? score : root_unsteered_score;
        slot.length = pv_length[0] < pv_columns ? pv_length[0] : pv_columns;
        for (int c = 0; c < slot.length; c++) slot.moves[c] = pv_cell(0, c);
        pv_line_text<s>(slot.text);
        if (d.standard) {
            // The line always starts with the move the root chose and ends with its last move.
            slot.root = root_best_move;
            char root[8];
            move_to_text(slot.root, root);
            const std::size_t size = std::strlen(root);
            if (std::strncmp(slot.text, root, size) != 0
                || (slot.text[size] != ' ' && slot.text[size] != '\0'))
                std::memcpy(slot.text, root, size + 1);
            for (std::size_t n = std::strlen(slot.text); n > 0 && slot.text[n - 1] == ' ';)
                slot.text[--n] = '\0';
        } else {
            slot.root = pv_cell(0, 0);
        }
        order[found] = &slot;
    }
    root_move_count = -1;
    return found;
}

} // namespace

template <Shortcuts s>
void run_search_with(const SearchRequest &request, line_printer print, SearchResult *result)
{
    const Dialect &d = *request.dialect;
    const SearchLimits &limits = request.limits;
    // What every search starts from: no move yet, the clock, empty counters and lines, no nodes;
    // the fixed dialect empties the table too.
    result->best[0] = result->ponder[0] = '\0';
    set_tree_rules(d);
    counter_rows = d.counter_rows;
    pv_stride = d.pv_stride;
    start_clock(limits);
    single_reply = 0;
    clear_counters();
    std::memset(pv_length, 0, sizeof pv_length);
    std::memset(pv_table, 0, sizeof pv_table);
    if (!d.keeps_table) hash_clear();
    node_count = 0;
    quiescence_node_count = 0;
    const std::uint64_t root_key = full_key(&current_board);

    MoveList candidates;
    const bool every_move = root_candidates<s>(request, &candidates);
    result->legal_moves = candidates.count;
    result->mated = candidates.count == 0 && side_in_check(current_board);
    int lines = request.lines < candidates.count ? request.lines : candidates.count;
    if (lines < 1) lines = 1;

    int last_depth = limits.depth < d.deepest_iteration ? limits.depth : d.deepest_iteration;
    if (last_depth > counter_rows - 1) last_depth = counter_rows - 1;
    bool reported = false;
    // The fixed dialect searches a root without moves too, and reports its empty lines.
    for (int depth = 1; depth <= last_depth && (candidates.count > 0 || !d.standard); depth++) {
        const int found = search_lines<s>(d, depth, lines, candidates, every_move, root_key);
        if (single_reply) {
            move_to_text(pv_cell(0, 0), result->best);
            break;
        }
        if (found < lines) {
            // A stopped iteration leaves the last whole one standing. The standard dialect
            // always answers with a reported line: before the first, depth 1 is searched whole.
            if (reported || !d.standard) break;
            // The input waits meanwhile: a line behind the stop belongs after the answer.
            search_stop = 0;
            time_limit_active = 0;
            hold_input(true);
            search_lines<s>(d, 1, lines, candidates, every_move, root_key);
            hold_input(false);
            search_stop = 1;
            depth = last_depth;
        }
        // Best first; equal scores keep the order they were found in.
        for (int k = 1; k < lines; k++)
            for (int j = k; j > 0 && order[j]->rank > order[j - 1]->rank; j--)
                std::swap(order[j], order[j - 1]);
        const std::uint64_t nodes
            = std::uint64_t(std::uint32_t(node_count)) + quiescence_node_count;
        for (int k = 0; k < lines; k++)
            print({ iteration_depth, k + 1, order[k]->score, elapsed_now(),
                std::int64_t(node_count), nodes, order[k]->text });
        reported = true;
        // The next iteration starts from the best line.
        const line_slot &best = *order[0];
        if (lines > 1) {
            for (int c = 0; c < best.length; c++) pv_cell(0, c) = best.moves[c];
            pv_length[0] = best.length;
        }
        move_to_text(best.root, result->best);
        if (d.standard) {
            const char *reply = std::strchr(best.text, ' ');
            first_word(reply ? reply + 1 : "", result->ponder);
        }
        if (time_limit_active && elapsed_now() > search_soft_limit_ms) break;
    }
    if (result->best[0] != '\0' && (d.standard || pv_cell(0, 0) != 0)) return;
    // When no iteration has left a move: the move with the best evaluation after it, the first
    // of equal ones; "0000" when there is none.
    std::strcpy(result->best, "0000");
    if (candidates.count == 0) return;
    order_by_evaluation(current_board, &candidates);
    move_to_text(candidates.moves[0], result->best);
    pv_cell(0, 0) = candidates.moves[0];
    pv_length[0] = 1;
}

template void run_search_with<engine_shortcuts>(
    const SearchRequest &, line_printer, SearchResult *);
template void run_search_with<no_shortcuts>(const SearchRequest &, line_printer, SearchResult *);
