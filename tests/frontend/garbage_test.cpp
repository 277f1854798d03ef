// Thousands of random and malformed lines through the dispatcher: nothing may crash or touch
// memory outside a buffer (the sanitizer build runs this too), and the engine stays usable.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "position/zobrist.h"
#include "tests/frontend/capture.h"

namespace {

// Words that make up plausible lines. Searches and perft come only as short phrases, so that no
// line runs for long; their further words are read as go arguments or ignored.
const char *const vocabulary[] = { "go depth 2", "go movetime 5", "perft 2", "position", "startpos",
    "fen", "moves", "ucinewgame", "printboard", "boardkey", "movlist", "boardscore", "sortedmoves",
    "isready", "uci", "help", "setoption", "name", "value", "stop", "cls", "e2e4", "e7e8q", "a7a8k",
    "h2h1p", "e1g1", "e8c8", "z9z9", "e2", "-", "w", "b", "KQkq", "0", "1", "300", "-5",
    "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR", "8/8/8/8/8/8/8/8", "QQQQQQQQ/QQQQQQQQ/8/8/8",
    "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R", "kkkkkkkk/KKKKKKKK" };

std::string random_line(std::mt19937 &random)
{
    std::string line;
    switch (random() % 4) {
    case 0: { // random bytes, NUL and line ends included
        int length = int(random() % 200);
        for (int i = 0; i < length; i++) line += char(random() % 256);
        break;
    }
    case 1: { // a truncated FEN command
        std::string full = "position fen r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R "
                           "w KQkq e3 0 1 moves e1g1 e8c8 a1b1";
        line = full.substr(0, random() % full.size());
        break;
    }
    case 2: { // a long line of words or of one character
        int length = 16000 + int(random() % 8000);
        char c = "a 1/\t"[random() % 5];
        line = std::string(length, c);
        if (random() % 2) line = "position fen " + line;
        break;
    }
    default: { // words of the vocabulary with odd blanks
        int words = 1 + int(random() % 12);
        for (int i = 0; i < words; i++) {
            line += vocabulary[random() % std::size(vocabulary)];
            line += std::string(1 + random() % 3, " \t"[random() % 4 == 0]);
        }
    }
    }
    return line;
}

} // namespace

TEST(Garbage, RandomLinesLeaveTheEngineWorking)
{
    for (Session *session : { &fixed_session, &standard_session }) {
        std::mt19937 random(12345);
        int searches = 0, perfts = 0;
        for (int i = 0; i < 3000; i++) {
            const std::string out = run_command(random_line(random).c_str(), session);
            searches += out.find("bestmove ") != std::string::npos;
            perfts += out.find("2=") != std::string::npos;
        }
        // The garbled boards were searched and counted, not only set up.
        EXPECT_GT(searches, 0);
        EXPECT_GT(perfts, 0);
        EXPECT_EQ(run_command("isready", session),
            session->dialect->standard ? "readyok\n" : "readyok\r\n");
        run_command("position startpos moves e2e4", session);
        EXPECT_EQ(current_key, 0x823C9B50FD114196u);
    }
}
