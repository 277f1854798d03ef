// The fixed positions of the evaluation benchmark.
#pragma once

#include <vector>

#include "position/board.h"

// The same few hundred positions at every call: opening, middlegame and ending material in
// roughly equal shares.
std::vector<Board> bench_positions();
