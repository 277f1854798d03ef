// What the sessions through the pipes can't show: the null move of the search and the bounds of
// the key history. Boards, keys and moves are pinned by those sessions (printboard and boardkey
// after each kind of move).
#include <gtest/gtest.h>

#include "position/apply.h"
#include "position/fen.h"
#include "position/zobrist.h"

TEST(Apply, NullMovePassesTheTurnAndDropsTheEnpassantFile)
{
    Board b = parse_fen("4k3/8/8/8/4p3/8/3P4/4K3 w - - 9 1");
    std::uint64_t key = full_key(&b);
    apply_move_keyed(&b, text_to_move("d2d4"), &key);
    ASSERT_EQ(b.enpassant_file, 3);
    apply_null_move(&b, &key);
    EXPECT_EQ(b.enpassant_file, -1);
    EXPECT_TRUE(b.white_to_move);
    EXPECT_EQ(b.fifty_move, 0);
    EXPECT_EQ(key, full_key(&b));
}

TEST(History, ThirdRepetitionAndBounds)
{
    clear_key_history();
    EXPECT_EQ(is_third_repetition(7), 0);
    for (std::uint64_t key : { 7, 1, 7, 2 }) push_key(key);
    EXPECT_EQ(is_third_repetition(7), 0);
    push_key(7);
    EXPECT_EQ(is_third_repetition(7), 1);
    EXPECT_EQ(is_third_repetition(1), 0);
    pop_key();
    EXPECT_EQ(is_third_repetition(7), 0);
    clear_key_history();
    pop_key();
    EXPECT_EQ(key_history_count, 0);
    for (int i = 0; i < key_history_size + 10; i++) push_key(std::uint64_t(i));
    EXPECT_EQ(key_history_count, key_history_size);
    clear_key_history();
}
