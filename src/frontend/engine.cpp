// Start-up and the command loop.
#include "engine.h"

#include <cstring>

#include "apply.h"
#include "attacks.h"
#include "board.h"
#include "commands.h"
#include "input.h"
#include "platform.h"
#include "search_limits.h"
#include "zobrist.h"

void engine_init()
{
    // The clock needs no start-up here. The attack tables come before anything touches a
    // position.
    init_attack_tables();
    current_board = start_board;
    current_key = full_key(&current_board);
    key_history[0] = current_key;
    key_history_count = 1;
    search_depth_limit = default_depth;
    search_time_limit_ms = default_time_ms;
    time_limit_active = 1;
}

void command_loop()
{
    static char command_text[command_size];
    for (;;) {
        if (!take_queued_line(command_text)) {
            if (stdin_read_line(command_text, command_size) == 0) break;
            // Only line ends at the very end are cut; blanks and tabs stay.
            std::size_t length = std::strlen(command_text);
            while (length > 0
                && (command_text[length - 1] == '\n' || command_text[length - 1] == '\r'))
                command_text[--length] = '\0';
            if (length == 0) continue;
        }
        if (handle_command(command_text)) break;
    }
}
