// Counting the squares of a set, for the evaluation's own source files only: they may be built
// with the population count instruction and the rest of the program without it.
#pragma once

#include <bit>

#include "position/board.h"

namespace eval {

// Number of squares in a set. Without the processor's population count instruction the
// library's generic routine costs a call each time, and the evaluation counts some fifty sets per
// call, so the bit-parallel sum is written out here.
constexpr int square_count(Bitboard set)
{
#ifdef __POPCNT__
    return std::popcount(set);
#else
    set = set - ((set >> 1) & 0x5555555555555555);
    set = (set & 0x3333333333333333) + ((set >> 2) & 0x3333333333333333);
    set = (set + (set >> 4)) & 0x0F0F0F0F0F0F0F0F;
    return int((set * 0x0101010101010101) >> 56);
#endif
}

} // namespace eval
