// The table of command words and the commands that belong to the front end itself. A word is
// matched whole and case-sensitively; the first token is cut with the blank as the only
// separator, so "go\tdepth" is one unknown word.
#include "frontend/commands.h"

#include <cstdio>
#include <cstring>

#include "control/input.h"
#include "control/search_limits.h"
#include "frontend/display.h"
#include "frontend/eval_commands.h"
#include "frontend/move_commands.h"
#include "frontend/search_commands.h"
#include "frontend/standard_mode.h"
#include "position/fen.h"
#include "position/output.h"
#include "position/text.h"
#include "position/zobrist.h"
#include "search/tt.h"

namespace {

// A command gets the whole line as it came and the rest of the dispatcher's copy behind its word.
using command_function = int (*)(const char *line, char *rest);

int run_uci(const char *, char *)
{
    out_printf("id name %s \r\n", engine_version);
    out_puts("id author Brennik Dolmar\r");
    out_puts("uciok\r");
    out_flush();
    return 0;
}

int run_isready(const char *, char *)
{
    // A GUI asks this before it starts the clock: the table's memory is had now, not page by
    // page during the first searches.
    hash_touch();
    out_puts("readyok\r");
    out_flush();
    return 0;
}

int run_ucinewgame(const char *, char *)
{
    hash_clear();
    new_game();
    return 0;
}

int run_nothing(const char *, char *) { return 0; }

int run_printboard(const char *, char *)
{
    print_board();
    return 0;
}

int run_position(const char *line, char *rest)
{
    const char *word = next_token(&rest, ' ');
    if (!word) return 0;
    if (std::strcmp(word, "fen") == 0) set_position_fen(line);
    if (std::strcmp(word, "startpos") == 0) set_position_start(line);
    // The hash table keeps nothing across a new position.
    if (std::strcmp(word, "fen") == 0 || std::strcmp(word, "startpos") == 0) hash_clear();
    return 0;
}

int run_stop(const char *, char *)
{
    search_stop = 1;
    return 0;
}

int run_quit(const char *, char *) { return 1; }

int run_boardkey(const char *, char *)
{
    out_printf("static  key: %llx\n", static_cast<unsigned long long>(current_key));
    out_printf("current key: %llx\n", static_cast<unsigned long long>(full_key(&current_board)));
    return 0;
}

int run_perft(const char *, char *rest)
{
    perft_command(rest);
    return 0;
}

int run_movlist(const char *, char *)
{
    print_moves();
    return 0;
}

int run_cls(const char *, char *)
{
    clear_console();
    return 0;
}

int run_help(const char *, char *)
{
    out_puts("boardkey: Shows the current board zobrist hash value calculated in incremental and "
             "full methods");
    out_puts("perft n: perft command inorder to debug move generator bugs");
    out_puts("movlist: display the current move list (not sorted)");
    out_puts("sortedmoves: display the sorted current move list by their assigned score");
    out_puts("boardscore: display the current board evaluation info");
    out_puts("cls: clear the screen");
    out_puts("printboard: prints the current board on the screen");
    out_printf("go: default search limit depth %d and max %d ms\n", default_depth, default_time_ms);
    out_printf("go depth n: search exactly up to depth n (clamped to %d)\n", depth_ceiling);
    out_puts("go movetime n: search for at most n milliseconds");
    out_puts("go depth n movetime m: stop at whichever limit is reached first");
    return 0;
}

struct command {
    const char *word;
    command_function run;
};

// Tried top to bottom; the first whole-word match decides.
constexpr command commands[] = {
    { "uci", run_uci },
    { "isready", run_isready },
    { "ucinewgame", run_ucinewgame },
    { "setoption", run_nothing }, // the engine has no options
    { "printboard", run_printboard },
    { "boardscore", run_boardscore },
    { "position", run_position },
    { "go", run_go },
    { "stop", run_stop },
    { "quit", run_quit },
    { "boardkey", run_boardkey },
    { "perft", run_perft },
    { "movlist", run_movlist },
    { "cls", run_cls },
    { "sortedmoves", run_sortedmoves },
    { "help", run_help },
};

} // namespace

int handle_command(const char *text)
{
    return standard_mode ? standard_command(text) : default_command(text);
}

int default_command(const char *text)
{
    static char copy[command_size];
    copy_cut(copy, text, sizeof copy);
    char *rest = copy;
    const char *word = next_token(&rest, ' ');
    if (!word) return 0;
    for (const command &c : commands)
        if (std::strcmp(word, c.word) == 0) return c.run(text, rest);
    return 0;
}
