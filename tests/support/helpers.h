// Small helpers shared by the suites: squares by name, boards from FEN, moves as text.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "position/board.h"
#include "position/fen.h"

constexpr int sq(const char *name) { return (name[1] - '1') * 8 + (name[0] - 'a'); }

inline Bitboard set_of(std::initializer_list<const char *> names)
{
    Bitboard set = 0;
    for (const char *n : names) set |= square_bit(sq(n));
    return set;
}

inline Board fen(const char *text) { return parse_fen(text); }

inline std::string text_of(Move move)
{
    char text[8];
    move_to_text(move, text);
    return text;
}

// The texts of the first `count` words of `moves`.
inline std::vector<std::string> texts_of(const Move *moves, int count)
{
    std::vector<std::string> texts;
    for (int i = 0; i < count; i++) texts.push_back(text_of(moves[i]));
    return texts;
}

inline std::vector<std::string> texts_of(const MoveList &list)
{
    return texts_of(list.moves, list.count);
}

// The word of `list` written `move`, 0 if there is none.
inline Move word_of(const MoveList &list, const char *move)
{
    for (int i = 0; i < list.count; i++)
        if (text_of(list.moves[i]) == move) return list.moves[i];
    return 0;
}
