// The standard UCI mode, for GUIs' analysis boards, tournament managers and scripts: korvane
// --uci, or the build flavour that starts in it.
#pragma once

// Turns the mode on for the rest of the run: LF line ends, deeper searches, the options.
void start_standard_mode();

// Runs one command line in the mode. Returns 1 after `quit`, else 0.
int standard_command(const char *text);
