// Counting the leaves of the legal move tree, the test of the move generator.
#pragma once

#include <cstdint>

#include "position/board.h"

// Leaves of the legal move tree `depth` plies below `board`; 1 for a depth of 0 or less, so a
// negative depth never recurses. `interrupted`, when given, is asked at every node above the
// last ply; once it says true the count ends early and is not the tree's.
std::uint64_t perft(int depth, Board board, bool (*interrupted)() = nullptr);
