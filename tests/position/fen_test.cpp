// FEN records and the position command's set-up of the board and the key history.
#include <gtest/gtest.h>

#include <string>

#include "position/apply.h"
#include "position/fen.h"
#include "position/zobrist.h"

TEST(Fen, StartPositionAndFields)
{
    EXPECT_EQ(parse_fen("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1"), start_board);
    Board b = parse_fen("8/8/8/8/8/8/8/K1k5 w - - 0 1");
    EXPECT_EQ(b.white_king, 1u);
    EXPECT_EQ(b.black_king, 4u);
    EXPECT_TRUE(b.white_to_move);
    EXPECT_FALSE(b.white_oo || b.white_ooo || b.black_oo || b.black_ooo);
    EXPECT_EQ(b.enpassant_file, -1);
    EXPECT_EQ(parse_fen("8/8/8/8/8/8/8/K1k5 W Kq e3 300 1").fifty_move, 44);
    EXPECT_EQ(parse_fen("8/8/8/8/8/8/8/K1k5 W Kq e3 300 1").enpassant_file, 4);
    EXPECT_EQ(parse_fen("8/8/8/8/8/8/8/K1k5 b Kq e6 0 1").enpassant_file, 4);
    Board rights = parse_fen("8/8/8/8/8/8/8/K1k5 W xKqy - 0 1");
    EXPECT_TRUE(rights.white_to_move);
    EXPECT_TRUE(rights.white_oo && rights.black_ooo);
    EXPECT_FALSE(rights.white_ooo || rights.black_oo);
}

TEST(Fen, UnusableTextGivesTheEmptyBoard)
{
    const Board empty {};
    EXPECT_EQ(parse_fen("8/8/8/8/8/8/8/K1k5 w - -"), empty); // four fields only
    EXPECT_EQ(parse_fen(""), empty);
    EXPECT_EQ(empty.enpassant_file, 0);
    // Fewer than eight rows count as too few fields.
    EXPECT_EQ(parse_fen("8/8/8/K1k5 w - - 0 1"), empty);
}

TEST(Fen, GarbledPlacementsAreReadAsFarAsTheyGo)
{
    // An unknown letter and '0' or '9' take one square each.
    Board b = parse_fen("x7/8/8/8/8/8/8/9K6 w - - 0 1");
    EXPECT_EQ(b.white_king, square_bit(1));
    // A row of more than eight squares runs onto the rank above; past h8 it wraps to a1.
    Board run = parse_fen("8/8/8/8/8/8/8/8K w - - 0 1");
    EXPECT_EQ(run.white_king, square_bit(8));
    // Rows past the eighth are ignored.
    EXPECT_EQ(parse_fen("8/8/8/8/8/8/8/K1k5/PPPP w - - 0 1").white_pawns, 0u);
    Board wrap = parse_fen("8k/8/8/8/8/8/8/8 w - - 0 1");
    EXPECT_EQ(wrap.black_king, square_bit(0));
    // Two blanks make an empty field, and the later fields shift: the side field is empty
    // (black), "w" is read as castling rights (none), "-" as the en-passant field.
    Board blanks = parse_fen("8/8/8/8/8/8/8/K1k5  w - - 0");
    EXPECT_FALSE(blanks.white_to_move);
    EXPECT_FALSE(blanks.white_oo || blanks.white_ooo || blanks.black_oo || blanks.black_ooo);
    EXPECT_EQ(blanks.enpassant_file, -1);
}

TEST(Fen, LongTextIsCutAt255)
{
    std::string fen = "8/8/8/8/8/8/8/K1k5 w - -";
    fen += std::string(300, 'x');
    fen += " 0 1";
    EXPECT_EQ(parse_fen(fen.c_str()), Board {});
    std::string placement(300, '1');
    EXPECT_EQ(parse_fen((placement + " w - - 0 1").c_str()), Board {});
}

TEST(Fen, TrimBlanks)
{
    char text[] = " \t e2e4 \t";
    trim_blanks(text);
    EXPECT_STREQ(text, "e2e4");
    char none[] = "   ";
    trim_blanks(none);
    EXPECT_STREQ(none, "");
}

TEST(Position, StartposWithMovesBuildsTheHistory)
{
    set_position_start("position startpos");
    EXPECT_EQ(current_board, start_board);
    EXPECT_EQ(current_key, 0x463B96181691FC9Cu);
    EXPECT_EQ(key_history_count, 1);
    set_position_start("position startpos moves");
    EXPECT_EQ(current_board, start_board);
    EXPECT_EQ(key_history_count, 1);
    set_position_start("position startpos moves e2e4 e7e5");
    ASSERT_EQ(key_history_count, 3);
    EXPECT_EQ(key_history[0], 0x463B96181691FC9Cu);
    EXPECT_EQ(key_history[1], 0x823C9B50FD114196u);
    EXPECT_EQ(key_history[2], current_key);
    EXPECT_EQ(current_key, full_key(&current_board));
    // Tokens shorter than a move are skipped.
    set_position_start("position startpos moves e2 e2e4 x");
    EXPECT_EQ(key_history_count, 2);
    EXPECT_EQ(current_key, 0x823C9B50FD114196u);
}

TEST(Position, FenUpToTheWordMoves)
{
    set_position_fen(
        "position fen   rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1   moves   e2e4  ");
    EXPECT_EQ(current_key, 0x823C9B50FD114196u);
    EXPECT_EQ(key_history_count, 2);
    set_position_fen("position FEN 8/8/8/8/8/8/8/K1k5 w - - 0 1");
    EXPECT_EQ(current_board.white_king, 1u);
    // Too few fields: the empty board, with the moves played on it.
    set_position_fen("position fen 8/8/8/8/8/8/8/K1k5 w - - moves a1a2");
    EXPECT_EQ(current_board.white_king, 0u);
    EXPECT_TRUE(current_board.white_to_move); // black "moved" nothing and passed the turn
    EXPECT_EQ(key_history_count, 2);
}

TEST(Position, RepetitionsWithinOneCommand)
{
    set_position_start("position startpos moves g1f3 g8f6 f3g1 f6g8 g1f3 g8f6 f3g1 f6g8");
    EXPECT_EQ(key_history_count, 9);
    EXPECT_EQ(is_third_repetition(0x463B96181691FC9Cu), 1);
    set_position_start("position startpos moves g1f3 g8f6 f3g1 f6g8");
    EXPECT_EQ(is_third_repetition(0x463B96181691FC9Cu), 0);
}
