// The move list and perft commands.
#include "frontend/move_commands.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "control/input.h"
#include "control/search_limits.h"
#include "movegen/legal.h"
#include "movegen/perft.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/board.h"
#include "position/output.h"
#include "position/text.h"

void print_moves()
{
    MoveList list;
    list.count = 0;
    generate_moves(current_board, &list);
    char text[8];
    for (int i = 0; i < list.count; i++) {
        move_to_text(list.moves[i], text);
        out_puts(text);
    }
}

std::uint64_t perft_root(int depth, bool (*interrupted)())
{
    if (depth < 1) return 1;
    MoveList list;
    list.count = 0;
    generate_moves(current_board, &list);
    std::uint64_t total = 0;
    char text[8];
    for (int i = 0; i < list.count; i++) {
        Board copy = current_board;
        std::uint64_t key = current_key; // a scratch key: the game's own stays untouched
        apply_move_keyed(&copy, list.moves[i], &key);
        const std::uint64_t nodes = perft(depth - 1, copy, interrupted);
        if (interrupted && interrupted()) return total;
        move_to_text(list.moves[i], text);
        out_write(text, std::strlen(text));
        if (depth > 1)
            out_printf(": %llu\r\n", static_cast<unsigned long long>(nodes));
        else
            out_puts("\r");
        total += nodes;
    }
    return total;
}

namespace {

// Reads the input every 1024th question: `stop` and `quit` raise search_stop.
bool input_says_stop()
{
    static std::uint32_t asked = 0;
    if ((++asked & 0x3FF) == 0) poll_input();
    return search_stop != 0;
}

// Counts the tree `depth` plies below current_board and prints "depth=count" and the elapsed
// time; a count that `interrupted` ends prints a line that says so instead.
void count_and_print(int depth, bool (*interrupted)())
{
    const std::uint64_t start = clock_ms();
    const std::uint64_t nodes = depth == 0 ? 1 : perft_root(depth, interrupted);
    if (interrupted && search_stop)
        out_puts("info string perft stopped");
    else
        out_printf("%d=%llu\n", depth, static_cast<unsigned long long>(nodes));
    out_printf("elapsed time: %llu ms\n", static_cast<unsigned long long>(clock_ms() - start));
}

} // namespace

int run_perft(Session *session, const char *, char *rest)
{
    const char *word = next_token(&rest, ' ');
    if (!session->dialect->standard) {
        if (!word) return 0;
        const int depth = text_to_int(word);
        // A negative depth has no end; it is refused like a missing one.
        if (depth >= 0) count_and_print(depth, nullptr);
        return 0;
    }
    char *end = nullptr;
    const long depth = word ? std::strtol(word, &end, 10) : -1;
    if (!word || *end || depth < 0 || depth > 20) {
        out_printf(
            "info string perft needs a depth from 0 to 20, not '%.100s'\n", word ? word : "");
        return 0;
    }
    search_stop = 0;
    count_and_print(int(depth), input_says_stop);
    search_stop = 0;
    return 0;
}
