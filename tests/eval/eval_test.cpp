// The evaluation: the fixed figures of the reference positions, the term report and the start
// position's totals.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "eval/evaluate.h"
#include "eval/report.h"
#include "tests/eval/reference_eval.h"
#include "tests/eval/start_report.h"
#include "tests/support/helpers.h"

namespace {

using namespace eval;

constexpr const char *start_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

std::string report_of(const Board &b)
{
    char text[report_size];
    const std::size_t length = format_report(evaluate_terms(b), text);
    return std::string(text, length);
}

// ---- The reference positions --------------------------------------------------------------

struct reference_case {
    const char *fen;
    int phase;
    std::int32_t total_material;
    std::int32_t score; // for the side to move
};

constexpr reference_case reference_cases[] = {
    { start_fen, 0, 7880, 0 },
    { "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3", 0, 7880, 21 },
    { "r1bq1rk1/pp1nbppp/2p1pn2/3p2B1/2PP4/2NBPN2/PP3PPP/R2QK2R w KQ - 0 9", 0, 7880, -3 },
    { "2r2rk1/pp2bppp/2n1bn2/q2p4/3P4/P1NBBN2/1PQ2PPP/2R2RK1 b - - 3 15", 0, 7480, -10 },
    { "r4rk1/1b3ppp/p2bpn2/1p6/3P4/1BN1PN2/PP3PPP/2R2RK1 w - - 0 15", 1, 5160, 77 },
    { "r3r1k1/pp3ppp/2n5/3p4/3P2b1/2N2N2/PP3PPP/R3R1K1 b - - 0 18", 1, 4420, 14 },
    { "8/5pk1/6p1/8/3R4/6P1/5PK1/3r4 b - - 0 40", 2, 1400, 31 },
    { "8/2k5/3p4/3P4/2P5/4K3/8/8 w - - 0 50", 2, 300, 113 },
    { "8/8/8/4k3/8/8/4K3/8 w - - 0 1", 2, 0, -2 },
};

class ReferencePosition : public testing::TestWithParam<reference_case> { };

TEST_P(ReferencePosition, PhaseMaterialAndScore)
{
    const reference_case &c = GetParam();
    const Board b = fen(c.fen);
    const breakdown scores = evaluate_terms(b);
    EXPECT_EQ(scores.phase, c.phase);
    EXPECT_EQ(scores.terms.value[white][material] + scores.terms.value[black][material],
        c.total_material);
    EXPECT_EQ(evaluate(b, b.white_to_move, 0), c.score);
    EXPECT_EQ(evaluate(b, !b.white_to_move, 0), -c.score);
    EXPECT_EQ(evaluate(b, b.white_to_move, 0), reference_score(b, b.white_to_move));
}

INSTANTIATE_TEST_SUITE_P(Eval, ReferencePosition, testing::ValuesIn(reference_cases));

// ---- The report -----------------------------------------------------------------------------

TEST(Report, StartPositionByteForByte)
{
    EXPECT_EQ(report_of(fen(start_fen)), start_report());

    testing::internal::CaptureStdout();
    const std::int32_t score = evaluate(fen(start_fen), 1, 1);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), start_report());
    EXPECT_EQ(score, 0);
}

TEST(Report, SilentWithoutTheFlagAndSameResultWithIt)
{
    const Board b = fen(reference_cases[4].fen);
    testing::internal::CaptureStdout();
    const std::int32_t silent = evaluate(b, 1, 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    testing::internal::CaptureStdout();
    const std::int32_t loud = evaluate(b, 1, 7);
    EXPECT_EQ(testing::internal::GetCapturedStdout().size(), report_of(b).size());
    EXPECT_EQ(silent, loud);
}

// The report lines that are not zero, by colour and term; every other line must read 0.
using nonzero_lines = std::map<std::pair<int, term>, std::int32_t>;

void expect_report(const char *position, const nonzero_lines &expected)
{
    const breakdown scores = evaluate_terms(fen(position));
    for (int c = white; c <= black; c++)
        for (int t = 0; t < reported_term_count; t++) {
            const auto found = expected.find({ c, term(t) });
            EXPECT_EQ(scores.terms.value[c][t], found == expected.end() ? 0 : found->second)
                << (c == white ? "White " : "Black ") << term_names[t];
        }
}

TEST(Report, ThirdReferencePosition)
{
    expect_report(reference_cases[2].fen,
        {
            { { white, rook_mobility }, 4 },
            { { black, rook_mobility }, 5 },
            { { white, bishop_mobility }, 2 },
            { { black, bishop_mobility }, 5 },
            { { white, bishop_attack }, 2 },
            { { white, knight_mobility }, 6 },
            { { black, knight_mobility }, 6 },
            { { white, knight_attack }, 1 },
            { { white, queen_mobility }, 4 },
            { { black, queen_mobility }, 4 },
            { { white, center_score }, 33 },
            { { black, center_score }, 25 },
            { { white, coord_score }, 10 },
            { { black, coord_score }, 10 },
            { { white, bishop_block_penalty }, 7 },
            { { black, bishop_block_penalty }, 7 },
            { { white, bishop_pair_bonus }, 18 },
            { { black, bishop_pair_bonus }, 18 },
            { { white, king_development_score }, -18 },
            { { black, king_development_score }, 14 },
            { { white, central_pawn_opening_score }, 17 },
            { { black, central_pawn_opening_score }, 17 },
        });
}

TEST(Report, SeventhReferencePosition)
{
    expect_report(reference_cases[6].fen,
        {
            { { white, rook_attack }, 1 },
            { { black, rook_attack }, 1 },
            { { white, king_safety_penalty }, 5 },
            { { white, rook_file_score }, 12 },
            { { black, rook_file_score }, 12 },
        });
}

// ---- The frame: material, phase, tables -----------------------------------------------------

TEST(Frame, StartPositionTotals)
{
    const breakdown scores = evaluate_terms(fen(start_fen));
    for (int c = white; c <= black; c++) {
        EXPECT_EQ(
            scores.terms.value[c][piece_tables] + scores.terms.value[c][king_pawn_tables], 13);
        EXPECT_EQ(scores.terms.value[c][free_squares], -9);
        EXPECT_EQ(scores.total[c], 3924);
    }
    EXPECT_EQ(evaluate(fen(start_fen), 0, 0), 0);
}

} // namespace
