// libFuzzer target: each input is a session of command lines given to the dispatcher in-process,
// after one start-up, from the start position.
//
// The input is cut at every line feed; a line longer than 16383 characters goes on as the next
// line and trailing carriage returns are dropped, as the command loop reads standard input; a NUL
// ends the line's text where it stands, as it does for the dispatcher. Empty lines are skipped.
//
// What one input may cost is capped here, before each line reaches the dispatcher; the engine is
// not changed. In a line whose first word is `go` (words cut at blanks, each limit word taking the
// next word as its value, as the engine reads them), a `depth` value above 1 is lowered to 1 and
// a `movetime` value above 5 to 5; then " depth 1" is appended when the line would still search
// deeper than 1 (no limit word, a clock, or a move time alone), and " movetime 5" when it would
// still search without a time limit or a longer one (a depth alone, or a clock, whose budget a
// move time replaces). So every search stops at depth 1 or after 5 ms, whichever comes first:
// the root's move loop and the whole capture search under it still run, and the time limit ends
// the capture searches that explode on crowded garbled boards (two seconds and more each before).
// Those few searches end by the clock, so their coverage can vary from run to run. A `perft`
// depth above 2 is lowered to 2; a go line too long for the added words to be read is skipped.
// At most 4 lines of `go` and 4 of `perft` run per input; later ones are skipped. `quit` is
// dispatched like any line; its answer is ignored, so it does not end the process.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "control/input.h"
#include "frontend/commands.h"
#include "frontend/engine.h"
#include "frontend/parse_go.h"
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

// Replaces, from the last to the first, every value word found above its bound with the bound.
void cap_values(std::string &line, const std::vector<word> &words,
    const std::vector<std::pair<std::size_t, int>> &caps)
{
    for (auto it = caps.rbegin(); it != caps.rend(); ++it) {
        const word &w = words[it->first];
        if (text_to_int(text_of(line, w).c_str()) > it->second)
            line.replace(w.start, w.length, std::to_string(it->second));
    }
}

// Returns false when the line can't be held to max_depth and max_movetime.
bool cap_go(std::string &line)
{
    const std::vector<word> words = words_of(line);
    std::vector<std::pair<std::size_t, int>> caps;
    for (std::size_t i = 1; i + 1 < words.size(); i++) {
        const std::string name = text_of(line, words[i]);
        // Every limit word takes the next word as its value, as the engine reads them.
        for (const char *limit :
            { "depth", "movetime", "wtime", "btime", "winc", "binc", "movestogo" })
            if (name == limit) {
                if (name == "depth") caps.push_back({ i + 1, max_depth });
                if (name == "movetime") caps.push_back({ i + 1, max_movetime });
                i++;
                break;
            }
    }
    cap_values(line, words, caps);
    std::int32_t depth, time_ms, active;
    parse_go(line.c_str(), &depth, &time_ms, &active);
    if (depth > max_depth) {
        line += " depth " + std::to_string(max_depth);
        parse_go(line.c_str(), &depth, &time_ms, &active);
    }
    if (!active || time_ms > max_movetime) {
        line += " movetime " + std::to_string(max_movetime);
        parse_go(line.c_str(), &depth, &time_ms, &active);
    }
    // The engine reads only the first 4095 characters of a go line: past them the words added
    // are not seen, and the line is not run.
    return depth <= max_depth && active && time_ms <= max_movetime;
}

void cap_perft(std::string &line)
{
    const std::vector<word> words = words_of(line);
    if (words.size() >= 2) cap_values(line, words, { { 1, max_perft } });
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    engine_init();
    // The fuzzer's standard input is not a GUI: the search's poll must never read it.
    input_is_pipe = 0;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    handle_command("position startpos");
    handle_command("ucinewgame");
    int searches = 0, perfts = 0;
    std::size_t at = 0;
    while (at < size) {
        const std::uint8_t *end
            = static_cast<const std::uint8_t *>(std::memchr(data + at, '\n', size - at));
        std::size_t length = end ? std::size_t(end - (data + at)) : size - at;
        const std::size_t next = at + length + (end ? 1 : 0);
        std::string line(reinterpret_cast<const char *>(data + at), length);
        at = next;
        line.resize(std::strlen(line.c_str())); // the text ends at a NUL
        for (std::size_t piece = 0; piece < line.size(); piece += command_size - 1) {
            std::string command = line.substr(piece, command_size - 1);
            while (!command.empty() && command.back() == '\r') command.pop_back();
            if (command.empty()) continue;
            const std::vector<word> words = words_of(command);
            const std::string first = words.empty() ? "" : text_of(command, words[0]);
            if (first == "go") {
                if (++searches > max_runs) continue;
                if (!cap_go(command)) continue;
            } else if (first == "perft") {
                if (++perfts > max_runs) continue;
                cap_perft(command);
            }
            handle_command(command.c_str());
        }
    }
    return 0;
}
