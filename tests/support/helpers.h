// Small helpers shared by the suites: boards from FEN, moves as text.
#pragma once

#include <string>

#include "position/board.h"
#include "position/fen.h"

inline Board fen(const char *text) { return parse_fen(text); }

inline std::string text_of(Move move)
{
    char text[8];
    move_to_text(move, text);
    return text;
}
