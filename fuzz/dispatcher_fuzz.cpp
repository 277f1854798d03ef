// libFuzzer target: each input is a session of command lines given to the dispatcher in-process,
// after one start-up, from the start position. The input's first byte picks the dialect: odd for
// the standard one, even for the fixed one; the lines follow it.
//
// The input is cut at every line feed; a line longer than 16383 characters goes on as the next
// line and trailing carriage returns are dropped, as the command loop reads standard input; a NUL
// ends the line's text where it stands, as it does for the dispatcher. Empty lines are skipped.
//
// What one input may cost is capped here, before each line reaches the dispatcher; the engine is
// not changed. A line whose first word is `go` gets " depth 1" at its end when, as the engine
// reads it, it would search deeper than 1 (no limit word, a clock, or a move time alone), then
// " movetime 5" when it would search without a time limit or a longer one (a depth alone, or a
// clock, whose budget a move time replaces); the engine keeps the later of two values of a word,
// so the added ones hold. Every search thus stops at depth 1 or after 5 ms, whichever comes
// first: the root's move loop and the whole capture search under it still run, and the time
// limit ends the capture searches that explode on crowded garbled boards (two seconds and more
// each before). Those few searches end by the clock, so their coverage can vary from run to run.
// A go line whose added words the engine would not read is skipped, and so is a standard go line
// that would wait for a `stop` (infinite, ponder), which no input here can send. A `perft` depth
// above 2 is lowered to 2. At most 4 lines of `go` and 4 of `perft` run per input; later ones are
// skipped. `quit` is dispatched like any line; its answer is ignored, so it does not end the
// process.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "control/input.h"
#include "frontend/commands.h"
#include "frontend/engine.h"
#include "frontend/go_command.h"
#include "position/output.h"
#include "position/text.h"

namespace {

constexpr int max_depth = 1, max_movetime = 5;
constexpr int max_perft = 2, max_runs = 4;

// The blank-separated words of `line` with where each starts, as next_token cuts them.
struct word {
    std::size_t start, length;
};

std::vector<word> words_of(const std::string &line)
{
    std::vector<word> words;
    std::size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && line[i] == ' ') i++;
        if (i == line.size()) break;
        const std::size_t start = i;
        while (i < line.size() && line[i] != ' ') i++;
        words.push_back({ start, i - start });
    }
    return words;
}

std::string text_of(const std::string &line, const word &w)
{
    return line.substr(w.start, w.length);
}

Session sessions[2] = { { &fixed_dialect, 1, 10 }, { &standard_dialect, 1, 10 } };

// The limits of a go line as `session` reads them.
SearchLimits limits_of(const Session &session, const std::string &line)
{
    static SearchRequest request;
    std::string rest = line.size() > 2 ? line.substr(3) : "";
    for (char &c : rest)
        if (c == '\t') c = ' ';
    read_go(session, line.c_str(), rest.data(), &request);
    return request.limits;
}

// Returns false when the line can't be held to max_depth and max_movetime. Of two values of one
// limit word the engine keeps the later, so the added words win.
bool cap_go(const Session &session, std::string &line)
{
    SearchLimits l = limits_of(session, line);
    if (l.waits_for_stop) return false;
    if (l.depth > max_depth) {
        line += " depth " + std::to_string(max_depth);
        l = limits_of(session, line);
    }
    if (!l.timed || l.time_ms > max_movetime) {
        line += " movetime " + std::to_string(max_movetime);
        l = limits_of(session, line);
    }
    // The fixed dialect reads only the first 4095 characters of a go line, and a limit word ending
    // the line takes the first added word as its value: then the words added are not all seen,
    // and the line is not run.
    return l.depth <= max_depth && l.timed && l.time_ms <= max_movetime && !l.waits_for_stop;
}

void cap_perft(std::string &line)
{
    const std::vector<word> words = words_of(line);
    if (words.size() < 2) return;
    const word &value = words[1];
    if (text_to_int(text_of(line, value).c_str()) > max_perft)
        line.replace(value.start, value.length, std::to_string(max_perft));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    engine_init(sessions[0]);
    // The fuzzer's standard input is not a GUI: the search's poll must never read it, in either
    // dialect.
    static Dialect quiet_input = standard_dialect;
    quiet_input.polls_every_input = false;
    quiet_input.input_end_stops = false;
    set_input_rules({ &quiet_input, nullptr });
    input_is_pipe = 0;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) return 0;
    Session &session = sessions[data[0] & 1];
    data++;
    size--;
    set_lf_only(session.dialect->lf_only);
    handle_command(&session, "position startpos");
    handle_command(&session, "ucinewgame");
    int searches = 0, perfts = 0;
    const std::size_t piece_size = std::size_t(session.dialect->longest_line);
    std::size_t at = 0;
    while (at < size) {
        const std::uint8_t *end
            = static_cast<const std::uint8_t *>(std::memchr(data + at, '\n', size - at));
        std::size_t length = end ? std::size_t(end - (data + at)) : size - at;
        const std::size_t next = at + length + (end ? 1 : 0);
        std::string line(reinterpret_cast<const char *>(data + at), length);
        at = next;
        line.resize(std::strlen(line.c_str())); // the text ends at a NUL
        for (std::size_t piece = 0; piece < line.size(); piece += piece_size) {
            std::string command = line.substr(piece, piece_size);
            while (!command.empty() && command.back() == '\r') command.pop_back();
            // The standard dialect reads tabs as blanks, and so must the caps.
            if (session.dialect->tabs_are_blanks)
                for (char &c : command)
                    if (c == '\t') c = ' ';
            if (command.empty()) continue;
            const std::vector<word> words = words_of(command);
            const std::string first = words.empty() ? "" : text_of(command, words[0]);
            if (first == "go") {
                if (++searches > max_runs) continue;
                if (!cap_go(session, command)) continue;
            } else if (first == "perft") {
                if (++perfts > max_runs) continue;
                cap_perft(command);
            }
            handle_command(&session, command.c_str());
        }
    }
    return 0;
}
