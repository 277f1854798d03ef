// Iterative deepening and the result of a search.
#include "search/iterate.h"

#include <cstring>

#include "control/search_limits.h"
#include "eval/evaluate.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "search/alpha_beta.h"
#include "search/ordering.h"
#include "search/tt.h"

char best_move_text[move_text_size];
char pv_text[pv_text_size];

namespace {

std::int32_t elapsed_now() { return elapsed_ms(clock_ms_real(), search_start_ms); }

// When no iteration has left a move: the legal move with the best evaluation after it, the first
// of equal ones; "0000" when there is no legal move.
template <Shortcuts s> void fallback_move()
{
    MoveList list;
    list.count = 0;
    legal_moves<s>(current_board, &list);
    if (list.count == 0) {
        std::strcpy(best_move_text, "0000");
        return;
    }
    order_by_evaluation(current_board, &list);
    move_to_text(list.moves[0], best_move_text);
    pv_cell(0, 0) = list.moves[0];
    pv_length[0] = 1;
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
    for (int i = 0; i < n && i < pv_columns; i++) {
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

    const int last_depth
        = search_depth_limit < counter_plies - 1 ? search_depth_limit : counter_plies - 1;
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

} // namespace

const char *iterate_search(iteration_printer print) { return iterate<engine_shortcuts>(print); }

const char *iterate_search_literal(iteration_printer print) { return iterate<no_shortcuts>(print); }
