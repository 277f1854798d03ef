// Square and line tests on small positions, one row per case. On random boards the square tests
// are held to a ray walk in tests/eval/compare_test.cpp.
#include <gtest/gtest.h>

#include "movegen/attacked.h"
#include "tests/support/helpers.h"

namespace {

struct square_case {
    const char *fen;
    bool by_white;
    const char *square;
    int attacked;
};

constexpr square_case square_cases[] = {
    // Pawns do not wrap past an edge.
    { "4k3/8/8/8/8/8/7P/4K3 w - - 0 1", true, "a4", 0 },
    { "4k3/8/8/8/8/P7/8/4K3 w - - 0 1", true, "h3", 0 },
    { "4k3/8/8/8/8/P7/8/4K3 w - - 0 1", true, "b4", 1 },
    // No pawn stands behind its own second rank, so squares there are not tested for pawns,
    // even when a garbled position has a pawn on the first rank.
    { "2p4k/8/8/8/8/8/8/2P4K w - - 0 1", true, "b2", 0 },
    { "2p4k/8/8/8/8/8/8/2P4K w - - 0 1", false, "b7", 0 },
    // Kings attack their neighbours.
    { "7k/8/8/8/8/8/8/K7 w - - 0 1", false, "g7", 1 },
    { "7k/8/8/8/8/8/8/K7 w - - 0 1", false, "f6", 0 },
    // Sliders stop at the first piece, whoever it belongs to; own pawns attack only diagonally.
    { "4k3/8/8/8/p7/8/8/R3K3 w - - 0 1", true, "a4", 1 },
    { "4k3/8/8/8/p7/8/8/R3K3 w - - 0 1", true, "a5", 0 },
    { "4k3/8/8/8/8/P7/8/R3K3 w - - 0 1", true, "a4", 0 },
    { "4k3/8/8/8/8/8/1N6/Q3K3 w - - 0 1", true, "c3", 0 },
    { "4k3/8/8/8/8/8/8/Q3K3 w - - 0 1", true, "c3", 1 },
    // What stands on the square changes nothing.
    { "4k3/8/8/8/8/8/8/r2RK3 w - - 0 1", false, "d1", 1 },
};

TEST(Attacked, SquareCases)
{
    for (const square_case &c : square_cases) {
        const Board b = fen(c.fen);
        const int s = sq(c.square);
        EXPECT_EQ(c.by_white ? attacked_by_white(b, s) : attacked_by_black(b, s), c.attacked)
            << c.fen << " " << c.square;
    }
}

struct line_case {
    const char *fen;
    bool white_king;
    const char *square;
    int direction;
    bool attacked;
};

constexpr line_case line_cases[] = {
    // Numbers off the compass are no line.
    { "4k3/8/8/8/8/8/8/4R1K1 w - - 0 1", false, "e8", 0, false },
    { "4k3/8/8/8/8/8/8/4R1K1 w - - 0 1", false, "e8", 9, false },
    { "4k3/8/8/8/8/8/8/4R1K1 w - - 0 1", false, "e8", 5, true },
    // The first piece on the line ends it, a slider of the wrong kind included.
    { "4k3/4p3/8/8/8/8/8/4R1K1 w - - 0 1", false, "e8", 5, false },
    { "4R3/8/8/8/4B3/8/8/4k1K1 w - - 0 1", false, "e1", 1, false },
    { "4R3/8/8/8/8/8/8/4k1K1 w - - 0 1", false, "e1", 1, true },
    { "6K1/8/8/4B3/8/2R5/8/k7 w - - 0 1", false, "a1", 2, false },
    { "6K1/8/8/4B3/8/8/8/k7 w - - 0 1", false, "a1", 2, true },
    // The line ends at the edge: from h1 eastward the next square would be a2, from a1
    // south-east there is nothing at all.
    { "4k3/8/8/8/8/8/r7/7K w - - 0 1", true, "h1", 3, false },
    { "4k3/8/8/8/8/8/8/K6b w - - 0 1", true, "a1", 4, false },
    { "4k3/8/8/8/8/8/8/K6r w - - 0 1", true, "a1", 4, false },
    { "4k3/8/8/8/8/8/8/K6r w - - 0 1", true, "a1", 3, true },
};

TEST(Attacked, LineCases)
{
    for (const line_case &c : line_cases) {
        const Board b = fen(c.fen);
        const int s = sq(c.square);
        const int found = c.white_king ? white_king_line_attacked(b, s, c.direction)
                                       : black_king_line_attacked(b, s, c.direction);
        EXPECT_EQ(found != 0, c.attacked) << c.fen << " " << c.square << " " << c.direction;
    }
}

// A garbled FEN can leave a king's set empty: its square is then 64, which no line starts from.
// (The square tests at 64 are checked on random garbled boards in oracle_test.cpp.)
TEST(Attacked, LineFromSquareSixtyFour)
{
    EXPECT_EQ(black_king_line_attacked(fen("8/8/8/8/8/8/8/R7 w - - 0 1"), 64, 1), 0);
}

} // namespace
