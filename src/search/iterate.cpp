// Iterative deepening and the result of a search.
#include "search/iterate.h"

#include <cstring>
#include <utility>

#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "search/alpha_beta.h"
#include "search/ordering.h"
#include "search/quiescence.h"
#include "search/tt.h"

char best_move_text[move_text_size];
char pv_text[pv_text_size];

namespace {

std::int32_t elapsed_now() { return elapsed_ms(clock_ms_real(), search_start_ms); }

// When no iteration has left a move: the move of `list` with the best evaluation after it, the
// first of equal ones; "0000" when the list is empty.
void best_evaluated_move(MoveList *list)
{
    if (list->count == 0) {
        std::strcpy(best_move_text, "0000");
        return;
    }
    order_by_evaluation(current_board, list);
    move_to_text(list->moves[0], best_move_text);
    pv_cell(0, 0) = list->moves[0];
    pv_length[0] = 1;
}

template <Shortcuts s> void fallback_move()
{
    MoveList list;
    list.count = 0;
    legal_moves<s>(current_board, &list);
    best_evaluated_move(&list);
}

// What every search starts from: no move yet, the clock, empty counters, lines and table, no
// nodes. Returns the root's key.
std::uint64_t start_search()
{
    best_move_text[0] = '\0';
    search_stop = 0;
    single_reply = 0;
    search_start_ms = clock_ms_real();
    node_limit_start = clock_tick_count;
    clear_counters();
    std::memset(pv_length, 0, sizeof pv_length);
    std::memset(pv_table, 0, sizeof pv_table);
    hash_clear();
    node_count = 0;
    return full_key(&current_board);
}

// The last iteration the limit and the rows of the counter tables allow.
int last_iteration()
{
    return search_depth_limit < counter_rows - 1 ? search_depth_limit : counter_rows - 1;
}

// Builds pv_text from row 0 of pv_table. The line stops before its first word that is not a
// legal move in the position reached, so a GUI replaying it never meets an illegal move; the
// blank in front of that word stays.
template <Shortcuts s> void build_pv_text()
{
    pv_text[0] = '\0';
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
        char text[8];
        move_to_text(m, text);
        const int size = int(std::strlen(text));
        std::memcpy(pv_text + length, text, std::size_t(size));
        length += size;
        if (i < n - 1) pv_text[length++] = ' ';
        pv_text[length] = '\0';
        apply_move(&board, m);
    }
}

// The iterations of one search, with the shortcuts `s` everywhere in the tree.
template <Shortcuts s> const char *iterate(iteration_printer print)
{
    const std::uint64_t root_key = start_search();
    const int last_depth = last_iteration();
    for (int depth = 1; depth <= last_depth; depth++) {
        iteration_depth = depth;
        const std::int32_t score = alpha_beta_with<s>(
            current_board, depth, -infinity, infinity, root_key, -1, unknown_eval, -1);
        if (single_reply) {
            move_to_text(pv_cell(0, 0), best_move_text);
            break;
        }
        if (!search_stop) {
            build_pv_text<s>();
            const iteration_report report
                = { depth, elapsed_now(), std::uint64_t(std::int64_t(node_count)), score, pv_text };
            print(report);
            move_to_text(pv_cell(0, 0), best_move_text);
        }
        if (time_limit_active && elapsed_now() > search_time_limit_ms) break;
    }
    if (best_move_text[0] != '\0' && pv_cell(0, 0) != 0) return best_move_text;
    fallback_move<s>();
    return best_move_text;
}

// The lines of one iteration of analyse: the score, the root move, the stored line (row 0 of
// the table, so that the best one can be put back for the next iteration's ordering) and its text.
struct analysis_slot {
    std::int32_t score;
    Move moves[pv_columns];
    std::int32_t length;
    char text[pv_text_size];
};
analysis_slot slots[most_lines];
analysis_slot *order[most_lines];

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

} // namespace

const char *analyse(int lines, analysis_printer print, char *ponder)
{
    const std::uint64_t root_key = start_search();
    ponder[0] = '\0';
    quiescence_node_count = 0;

    // The root moves this search may play: every legal one, or those asked for.
    MoveList candidates;
    candidates.count = 0;
    generate_moves(current_board, &candidates);
    const bool every_move = root_move_count < 0;
    if (!every_move) keep_root_moves(&candidates);
    root_move_count = -1;
    if (candidates.count == 0) {
        std::strcpy(best_move_text, "0000");
        return best_move_text;
    }
    if (lines > candidates.count) lines = candidates.count;
    if (lines < 1) lines = 1;

    const int last_depth = last_iteration();
    for (int depth = 1; depth <= last_depth && !search_stop; depth++) {
        iteration_depth = depth;
        int found = 0;
        for (; found < lines; found++) {
            // Each later line searches the root moves the earlier ones have not taken; a single
            // line of every move searches the root as the default search does.
            root_move_count = -1;
            if (lines > 1 || !every_move) {
                root_move_count = 0;
                for (int i = 0; i < candidates.count; i++) {
                    bool taken = false;
                    for (int k = 0; k < found && !taken; k++)
                        taken = same_move(candidates.moves[i], slots[k].moves[0]);
                    if (!taken) root_moves[root_move_count++] = candidates.moves[i];
                }
            }
            const std::int32_t score = alpha_beta_with<engine_shortcuts>(
                current_board, depth, -infinity, infinity, root_key, -1, unknown_eval, -1);
            if (search_stop) break;
            analysis_slot &slot = slots[found];
            slot.score = score;
            slot.length = pv_length[0] < pv_columns ? pv_length[0] : pv_columns;
            for (int c = 0; c < slot.length; c++) slot.moves[c] = pv_cell(0, c);
            build_pv_text<engine_shortcuts>();
            // A line always starts with its root move, even when the table kept none, and ends
            // with its last move.
            if (pv_text[0] == '\0') move_to_text(slot.moves[0], pv_text);
            for (std::size_t n = std::strlen(pv_text); n > 0 && pv_text[n - 1] == ' ';)
                pv_text[--n] = '\0';
            std::memcpy(slot.text, pv_text, sizeof pv_text);
            order[found] = &slot;
        }
        if (found < lines) break; // a stopped iteration leaves the last whole one standing
        // Best first; equal scores keep the order they were found in.
        for (int k = 1; k < lines; k++)
            for (int j = k; j > 0 && order[j]->score > order[j - 1]->score; j--)
                std::swap(order[j], order[j - 1]);
        const std::uint64_t nodes
            = std::uint64_t(std::uint32_t(node_count)) + quiescence_node_count;
        for (int k = 0; k < lines; k++)
            print({ depth, k + 1, order[k]->score, elapsed_now(), nodes, order[k]->text });
        // The next iteration starts from the best line.
        const analysis_slot &best = *order[0];
        for (int c = 0; c < best.length; c++) pv_cell(0, c) = best.moves[c];
        pv_length[0] = best.length;
        first_word(best.text, best_move_text);
        const char *reply = std::strchr(best.text, ' ');
        first_word(reply ? reply + 1 : "", ponder);
        if (time_limit_active && elapsed_now() > search_time_limit_ms) break;
    }
    root_move_count = -1;
    if (best_move_text[0] != '\0') return best_move_text;
    // Stopped before the first iteration ended.
    best_evaluated_move(&candidates);
    return best_move_text;
}

const char *iterate_search(iteration_printer print) { return iterate<engine_shortcuts>(print); }

const char *iterate_search_literal(iteration_printer print) { return iterate<no_shortcuts>(print); }
