// The line ring and the input poll.
#include "control/input.h"

#include <cctype>
#include <cstring>

#include "control/search_limits.h"
#include "platform/platform.h"
#include "position/output.h"
#include "position/text.h"

char input_line[command_size];
std::int32_t input_line_length = 0;
char line_queue[line_queue_slots][command_size];
std::int32_t line_queue_count = 0, line_queue_head = 0, line_queue_tail = 0;
std::int32_t input_is_pipe = -1;

namespace {

// Deals with the finished line in input_line: `stop` ends the search and is dropped, `quit`
// ends it and is queued, anything else is queued as it came.
void take_input_line()
{
    if (input_line[0] == '\0') return;
    char scratch[command_size];
    copy_cut(scratch, input_line, sizeof scratch);
    char *cursor = scratch;
    char *token = nullptr;
    // Blank and tab both separate here.
    while (*cursor == ' ' || *cursor == '\t') cursor++;
    if (*cursor) {
        token = cursor;
        while (*cursor && *cursor != ' ' && *cursor != '\t') cursor++;
        *cursor = '\0';
    }
    if (!token) return;
    for (char *c = token; *c; c++) *c = char(std::tolower(static_cast<unsigned char>(*c)));
    if (std::strcmp(token, "stop") == 0) {
        search_stop = 1;
        return;
    }
    if (std::strcmp(token, "quit") == 0) search_stop = 1;
    // The standard mode answers isready at once and takes ponderhit while the search runs.
    if (standard_mode && std::strcmp(token, "isready") == 0) {
        out_puts("readyok");
        out_flush();
        return;
    }
    if (standard_mode && std::strcmp(token, "ponderhit") == 0) {
        ponder_hit();
        return;
    }
    queue_line(input_line);
}

// Walks waiting bytes chunk by chunk, 512 at most; the rest of a chunk is dropped as soon as a
// line has set search_stop.
void read_pipe_input()
{
    char chunk[512];
    for (;;) {
        int got = stdin_take_waiting(chunk, sizeof chunk);
        if (got <= 0) return;
        for (int i = 0; i < got; i++) {
            char c = chunk[i];
            if (c == '\r' || c == '\n') {
                if (input_line_length == 0) continue;
                input_line[input_line_length] = '\0';
                take_input_line();
                input_line_length = 0;
                if (search_stop) return;
            } else if (input_line_length < command_size - 1) {
                input_line[input_line_length++] = c;
            }
        }
    }
}

} // namespace

void poll_input()
{
    if (input_is_pipe == -1) input_is_pipe = stdin_is_pipe() ? 1 : 0;
    if (input_is_pipe == 0 || search_stop) return;
    read_pipe_input();
}

int queue_line(const char *text)
{
    if (!text || !text[0] || line_queue_count >= line_queue_slots) return 0;
    copy_cut(line_queue[line_queue_tail], text, command_size);
    line_queue_count++;
    line_queue_tail = (line_queue_tail + 1) % line_queue_slots;
    return 1;
}

int take_partial_line(char *text)
{
    const int length = input_line_length;
    std::memcpy(text, input_line, std::size_t(length));
    text[length] = '\0';
    input_line_length = 0;
    return length;
}

int take_queued_line(char *text)
{
    if (line_queue_count <= 0) return 0;
    copy_cut(text, line_queue[line_queue_head], command_size);
    line_queue_count--;
    line_queue_head = (line_queue_head + 1) % line_queue_slots;
    return 1;
}
