// Move ordering: capture gains, the fixed order of the buckets, the pv and hash moves, and the
// evaluation sort.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "eval/evaluate.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "search/ordering.h"
#include "search/tt.h"
#include "tests/support/helpers.h"
#include "tests/support/search_setup.h"

namespace {

Move word(int mover, int captured, Move extra = 0)
{
    return mover_bits(mover) | captured_bits(captured) | move_capture | extra;
}

TEST(CaptureGain, VictimMinusAttacker)
{
    EXPECT_EQ(capture_gain(word(knight, bishop)), 20);
    EXPECT_EQ(capture_gain(word(bishop, knight)), -20);
    EXPECT_EQ(capture_gain(word(king, queen)), 900);
    EXPECT_EQ(capture_gain(word(rook, rook)), 0);
    // En passant: the captured field is 0 and the victim a pawn.
    EXPECT_EQ(capture_gain(word(pawn, 0, move_en_passant)), 0);
    // A promotion that captures counts as a plain pawn capture.
    EXPECT_EQ(capture_gain(word(pawn, rook, move_promoted | promotion_bits(queen))), 400);
}

TEST(SameMove, ComparesSquaresAndPromotionOnly)
{
    const Move e7e8q = 0x806F34;
    EXPECT_TRUE(same_move(e7e8q, e7e8q | word(pawn, 0) | move_gives_check));
    EXPECT_FALSE(same_move(e7e8q, (e7e8q & ~move_promotion_mask) | promotion_bits(knight)));
    EXPECT_FALSE(same_move(0x70C, 0x70C | move_promoted));
}

// White: knight d2 can take a bishop on c4 (+20), bishop f2 a knight on d4 (-20).
class OrderMoves : public testing::Test {
protected:
    void SetUp() override
    {
        set_position("position fen 4k3/8/8/8/2bn4/8/3N1B2/4K3 w - - 0 1");
        clear_counters();
        std::fill(std::begin(pv_length), std::end(pv_length), 0);
        hash_clear();
        list.count = 0;
        generate_moves(current_board, &list);
    }
    void TearDown() override { hash_clear(); }
    MoveList list;
};

TEST_F(OrderMoves, BucketsComeInTheirFixedOrder)
{
    alpha_counts[1][4][3] = 2; // e1d1 raised alpha twice at ply 1
    cutoff_counts[1][11][17] = 7; // d2b3 cut off
    alpha_counts[2][4][12] = 9; // another ply: not read at ply 1
    order_moves(1, current_board, &list, current_key);
    const std::vector<std::string> got = texts_of(list);
    ASSERT_GE(got.size(), 5u);
    EXPECT_EQ(got[0], "d2c4");
    EXPECT_EQ(got[1], "e1d1");
    EXPECT_EQ(got[2], "d2b3");
    EXPECT_EQ(got[3], "f2d4");
    // The rest are sorted by the evaluation after the move, best first and stable.
    std::int32_t last = INT32_MAX;
    for (std::size_t i = 4; i < got.size(); i++) {
        Board child = current_board;
        apply_move(&child, list.moves[i]);
        const std::int32_t e = evaluate(child, 1, 0);
        EXPECT_LE(e, last) << got[i];
        last = e;
    }
}

TEST_F(OrderMoves, HashMoveBeforeCapturesAndPvMoveBeforeIt)
{
    const Move hash_move = word_of(list, "f2g3");
    const Move pv_move = word_of(list, "d2b1");
    ASSERT_TRUE(hash_move && pv_move);
    hash_store(current_key, 0, bound_upper, 0, hash_move);
    pv_cell(0, 2) = pv_move;
    pv_length[0] = 3;
    MoveList sorted = list;
    order_moves(2, current_board, &sorted, current_key);
    const std::vector<std::string> got = texts_of(sorted);
    EXPECT_EQ(got[0], "d2b1");
    EXPECT_EQ(got[1], "f2g3");
    EXPECT_EQ(got[2], "d2c4");
    EXPECT_EQ(got.size(), std::size_t(list.count));
    // Beyond the line's length there is no pv move.
    sorted = list;
    order_moves(3, current_board, &sorted, current_key);
    EXPECT_EQ(texts_of(sorted)[0], "f2g3");
    EXPECT_EQ(texts_of(sorted)[1], "d2c4");
}

TEST_F(OrderMoves, MoveThatIsBothPvAndHashMoveComesOnce)
{
    const Move m = word_of(list, "f2g3");
    hash_store(current_key, 0, bound_lower, 0, m);
    pv_cell(0, 0) = m;
    pv_length[0] = 1;
    order_moves(0, current_board, &list, current_key);
    const std::vector<std::string> got = texts_of(list);
    EXPECT_EQ(got[0], "f2g3");
    EXPECT_EQ(got[1], "d2c4");
    EXPECT_EQ(std::count(got.begin(), got.end(), "f2g3"), 1);
}

TEST_F(OrderMoves, StoredMoveNotInTheListChangesNothing)
{
    MoveList plain = list;
    order_moves(1, current_board, &plain, current_key);
    hash_store(current_key, 0, bound_exact, 3, make_move(0, 63));
    order_moves(1, current_board, &list, current_key);
    EXPECT_EQ(texts_of(list), texts_of(plain));
}

} // namespace
