// Korvane: a UCI chess engine. With no argument it reads none and prints nothing until spoken
// to; the few arguments it knows are for tournament managers and testing frameworks.
#include <cstdio>
#include <cstring>

#include "frontend/engine.h"
#include "frontend/go_command.h"
#include "movegen/attacks.h"
#include "platform/platform.h"
#include "position/board.h"
#include "position/fen.h"
#include "position/output.h"
#include "search/tt.h"

namespace {

// The release and the commit come from the build (the project version; git when the tree is a
// checkout); a build that doesn't pass them still says what it is.
#ifndef KORVANE_RELEASE
#define KORVANE_RELEASE "unknown release"
#endif
#ifndef KORVANE_COMMIT
#define KORVANE_COMMIT ""
#endif
// A build flavour for clients that start the engine by its bare path (testing frameworks, node
// libraries): 1 starts it as --lf does, 2 as --uci does.
#ifndef KORVANE_START_MODE
#define KORVANE_START_MODE 0
#endif

const char usage[]
    = "Usage: korvane [--lf | --uci] [bench | --help | -h | --version]\n"
      "\n"
      "With no argument Korvane is a UCI chess engine on standard input and output: it\n"
      "prints nothing until spoken to, then reads a command a line until quit or the end\n"
      "of input.\n"
      "\n"
      "  --lf          end every line in LF alone; without it the UCI answers, the board\n"
      "                picture and perft's lines end in CR LF (fastchess needs --lf)\n"
      "  --uci         the standard UCI dialect, for GUIs, analysis and tournaments: LF\n"
      "                line ends, the options Hash, Clear Hash, MultiPV, Move Overhead\n"
      "                and Threads, go infinite and ponder until stop, go nodes, mate\n"
      "                and searchmoves, mate scores, isready at once, every line carried\n"
      "                out in order, an info string line for each refused word\n"
      "  bench         search a fixed set of positions to fixed depths and end with the\n"
      "                line \"<nodes> nodes <nps> nps\"\n"
      "  --help, -h    print this text\n"
      "  --version     print the name, release and commit\n"
      "\n"
      "UCI commands: uci, isready, ucinewgame, setoption (ignored without --uci),\n"
      "position startpos|fen <fen> [moves ...], go [depth n] [movetime ms] [wtime ms\n"
      "btime ms winc ms binc ms movestogo n] (with --uci also nodes, mate, infinite,\n"
      "ponder, searchmoves), stop, ponderhit (--uci), quit.\n"
      "Debugging: printboard, boardkey, movlist, perft n, boardscore, sortedmoves, cls, help.\n"
      "See man 6 korvane.\n";

bool is(const char *argument, const char *word) { return std::strcmp(argument, word) == 0; }

} // namespace

int main(int argc, char **argv)
{
    platform_init();
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    // Arguments may come in any order and combine; an unknown one ends the program before
    // anything else happens. --help wins over --version, which wins over bench.
    bool lf = KORVANE_START_MODE == 1, standard = KORVANE_START_MODE == 2;
    bool help = false, version = false, bench = false;
    for (int i = 1; i < argc; i++) {
        if (is(argv[i], "--lf"))
            lf = true;
        else if (is(argv[i], "--uci"))
            standard = true;
        else if (is(argv[i], "--help") || is(argv[i], "-h"))
            help = true;
        else if (is(argv[i], "--version"))
            version = true;
        else if (is(argv[i], "bench"))
            bench = true;
        else {
            std::fprintf(stderr, "korvane: unknown argument '%s'; see korvane --help\n", argv[i]);
            return 2;
        }
    }
    Session session = { standard ? &standard_dialect : &fixed_dialect, 1, 10 };
    set_lf_only(lf || session.dialect->lf_only);
    if (help) {
        out_write(usage, sizeof usage - 1);
        return 0;
    }
    if (version) {
        if (KORVANE_COMMIT[0])
            out_puts("Korvane " KORVANE_RELEASE " (commit " KORVANE_COMMIT ")");
        else
            out_puts("Korvane " KORVANE_RELEASE " (built outside a git checkout: commit unknown)");
        return 0;
    }
    if (bench) {
        // The benchmark's own 16 MiB table, whatever the dialect's.
        init_attack_tables();
        current_board = start_board;
        new_game();
        if (!bench_command()) {
            std::fputs("Failed to allocate hash table\r\n", stderr);
            return 1;
        }
        hash_free();
        return 0;
    }
    engine_init(session);
    command_loop(&session);
    return 0;
}
