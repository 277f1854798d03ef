// The move word and its text form.
#include <gtest/gtest.h>

#include "position/board.h"

TEST(MoveText, WordsFromTextCarryOnlySquaresAndPromotion)
{
    EXPECT_EQ(text_to_move("e2e4"), 0x70Cu);
    EXPECT_EQ(text_to_move("E2E4"), text_to_move("e2e4"));
    EXPECT_EQ(text_to_move("e7e8q"), 0x806F34u);
    // An upper-case promotion letter is no known piece: promoted with no code.
    EXPECT_EQ(text_to_move("e7e8Q"), 0x800F34u);
    // Characters beyond the fifth are ignored.
    EXPECT_EQ(text_to_move("e7e8qxyz"), 0x806F34u);
}

TEST(MoveText, CharactersOutsideTheBoardSpillIntoOtherFields)
{
    // 'i' is file 8: it spills into bit 3 (the from-rank field) of the word.
    EXPECT_EQ(text_to_move("i1a1"), 8u);
    // '0' is rank -1: every high bit is set from bit 3 upward.
    EXPECT_EQ(text_to_move("a0a1"), 0xFFFFFFF8u);
}

TEST(MoveText, TextOfWords)
{
    char text[6];
    move_to_text(0x400070C, text);
    EXPECT_STREQ(text, "e2e4");
    move_to_text(0x806F34, text);
    EXPECT_STREQ(text, "e7e8q");
    move_to_text(0x14000184, text);
    EXPECT_STREQ(text, "e1g1");
    // Promoted with no code gives a blank as the fifth character.
    move_to_text(0x800F34, text);
    EXPECT_STREQ(text, "e7e8 ");
    for (const char *word : { "a7a8r", "b2b1n", "h7g8b", "c2c1q" }) {
        move_to_text(text_to_move(word), text);
        EXPECT_STREQ(text, word);
    }
}

TEST(MoveWord, FieldsAndFirstSquare)
{
    const Move m = 0x64B06E70; // a7b8q taking a knight, with check
    EXPECT_EQ(move_from(m), 48);
    EXPECT_EQ(move_to(m), 57);
    EXPECT_EQ(move_promotion(m), queen);
    EXPECT_EQ(move_mover(m), pawn);
    EXPECT_EQ(move_captured(m), knight);
    EXPECT_TRUE(m & move_capture);
    EXPECT_TRUE(m & move_promoted);
    EXPECT_TRUE(m & move_gives_check);
    EXPECT_EQ(first_square(0), 64);
    EXPECT_EQ(first_square(square_bit(63)), 63);
    EXPECT_EQ(first_square(0x8100000000000000), 56);
}

TEST(MoveList, RemoveKeepsOrder)
{
    MoveList list {};
    for (int i = 0; i < 5; i++) list.moves[list.count++] = Move(i + 1);
    remove_move(&list, 1);
    ASSERT_EQ(list.count, 4);
    EXPECT_EQ(list.moves[0], 1u);
    EXPECT_EQ(list.moves[1], 3u);
    EXPECT_EQ(list.moves[3], 5u);
    remove_move(&list, 3); // the last slot only lowers the count
    EXPECT_EQ(list.count, 3);
    EXPECT_EQ(list.moves[2], 4u);
    remove_move(&list, -1);
    remove_move(&list, 3);
    EXPECT_EQ(list.count, 3);
}
