// The sortedmoves word: the root's ordering as the search sees it.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "eval/evaluate.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "search/ordering.h"
#include "tests/frontend/capture.h"

namespace {

TEST(SortedMoves, BeforeAnySearchEveryMoveHasItsEvaluation)
{
    run_command("position startpos");
    clear_counters();
    std::fill(std::begin(pv_length), std::end(pv_length), 0);
    const std::string out = run_command("sortedmoves");
    EXPECT_EQ(out.find("True"), std::string::npos);
    EXPECT_EQ(out.find("12000"), std::string::npos);
    // Each quiet move shows the evaluation after it, from the mover's side.
    MoveList list;
    list.count = 0;
    generate_moves(current_board, &list);
    ASSERT_EQ(list.count, 20);
    for (int i = 0; i < list.count; i++) {
        Board child = current_board;
        apply_move(&child, list.moves[i]);
        char text[8];
        move_to_text(list.moves[i], text);
        const std::string line
            = std::string(text) + ": " + std::to_string(evaluate(child, 1, 0)) + "   False\n";
        EXPECT_NE(out.find(line), std::string::npos) << line;
    }
}

TEST(SortedMoves, AfterASearchMarksTheFirstMoveOfTheLine)
{
    run_command("position startpos");
    run_command("go depth 5");
    const std::string out = run_command("sortedmoves");
    EXPECT_EQ(out.substr(0, 19), "e2e4: 12000   True\n");
    // Exactly one move is marked.
    EXPECT_EQ(out.find("True"), out.rfind("True"));
}

} // namespace
