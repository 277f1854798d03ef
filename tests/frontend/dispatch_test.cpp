// Exact transcripts of the dispatcher's commands.
#include <gtest/gtest.h>

#include "position/apply.h"
#include "position/fen.h"
#include "tests/frontend/capture.h"

// The uci transcript and a plain quit run through the binary in tests/search_pipes.
TEST(Dispatch, BlanksAroundAWordAndWordsAfterQuit)
{
    int result = -1;
    EXPECT_EQ(run_command("  isready  ", &result), "readyok\r\n");
    EXPECT_EQ(result, 0);
    EXPECT_EQ(run_command("quit now please", &result), "");
    EXPECT_EQ(result, 1);
}

TEST(Dispatch, WordsMatchWholeAndCaseSensitively)
{
    int result = -1;
    for (const char *line : { "Uci", "UCI", "ucinewgam", "uci\t", "isready\tnow", "GO", "go\t",
             "go\tdepth 3", "", "   ", "\t", "xyzzy", "setoption name Hash value 64", "stop" }) {
        EXPECT_EQ(run_command(line, &result), "") << line;
        EXPECT_EQ(result, 0) << line;
    }
}

TEST(Dispatch, Help)
{
    EXPECT_EQ(run_command("help"),
        "boardkey: Shows the current board zobrist hash value calculated in incremental and full "
        "methods\n"
        "perft n: perft command inorder to debug move generator bugs\n"
        "movlist: display the current move list (not sorted)\n"
        "sortedmoves: display the sorted current move list by their assigned score\n"
        "boardscore: display the current board evaluation info\n"
        "cls: clear the screen\n"
        "printboard: prints the current board on the screen\n"
        "go: default search limit depth 6 and max 10000 ms\n"
        "go depth n: search exactly up to depth n (clamped to 12)\n"
        "go movetime n: search for at most n milliseconds\n"
        "go depth n movetime m: stop at whichever limit is reached first\n");
}

TEST(Dispatch, PrintboardStartPosition)
{
    run_command("position startpos");
    EXPECT_EQ(run_command("printboard"),
        "\n"
        "8| r n b q k b n r |\r\n"
        "7| p p p p p p p p |\r\n"
        "6| . . . . . . . . |\r\n"
        "5| . . . . . . . . |\r\n"
        "4| . . . . . . . . |\r\n"
        "3| . . . . . . . . |\r\n"
        "2| P P P P P P P P |\r\n"
        "1| R N B Q K B N R |\r\n"
        "  ________________  \r\n"
        "   a b c d e f g h  \r\n"
        "\n"
        "White oo: True   White ooo: True\n"
        "Black oo: True   Black ooo: True\n"
        "Fifty Move Variable = 0\n"
        "Enpassant Rank No = -1\n"
        "Side To Move = White\n");
}

TEST(Dispatch, PrintboardBlackToMoveWithEnpassantField)
{
    run_command("position fen rnbqkbnr/pppp1ppp/8/8/4Pp2/8/PPPP1PPP/RNBQKB1R b Kq e3 12 3");
    EXPECT_EQ(run_command("printboard"),
        "\n"
        "8| r n b q k b n r |\r\n"
        "7| p p p p . p p p |\r\n"
        "6| . . . . . . . . |\r\n"
        "5| . . . . . . . . |\r\n"
        "4| . . . . P p . . |\r\n"
        "3| . . . . . . . . |\r\n"
        "2| P P P P . P P P |\r\n"
        "1| R N B Q K B . R |\r\n"
        "  ________________  \r\n"
        "   a b c d e f g h  \r\n"
        "\n"
        "White oo: True   White ooo: False\n"
        "Black oo: False   Black ooo: True\n"
        "Fifty Move Variable = 12\n"
        "Enpassant Rank No = 4\n"
        "Side To Move = Black\n");
}

TEST(Dispatch, BoardkeyAndPosition)
{
    run_command("position startpos");
    EXPECT_EQ(
        run_command("boardkey"), "static  key: 463b96181691fc9c\ncurrent key: 463b96181691fc9c\n");
    run_command("position startpos moves e2e4 d7d5 e4e5 f7f5");
    EXPECT_EQ(
        run_command("boardkey"), "static  key: 22a48b5a8e47ff78\ncurrent key: 22a48b5a8e47ff78\n");
    EXPECT_EQ(key_history_count, 5);
    // A wrong or missing second word leaves the position alone.
    for (const char *line : { "position", "position STARTPOS",
             "position fenx 8/8/8/8/8/8/8/8 w - - 0 1", "position   " })
        run_command(line);
    EXPECT_EQ(key_history_count, 5);
    EXPECT_EQ(current_key, 0x22A48B5A8E47FF78u);
    // ucinewgame forgets the game, not the board.
    run_command("ucinewgame");
    EXPECT_EQ(key_history_count, 1);
    EXPECT_EQ(current_key, 0x22A48B5A8E47FF78u);
    EXPECT_EQ(key_history[0], current_key);
    EXPECT_EQ(run_command("position startpos"), "");
    EXPECT_EQ(current_key, 0x463B96181691FC9Cu);
}

TEST(Dispatch, ClsPrintsNothingIntoAPipe)
{
    // Captured output is a file, not a terminal.
    EXPECT_EQ(run_command("cls"), "");
}
