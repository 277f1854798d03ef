// The table of command words, for both dialects, and the commands that belong to the front end
// itself. A word is matched whole and case-sensitively. The fixed dialect cuts the first token
// with the blank as the only separator, so "go\tdepth" is one unknown word there; the standard
// dialect takes tabs as blanks.
#include "frontend/commands.h"

#include <cstdio>
#include <cstring>

#include "control/input.h"
#include "control/search_limits.h"
#include "frontend/display.h"
#include "frontend/eval_commands.h"
#include "frontend/go_command.h"
#include "frontend/move_commands.h"
#include "frontend/options.h"
#include "frontend/position_command.h"
#include "position/fen.h"
#include "position/output.h"
#include "position/text.h"
#include "position/zobrist.h"
#include "search/tt.h"

namespace {

// A command gets the session, the whole line as it came and the rest of the dispatcher's copy
// behind its word.
using command_function = int (*)(Session *session, const char *line, char *rest);

int run_uci(Session *session, const char *, char *)
{
    if (session->dialect->standard) {
        out_printf("id name %s\n", engine_version);
        out_puts("id author Brennik Dolmar");
        print_options();
        out_puts("uciok");
    } else {
        out_printf("id name %s \r\n", engine_version);
        out_puts("id author Brennik Dolmar\r");
        out_puts("uciok\r");
    }
    out_flush();
    return 0;
}

int run_isready(Session *, const char *, char *)
{
    // A GUI asks this before it starts the clock: the table's memory is had now, not page by
    // page during the first searches.
    hash_touch();
    out_puts("readyok\r");
    out_flush();
    return 0;
}

int run_ucinewgame(Session *, const char *, char *)
{
    hash_clear();
    new_game();
    return 0;
}

int run_nothing(Session *, const char *, char *) { return 0; }

int run_printboard(Session *session, const char *, char *)
{
    print_board(session->dialect->fifty_from_hundred);
    return 0;
}

int run_stop(Session *, const char *, char *)
{
    // No search is running when this word gets here: it has no lasting effect.
    search_stop = 1;
    return 0;
}

int run_quit(Session *, const char *, char *) { return 1; }

int run_boardkey(Session *, const char *, char *)
{
    out_printf("static  key: %llx\n", static_cast<unsigned long long>(current_key));
    out_printf("current key: %llx\n", static_cast<unsigned long long>(full_key(&current_board)));
    return 0;
}

int run_movlist(Session *, const char *, char *)
{
    print_moves();
    return 0;
}

int run_cls(Session *, const char *, char *)
{
    clear_console();
    return 0;
}

int run_help(Session *session, const char *, char *)
{
    out_puts("boardkey: Shows the current board zobrist hash value calculated in incremental and "
             "full methods");
    out_puts("perft n: perft command inorder to debug move generator bugs");
    out_puts("movlist: display the current move list (not sorted)");
    out_puts("sortedmoves: display the sorted current move list by their assigned score");
    out_puts("boardscore: display the current board evaluation info");
    out_puts("cls: clear the screen");
    out_puts("printboard: prints the current board on the screen");
    const Dialect &d = *session->dialect;
    if (d.standard) {
        out_puts("go: searches until stop, or to the limits given: depth, nodes, mate, movetime, "
                 "wtime btime winc binc movestogo, searchmoves; infinite and ponder wait for stop");
        out_printf("go depth n: search up to depth n (at most %d)\n", d.deepest_iteration);
        out_puts("setoption name <name> value <value>: the options the uci answer lists");
        return 0;
    }
    out_printf("go: default search limit depth %d and max %d ms\n", default_depth, default_time_ms);
    out_printf("go depth n: search exactly up to depth n (clamped to %d)\n", d.deepest_iteration);
    out_puts("go movetime n: search for at most n milliseconds");
    out_puts("go depth n movetime m: stop at whichever limit is reached first");
    return 0;
}

// Which dialects take a word.
enum : unsigned { fixed = 1, standard = 2, both = fixed | standard };

struct command {
    const char *word;
    command_function run;
    unsigned dialects;
};

// Tried top to bottom; the first whole-word match of the dialect decides.
constexpr command commands[] = {
    { "uci", run_uci, both },
    { "isready", run_isready, both },
    { "ucinewgame", run_ucinewgame, both },
    { "setoption", run_nothing, fixed }, // the fixed dialect has no options
    { "setoption", run_setoption, standard },
    { "printboard", run_printboard, both },
    { "boardscore", run_boardscore, both },
    { "position", run_position, both },
    { "go", run_go, both },
    { "stop", run_stop, both },
    { "ponderhit", run_nothing, standard }, // with no search running
    { "debug", run_nothing, standard },
    { "register", run_nothing, standard },
    { "quit", run_quit, both },
    { "boardkey", run_boardkey, both },
    { "perft", run_perft, both },
    { "movlist", run_movlist, both },
    { "cls", run_cls, both },
    { "sortedmoves", run_sortedmoves, both },
    { "help", run_help, both },
};

} // namespace

int handle_command(Session *session, const char *text)
{
    const Dialect &d = *session->dialect;
    static char copy[(1 << 20) + 1];
    copy_cut(copy, text, std::size_t(d.longest_line) + 1);
    if (d.tabs_are_blanks)
        for (char *c = copy; *c; c++)
            if (*c == '\t') *c = ' ';
    char *rest = copy;
    const char *word = next_token(&rest, ' ');
    if (!word) return 0;
    const unsigned mine = d.standard ? standard : fixed;
    for (const command &c : commands)
        if ((c.dialects & mine) && std::strcmp(word, c.word) == 0)
            return c.run(session, text, rest);
    if (d.standard) {
        out_printf("info string unknown command '%.100s'\n", word);
        out_flush();
    }
    return 0;
}
