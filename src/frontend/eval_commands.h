// Command words of the evaluation.
#pragma once

#include "frontend/session.h"

// boardscore: prints the term report of current_board and then its score for the side to move.
// Takes no arguments; always returns 0.
int run_boardscore(Session *session, const char *line, char *rest);
