// The term report: every named term of both colours, one line each, white first.
#pragma once

#include <cstddef>

#include "eval/evaluate.h"

namespace eval {

// Room for the 48 lines of the report.
constexpr std::size_t report_size = 4096;

// Writes the report into `text` (report_size characters), each line "<Colour> <name>: <value>"
// ending in a line feed alone. Returns the length written.
std::size_t format_report(const breakdown &scores, char *text);

// Prints the report on standard output.
void print_report(const breakdown &scores);

} // namespace eval
