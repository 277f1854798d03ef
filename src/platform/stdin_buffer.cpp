// The one buffer of standard input, the same on every system: the command loop's blocking line
// reader and the search's non-blocking take both draw from it, so no line can hide where the other
// route can't see it. The system modules supply the two reads it needs (platform/system_input.h).
#include "platform/platform.h"
#include "platform/system_input.h"

#include <cstring>

namespace {

// Bytes read from standard input and not yet taken: stdin_buffer[start, end).
char stdin_buffer[65536];
int stdin_start = 0, stdin_end = 0;
bool stdin_ended = false;

// One read of at most `most` bytes into the free part of the buffer; false at the end of input
// or on an error, after which nothing more is read.
bool fill_buffer(int most)
{
    if (stdin_ended) return false;
    if (stdin_start == stdin_end) stdin_start = stdin_end = 0;
    if (stdin_start > 0 && stdin_end == int(sizeof stdin_buffer)) {
        std::memmove(
            stdin_buffer, stdin_buffer + stdin_start, std::size_t(stdin_end - stdin_start));
        stdin_end -= stdin_start;
        stdin_start = 0;
    }
    const int room = int(sizeof stdin_buffer) - stdin_end;
    const int got = system_read(stdin_buffer + stdin_end, most < room ? most : room);
    if (got <= 0) {
        stdin_ended = true;
        return false;
    }
    stdin_end += got;
    return true;
}

// True when the coarse clock has moved on since the input was last looked into.
bool look_due()
{
    static std::uint64_t last_tick = ~std::uint64_t(0);
    const std::uint64_t tick = coarse_tick();
    if (tick == last_tick) return false;
    last_tick = tick;
    return true;
}

} // namespace

int stdin_read_line(char *text, int size)
{
    int copied = 0;
    while (copied < size - 1) {
        if (stdin_start == stdin_end && !fill_buffer(int(sizeof stdin_buffer))) break;
        char c = stdin_buffer[stdin_start++];
        text[copied++] = c;
        if (c == '\n') break;
    }
    text[copied] = '\0';
    return copied;
}

int stdin_take_waiting(char *bytes, int most)
{
    if (stdin_start == stdin_end) {
        if (stdin_ended || !look_due()) return 0;
        const int waiting = system_waiting();
        if (waiting <= 0 || !fill_buffer(waiting)) return 0;
    }
    int taken = stdin_end - stdin_start < most ? stdin_end - stdin_start : most;
    std::memcpy(bytes, stdin_buffer + stdin_start, std::size_t(taken));
    stdin_start += taken;
    return taken;
}

bool stdin_closed() { return stdin_ended && stdin_start == stdin_end; }
