// Start-up and the command loop.
#include "frontend/engine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "control/input.h"
#include "frontend/commands.h"
#include "movegen/attacks.h"
#include "platform/platform.h"
#include "position/board.h"
#include "position/fen.h"
#include "position/output.h"
#include "search/tt.h"

namespace {

void answer_isready()
{
    out_puts("readyok");
    out_flush();
}

// Skips what is left of a line that is too long to take, up to and including its line feed.
void skip_rest_of_line(char *scratch, int size)
{
    for (;;) {
        const int read = stdin_read_line(scratch, size);
        if (read == 0 || scratch[read - 1] == '\n') return;
    }
}

} // namespace

void engine_init(const Session &session)
{
    // The clock needs no start-up here. The attack tables come before anything touches a
    // position.
    init_attack_tables();
    current_board = start_board;
    new_game();
    set_input_rules({ session.dialect, answer_isready });
    if (!hash_resize(session.dialect->table_bytes)) {
        static const char message[] = "Failed to allocate hash table\r\n";
        std::fwrite(message, 1, sizeof message - 1, stderr);
        std::exit(1);
    }
}

void command_loop(Session *session)
{
    const Dialect &d = *session->dialect;
    // Room for the longest line the dialect takes whole, and one character more to tell a longer
    // one by (the fixed dialect's 16383 characters; the standard dialect's 1 MiB).
    static char command_text[(1 << 20) + 2];
    const int size = d.longest_line + (d.splits_long_lines ? 1 : 2);
    for (;;) {
        int taken = take_queued_line(command_text, size);
        if (taken == 0) {
            // A line that began during a search and ends on standard input is one line.
            const int begun = take_partial_line(command_text, size);
            const int read = begun < 0 ? 0 : stdin_read_line(command_text + begun, size - begun);
            if (begun == 0 && read == 0) break;
            // A line that fills the buffer without its line feed is longer than the dialect
            // takes whole (its CR counts, when it ends in CR LF); the bytes read count, a NUL
            // among them, and the text ends at the NUL afterwards.
            const int got = begun + read;
            taken = 1;
            if (begun < 0
                || (!d.splits_long_lines && got == size - 1 && command_text[got - 1] != '\n')) {
                skip_rest_of_line(command_text, size);
                taken = -1;
            }
            std::size_t length = std::strlen(command_text);
            // Only line ends at the very end are cut; blanks and tabs stay.
            while (length > 0
                && (command_text[length - 1] == '\n' || command_text[length - 1] == '\r'))
                command_text[--length] = '\0';
            if (length == 0 && taken == 1) continue;
        }
        if (taken < 0) {
            out_printf("info string line refused: longer than %d characters\n", d.longest_line);
            out_flush();
            continue;
        }
        if (handle_command(session, command_text)) break;
    }
    hash_free();
}
