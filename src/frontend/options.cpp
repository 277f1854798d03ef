// The options of the standard dialect.
#include "frontend/options.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/platform.h"
#include "position/output.h"
#include "position/text.h"
#include "search/iterate.h"
#include "search/tt.h"

namespace {

bool same_words(const char *a, const char *b)
{
    for (; *a && *b; a++, b++)
        if ((*a | 0x20) != (*b | 0x20)) return false;
    return *a == *b;
}

// The table's sizes are powers of two: the largest such size the machine's memory allows, in
// MiB, is the Hash option's ceiling.
long long largest_hash_mib()
{
    const std::uint64_t memory = physical_memory_bytes() >> 20;
    return static_cast<long long>(std::bit_floor(memory ? memory : 4096));
}

void set_hash(Session *, long long mib)
{
    const long long asked = mib;
    mib = static_cast<long long>(std::bit_floor(std::uint64_t(mib)));
    if (mib != asked)
        out_printf("info string Hash %lld MiB is taken as %lld MiB (the table's sizes are powers "
                   "of two)\n",
            asked, mib);
    // Should the memory not come, ever smaller tables are tried.
    const long long wanted = mib;
    while (!hash_resize(std::uint64_t(mib) << 20) && mib > 1) mib /= 2;
    if (!hash_table) {
        out_puts("info string no memory for a hash table");
        out_flush();
        std::exit(1);
    }
    if (mib < wanted) out_printf("info string Hash is %lld MiB: no memory for more\n", mib);
}

void clear_hash(Session *, long long) { hash_clear(); }
void set_multipv(Session *session, long long lines) { session->multipv = int(lines); }
void set_overhead(Session *session, long long ms) { session->move_overhead_ms = int(ms); }
void set_nothing(Session *, long long) { }

struct option {
    const char *name;
    bool button; // a button takes no value; the others are spins
    long long fallback, lowest; // the default and the least value
    long long (*highest)();
    void (*set)(Session *session, long long value);
};

long long most_lines_allowed() { return most_lines; }
long long one() { return 1; }
long long a_minute() { return 60000; }

constexpr option options[] = {
    { "Hash", false, 16, 1, largest_hash_mib, set_hash },
    { "Clear Hash", true, 0, 0, nullptr, clear_hash },
    { "MultiPV", false, 1, 1, most_lines_allowed, set_multipv },
    { "Move Overhead", false, 10, 0, a_minute, set_overhead },
    // Testing frameworks set Threads for every engine; this one searches on one.
    { "Threads", false, 1, 1, one, set_nothing },
};

} // namespace

bool read_number(const char *text, long long *value)
{
    if (!text || !*text) return false;
    char *end = nullptr;
    errno = 0;
    *value = std::strtoll(text, &end, 10);
    return *end == '\0' && errno == 0;
}

void print_options()
{
    for (const option &o : options) {
        if (o.button)
            out_printf("option name %s type button\n", o.name);
        else
            out_printf("option name %s type spin default %lld min %lld max %lld\n", o.name,
                o.fallback, o.lowest, o.highest());
    }
}

int run_setoption(Session *session, const char *, char *rest)
{
    char name[256] = "", *value = nullptr;
    const char *word = next_token(&rest, ' ');
    if (!word || std::strcmp(word, "name") != 0) {
        out_puts("info string setoption needs: setoption name <name> [value <value>]");
        out_flush();
        return 0;
    }
    while ((word = next_token(&rest, ' '))) {
        if (std::strcmp(word, "value") == 0) {
            value = next_token(&rest, ' ');
            break;
        }
        if (name[0] && std::strlen(name) + 1 < sizeof name) std::strcat(name, " ");
        if (std::strlen(name) + std::strlen(word) < sizeof name) std::strcat(name, word);
    }
    for (const option &o : options) {
        if (!same_words(name, o.name)) continue;
        long long number = 0;
        if (!o.button
            && (!read_number(value, &number) || number < o.lowest || number > o.highest()))
            out_printf("info string %s takes a number from %lld to %lld, not '%.100s'\n", o.name,
                o.lowest, o.highest(), value ? value : "");
        else
            o.set(session, number);
        out_flush();
        return 0;
    }
    out_printf("info string no option named '%.100s'\n", name);
    out_flush();
    return 0;
}
