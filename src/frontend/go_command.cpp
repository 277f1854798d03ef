// The `go`, `sortedmoves` and `bench` words: the text side of the search.
#include "frontend/go_command.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "control/input.h"
#include "frontend/options.h"
#include "frontend/position_command.h"
#include "movegen/legal.h"
#include "platform/platform.h"
#include "position/board.h"
#include "position/output.h"
#include "position/text.h"
#include "search/alpha_beta.h"
#include "search/bench.h"
#include "search/ordering.h"
#include "search/tt.h"

namespace {

// The fixed dialect's reading of a go line (its whole text): depth, move time and the clock
// words, each taking the next token as its value; a value out of range is dropped but consumed.
// A bare or unreadable line gives 6 plies within 5.5 s; a clock with a depth gives the depth
// alone; a clock without a move time gives its budget and the deepest iteration.
void read_fixed_go(const Dialect &d, const char *line, SearchLimits *limits)
{
    std::int32_t depth = default_depth, time_ms = default_time_ms, active = 1;
    bool depth_seen = false, movetime_seen = false, clock_seen = false;
    std::int32_t wtime = -1, btime = -1, winc = 0, binc = 0, moves_to_go = 0;
    char buffer[4096];
    copy_cut(buffer, line, sizeof buffer);
    char *cursor = buffer;
    next_token(&cursor, ' '); // the word `go`
    for (char *word; (word = next_token(&cursor, ' '));) {
        struct rule {
            const char *name;
            std::int32_t *target;
            std::int32_t lowest;
            bool *seen;
        };
        const rule rules[] = {
            { "depth", &depth, 1, &depth_seen },
            { "movetime", &time_ms, 1, &movetime_seen },
            { "wtime", &wtime, 0, &clock_seen },
            { "btime", &btime, 0, &clock_seen },
            { "winc", &winc, 0, &clock_seen },
            { "binc", &binc, 0, &clock_seen },
            { "movestogo", &moves_to_go, 1, &clock_seen },
        };
        for (const rule &r : rules) {
            if (std::strcmp(word, r.name) != 0) continue;
            char *value_text = next_token(&cursor, ' ');
            if (!value_text) break;
            const std::int32_t value = text_to_int(value_text);
            if (value >= r.lowest) {
                *r.target = value;
                *r.seen = true;
            }
            break;
        }
    }
    const std::int32_t ceiling = d.time_ceiling_ms;
    if (depth_seen && depth > d.deepest_iteration) depth = d.deepest_iteration;
    if (movetime_seen && time_ms > ceiling) time_ms = ceiling;
    bool budget_set = false, depth_alone = false;
    if (clock_seen && !movetime_seen) {
        const std::int32_t remaining = current_board.white_to_move ? wtime : btime;
        const std::int32_t increment = current_board.white_to_move ? winc : binc;
        if (remaining > 0) {
            time_ms = std::int32_t(
                clock_budget(remaining, increment, moves_to_go, ceiling, d.lowest_budget_ms));
            budget_set = true;
            depth_alone = depth_seen;
            if (!depth_seen) depth = d.deepest_iteration;
        }
    }
    if (!budget_set) {
        depth_alone = depth_seen && !movetime_seen;
        if (movetime_seen && !depth_seen) depth = d.deepest_iteration;
    }
    if (depth_alone) {
        active = 0;
        time_ms = 0;
    }
    if (active && time_ms > ceiling) time_ms = ceiling;
    limits->depth = depth;
    limits->time_ms = limits->soft_time_ms = time_ms;
    limits->timed = active != 0;
}

// The words of a standard go line that take a number: indexes into the reader's values.
enum { depth, nodes, movetime, mate, wtime, btime, winc, binc, movestogo, number_words };
constexpr const char *number_names[number_words]
    = { "depth", "nodes", "movetime", "mate", "wtime", "btime", "winc", "binc", "movestogo" };
// The least value each takes: a value below it is raised to it, the UCI convention for a depth of
// 0 or a clock run below zero; -1 marks a word whose value below 1 is ignored instead.
constexpr long long number_lowest[number_words] = { 1, -1, 0, -1, 0, 0, 0, 0, -1 };

// The words a go line could not take as they stand, gathered for one `info string` line.
struct Notes {
    char text[1024];
    int length;
};

#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void note(Notes *notes, const char *format, ...)
{
    // A line full of faults is named as far as one line holds.
    if (notes->length > int(sizeof notes->text) - 200) return;
    if (notes->length > 0) notes->text[notes->length++] = ';';
    const std::size_t room = sizeof notes->text - std::size_t(notes->length);
    va_list arguments;
    va_start(arguments, format);
    const int written = std::vsnprintf(notes->text + notes->length, room, format, arguments);
    va_end(arguments);
    if (written > 0) notes->length += std::size_t(written) < room ? written : int(room) - 1;
}

// The standard dialect's reading: every limit given holds; without any the search runs until
// `stop` or its deepest iteration. See read_go.
void read_standard_go(const Session &session, char *rest, SearchRequest *request)
{
    const Dialect &d = *session.dialect;
    long long value[number_words] = {};
    bool seen[number_words] = {};
    bool infinite = false, ponder = false, in_searchmoves = false;
    Notes notes = { "", 0 };
    request->root_move_count = -1;
    int given = 0;
    char *word = next_token(&rest, ' ');
    while (word) {
        int n = 0;
        while (n < number_words && std::strcmp(word, number_names[n]) != 0) n++;
        if (n < number_words) {
            in_searchmoves = false;
            char *text = next_token(&rest, ' ');
            long long v = 0;
            if (!text || !read_number(text, &v)) {
                note(&notes, " %s without a number (ignored)", number_names[n]);
                word = text; // the token that was no number is read as a word of its own
                continue;
            }
            // A value beyond any clock (some 30 years of milliseconds) counts as that, so that
            // no sum or product of the values overflows.
            constexpr long long top_value = 1000000000000ll;
            if (v > top_value) v = top_value;
            if (number_lowest[n] < 0 && v < 1) {
                note(&notes, " %s %lld (ignored: it takes a number from 1)", number_names[n], v);
            } else {
                if (v < number_lowest[n]) {
                    note(&notes, " %s %lld (taken as %lld)", number_names[n], v, number_lowest[n]);
                    v = number_lowest[n];
                }
                value[n] = v;
                seen[n] = true;
            }
        } else if (std::strcmp(word, "infinite") == 0) {
            infinite = true;
            in_searchmoves = false;
        } else if (std::strcmp(word, "ponder") == 0) {
            ponder = true;
            in_searchmoves = false;
        } else if (std::strcmp(word, "searchmoves") == 0) {
            in_searchmoves = true;
        } else if (in_searchmoves) {
            const Move move = legal_move_named(current_board, word);
            if (!move)
                note(&notes, " searchmoves %.40s (ignored: not a legal move here)", word);
            else if (given < max_moves)
                request->root_moves[given++] = move;
        } else {
            note(&notes, " '%.40s' (ignored: not a word of go)", word);
        }
        word = next_token(&rest, ' ');
    }
    if (given > 0) request->root_move_count = given;
    if (seen[depth] && value[depth] > d.deepest_iteration)
        note(&notes, " depth %lld (taken as %d, the deepest iteration)", value[depth],
            d.deepest_iteration);
    if (notes.length > 0) {
        out_printf("info string go ignored or clamped:%s\n", notes.text);
        out_flush();
    }

    SearchLimits &limits = request->limits;
    long long last = d.deepest_iteration;
    if (seen[depth] && value[depth] < last) last = value[depth];
    if (seen[mate] && value[mate] < last)
        last = 2 * value[mate] - 1 < last ? 2 * value[mate] - 1 : last;
    const bool white = current_board.white_to_move;
    const int own = white ? wtime : btime, own_increment = white ? winc : binc;
    long long budget = -1, soft = -1;
    if (seen[movetime]) {
        budget = soft = value[movetime];
    } else if (seen[own]) {
        std::int64_t soft_budget = 0;
        budget = tournament_budget(value[own], value[own_increment], value[movestogo],
            session.move_overhead_ms, &soft_budget);
        soft = soft_budget;
        // A forced move with a clock running is played at once.
        MoveList list;
        list.count = 0;
        generate_moves(current_board, &list);
        if (list.count == 1 && !infinite && !ponder) last = 1;
    }
    constexpr long long top = 2147483647;
    limits.depth = std::int32_t(last);
    limits.nodes = seen[nodes] && !infinite
        ? std::uint64_t(value[nodes] < 0xFFFFFFFFll ? value[nodes] : 0xFFFFFFFFll)
        : 0;
    limits.waits_for_stop = infinite || ponder;
    limits.ponder_budget_ms
        = ponder && budget >= 0 ? std::int32_t(budget < top ? budget : top) : -1;
    limits.timed = !limits.waits_for_stop && (budget >= 0 || limits.nodes);
    limits.time_ms = budget >= 0 && budget < top ? std::int32_t(budget) : std::int32_t(top);
    limits.soft_time_ms = soft >= 0 && soft < top ? std::int32_t(soft) : std::int32_t(top);
}

// Whether the lines carry their multipv number (more than one line asked).
bool numbered_lines = false;

void print_fixed_line(const SearchLine &l)
{
    out_printf("info depth %d time %d nodes %llu score cp %d pv %s\n", l.depth, l.time_ms,
        static_cast<unsigned long long>(std::uint64_t(l.alpha_beta_nodes)), l.score, l.pv);
}

void print_standard_line(const SearchLine &l)
{
    constexpr std::int32_t mate_bound = mate_score - 1000; // scores beyond it are mates
    char score[32];
    if (l.score > mate_bound)
        std::snprintf(score, sizeof score, "mate %d", (mate_score - l.score + 1) / 2);
    else if (l.score < -mate_bound)
        std::snprintf(score, sizeof score, "mate -%d", (mate_score + l.score) / 2);
    else
        std::snprintf(score, sizeof score, "cp %d", l.score);
    char multipv_field[24] = "";
    if (numbered_lines)
        std::snprintf(multipv_field, sizeof multipv_field, " multipv %d", l.multipv);
    const std::uint64_t time = std::uint64_t(l.time_ms > 0 ? l.time_ms : 0);
    out_printf("info depth %d%s score %s nodes %llu nps %llu hashfull %d time %llu pv %s\n",
        l.depth, multipv_field, score, static_cast<unsigned long long>(l.nodes),
        static_cast<unsigned long long>(l.nodes * 1000 / (time ? time : 1)), hash_full_permille(),
        static_cast<unsigned long long>(time), l.pv);
    out_flush();
}

void print_bench_line(const bench_result &r)
{
    out_printf("%2d  depth %d  best %-5s  alpha-beta %9llu  quiescence %10llu  %8.1f ms\n",
        r.index + 1, bench_positions[r.index].depth, r.best,
        static_cast<unsigned long long>(r.nodes),
        static_cast<unsigned long long>(r.quiescence_nodes), r.ms);
}

} // namespace

void read_go(const Session &session, const char *line, char *rest, SearchRequest *request)
{
    const Dialect &d = *session.dialect;
    request->dialect = &d;
    request->limits = SearchLimits {};
    request->limits.ponder_budget_ms = -1;
    request->lines = 1;
    request->root_move_count = -1;
    if (d.standard) {
        request->lines = session.multipv;
        read_standard_go(session, rest, request);
    } else {
        read_fixed_go(d, line, &request->limits);
    }
    request->limits.start_ms = clock_ms_real();
}

int run_go(Session *session, const char *line, char *rest)
{
    const std::uint64_t start = clock_ms();
    const Dialect &d = *session->dialect;
    static SearchRequest request;
    static SearchResult result;
    read_go(*session, line, rest, &request);
    numbered_lines = request.lines > 1;
    // A board without exactly one king of each colour can't be searched: there is no move to
    // give, and the answer comes at once.
    if (one_king_each(current_board)) {
        run_search(request, d.standard ? print_standard_line : print_fixed_line, &result);
    } else {
        std::strcpy(result.best, "0000");
        result.ponder[0] = '\0';
        result.legal_moves = d.standard ? 0 : 1;
        result.mated = false;
    }
    if (d.standard && result.legal_moves == 0)
        out_puts(result.mated ? "info depth 0 score mate 0" : "info depth 0 score cp 0");
    // An analysis answers only once it is told to stop, whatever depth it reached.
    while (waits_for_stop && !search_stop) {
        poll_input();
        sleep_ms(1);
    }
    waits_for_stop = 0;
    // The CR of the protocol's literal goes where the dialect's line ends keep it.
    if (result.legal_moves == 0 && d.standard)
        out_puts("bestmove (none)\r");
    else if (result.ponder[0])
        out_printf("bestmove %s ponder %s\r\n", result.best, result.ponder);
    else
        out_printf("bestmove %s\r\n", result.best);
    if (d.elapsed_line)
        out_printf("elapsed time: %llu ms\n", static_cast<unsigned long long>(clock_ms() - start));
    out_flush();
    return 0;
}

int run_sortedmoves(Session *, const char *, char *)
{
    // Without exactly one king of each colour there is no move list to show.
    if (!one_king_each(current_board)) return 0;
    MoveList list;
    list.count = 0;
    generate_moves(current_board, &list);
    if (list.count == 0) return 0;
    std::int32_t scores[max_moves];
    score_moves(0, current_board, &list, scores);
    const Move line_start = pv_length[0] > 0 ? pv_cell(0, 0) : 0;
    for (int i = 0; i < list.count; i++) {
        char text[8];
        move_to_text(list.moves[i], text);
        const bool marked = line_start != 0 && same_move(line_start, list.moves[i]);
        out_printf("%s: %d   %s\n", text, scores[i], marked ? "True" : "False");
    }
    return 0;
}

bool bench_command()
{
    const bench_result total = run_bench(bench_position_count, print_bench_line);
    if (total.index < 0) return false;
    const std::uint64_t nodes = total.nodes + total.quiescence_nodes;
    const std::uint64_t per_second
        = total.ms > 0 ? std::uint64_t(double(nodes) * 1000.0 / total.ms) : 0;
    out_printf("%llu nodes %llu nps\n", static_cast<unsigned long long>(nodes),
        static_cast<unsigned long long>(per_second));
    out_flush();
    return true;
}
