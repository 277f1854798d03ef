// The line queue and the input poll.
#include "control/input.h"

#include <cctype>
#include <cstdlib>
#include <cstring>

#include "control/search_limits.h"
#include "platform/platform.h"

std::int32_t input_is_pipe = -1;

namespace {

InputRules rules = { &fixed_dialect, nullptr };
bool held = false;

// A growing buffer of bytes: the line the poll is putting together, and the queue.
struct Bytes {
    char *data = nullptr;
    std::size_t used = 0, capacity = 0;
};

// Makes room for `more` bytes behind `used`. Returns false when the memory can't be had.
bool reserve(Bytes *b, std::size_t more)
{
    if (b->used + more <= b->capacity) return true;
    std::size_t capacity = b->capacity ? b->capacity : 4096;
    while (capacity < b->used + more) capacity *= 2;
    char *grown = static_cast<char *>(std::realloc(b->data, capacity));
    if (!grown) return false;
    b->data = grown;
    b->capacity = capacity;
    return true;
}

// The line being read: its bytes, and whether it has outgrown the longest line taken whole.
Bytes partial;
bool partial_too_long = false;

// The queue: lines one after the other, each with its terminator, from `queue_head` on. An empty
// line (the terminator alone) stands for a line refused for its length.
Bytes queue;
std::size_t queue_head = 0;
int queue_count = 0;

bool store_line(const char *text, std::size_t length)
{
    const int most = rules.dialect->queued_lines;
    if (most > 0 && queue_count >= most) return false;
    if (queue_head == queue.used) queue_head = queue.used = 0;
    if (!reserve(&queue, length + 1)) return false;
    std::memcpy(queue.data + queue.used, text, length);
    queue.data[queue.used + length] = '\0';
    queue.used += length + 1;
    queue_count++;
    return true;
}

// The first word of `line` in lower case (fixed dialect) or as it stands (standard), into `word`.
void first_word(const char *line, char *word, int size)
{
    const char *c = line;
    while (*c == ' ' || *c == '\t') c++;
    int n = 0;
    for (; *c && *c != ' ' && *c != '\t' && n < size - 1; c++)
        word[n++]
            = rules.dialect->standard ? *c : char(std::tolower(static_cast<unsigned char>(*c)));
    word[n] = '\0';
}

// Deals with the finished line in `partial`: `stop` ends the search and is dropped, `quit` ends
// it and is queued; in the standard dialect `isready` is answered and `ponderhit` taken while the
// search runs on. Anything else is queued as it came.
void take_input_line()
{
    const Dialect &d = *rules.dialect;
    if (partial_too_long) {
        store_line("", 0);
        return;
    }
    char word[16];
    first_word(partial.data, word, sizeof word);
    if (!word[0]) return;
    if (std::strcmp(word, "stop") == 0) {
        search_stop = 1;
        return;
    }
    if (std::strcmp(word, "quit") == 0) search_stop = 1;
    // isready is answered at once unless lines wait before it, whose answers come first.
    if (d.answers_during_search && !search_stop && queue_count == 0
        && std::strcmp(word, "isready") == 0) {
        if (rules.answer_isready) rules.answer_isready();
        return;
    }
    if (d.answers_during_search && !search_stop && std::strcmp(word, "ponderhit") == 0) {
        ponder_hit();
        return;
    }
    // The text ends at a NUL, as the command loop reads it.
    store_line(partial.data, std::strlen(partial.data));
}

// Walks waiting bytes chunk by chunk, 512 at most, until a line has set search_stop. The fixed
// dialect drops the rest of that chunk; the standard dialect queues its lines after the stop
// (isready and ponderhit among them, now answered in order after the search).
void read_waiting_input()
{
    const Dialect &d = *rules.dialect;
    const std::size_t longest = std::size_t(d.longest_line);
    char chunk[512];
    for (;;) {
        const int got = stdin_take_waiting(chunk, sizeof chunk);
        if (got <= 0) return;
        for (int i = 0; i < got; i++) {
            const char c = chunk[i];
            if (c == '\r' || c == '\n') {
                if (partial.used == 0 && !partial_too_long) continue;
                if (!reserve(&partial, 1)) return;
                partial.data[partial.used] = '\0';
                take_input_line();
                partial.used = 0;
                partial_too_long = false;
                if (search_stop && d.stop_drops_rest) return;
                continue;
            }
            if (partial.used < longest) {
                if (!reserve(&partial, 2)) return;
                partial.data[partial.used++] = c;
            } else if (!d.splits_long_lines) {
                partial_too_long = true;
            }
        }
        // The standard dialect has kept the rest of the chunk, in order, behind a stop; what is
        // still unread waits for the command loop.
        if (search_stop) return;
    }
}

} // namespace

void set_input_rules(const InputRules &r) { rules = r; }

void hold_input(bool on) { held = on; }

void poll_input()
{
    const Dialect &d = *rules.dialect;
    if (input_is_pipe == -1) input_is_pipe = stdin_is_pipe() ? 1 : 0;
    if ((input_is_pipe == 0 && !d.polls_every_input) || search_stop || held) return;
    read_waiting_input();
    if (d.input_end_stops && stdin_closed()) search_stop = 1;
}

int take_partial_line(char *text, int size)
{
    if (partial_too_long) {
        partial.used = 0;
        partial_too_long = false;
        return -1;
    }
    const int length = int(partial.used) < size - 1 ? int(partial.used) : size - 1;
    if (length > 0) std::memcpy(text, partial.data, std::size_t(length));
    text[length] = '\0';
    partial.used = 0;
    return length;
}

int take_queued_line(char *text, int size)
{
    if (queue_count <= 0) return 0;
    const char *line = queue.data + queue_head;
    const std::size_t length = std::strlen(line);
    const std::size_t kept = length < std::size_t(size - 1) ? length : std::size_t(size - 1);
    std::memcpy(text, line, kept);
    text[kept] = '\0';
    queue_head += length + 1;
    queue_count--;
    return length == 0 ? -1 : 1;
}
