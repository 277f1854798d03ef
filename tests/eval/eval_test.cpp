// The evaluation over a table of boards, read by one loop: every term of both colours, the
// totals, the phase, the score for either side and the squares each side attacks, as recorded
// when the literal evaluation (loops over squares, rays walked a step at a time) gave the same
// figures. The boards: positions that single out each term, the phase boundaries, random
// placements, positions of random games and garbled boards (each set drawn on its own, so sets
// overlap and kings are missing or many).
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "eval/evaluate.h"
#include "movegen/attacked.h"

namespace {

using namespace eval;

TEST(Eval, RecordedBoards)
{
    std::ifstream file(KORVANE_EVAL_TABLE);
    ASSERT_TRUE(file) << KORVANE_EVAL_TABLE;
    int rows = 0, phases[3] = {};
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream in(line);
        Board b {};
        for (int c = 0; c < 2; c++)
            for (int p = 0; p < 6; p++) in >> std::hex >> (b.*piece_sets[c][p]);
        int phase, score;
        Bitboard attacked[2];
        in >> std::dec >> b.white_oo >> b.white_ooo >> b.black_oo >> b.black_ooo >> phase >> score
            >> std::hex >> attacked[0] >> attacked[1] >> std::dec;
        // Neither the side to move nor the counters count.
        b.white_to_move = rows % 2;
        b.fifty_move = std::uint8_t(rows);
        b.enpassant_file = std::int8_t(rows % 10 - 1);
        const std::string where = "row " + std::to_string(++rows) + ": " + line.substr(0, 120);

        const breakdown found = evaluate_terms(b);
        ASSERT_EQ(found.phase, phase) << where;
        phases[phase]++;
        for (int c = white; c <= black; c++) {
            for (int t = 0; t < term_count; t++) {
                int value;
                in >> value;
                ASSERT_EQ(found.terms.value[c][t], value)
                    << where << " colour " << c << " term " << t;
            }
            int total;
            in >> total;
            ASSERT_EQ(found.total[c], total) << where;
        }
        ASSERT_TRUE(in) << where;
        // The score is summed apart from the breakdown.
        ASSERT_EQ(evaluate(b, 1, 0), score) << where;
        ASSERT_EQ(evaluate(b, 0, 0), -score) << where;
        // The square test, and the attack maps the evaluation derives, square by square.
        const eval_input maps = derive(b);
        for (int s = 0; s < 64; s++) {
            ASSERT_EQ(attacked_by_white(b, s), int(attacked[0] >> s & 1)) << where << " " << s;
            ASSERT_EQ(attacked_by_black(b, s), int(attacked[1] >> s & 1)) << where << " " << s;
        }
        ASSERT_EQ(maps.attacked[white], attacked[0]) << where;
        ASSERT_EQ(maps.attacked[black], attacked[1]) << where;
    }
    EXPECT_GT(rows, 1000);
    EXPECT_GT(phases[opening] * phases[middlegame] * phases[ending], 0);
}

} // namespace
