// The legal list: filtering, completed words, captures only, and boards a garbled FEN can give.
#include <gtest/gtest.h>

#include "movegen/legal.h"
#include "position/apply.h"
#include "tests/support/helpers.h"

namespace {

using texts_t = std::vector<std::string>;

MoveList legal(const char *text)
{
    MoveList list;
    list.count = 0;
    generate_moves(fen(text), &list);
    return list;
}

MoveList captures(const char *text)
{
    MoveList list;
    list.count = 0;
    generate_captures(fen(text), &list);
    return list;
}

struct count_case {
    const char *fen;
    int moves, captures; // captures -1: not looked at
};

const count_case count_cases[] = {
    { "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 20, 0 },
    // Mate and stalemate.
    { "rnb1kbnr/pppp1ppp/8/4p3/6Pq/5P2/PPPPP2P/RNBQKBNR w KQkq - 1 3", 0, 0 },
    { "7k/5Q2/6K1/8/8/8/8/8 b - - 0 1", 0, 0 },
    // The most moves a legal position has fills the list exactly.
    { "R6R/3Q4/1Q4Q1/4Q3/2Q4Q/Q4Q2/pp1Q4/kBNN1KB1 w - - 0 1", max_moves, -1 },
    // Without a king of the side to move no move can uncover it; without the enemy king none
    // checks. Nothing reads a table at square 64.
    { "8/8/8/8/8/8/8/R7 w - - 0 1", 14, 0 },
    { "4k3/8/8/8/8/8/8/R7 b - - 0 1", 5, 0 },
    { "8/8/8/3pP3/8/8/8/8 w KQkq d6 0 1", 2, 1 },
};

TEST(Legal, Counts)
{
    for (const count_case &c : count_cases) {
        EXPECT_EQ(legal(c.fen).count, c.moves) << c.fen;
        if (c.captures >= 0) { EXPECT_EQ(captures(c.fen).count, c.captures) << c.fen; }
    }
}

struct list_case {
    const char *fen;
    texts_t moves;
};

const list_case list_cases[] = {
    // A pinned knight has no moves; on the line with its king but nothing behind it, every jump
    // stays.
    { "4r2k/8/8/8/8/8/4N3/4K3 w - - 0 1", { "e1d1", "e1f1", "e1d2", "e1f2" } },
    { "7k/8/8/8/8/8/4N3/4K3 w - - 0 1",
        { "e2c1", "e2g1", "e2c3", "e2g3", "e2d4", "e2f4", "e1d1", "e1f1", "e1d2", "e1f2" } },
    // A bishop pinned on a diagonal may slide along it and take the pinner.
    { "7k/8/8/8/q7/8/2B5/3K4 w - - 0 1", { "c2b3", "c2a4", "d1c1", "d1e1", "d1d2", "d1e2" } },
    // Out of check: interpose, take the checker, or step aside; in double check only the king.
    { "4r2k/8/5N2/8/8/8/R7/4K2B w - - 0 1",
        { "a2e2", "f6e4", "f6e8", "h1e4", "e1d1", "e1f1", "e1d2", "e1f2" } },
    { "4r2k/8/8/8/8/5n2/R7/4K2B w - - 0 1", { "e1d1", "e1f1", "e1f2" } },
};

TEST(Legal, Lists)
{
    for (const list_case &c : list_cases) EXPECT_EQ(texts_of(legal(c.fen)), c.moves) << c.fen;
}

struct presence_case {
    const char *fen;
    const char *move;
    bool legal;
};

const presence_case presence_cases[] = {
    // Both pawns of an en-passant capture leave the rank, so a rook behind them checks.
    { "7k/8/8/KPp4r/8/8/8/8 w - c6 0 1", "b5c6", false },
    { "7k/8/8/KPp4r/8/8/8/8 w - c6 0 1", "b5b6", true },
    { "8/8/8/8/R4pPk/8/8/K7 b - g3 0 1", "f4g3", false },
    { "8/8/8/8/R4pPk/8/8/K7 b - g3 0 1", "f4f3", true },
    // The captured pawn stood on a diagonal of the king that no moving piece starts on.
    { "8/k7/8/8/3Pp3/8/8/4K1B1 b - d3 0 1", "e4d3", false },
    { "8/k7/8/8/3Pp3/8/8/4K1B1 b - d3 0 1", "e4e3", true },
    { "4k1b1/8/8/3pP3/8/8/K7/8 w - d6 0 1", "e5d6", false },
    { "4k1b1/8/8/3pP3/8/8/K7/8 w - d6 0 1", "e5e6", true },
};

TEST(Legal, EnPassantThatUncoversTheKing)
{
    for (const presence_case &c : presence_cases)
        EXPECT_EQ(word_of(legal(c.fen), c.move) != 0, c.legal) << c.fen << " " << c.move;
}

TEST(Legal, PinnedRookMovesAlongItsLine)
{
    const MoveList list = legal("4r2k/8/8/8/8/8/4R3/4K3 w - - 0 1");
    texts_t rook_moves;
    for (int i = 0; i < list.count; i++)
        if (move_mover(list.moves[i]) == rook) rook_moves.push_back(text_of(list.moves[i]));
    EXPECT_EQ(rook_moves, (texts_t { "e2e3", "e2e4", "e2e5", "e2e6", "e2e7", "e2e8" }));
    EXPECT_EQ(word_of(list, "e2e8"), 0x48300F0Cu);
}

TEST(Legal, CompletedWords)
{
    EXPECT_EQ(word_of(legal("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1"), "e2e4"),
        0x0400070Cu);
    // A check needs only the enemy king.
    EXPECT_TRUE(word_of(legal("4k3/8/8/8/8/8/8/R7 w - - 0 1"), "a1a8") & move_gives_check);
    // Taking the checking pawn en passant ends the check.
    EXPECT_EQ(word_of(legal("8/8/8/4k3/4pP2/8/8/4K3 b - f3 0 1"), "e4f3"), 0x0460055Cu);
    EXPECT_EQ(word_of(legal("4k3/8/8/3pP3/8/8/8/4K3 w - d6 0 1"), "e5d6"), 0x04600AE4u);
    const MoveList promotions = legal("1n2k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_EQ(word_of(promotions, "a7b8q"), 0x64B06E70u);
    EXPECT_EQ(word_of(promotions, "a7b8b"), 0x64A04E70u);
    EXPECT_EQ(word_of(promotions, "a7a8q"), 0x04806E30u); // b8 shields the king
    // Each promotion gets its own check bit: only the knight reaches g7.
    const MoveList under = legal("8/4P1k1/8/8/8/8/8/4K3 w - - 0 1");
    EXPECT_FALSE(word_of(under, "e7e8q") & move_gives_check);
    EXPECT_FALSE(word_of(under, "e7e8r") & move_gives_check);
    EXPECT_FALSE(word_of(under, "e7e8b") & move_gives_check);
    EXPECT_TRUE(word_of(under, "e7e8n") & move_gives_check);
    // A discovered check, and a castling whose rook checks from its new square.
    const MoveList discovered = legal("4k3/8/8/8/8/8/4N3/4R1K1 w - - 0 1");
    for (const char *move : { "e2c1", "e2c3", "e2d4", "e2f4", "e2g3" })
        EXPECT_TRUE(word_of(discovered, move) & move_gives_check) << move;
    EXPECT_EQ(word_of(legal("5k2/8/8/8/8/8/8/4K2R w K - 0 1"), "e1g1"), 0x14100184u);
    // The king takes a rook: captured 2 and the capture bit.
    EXPECT_EQ(word_of(legal("4k3/8/8/8/8/8/8/3rK3 w - - 0 1"), "e1d1"), 0x542000C4u);
}

TEST(Legal, CapturesKeepOrder)
{
    const char *kiwipete = "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1";
    const MoveList all = legal(kiwipete);
    const MoveList taken = captures(kiwipete);
    std::vector<Move> expected;
    for (int i = 0; i < all.count; i++)
        if (all.moves[i] & move_capture) expected.push_back(all.moves[i]);
    EXPECT_EQ(std::vector<Move>(taken.moves, taken.moves + taken.count), expected);
    EXPECT_EQ(taken.count, 8);
    // En passant counts as a capture, a quiet promotion does not.
    EXPECT_EQ(texts_of(captures("4k3/P7/8/3pP3/8/8/8/4K3 w - d6 0 1")), texts_t { "e5d6" });
}

// Far more pseudo-legal moves than slots, from stacked sets: the list writes no further than its
// slots (the sanitizer build checks the bounds). Crowded boards with more legal moves than a list
// holds are compared with the literal generator in oracle_test.cpp.
TEST(Legal, CrowdedBoardsStayInBounds)
{
    // Sets stacked on one another, as a run-on FEN row can give, with every kind everywhere.
    Board stacked {};
    for (Bitboard Board::*set : { &Board::white_rooks, &Board::white_knights, &Board::white_bishops,
             &Board::white_queens, &Board::white_pawns })
        stacked.*set = 0x00000000FFFFFFFFULL;
    stacked.white_king = 0x10;
    stacked.black_queens = 0xFF00000000000000ULL;
    stacked.white_to_move = 1;
    stacked.white_oo = stacked.white_ooo = 1;
    MoveList list;
    list.count = 0;
    generate_moves(stacked, &list);
    EXPECT_LE(list.count, max_moves);
    // A count the caller left out of range is taken as 0.
    list.count = -5;
    generate_moves(start_board, &list);
    EXPECT_EQ(list.count, 20);
    list.count = 100000;
    generate_moves(start_board, &list);
    EXPECT_EQ(list.count, 20);
}

// A castling right is lost only by a king move or a rook move from its corner. A rook that
// takes on the empty corner restores the castling the right still allows.
TEST(Legal, CastlingRightSurvivesTheRooksCapture)
{
    Board b = fen("4k3/8/8/8/8/8/6R1/4K2r w K - 0 1");
    std::uint64_t key = 0;
    apply_move_keyed(&b, text_to_move("g2h1"), &key);
    apply_move_keyed(&b, text_to_move("e8d8"), &key);
    EXPECT_EQ(b.white_oo, 1);
    MoveList list;
    list.count = 0;
    generate_moves(b, &list);
    EXPECT_EQ(word_of(list, "e1g1"), 0x14000184u);
}

// A position where the side not to move is in check: taking the king is a capture like any
// other, with captured 5.
TEST(Legal, KingCaptureInAnIllegalPosition)
{
    const Move take = word_of(legal("4k3/8/8/8/8/8/8/4RK2 w - - 0 1"), "e1e8");
    EXPECT_EQ(move_captured(take), king);
    EXPECT_TRUE(take & move_capture);
}

} // namespace
