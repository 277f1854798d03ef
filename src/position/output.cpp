// Standard output through one writer.
#include "position/output.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

bool lf_only = false;
// A carriage return that ended the last write: whether it goes out depends on the next byte.
bool held_cr = false;

void write_raw(const char *bytes, std::size_t length)
{
    if (length > 0) std::fwrite(bytes, 1, length, stdout);
}

} // namespace

void set_lf_only(bool on) { lf_only = on; }

void out_write(const char *bytes, std::size_t length)
{
    if (!lf_only) {
        write_raw(bytes, length);
        return;
    }
    // The filtered bytes are gathered so that a line still leaves in one write.
    char kept[4096];
    std::size_t count = 0;
    if (held_cr && length > 0) {
        if (bytes[0] != '\n') kept[count++] = '\r';
        held_cr = false;
    }
    for (std::size_t i = 0; i < length; i++) {
        if (count == sizeof kept) {
            write_raw(kept, count);
            count = 0;
        }
        if (bytes[i] == '\r') {
            if (i + 1 == length) {
                held_cr = true;
                break;
            }
            if (bytes[i + 1] == '\n') continue;
        }
        kept[count++] = bytes[i];
    }
    write_raw(kept, count);
}

void out_puts(const char *text)
{
    out_write(text, std::strlen(text));
    out_write("\n", 1);
}

void out_printf(const char *format, ...)
{
    char text[8192];
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    const int written = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (written > 0 && std::size_t(written) < sizeof text) {
        out_write(text, std::size_t(written));
    } else if (written > 0) {
        // A longer text is written whole from a block of its own; should the memory not come,
        // what fits goes out, and the line still ends.
        char *whole = static_cast<char *>(std::malloc(std::size_t(written) + 1));
        if (whole && std::vsnprintf(whole, std::size_t(written) + 1, format, again) == written) {
            out_write(whole, std::size_t(written));
        } else {
            out_write(text, sizeof text - 1);
            if (format[std::strlen(format) - 1] == '\n') out_write("\n", 1);
        }
        std::free(whole);
    }
    va_end(again);
}

void out_flush()
{
    // A carriage return still held is the end of a line that was never finished: it goes out.
    if (held_cr) {
        write_raw("\r", 1);
        held_cr = false;
    }
    std::fflush(stdout);
}
