// Square and line tests on small positions.
#include <gtest/gtest.h>

#include "attacked.h"
#include "helpers.h"

namespace {

TEST(Attacked, PawnsDoNotWrapPastAnEdge)
{
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/8/7P/4K3 w - - 0 1"), sq("a4")), 0);
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/P7/8/4K3 w - - 0 1"), sq("h3")), 0);
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/P7/8/4K3 w - - 0 1"), sq("b4")), 1);
    EXPECT_EQ(attacked_by_black(fen("4k3/p7/8/8/8/8/8/4K3 w - - 0 1"), sq("h5")), 0);
    EXPECT_EQ(attacked_by_black(fen("4k3/7p/8/8/8/8/8/4K3 w - - 0 1"), sq("a6")), 0);
    EXPECT_EQ(attacked_by_black(fen("4k3/7p/8/8/8/8/8/4K3 w - - 0 1"), sq("g6")), 1);
}

// No pawn stands behind its own second rank, so squares there are not tested for pawns, even
// when a garbled position has a pawn on the first rank.
TEST(Attacked, NoPawnAttacksFromBehindItsSecondRank)
{
    const Board b = fen("2p4k/8/8/8/8/8/8/2P4K w - - 0 1");
    EXPECT_EQ(attacked_by_white(b, sq("b2")), 0);
    EXPECT_EQ(attacked_by_white(b, sq("d2")), 0);
    EXPECT_EQ(attacked_by_black(b, sq("b7")), 0);
    EXPECT_EQ(attacked_by_black(b, sq("d7")), 0);
}

TEST(Attacked, KingsAttackTheirNeighbours)
{
    const Board b = fen("7k/8/8/8/8/8/8/K7 w - - 0 1");
    EXPECT_EQ(attacked_by_black(b, sq("g7")), 1);
    EXPECT_EQ(attacked_by_black(b, sq("f6")), 0);
    EXPECT_EQ(attacked_by_white(b, sq("b2")), 1);
    EXPECT_EQ(attacked_by_white(b, sq("c3")), 0);
}

TEST(Attacked, SlidersStopAtTheFirstPiece)
{
    const Board rook = fen("4k3/8/8/8/p7/8/8/R3K3 w - - 0 1");
    EXPECT_EQ(attacked_by_white(rook, sq("a3")), 1);
    EXPECT_EQ(attacked_by_white(rook, sq("a4")), 1);
    EXPECT_EQ(attacked_by_white(rook, sq("a5")), 0);
    // An own pawn in front blocks the rook and attacks only diagonally.
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/P7/8/R3K3 w - - 0 1"), sq("a4")), 0);
    // A knight blocks the queen's diagonal and does not reach c3 itself.
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/8/1N6/Q3K3 w - - 0 1"), sq("c3")), 0);
    EXPECT_EQ(attacked_by_white(fen("4k3/8/8/8/8/8/8/Q3K3 w - - 0 1"), sq("c3")), 1);
    // The enemy king blocks like any other piece.
    EXPECT_EQ(attacked_by_white(fen("4K3/8/8/8/8/8/8/R1k5 w - - 0 1"), sq("d1")), 0);
    EXPECT_EQ(attacked_by_black(fen("b3k3/8/8/8/8/8/6K1/8 w - - 0 1"), sq("h1")), 0);
    EXPECT_EQ(attacked_by_black(fen("b3k3/8/8/8/8/8/6K1/8 w - - 0 1"), sq("g2")), 1);
}

TEST(Attacked, WhatStandsOnTheSquareChangesNothing)
{
    EXPECT_EQ(attacked_by_black(fen("4k3/8/8/8/8/8/8/r3K3 w - - 0 1"), sq("e1")), 1);
    EXPECT_EQ(attacked_by_black(fen("4k3/8/8/8/8/8/8/r2RK3 w - - 0 1"), sq("d1")), 1);
    EXPECT_EQ(attacked_by_black(fen("4k3/8/8/8/8/8/8/r2rK3 w - - 0 1"), sq("d1")), 1);
}

TEST(Attacked, KnightsJump)
{
    const Board b = fen("4k3/8/8/8/8/8/8/1n2K3 w - - 0 1");
    EXPECT_EQ(attacked_by_black(b, sq("c3")), 1);
    EXPECT_EQ(attacked_by_black(b, sq("d2")), 1);
    EXPECT_EQ(attacked_by_black(b, sq("c2")), 0);
}

TEST(Attacked, LineTestIgnoresNumbersOffTheCompass)
{
    const Board b = fen("4k3/8/8/8/8/8/8/4R1K1 w - - 0 1");
    EXPECT_EQ(black_king_line_attacked(b, sq("e8"), 0), 0);
    EXPECT_EQ(black_king_line_attacked(b, sq("e8"), 9), 0);
    EXPECT_NE(black_king_line_attacked(b, sq("e8"), 5), 0);
}

TEST(Attacked, LineTestStopsAtTheFirstPiece)
{
    EXPECT_EQ(black_king_line_attacked(fen("4k3/4p3/8/8/8/8/8/4R1K1 w - - 0 1"), sq("e8"), 5), 0);
    EXPECT_NE(black_king_line_attacked(fen("4k3/8/8/8/8/8/8/4R1K1 w - - 0 1"), sq("e8"), 5), 0);
    // A slider of the wrong kind for the line blocks it.
    EXPECT_EQ(black_king_line_attacked(fen("4R3/8/8/8/4B3/8/8/4k1K1 w - - 0 1"), sq("e1"), 1), 0);
    EXPECT_NE(black_king_line_attacked(fen("4R3/8/8/8/8/8/8/4k1K1 w - - 0 1"), sq("e1"), 1), 0);
    EXPECT_EQ(black_king_line_attacked(fen("6K1/8/8/4B3/8/2R5/8/k7 w - - 0 1"), sq("a1"), 2), 0);
    EXPECT_NE(black_king_line_attacked(fen("6K1/8/8/4B3/8/8/8/k7 w - - 0 1"), sq("a1"), 2), 0);
    // A queen bears on every line; a knight on none.
    EXPECT_NE(black_king_line_attacked(fen("6K1/8/8/4Q3/8/8/8/k7 w - - 0 1"), sq("a1"), 2), 0);
    EXPECT_EQ(black_king_line_attacked(fen("6K1/8/8/8/8/8/8/kN1R4 w - - 0 1"), sq("a1"), 3), 0);
    EXPECT_NE(white_king_line_attacked(fen("4k3/8/8/8/8/8/8/1K4q1 w - - 0 1"), sq("b1"), 3), 0);
    EXPECT_EQ(white_king_line_attacked(fen("4k3/8/8/8/8/8/8/1K4Q1 w - - 0 1"), sq("b1"), 3), 0);
}

TEST(Attacked, LineTestEndsAtTheEdge)
{
    // From h1 eastward the next square would be a2, from a1 south-east nothing at all.
    EXPECT_EQ(white_king_line_attacked(fen("4k3/8/8/8/8/8/r7/7K w - - 0 1"), sq("h1"), 3), 0);
    EXPECT_EQ(white_king_line_attacked(fen("4k3/8/8/8/8/8/8/K6b w - - 0 1"), sq("a1"), 4), 0);
    EXPECT_EQ(white_king_line_attacked(fen("4k3/8/8/8/8/8/8/K6r w - - 0 1"), sq("a1"), 4), 0);
    EXPECT_NE(white_king_line_attacked(fen("4k3/8/8/8/8/8/8/K6r w - - 0 1"), sq("a1"), 3), 0);
}

// Boards a garbled FEN can give: no king, or a square beyond the board.
TEST(Attacked, MissingKingsAndSquareSixtyFour)
{
    const Board empty {};
    EXPECT_EQ(attacked_by_white(empty, 64), 0);
    EXPECT_EQ(attacked_by_black(empty, 64), 0);
    EXPECT_EQ(attacked_by_white(empty, sq("e4")), 0);
    const Board rook_only = fen("8/8/8/8/8/8/8/R7 w - - 0 1");
    EXPECT_EQ(attacked_by_white(rook_only, sq("a8")), 1);
    EXPECT_EQ(attacked_by_white(rook_only, 64), 0);
    EXPECT_EQ(black_king_line_attacked(rook_only, 64, 1), 0);
}

} // namespace
