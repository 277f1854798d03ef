// Sessions with the real binary: exact bytes on standard output and the exit status.
#include <gtest/gtest.h>

#include <string>

#include "engine_pipe.h"

TEST(Session, UciHandshakeAndQuit)
{
    int status = -1;
    std::string out
        = run_engine("uci\nisready\nucinewgame\nposition startpos\nquit\nisready\n", &status);
    EXPECT_EQ(out, "id name Korvane 1.0 \r\nid author Brennik Dolmar\r\nuciok\r\nreadyok\r\n");
    EXPECT_EQ(status, 0);
}

TEST(Session, NothingAtStartAndStatusZeroAtEndOfInput)
{
    int status = -1;
    EXPECT_EQ(run_engine("", &status), "");
    EXPECT_EQ(status, 0);
    // Empty lines, lone CRs and blanks call nothing; CR LF ends a line like LF.
    EXPECT_EQ(run_engine("\n\r\n\r\r\n   \n\t\nisready\r\n", &status), "readyok\r\n");
    EXPECT_EQ(status, 0);
    // The last line needs no line end.
    EXPECT_EQ(run_engine("isready", &status), "readyok\r\n");
}

TEST(Session, KeysAfterAGame)
{
    std::string out = run_engine("position startpos moves e2e4 d7d5 e4e5 f7f5\nboardkey\n"
                                 "position startpos moves e2e4\nboardkey\n");
    EXPECT_EQ(out,
        "static  key: 22a48b5a8e47ff78\ncurrent key: 22a48b5a8e47ff78\n"
        "static  key: 823c9b50fd114196\ncurrent key: 823c9b50fd114196\n");
}

TEST(Session, LongLinesAreCutAndTheRestReadAsTheNextLine)
{
    // 16383 characters make one command; the rest of the line is the next command.
    std::string line = std::string(16383 - 7, ' ') + "isready" + "isready";
    EXPECT_EQ(run_engine(line + "\n"), "readyok\r\nreadyok\r\n");
    std::string huge(20000, 'x');
    EXPECT_EQ(run_engine(huge + "\nisready\n"), "readyok\r\n");
}

TEST(Session, PrintboardEndsWithTheSideToMove)
{
    std::string out = run_engine("position fen 8/8/8/8/8/8/8/K1k5 b - - 0 1\nprintboard\n");
    const std::string tail = "Enpassant Rank No = -1\nSide To Move = Black\n";
    ASSERT_GE(out.size(), tail.size());
    EXPECT_EQ(out.substr(out.size() - tail.size()), tail);
    EXPECT_EQ(out.substr(0, 23), "\n8| . . . . . . . . |\r\n");
    EXPECT_NE(out.find("1| K . k . . . . . |\r\n"), std::string::npos);
}

TEST(Session, NotYetKnownWordsAndClsPrintNothing)
{
    EXPECT_EQ(run_engine("cls\nsetoption name Hash value 1\nstop\nisready\n"), "readyok\r\n");
}
