// Korvane: a UCI chess engine. With no argument it reads none and prints nothing until spoken
// to; the few arguments it knows are for tournament managers and testing frameworks.
#include <cstdio>
#include <cstring>

#include "frontend/commands.h"
#include "frontend/engine.h"
#include "frontend/search_commands.h"
#include "platform/platform.h"
#include "position/output.h"
#include "search/tt.h"

namespace {

const char usage[] = "Usage: korvane [--lf] [bench | --help | --version]\n"
                     "\n"
                     "With no argument Korvane is a UCI chess engine on standard input and "
                     "output;\n"
                     "type `help` at its prompt for its own commands.\n"
                     "\n"
                     "  --lf       end every output line in LF alone instead of CR LF, for\n"
                     "             tournament managers that split lines at LF only (fastchess)\n"
                     "  bench      search a fixed set of positions to fixed depths and end with\n"
                     "             the line \"<nodes> nodes <nps> nps\"\n"
                     "  --help     print this text\n"
                     "  --version  print the name and version\n";

bool is(const char *argument, const char *word) { return std::strcmp(argument, word) == 0; }

} // namespace

int main(int argc, char **argv)
{
    platform_init();
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    // Arguments may come in any order and combine; an unknown one ends the program before
    // anything else happens. --help wins over --version, which wins over bench.
    bool lf = false, help = false, version = false, bench = false;
    for (int i = 1; i < argc; i++) {
        if (is(argv[i], "--lf"))
            lf = true;
        else if (is(argv[i], "--help"))
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
    set_lf_only(lf);
    if (help) {
        out_write(usage, sizeof usage - 1);
        return 0;
    }
    if (version) {
        out_puts(engine_version);
        return 0;
    }
    engine_init();
    if (bench) {
        bench_command();
        hash_free();
    } else {
        command_loop();
    }
    return 0;
}
