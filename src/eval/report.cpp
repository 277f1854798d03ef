// The term report.
#include "eval/report.h"

#include <cstdio>

#include "position/output.h"

namespace eval {

std::size_t format_report(const breakdown &scores, char *text)
{
    constexpr const char *colour_names[2] = { "White", "Black" };
    std::size_t length = 0;
    for (int us = white; us <= black; us++)
        for (int t = 0; t < reported_term_count; t++) {
            const int written = std::snprintf(text + length, report_size - length, "%s %s: %d\n",
                colour_names[us], term_names[t], int(scores.terms.value[us][t]));
            if (written < 0 || std::size_t(written) >= report_size - length) return length;
            length += std::size_t(written);
        }
    return length;
}

void print_report(const breakdown &scores)
{
    char text[report_size];
    const std::size_t length = format_report(scores, text);
    out_write(text, length);
}

} // namespace eval
