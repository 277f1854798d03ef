// The `position` command in both dialects.
#pragma once

#include "frontend/session.h"
#include "position/board.h"

// `position startpos|fen <fen> [moves ...]`. The fixed dialect reads the line as it comes and
// trusts it; the standard dialect refuses a FEN that is not a position (the position stays) and
// plays the moves up to the first that is not legal, which it refuses. Each refusal is one `info
// string` line.
int run_position(Session *session, const char *line, char *rest);

// The legal move of `board` written `text` (any case), 0 when there is none.
Move legal_move_named(const Board &board, const char *text);
