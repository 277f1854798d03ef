// The single terms on small positions, one row per figure, each checked in the engine's
// evaluation and in the literal one (which tests/eval/compare_test.cpp holds the engine to on
// random boards, phases and all); and the material boundaries of the phases.
#include <gtest/gtest.h>

#include "eval/evaluate.h"
#include "tests/eval/reference_eval.h"
#include "tests/support/helpers.h"

namespace {

using namespace eval;

struct term_case {
    const char *fen;
    colour side;
    term t;
    std::int32_t value;
};

// Middlegame material (a white queen trio or so) stands beside a piece whose table or term
// needs it.
constexpr term_case term_cases[] = {
    // Tables: black reads the board turned, except its king on the eighth rank. Knights: white
    // f2 0 and c2 -3 (beside the queens' -2 - 1 - 1); black c7 0 and f7 -3.
    { "k7/8/8/8/8/8/5N2/QQQ1K3 w - - 0 1", white, piece_tables, -4 + 0 },
    { "k7/8/8/8/8/8/2N5/QQQ1K3 w - - 0 1", white, piece_tables, -4 - 3 },
    { "k7/2n5/8/8/8/8/8/QQQ1K3 w - - 0 1", black, piece_tables, 0 },
    { "k7/5n2/8/8/8/8/8/QQQ1K3 w - - 0 1", black, piece_tables, -3 },
    // A black pawn on b4 reads the 3 of g5, one on g4 the 1 of b5; the king on a8 reads a1 (10).
    { "k7/8/8/8/1p6/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 10 + 3 },
    { "k7/8/8/8/6p1/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 10 + 1 },
    // Black king: e8 reads e1, d8 d1, g8 g1, b8 b1, b7 g2.
    { "4k3/8/8/8/8/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 17 },
    { "3k4/8/8/8/8/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 15 },
    { "6k1/8/8/8/8/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 18 },
    { "1k6/8/8/8/8/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 15 },
    { "8/1k6/8/8/8/8/8/QQQ1K3 w - - 0 1", black, king_pawn_tables, 10 },
    // The ending drops the piece tables (the a1 knight would read -5) and switches the king's
    // and pawns' tables: king d4 2 (0 in the middlegame), pawn e6 5 (4).
    { "8/8/4P3/8/3K4/8/8/N6k w - - 0 1", white, piece_tables, 0 },
    { "8/8/4P3/8/3K4/8/8/N6k w - - 0 1", white, king_pawn_tables, 2 + 5 },

    // Activity: a lone rook sees fourteen free squares. Kings at the end of a set count: the
    // file set ends on the black king, the rank set on the white king.
    { "7k/8/8/8/3R4/8/8/K7 w - - 0 1", white, free_squares, 14 },
    { "3k4/8/8/8/K2R4/8/8/8 w - - 0 1", white, rook_attack, 1 },
    { "3k4/8/8/8/K2R4/8/8/8 w - - 0 1", white, rook_mobility, 1 },
    // Rook files: a open (12), d with an enemy pawn only (7), h with an own pawn (0); the same
    // in the ending and in the opening.
    { "4k3/3p4/8/8/8/8/7P/R2RK2R w - - 0 1", white, rook_file_score, 12 + 7 },
    { "rnbqkbnr/1ppppppp/8/8/8/8/1PPPPPPP/RNBQKBNR w KQkq - 0 1", white, rook_file_score, 12 },
    // Coordination: rooks on a1 and a2 are connected; a pawn of either colour between them
    // parts them.
    { "4k3/8/8/8/8/8/R7/R3K3 w - - 0 1", white, coord_score, 16 },
    { "4k3/R7/8/p7/8/8/8/R3K3 w - - 0 1", white, coord_score, 0 },
    { "4k3/R7/8/P7/8/8/8/R3K3 w - - 0 1", white, coord_score, 0 },
    // A rook on d4 with queens on d8 and a4 and a rook on h4: 10 + 10 + 16. The queens see each
    // other on no rank or file, and the diagonal pair d8-a5 would count nothing.
    { "3Q3k/8/8/8/Q2R3R/8/8/K7 w - - 0 1", white, coord_score, 36 },
    // Queen pairs and diagonals count nothing.
    { "Q2Q3k/8/8/8/4R3/8/8/K7 w - - 0 1", white, coord_score, 0 },
    // Sixteen rooks: only the ten lowest (a1..h1, a2, b2) take part. Pairs: seven neighbours on
    // rank 1, a1-a2, b1-b2, a2-b2.
    { "7k/8/8/8/K7/8/RRRRRRRR/RRRRRRRR w - - 0 1", white, coord_score, 16 * 10 },

    // King safety. A lone check (the f4 pawn stands in the ring, unattacked), no cover pawn:
    // 2 + 4 = 6, times 6 in the opening.
    { "rnbqkbnr/ppppp1pp/8/8/5p2/4K3/PPPPPPPP/RNBQ1BNR w kq - 0 1", white, king_safety_penalty,
        36 },
    // The a1 rook checks along the rank and attacks d1 and e1, not f1 behind the king: 8.
    { "k7/8/8/8/8/8/8/r3K3 w - - 0 1", white, king_safety_penalty, 8 },
    // Knight h3 against the castled king hits g1 and f2, 2 x 2 + 4 - 3 = 5, times 6, with the
    // cover pawns on the second or third rank.
    { "rnbqkb1r/pppppppp/8/8/8/7n/PPPPPPPP/RNBQ1RK1 w kq - 0 1", white, king_safety_penalty, 30 },
    { "rnbqkb1r/pppppppp/8/8/8/5PPn/PPPPP2P/RNBQ1RK1 w kq - 0 1", white, king_safety_penalty, 30 },
    // A king on the last rank has no cover: the a8 rook attacks g8 and h8, 2 x 2 + 4.
    { "r6K/6PP/8/8/8/8/8/k7 w - - 0 1", white, king_safety_penalty, 8 },

    // Centre. After 1. e4 e5 2. Nf3 Nc6: 28 for white, 20 for black.
    { "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3", white, center_score, 28 },
    { "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3", black, center_score, 20 },
    // Opening: knight e5 and pawn d4, both squares attacked by white alone: 6 + 8 and 10 + 8.
    { "rnbqkb1r/pppppppp/8/4N3/3P4/8/PPP1PPPP/RNBQKB1R w KQkq - 0 1", white, center_score, 32 },
    // Middlegame: the knight is worth 3 and attacks count nothing.
    { "4k3/8/8/4N3/8/8/8/QQQ1K3 w - - 0 1", white, center_score, 3 },

    // Doubled pawns by count only: two 10, three 26, four 42, whatever their ranks and gaps.
    { "4k3/8/8/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty, 10 },
    { "4k3/P7/8/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty, 26 },
    { "4k3/P7/P7/P7/8/8/P7/4K3 w - - 0 1", white, pawn_structure_penalty, 42 },
    // Bishop pair, light squares or not.
    { "4k3/8/8/8/8/8/8/2B1KB2 w - - 0 1", white, bishop_pair_bonus, 18 },
    { "4k3/8/8/8/8/8/8/1B1BK3 w - - 0 1", white, bishop_pair_bonus, 18 },
    // Knights on the rim: corners 12, b1, d8 or a5 7.
    { "n3k2n/8/8/8/8/8/8/NN2K2Q w - - 0 1", white, knight_edge_penalty, 12 + 7 },
    { "3nk3/8/8/n7/3N4/8/8/QQ2K2Q w - - 0 1", black, knight_edge_penalty, 7 + 7 },
    // Bishop block: 11 for a bishop before two own pawns, 7 before one. Start position bishops
    // pay 11; a3 before b4 and h1 before g2 7; a black c8 bishop 11, one on c1 nothing (no rank
    // in front); white d5 before c6 and e6 11, beside c1 before b2 alone.
    { "rnbqkbnr/pppppppp/8/8/1P6/B7/P1PPPPPP/RN1QKBNR w KQkq - 0 1", white, bishop_block_penalty,
        7 + 11 },
    { "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNB w Qkq - 0 1", white, bishop_block_penalty,
        11 + 11 + 7 },
    { "rn1qkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNbQKBNR w KQkq - 0 1", black, bishop_block_penalty, 11 },
    { "rnbqkbnr/pp3ppp/2P1P3/3B4/8/8/PPP2PPP/RNBQK1NR w KQkq - 0 1", white, bishop_block_penalty,
        11 + 7 },
    // Bishops shut in on the king side: e3 before e2 28; with f1 behind g2 too 48, and the f1
    // bishop behind e2 and g2 pays the trap's 16. Black's twin likewise.
    { "rnbqkbnr/pppppppp/8/8/8/4B3/PPPPP1PP/RN1QK1NR w KQkq - 0 1", white,
        bishop_king_pawn_block_penalty, 28 },
    { "rnbqkbnr/pppppppp/8/8/8/4B3/PPPPP1PP/RN1QKBNR w KQkq - 0 1", white,
        bishop_king_pawn_block_penalty, 48 },
    { "rnbqkbnr/pppppppp/8/8/8/4B3/PPPPP1PP/RN1QKBNR w KQkq - 0 1", white,
        king_side_bishop_trap_penalty, 16 },
    { "rnbqkbnr/ppppp1pp/4b3/8/8/8/PPPPPPPP/RNBQK1NR w KQkq - 0 1", black,
        bishop_king_pawn_block_penalty, 48 },
    { "rnbqkbnr/ppppp1pp/4b3/8/8/8/PPPPPPPP/RNBQK1NR w KQkq - 0 1", black,
        king_side_bishop_trap_penalty, 16 },
    // In the middlegame the trap still pays 16, the bishop block nothing.
    { "4k3/8/8/8/8/8/4P1P1/Q3KB1Q w - - 0 1", white, king_side_bishop_trap_penalty, 16 },
    { "4k3/8/8/8/8/8/4P1P1/Q3KB1Q w - - 0 1", white, bishop_block_penalty, 0 },
    // A rook in the corner behind its king and pawn; not without the pawn, nor with the king
    // on c1. Black: h8 with g8 and h7.
    { "4k3/8/8/8/8/8/P7/RK3QQQ w - - 0 1", white, rook_corner_trap_penalty, 16 },
    { "4k3/8/8/8/8/8/8/RK3QQQ w - - 0 1", white, rook_corner_trap_penalty, 0 },
    { "4k3/8/8/8/8/8/P7/R1K2QQQ w - - 0 1", white, rook_corner_trap_penalty, 0 },
    { "6kr/7p/8/8/8/8/8/4KQQQ w - - 0 1", black, rook_corner_trap_penalty, 16 },

    // King on g1 with pawns f2, g3, h2: shield 10; development 14 in the opening, 8 in the
    // middlegame. King c8 with no pawn on a7, b7, c7 pays 30.
    { "rnbqkbnr/pppppppp/8/8/8/6P1/PPPPPP1P/RNBQ1RK1 w kq - 0 1", white, king_development_score,
        14 },
    { "rnbqkbnr/pppppppp/8/8/8/6P1/PPPPPP1P/RNBQ1RK1 w kq - 0 1", white, castled_shield_penalty,
        10 },
    { "4k3/8/8/8/8/6P1/5P1P/Q4QK1 w - - 0 1", white, king_development_score, 8 },
    { "4k3/8/8/8/8/6P1/5P1P/Q4QK1 w - - 0 1", white, castled_shield_penalty, 10 },
    { "2k5/8/8/8/8/8/8/Q2QK2Q w - - 0 1", black, castled_shield_penalty, 30 },
    // King on e1: -24 while a right is kept, 0 once both are gone, with only the other colour's
    // flags, or with the king elsewhere.
    { "4k3/8/8/8/8/8/8/Q2QK2Q w K - 0 1", white, king_development_score, -24 },
    { "4k3/8/8/8/8/8/8/Q2QK2Q w - - 0 1", white, king_development_score, 0 },
    { "4k3/8/8/8/8/8/8/Q2QK2Q w kq - 0 1", black, king_development_score, -24 },
    { "4k3/8/8/8/8/8/8/Q2QK2Q w kq - 0 1", white, king_development_score, 0 },
    { "4k3/8/8/8/8/8/8/Q2KQ2Q w KQ - 0 1", white, king_development_score, 0 },
    // Central pawns: e4 12, and the moved e-pawn pays no penalty; d3 and e3 5 each, d5 12.
    { "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq - 0 1", white,
        central_pawn_opening_score, 12 },
    { "rnbqkbnr/pppppppp/8/8/4P3/8/PPPP1PPP/RNBQKBNR b KQkq - 0 1", white, no_central_pawn_penalty,
        0 },
    { "rnbqkbnr/ppp1pppp/8/3p4/8/3PP3/PPP2PPP/RNBQKBNR w KQkq - 0 1", white,
        central_pawn_opening_score, 10 },
    { "rnbqkbnr/ppp1pppp/8/3p4/8/3PP3/PPP2PPP/RNBQKBNR w KQkq - 0 1", black,
        central_pawn_opening_score, 12 },
    // Central pawns at home: one knight out with three minors at home 28 + 16; both knights
    // out, two minors at home, 32.
    { "rnbqkbnr/pppppppp/8/8/8/5N2/PPPPPPPP/RNBQKB1R w KQkq - 0 1", white, no_central_pawn_penalty,
        44 },
    { "rnbqkbnr/pppppppp/8/8/8/2N2N2/PPPPPPPP/R1BQKB1R w KQkq - 0 1", white,
        no_central_pawn_penalty, 32 },
    // Early queen: out on e2 with four minors at home 42, with one 0; a lost queen pays like
    // one gone out, two minors at home, 14.
    { "rnbqkbnr/pppppppp/8/8/8/8/PPPPQPPP/RNB1KBNR w KQkq - 0 1", white, early_queen_penalty, 42 },
    { "rnbqkbnr/pppppppp/8/8/2B5/2N1BN2/PPPPQPPP/R3K2R w KQkq - 0 1", white, early_queen_penalty,
        0 },
    { "rnbqkbnr/pppppppp/8/8/8/2N2N2/PPPPPPPP/R1B1KB1R w KQkq - 0 1", white, early_queen_penalty,
        14 },
};

TEST(Terms, SingleFigures)
{
    for (const term_case &c : term_cases) {
        const Board b = fen(c.fen);
        const char *side = c.side == white ? "White " : "Black ";
        EXPECT_EQ(evaluate_terms(b).terms.value[c.side][c.t], c.value)
            << side << c.t << " " << c.fen;
        EXPECT_EQ(reference_evaluate(b).value[c.side][c.t], c.value) << side << c.t << " " << c.fen;
    }
}

// Material totals are multiples of 20: the phase boundaries (6500 and 2000) and their
// neighbours (6480 and 1980).
TEST(Terms, PhaseBoundaries)
{
    struct {
        const char *fen;
        int phase;
        std::int32_t total_material;
    } cases[] = {
        { "rn1qk1nr/pppppppp/8/8/8/8/PPPPPPP1/RN1QK1NR w KQkq - 0 1", opening, 6500 },
        { "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/1NB1KBNR w Kkq - 0 1", middlegame, 6480 },
        { "4k3/p7/8/8/8/8/P7/Q2QK3 w - - 0 1", middlegame, 2000 },
        { "2bbk3/p7/8/8/8/8/P7/R1BBK3 w - - 0 1", ending, 1980 },
    };
    for (const auto &c : cases) {
        const breakdown scores = evaluate_terms(fen(c.fen));
        EXPECT_EQ(scores.phase, c.phase) << c.fen;
        EXPECT_EQ(scores.terms.value[white][material] + scores.terms.value[black][material],
            c.total_material)
            << c.fen;
    }
}

} // namespace
