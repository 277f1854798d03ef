// Start-up and the command loop.
#include "frontend/engine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "control/input.h"
#include "control/search_limits.h"
#include "frontend/commands.h"
#include "movegen/attacks.h"
#include "platform/platform.h"
#include "position/board.h"
#include "position/fen.h"
#include "search/tt.h"

void engine_init()
{
    // The clock needs no start-up here. The attack tables come before anything touches a
    // position.
    init_attack_tables();
    current_board = start_board;
    new_game();
    if (!hash_allocate()) {
        static const char message[] = "Failed to allocate hash table\r\n";
        std::fwrite(message, 1, sizeof message - 1, stderr);
        std::exit(1);
    }
    search_depth_limit = default_depth;
    search_time_limit_ms = default_time_ms;
    time_limit_active = 1;
}

void command_loop()
{
    static char command_text[command_size];
    for (;;) {
        if (!take_queued_line(command_text)) {
            // A line that began during a search and ends on standard input is one line.
            const int begun = take_partial_line(command_text);
            const int read = stdin_read_line(command_text + begun, command_size - begun);
            if (begun == 0 && read == 0) break;
            // Only line ends at the very end are cut; blanks and tabs stay.
            std::size_t length = std::strlen(command_text);
            while (length > 0
                && (command_text[length - 1] == '\n' || command_text[length - 1] == '\r'))
                command_text[--length] = '\0';
            if (length == 0) continue;
        }
        if (handle_command(command_text)) break;
    }
    hash_free();
}
