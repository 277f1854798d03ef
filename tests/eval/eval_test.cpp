// The evaluation: the fixed figures of the reference positions, the term report, single terms
// on small positions, the phase switches, and the fast evaluation against the literal one.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

#include "evaluate.h"
#include "fast_attacked.h"
#include "helpers.h"
#include "king_safety.h"
#include "random_boards.h"
#include "reference_eval.h"
#include "report.h"
#include "start_report.h"

namespace {

using namespace eval;

constexpr const char *start_fen = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";

std::int32_t term_of(const Board &b, int colour, term t)
{
    return evaluate_terms(b).terms.value[colour][t];
}

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

struct phase_case {
    const char *fen;
    std::int32_t total_material;
    int phase;
};

// Material totals are multiples of 20: the boundaries and their neighbours.
constexpr phase_case phase_cases[] = {
    { "rn1qk1nr/pppppppp/8/8/8/8/PPPPPPP1/RN1QK1NR w KQkq - 0 1", 6500, opening },
    { "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/1NB1KBNR w Kkq - 0 1", 6480, middlegame },
    { "4k3/p7/8/8/8/8/P7/Q2QK3 w - - 0 1", 2000, middlegame },
    { "2bbk3/p7/8/8/8/8/P7/R1BBK3 w - - 0 1", 1980, ending },
    { "8/8/8/4k3/8/8/4K3/8 w - - 0 1", 0, ending },
};

TEST(Frame, PhaseBoundaries)
{
    for (const phase_case &c : phase_cases) {
        const breakdown scores = evaluate_terms(fen(c.fen));
        EXPECT_EQ(scores.terms.value[white][material] + scores.terms.value[black][material],
            c.total_material)
            << c.fen;
        EXPECT_EQ(scores.phase, c.phase) << c.fen;
    }
}

// Middlegame material (a white queen trio) beside the piece under test, so its table counts.
TEST(Frame, BlackReadsTheBoardTurnedExceptItsKingOnTheEighthRank)
{
    // Knights: white f2 0 and c2 -3 (beside the queens' -2 - 1 - 1); black c7 0 and f7 -3.
    EXPECT_EQ(term_of(fen("k7/8/8/8/8/8/5N2/QQQ1K3 w - - 0 1"), white, piece_tables), -4 + 0);
    EXPECT_EQ(term_of(fen("k7/8/8/8/8/8/2N5/QQQ1K3 w - - 0 1"), white, piece_tables), -4 - 3);
    EXPECT_EQ(term_of(fen("k7/2n5/8/8/8/8/8/QQQ1K3 w - - 0 1"), black, piece_tables), 0);
    EXPECT_EQ(term_of(fen("k7/5n2/8/8/8/8/8/QQQ1K3 w - - 0 1"), black, piece_tables), -3);
    // Pawns: a black pawn on b4 reads the 3 of g5, one on g4 the 1 of b5. The black king on a8
    // reads a1 (10).
    EXPECT_EQ(term_of(fen("k7/8/8/8/1p6/8/8/QQQ1K3 w - - 0 1"), black, king_pawn_tables), 10 + 3);
    EXPECT_EQ(term_of(fen("k7/8/8/8/6p1/8/8/QQQ1K3 w - - 0 1"), black, king_pawn_tables), 10 + 1);
    // Black king: e8 reads e1 (17), d8 d1 (15), g8 g1 (18), b8 b1 (15), b7 g2 (10), h3 a6 (0),
    // a7 h2 (5).
    const std::pair<const char *, std::int32_t> kings[] = {
        { "4k3/8/8/8/8/8/8/QQQ1K3 w - - 0 1", 17 },
        { "3k4/8/8/8/8/8/8/QQQ1K3 w - - 0 1", 15 },
        { "6k1/8/8/8/8/8/8/QQQ1K3 w - - 0 1", 18 },
        { "1k6/8/8/8/8/8/8/QQQ1K3 w - - 0 1", 15 },
        { "8/1k6/8/8/8/8/8/QQQ1K3 w - - 0 1", 10 },
        { "8/8/8/8/8/7k/8/QQQ1K3 w - - 0 1", 0 },
        { "8/k7/8/8/8/8/8/QQQ1K3 w - - 0 1", 5 },
    };
    for (const auto &[position, value] : kings)
        EXPECT_EQ(term_of(fen(position), black, king_pawn_tables), value) << position;
}

TEST(Frame, EndingDropsPieceTablesAndSwitchesKingAndPawnTables)
{
    // Knight on a1 would read -5, the king on d4 reads 0 in the middle game and 2 in the ending,
    // the pawn on e6 4 and 5.
    const Board b = fen("8/8/4P3/8/3K4/8/8/N6k w - - 0 1");
    EXPECT_EQ(evaluate_terms(b).phase, ending);
    EXPECT_EQ(term_of(b, white, piece_tables), 0);
    EXPECT_EQ(term_of(b, white, king_pawn_tables), 2 + 5);
    EXPECT_EQ(term_of(b, white, material), 400);
}

// ---- Piece activity -------------------------------------------------------------------------

TEST(Activity, LoneRookSeesFourteenFreeSquares)
{
    const Board b = fen("7k/8/8/8/3R4/8/8/K7 w - - 0 1");
    EXPECT_EQ(term_of(b, white, free_squares), 14);
    EXPECT_EQ(term_of(b, white, rook_mobility), 0);
    EXPECT_EQ(term_of(b, white, rook_attack), 0);
}

TEST(Activity, KingsAtTheEndOfASetCount)
{
    // The rook's file set ends on the black king, its rank set on the white king.
    const Board b = fen("3k4/8/8/8/K2R4/8/8/8 w - - 0 1");
    EXPECT_EQ(term_of(b, white, rook_attack), 1);
    EXPECT_EQ(term_of(b, white, rook_mobility), 1);
    // Rank set: 7 squares, 1 own -> 7 - 1 = 6; file set: 7 squares, 1 enemy, and the own piece
    // of the rank set charged again -> 7 - 1 - 1 = 5.
    EXPECT_EQ(term_of(b, white, free_squares), 6 + 5);
}

TEST(Activity, FreeFigureChargesEarlierBlockersAgain)
{
    // Knights on b1 and g1 behind a row of pawns: 3 - 1 = 2, then 3 - 2 = 1, the first knight's
    // pawn charged a second time.
    const Board b = fen("4k3/8/8/8/8/8/PPPPPPPP/1N4N1 w - - 0 1");
    EXPECT_EQ(term_of(b, white, knight_mobility), 2);
    EXPECT_EQ(term_of(b, white, free_squares), 3);
}

TEST(Activity, RookFiles)
{
    // a-file open (12), d-file with an enemy pawn only (7), h-file with an own pawn (0).
    const char *position = "4k3/3p4/8/8/8/8/7P/R2RK2R w - - 0 1";
    EXPECT_EQ(term_of(fen(position), white, rook_file_score), 12 + 7);
    // The same in the ending and in the opening.
    EXPECT_EQ(term_of(fen("4k3/8/8/8/8/8/8/R3K3 w - - 0 1"), white, rook_file_score), 12);
    EXPECT_EQ(term_of(fen("rnbqkbnr/1ppppppp/8/8/8/8/1PPPPPPP/RNBQKBNR w KQkq - 0 1"), white,
                  rook_file_score),
        12);
}

TEST(Activity, Coordination)
{
    // Rooks on a1 and a2: connected.
    EXPECT_EQ(term_of(fen("4k3/8/8/8/8/8/R7/R3K3 w - - 0 1"), white, coord_score), 16);
    // A pawn of either colour between them: not connected.
    EXPECT_EQ(term_of(fen("4k3/R7/8/p7/8/8/8/R3K3 w - - 0 1"), white, coord_score), 0);
    EXPECT_EQ(term_of(fen("4k3/R7/8/P7/8/8/8/R3K3 w - - 0 1"), white, coord_score), 0);
    // A rook on d4 connected with queens on d8 and a4 and a rook on h4: 10 + 10 + 16. The queens
    // see each other on no rank or file, and the diagonal pair d8-a5 would count nothing.
    EXPECT_EQ(term_of(fen("3Q3k/8/8/8/Q2R3R/8/8/K7 w - - 0 1"), white, coord_score), 36);
    // Queen pairs and diagonals count nothing: queens a8 and d8 share a rank, the rook on e4 sits
    // on the a8 queen's diagonal.
    EXPECT_EQ(term_of(fen("Q2Q3k/8/8/8/4R3/8/8/K7 w - - 0 1"), white, coord_score), 0);
}

TEST(Activity, CoordinationListsHoldTenRooks)
{
    // Sixteen rooks on ranks 1 and 2: only the ten lowest (a1..h1, a2, b2) take part. Pairs:
    // seven neighbours on rank 1, a1-a2, b1-b2, a2-b2.
    const Board b = fen("7k/8/8/8/K7/8/RRRRRRRR/RRRRRRRR w - - 0 1");
    EXPECT_EQ(reference_evaluate(b).value[white][coord_score], 16 * 10);
    EXPECT_EQ(term_of(b, white, coord_score), 16 * 10);
}

// ---- King safety and centre -----------------------------------------------------------------

TEST(KingSafety, CoverSquaresAtTheEdges)
{
    auto squares = [](std::initializer_list<int> list) {
        Bitboard set = 0;
        for (int s : list) set |= square_bit(s);
        return set;
    };
    EXPECT_EQ(pawn_cover_white(g1), squares({ f2, g2, h2, f3, g3, h3 }));
    EXPECT_EQ(pawn_cover_white(a1), squares({ a2, b2, a3, b3 }));
    EXPECT_EQ(pawn_cover_white(h7), squares({ g8, h8 }));
    EXPECT_EQ(pawn_cover_white(d7), squares({ c8, d8, e8 }));
    EXPECT_EQ(pawn_cover_white(e8), 0u);
    EXPECT_EQ(pawn_cover_black(g8), squares({ f7, g7, h7, f6, g6, h6 }));
    EXPECT_EQ(pawn_cover_black(e2), squares({ d1, e1, f1 }));
    EXPECT_EQ(pawn_cover_black(h1), 0u);
    EXPECT_EQ(pawn_cover_white(64), 0u);
    EXPECT_EQ(pawn_cover_black(64), 0u);
}

TEST(KingSafety, Figures)
{
    // Nothing attacked, three pawns on the cover squares: -3, held at 0.
    EXPECT_EQ(term_of(fen(start_fen), white, king_safety_penalty), 0);
    // A lone check, no other ring square attacked and no cover pawn: raw 2 + 4 = 6, times 6 in
    // the opening (the pawn on f4 checks the king on e3; it stands in the ring, unattacked).
    const Board check = fen("rnbqkbnr/ppppp1pp/8/8/5p2/4K3/PPPPPPPP/RNBQ1BNR w kq - 0 1");
    EXPECT_EQ(evaluate_terms(check).phase, opening);
    EXPECT_EQ(term_of(check, white, king_safety_penalty), 36);
    EXPECT_EQ(evaluate(check, 1, 0), reference_score(check, 1));
    // The same king shape in the middlegame and the ending: factors 4 and 1.
    EXPECT_EQ(term_of(fen("4k3/8/8/8/5p2/4K3/8/QQQ5 w - - 0 1"), white, king_safety_penalty), 24);
    EXPECT_EQ(term_of(fen("4k3/8/8/8/5p2/4K3/8/8 w - - 0 1"), white, king_safety_penalty), 6);
}

TEST(KingSafety, KingShieldsTheSquareBehindIt)
{
    // A rook on a1 checks the king on e1 along the rank: it attacks d1 and e1 but not f1, which
    // the king itself blocks. 2 x 2 + 4 = 8, in the ending.
    const Board b = fen("k7/8/8/8/8/8/8/r3K3 w - - 0 1");
    EXPECT_EQ(evaluate_terms(b).phase, ending);
    EXPECT_EQ(term_of(b, white, king_safety_penalty), 8);
}

TEST(KingSafety, PawnsOnTheSecondOrThirdRankCoverAlike)
{
    // A king on e1 with the knight on h3 hitting f2 alone: 2 less three cover pawns, held at 0.
    const char *home = "rnbqkb1r/pppppppp/8/8/8/7n/PPPPPPPP/RNBQKBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(fen(home), white, king_safety_penalty), 0);
    const Board castled = fen("rnbqkb1r/pppppppp/8/8/8/7n/PPPPPPPP/RNBQ1RK1 w kq - 0 1");
    const Board raised = fen("rnbqkb1r/pppppppp/8/8/8/5PPn/PPPPP2P/RNBQ1RK1 w kq - 0 1");
    // Knight on h3 attacks g1 and f2: raw 2 x 2 + 4 - 3 = 5, times 6.
    EXPECT_EQ(term_of(castled, white, king_safety_penalty), 30);
    EXPECT_EQ(term_of(raised, white, king_safety_penalty), 30);
}

TEST(KingSafety, KingOnTheLastRankHasNoCover)
{
    // White king on h8 with a black rook on a8 and own pawns on g7 and h7: the rook attacks g8
    // and h8, 2 x 2 + 4 = 8, and the pawns take nothing off.
    const Board b = fen("r6K/6PP/8/8/8/8/8/k7 w - - 0 1");
    EXPECT_EQ(term_of(b, white, king_safety_penalty), 8);
}

TEST(Center, OpeningAndMiddlegameValues)
{
    // After 1. e4 e5 2. Nf3 Nc6: 28 for white, 20 for black.
    const Board b = fen(reference_cases[1].fen);
    EXPECT_EQ(term_of(b, white, center_score), 28);
    EXPECT_EQ(term_of(b, black, center_score), 20);
    // In the opening a white knight on e5 and pawn on d4, both squares attacked by white alone:
    // 6 + 8 and 10 + 8; e4 and d5 attacked by nobody.
    const Board knight = fen("rnbqkb1r/pppppppp/8/4N3/3P4/8/PPP1PPPP/RNBQKB1R w KQkq - 0 1");
    EXPECT_EQ(evaluate_terms(knight).phase, opening);
    EXPECT_EQ(term_of(knight, white, center_score), 32);
    EXPECT_EQ(term_of(knight, black, center_score), 0);
    // In the middlegame the knight is worth 3 and attacks count nothing; in the ending nothing.
    const Board middle = fen("4k3/8/8/4N3/8/8/8/QQQ1K3 w - - 0 1");
    EXPECT_EQ(evaluate_terms(middle).phase, middlegame);
    EXPECT_EQ(term_of(middle, white, center_score), 3);
    EXPECT_EQ(term_of(fen("4k3/8/8/4N3/8/8/8/4K3 w - - 0 1"), white, center_score), 0);
}

} // namespace
