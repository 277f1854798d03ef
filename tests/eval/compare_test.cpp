// The fast evaluation, the attack maps and the square tests against the literal versions, on
// random boards; the sign rule; and boards outside every contract.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "eval/evaluate.h"
#include "movegen/attacked.h"
#include "position/fen.h"
#include "tests/eval/reference_eval.h"
#include "tests/support/random_boards.h"

namespace {

using namespace eval;

#ifdef KORVANE_SANITIZE
constexpr int board_count = 1000; // the sanitizer build is several times slower
#else
constexpr int board_count = 3000;
#endif

void expect_same_terms(const Board &b, const std::string &what)
{
    const breakdown fast = evaluate_terms(b);
    const reference_scores slow = reference_evaluate(b);
    ASSERT_EQ(fast.phase, slow.phase) << what;
    for (int c = white; c <= black; c++) {
        for (int t = 0; t < term_count; t++)
            ASSERT_EQ(fast.terms.value[c][t], slow.value[c][t])
                << what << " colour " << c << " term " << t;
        ASSERT_EQ(fast.total[c], slow.total[c]) << what;
    }
    // The score itself is summed apart from the breakdown, without the report.
    ASSERT_EQ(evaluate(b, 1, 0), reference_score(b, 1)) << what;
    ASSERT_EQ(evaluate(b, 0, 0), reference_score(b, 0)) << what;
}

TEST(Compare, RandomPositionsAgreeWithTheLiteralEvaluation)
{
    std::mt19937_64 rng(20240605);
    for (int i = 0; i < board_count; i++) {
        // Crowded, middling and sparse boards, so that all three phases come up.
        const Board b = random_position(rng, i % 3 == 0 ? 30 : i % 3 == 1 ? 16 : 6);
        expect_same_terms(b, "position " + std::to_string(i));
    }
}

TEST(Compare, GarbledBoardsAgreeWithTheLiteralEvaluation)
{
    std::mt19937_64 rng(77);
    for (int i = 0; i < board_count; i++)
        expect_same_terms(random_garbage(rng), "garbage " + std::to_string(i));
}

// The engine's one square test, table-driven, against the literal ray walk, and the attack maps
// that the evaluation derives against the square test, on every square.
TEST(Compare, SquareTestsAndAttackMapsAgreeWithTheRayWalk)
{
    std::mt19937_64 rng(5);
    for (int i = 0; i < board_count; i++) {
        const Board b = i % 4 == 3 ? random_garbage(rng) : random_position(rng, 24);
        const eval_input in = derive(b);
        for (int s = 0; s < 64; s++) {
            const int by_white = attacked_by_white(b, s), by_black = attacked_by_black(b, s);
            ASSERT_EQ(by_white, reference_attacked(b, white, s))
                << "board " << i << " square " << s;
            ASSERT_EQ(by_black, reference_attacked(b, black, s))
                << "board " << i << " square " << s;
            ASSERT_EQ(int(in.attacked[white] >> s & 1), by_white) << i << " " << s;
            ASSERT_EQ(int(in.attacked[black] >> s & 1), by_black) << i << " " << s;
        }
    }
}

TEST(Compare, RandomGamesAgreeWithTheLiteralEvaluation)
{
    std::mt19937_64 rng(10);
    int positions = 0;
    int phases[3] = {};
    while (positions < board_count)
        for (const Board &b : random_game(rng, 300)) {
            expect_same_terms(b, "game position " + std::to_string(positions++));
            phases[evaluate_terms(b).phase]++;
        }
    // The games pass through all three phases.
    EXPECT_GT(phases[opening], 0);
    EXPECT_GT(phases[middlegame], 0);
    EXPECT_GT(phases[ending], 0);
}

TEST(Compare, SideNegatesAndNothingButThePiecesAndRightsCounts)
{
    std::mt19937_64 rng(11);
    for (int i = 0; i < board_count; i++) {
        Board b = i % 5 == 4 ? random_garbage(rng) : random_position(rng, 30);
        const std::int32_t score = evaluate(b, 1, 0);
        ASSERT_EQ(evaluate(b, 0, 0), -score) << i;
        ASSERT_EQ(evaluate(b, 5, 0), score) << i; // any nonzero side is white
        b.white_to_move = !b.white_to_move;
        b.fifty_move = std::uint8_t(b.fifty_move + 37);
        b.enpassant_file = std::int8_t(i % 9 - 1);
        ASSERT_EQ(evaluate(b, 1, 0), score) << i;
    }
}

// The extremes of the garbled boards above (missing and extra kings and overlapping sets come up
// there on every run): the evaluation must read inside its tables (the sanitizer build checks)
// and give the literal evaluation's figures.
TEST(BadInput, EmptyFullAndCrowdedBoards)
{
    Board empty {};
    expect_same_terms(empty, "empty");
    EXPECT_EQ(evaluate(empty, 1, 0), 0);

    Board queens = parse_fen("QQQQQQQQ/QQQQQQQQ/QQQQ4/8/8/8/8/4K2k w - - 0 1");
    expect_same_terms(queens, "twenty queens");

    Board full {};
    full.white_rooks = full.white_knights = full.white_bishops = full.white_queens = full.white_king
        = full.white_pawns = ~Bitboard(0);
    full.black_rooks = full.black_knights = full.black_bishops = full.black_queens = full.black_king
        = full.black_pawns = ~Bitboard(0);
    expect_same_terms(full, "every set full");

    // The report path too: printed in full whatever the board.
    testing::internal::CaptureStdout();
    evaluate(empty, 1, 1);
    evaluate(full, 0, 1);
    evaluate(queens, 1, 1);
    const std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3 * 48);
}

} // namespace
