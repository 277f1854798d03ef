// Pawn structure, bishops, knights, traps, king placement and development: the single figures,
// and every term switched off in the phases where it does not count.
#include <gtest/gtest.h>

#include "evaluate.h"
#include "fen.h"
#include "reference_eval.h"

namespace {

using namespace eval;

std::int32_t term_of(const char *position, int colour, term t)
{
    return evaluate_terms(parse_fen(position)).terms.value[colour][t];
}

int phase_of(const char *position) { return evaluate_terms(parse_fen(position)).phase; }

TEST(Patterns, DoubledPawnsByCountOnly)
{
    // Two pawns on a file 10, three 26, four 42, whatever their ranks and gaps.
    EXPECT_EQ(term_of("4k3/8/8/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty), 10);
    EXPECT_EQ(term_of("4k3/P7/8/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty), 26);
    EXPECT_EQ(term_of("4k3/P7/P7/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty), 42);
    // Two doubled files and one tripled one, for black: 10 + 10 + 26.
    EXPECT_EQ(
        term_of("4k3/pp1p4/pp1p4/3p4/8/8/8/4K3 w - - 0 1", black, pawn_structure_penalty), 46);
    EXPECT_EQ(term_of("4k3/pppppppp/8/8/8/8/8/4K3 w - - 0 1", black, pawn_structure_penalty), 0);
}

TEST(Patterns, BishopPairAndKnightRim)
{
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", white, bishop_pair_bonus), 18);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/2B1K3 w - - 0 1", white, bishop_pair_bonus), 0);
    // Both bishops on light squares still make a pair.
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/1B1BK3 w - - 0 1", white, bishop_pair_bonus), 18);
    // Knights in three corners and on b1, with middlegame material: 12 x 3 + 7.
    const char *rim = "n3k2n/8/8/8/8/8/8/NN2K2Q w - - 0 1";
    EXPECT_EQ(phase_of(rim), middlegame);
    EXPECT_EQ(term_of(rim, white, knight_edge_penalty), 12 + 7);
    EXPECT_EQ(term_of(rim, black, knight_edge_penalty), 24);
    // A knight on the rim's middle, d8 or a5, 7; in the centre nothing.
    EXPECT_EQ(term_of("3nk3/8/8/n7/3N4/8/8/QQ2K2Q w - - 0 1", black, knight_edge_penalty), 14);
    EXPECT_EQ(term_of("3nk3/8/8/n7/3N4/8/8/QQ2K2Q w - - 0 1", white, knight_edge_penalty), 0);
}

TEST(Patterns, BishopBlock)
{
    // Start position: 11 for each bishop. A bishop on a3 before b4 looks at one square (7), a
    // bishop on h1 before g2 likewise.
    const char *a3 = "rnbqkbnr/pppppppp/8/8/1P6/B7/P1PPPPPP/RN1QKBNR w KQkq - 0 1";
    EXPECT_EQ(phase_of(a3), opening);
    EXPECT_EQ(term_of(a3, white, bishop_block_penalty), 7 + 11);
    const char *h1 = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNB w Qkq - 0 1";
    EXPECT_EQ(term_of(h1, white, bishop_block_penalty), 11 + 11 + 7);
    // A black bishop on c8 before b7 and d7 pays 11; one on c1 has no rank in front.
    const char *c1 = "rn1qkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNbQKBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(c1, black, bishop_block_penalty), 11);
    // A bishop anywhere: a white one on d5 before own pawns on c6 and e6 (11), beside the one
    // on c1 before b2 alone (7).
    const char *d5 = "rnbqkbnr/pp3ppp/2P1P3/3B4/8/8/PPP2PPP/RNBQK1NR w KQkq - 0 1";
    EXPECT_EQ(phase_of(d5), opening);
    EXPECT_EQ(term_of(d5, white, bishop_block_penalty), 11 + 7);
}

TEST(Patterns, BishopsShutInOnTheKingSide)
{
    // Bishop e3 before e2: 28; with the other bishop on f1 behind g2: 48, and the f1 bishop
    // behind e2 and g2 pays the trap's 16 as well.
    const char *e3 = "rnbqkbnr/pppppppp/8/8/8/4B3/PPPPP1PP/RN1QK1NR w KQkq - 0 1";
    EXPECT_EQ(term_of(e3, white, bishop_king_pawn_block_penalty), 28);
    EXPECT_EQ(term_of(e3, white, king_side_bishop_trap_penalty), 0);
    const char *both = "rnbqkbnr/pppppppp/8/8/8/4B3/PPPPP1PP/RN1QKBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(both, white, bishop_king_pawn_block_penalty), 48);
    EXPECT_EQ(term_of(both, white, king_side_bishop_trap_penalty), 16);
    // Black's twin: bishops e6 and f8, pawns e7 and g7.
    const char *black_both = "rnbqkbnr/ppppp1pp/4b3/8/8/8/PPPPPPPP/RNBQK1NR w KQkq - 0 1";
    EXPECT_EQ(term_of(black_both, black, bishop_king_pawn_block_penalty), 48);
    EXPECT_EQ(term_of(black_both, black, king_side_bishop_trap_penalty), 16);
    // No pawn on g2: the trap is off, the block stays at 28.
    const char *open_g = "rnbqkbnr/pppppppp/8/8/8/4B1P1/PPPPP2P/RN1QKBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(open_g, white, bishop_king_pawn_block_penalty), 28);
    EXPECT_EQ(term_of(open_g, white, king_side_bishop_trap_penalty), 0);
    // In the middlegame the trap still pays 16, the bishop block nothing.
    const char *middle = "4k3/8/8/8/8/8/4P1P1/Q3KB1Q w - - 0 1";
    EXPECT_EQ(phase_of(middle), middlegame);
    EXPECT_EQ(term_of(middle, white, king_side_bishop_trap_penalty), 16);
    EXPECT_EQ(term_of(middle, white, bishop_block_penalty), 0);
}

TEST(Patterns, RookInTheCornerBehindItsKing)
{
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/P7/RK3QQQ w - - 0 1", white, rook_corner_trap_penalty), 16);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/7P/QQQ3KR w - - 0 1", white, rook_corner_trap_penalty), 16);
    // Without the pawn on a2, or with the king on c1, no penalty.
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/RK3QQQ w - - 0 1", white, rook_corner_trap_penalty), 0);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/P7/R1K2QQQ w - - 0 1", white, rook_corner_trap_penalty), 0);
    // Black: a8 with b8 and a7, h8 with g8 and h7.
    EXPECT_EQ(term_of("rk6/p7/8/8/8/8/8/4KQQQ w - - 0 1", black, rook_corner_trap_penalty), 16);
    EXPECT_EQ(term_of("6kr/7p/8/8/8/8/8/4KQQQ w - - 0 1", black, rook_corner_trap_penalty), 16);
}

TEST(Development, KingPlacementAndShield)
{
    // King on g1 with pawns f2, g3, h2: shield 10; development 14 in the opening, 8 in the
    // middlegame.
    const char *opening_g1 = "rnbqkbnr/pppppppp/8/8/8/6P1/PPPPPP1P/RNBQ1RK1 w kq - 0 1";
    EXPECT_EQ(phase_of(opening_g1), opening);
    EXPECT_EQ(term_of(opening_g1, white, king_development_score), 14);
    EXPECT_EQ(term_of(opening_g1, white, castled_shield_penalty), 10);
    const char *middle_g1 = "4k3/8/8/8/8/6P1/5P1P/Q4QK1 w - - 0 1";
    EXPECT_EQ(phase_of(middle_g1), middlegame);
    EXPECT_EQ(term_of(middle_g1, white, king_development_score), 8);
    EXPECT_EQ(term_of(middle_g1, white, castled_shield_penalty), 10);
    // Queen side: king c8 with no pawn on a7, b7, c7 pays 30.
    EXPECT_EQ(term_of("2k5/8/8/8/8/8/8/Q2QK2Q w - - 0 1", black, castled_shield_penalty), 30);
    EXPECT_EQ(term_of("2k5/8/8/8/8/8/8/Q2QK2Q w - - 0 1", black, king_development_score), 8);
    // King on e1: -18 or -24 while a right is kept, 0 once both are gone.
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2QK2Q w K - 0 1", white, king_development_score), -24);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2QK2Q w Q - 0 1", white, king_development_score), -24);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2QK2Q w - - 0 1", white, king_development_score), 0);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2QK2Q w kq - 0 1", black, king_development_score), -24);
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2QK2Q w kq - 0 1", white, king_development_score), 0);
    // A right without the king at home counts nothing.
    EXPECT_EQ(term_of("4k3/8/8/8/8/8/8/Q2KQ2Q w KQ - 0 1", white, king_development_score), 0);
}

TEST(Development, CentralPawnsMinorsAndQueen)
{
    // 1. e4: the central pawn scores 12, and the e-pawn has moved so no penalty.
    const char *e4 = "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq - 0 1";
    EXPECT_EQ(term_of(e4, white, central_pawn_opening_score), 12);
    EXPECT_EQ(term_of(e4, white, no_central_pawn_penalty), 0);
    // d3 and e3 5 each, black's d5 12.
    const char *small = "rnbqkbnr/ppp1pppp/8/3p4/8/3PP3/PPP2PPP/RNBQKBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(small, white, central_pawn_opening_score), 10);
    EXPECT_EQ(term_of(small, black, central_pawn_opening_score), 12);
    // Central pawns at home, one knight out, three minors at home: 28 + 16.
    const char *one_out = "rnbqkbnr/pppppppp/8/8/8/5N2/PPPPPPPP/RNBQKB1R w KQkq - 0 1";
    EXPECT_EQ(term_of(one_out, white, no_central_pawn_penalty), 44);
    // Both knights gone, bishops at home (two minors): 32 only.
    const char *knights_gone = "rnbqkbnr/pppppppp/8/8/8/2N2N2/PPPPPPPP/R1BQKB1R w KQkq - 0 1";
    EXPECT_EQ(term_of(knights_gone, white, no_central_pawn_penalty), 32);
    // Queen out on e2 with four minors at home: 42. With one minor at home: 0.
    const char *queen_out = "rnbqkbnr/pppppppp/8/8/8/8/PPPPQPPP/RNB1KBNR w KQkq - 0 1";
    EXPECT_EQ(term_of(queen_out, white, early_queen_penalty), 42);
    const char *developed = "rnbqkbnr/pppppppp/8/8/2B5/2N1BN2/PPPPQPPP/R3K2R w KQkq - 0 1";
    EXPECT_EQ(term_of(developed, white, early_queen_penalty), 0);
    // A lost queen pays like one gone out: two minors at home, 14.
    const char *no_queen = "rnbqkbnr/pppppppp/8/8/8/2N2N2/PPPPPPPP/R1B1KB1R w KQkq - 0 1";
    EXPECT_EQ(phase_of(no_queen), opening);
    EXPECT_EQ(term_of(no_queen, white, early_queen_penalty), 14);
}

// A white and black arrangement where every term of the opening and middlegame has something
// to count, played at three levels of material.
constexpr const char *rich_middlegame = "1n3bkr/3pp1pp/3pb3/n7/N7/3PB3/3PP1PP/1N3BKR w - - 0 1";
constexpr const char *rich_opening = "1n3bkr/3pp1pp/qq1pb3/n7/N7/QQ1PB3/3PP1PP/1N3BKR w - - 0 1";
constexpr const char *lean_middlegame = "q5k1/8/8/8/4P3/4B3/4P1PP/N4BKR w - - 0 1";
constexpr const char *lean_ending = "6k1/8/8/8/4P3/4B3/4P1PP/N4BKR w - - 0 1";

TEST(Phases, OpeningOnlyTermsStopInTheMiddlegame)
{
    ASSERT_EQ(phase_of(rich_opening), opening);
    ASSERT_EQ(phase_of(rich_middlegame), middlegame);
    struct figure {
        term t;
        std::int32_t opening, middlegame;
    };
    constexpr figure figures[] = {
        { bishop_block_penalty, 11, 0 }, // f1 before e2 and g2
        { central_pawn_opening_score, 5, 0 }, // d3
        { no_central_pawn_penalty, 16, 0 }, // d2 and e2 at home, one knight away
        { early_queen_penalty, 14, 0 }, // two minors at home, no queen on d1
        { bishop_king_pawn_block_penalty, 48, 48 },
        { king_side_bishop_trap_penalty, 16, 16 },
        { rook_corner_trap_penalty, 16, 16 },
        { knight_edge_penalty, 14, 14 },
        { king_development_score, 14, 8 },
        { castled_shield_penalty, 10, 10 },
        { pawn_structure_penalty, 10, 10 },
    };
    for (const figure &f : figures)
        for (int c = white; c <= black; c++) {
            EXPECT_EQ(term_of(rich_opening, c, f.t), f.opening) << term_names[f.t] << " " << c;
            EXPECT_EQ(term_of(rich_middlegame, c, f.t), f.middlegame)
                << term_names[f.t] << " " << c;
        }
}

TEST(Phases, OpeningAndMiddlegameTermsStopInTheEnding)
{
    ASSERT_EQ(phase_of(lean_middlegame), middlegame);
    ASSERT_EQ(phase_of(lean_ending), ending);
    constexpr term stopped[] = { bishop_king_pawn_block_penalty, king_side_bishop_trap_penalty,
        rook_corner_trap_penalty, knight_edge_penalty, king_development_score,
        castled_shield_penalty, center_score, piece_tables };
    const breakdown middle = evaluate_terms(parse_fen(lean_middlegame));
    const breakdown end = evaluate_terms(parse_fen(lean_ending));
    for (term t : stopped) {
        EXPECT_NE(middle.terms.value[white][t], 0) << int(t);
        EXPECT_EQ(end.terms.value[white][t], 0) << int(t);
    }
    // The terms of every phase go on counting.
    EXPECT_EQ(end.terms.value[white][bishop_pair_bonus], 18);
    EXPECT_EQ(end.terms.value[white][pawn_structure_penalty], 10);
    EXPECT_EQ(middle.terms.value[white][bishop_pair_bonus], 18);
}

} // namespace
