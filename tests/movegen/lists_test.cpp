// Legal lists over a table of positions, read by one loop: every word, its capture, captured and
// check fields and the order, as recorded; the captures-only list is the same words with the
// capture bit, and the literal generator (every word tried on a copy) gives the same list. The
// positions single out castling through and out of check, pins, en passant that uncovers the
// king, promotions, full lists, missing kings and run-on FEN rows. With KORVANE_RECORD set, each
// row is printed as the engine makes it now instead, for a deliberate change or a new position.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "movegen/legal.h"
#include "position/fen.h"

namespace {

std::vector<Move> words_of(void (*generate)(Board, MoveList *), const Board &board)
{
    MoveList list;
    list.count = 0;
    generate(board, &list);
    return std::vector<Move>(list.moves, list.moves + list.count);
}

TEST(Legal, RecordedLists)
{
    std::ifstream file(KORVANE_MOVE_LISTS);
    ASSERT_TRUE(file) << KORVANE_MOVE_LISTS;
    int rows = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        rows++;
        const std::size_t bar = line.find('|');
        const Board board = parse_fen(line.substr(0, bar - 1).c_str());
        std::istringstream in(line.substr(bar + 1));
        std::vector<Move> moves, captures;
        for (Move m; in >> std::hex >> m;) {
            moves.push_back(m);
            if (m & move_capture) captures.push_back(m);
        }
        if (std::getenv("KORVANE_RECORD")) {
            std::printf("%s |", line.substr(0, bar - 1).c_str());
            for (Move m : words_of(generate_moves_literal, board)) std::printf(" %x", m);
            std::printf("\n");
            continue;
        }
        EXPECT_EQ(words_of(generate_moves, board), moves) << line;
        EXPECT_EQ(words_of(generate_captures, board), captures) << line;
        EXPECT_EQ(words_of(generate_moves_literal, board), moves) << line;
        EXPECT_EQ(words_of(generate_captures_literal, board), captures) << line;
    }
    EXPECT_GT(rows, 100);
}

} // namespace
