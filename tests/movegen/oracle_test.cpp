// The engine's generator against the literal one (every word tried on a copy and walked): identical
// lists, word for word and in order, on every node of the suite's perft trees, on random games and
// on garbled boards.
#include <gtest/gtest.h>

#include <random>

#include "movegen/attacked.h"
#include "movegen/fast_legal.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "tests/movegen/perft_cases.h"
#include "tests/support/helpers.h"

namespace {

#ifdef KORVANE_SANITIZE
constexpr std::uint64_t node_budget = 3000;
#else
constexpr std::uint64_t node_budget = 50000;
#endif

std::vector<Move> engine_list(const Board &b, bool captures)
{
    MoveList list;
    list.count = 0;
    if (captures)
        generate_captures(b, &list);
    else
        generate_moves(b, &list);
    return std::vector<Move>(list.moves, list.moves + list.count);
}

std::vector<Move> oracle_list(const Board &b, bool captures)
{
    MoveList list;
    list.count = 0;
    if (captures)
        generate_captures_literal(b, &list);
    else
        generate_moves_literal(b, &list);
    return std::vector<Move>(list.moves, list.moves + list.count);
}

// Compares the two at `board` and every node below it, `depth` plies deep; counts the nodes.
void compare_tree(const Board &board, int depth, std::uint64_t *nodes, const std::string &path)
{
    ++*nodes;
    const std::vector<Move> expected = oracle_list(board, false);
    ASSERT_EQ(engine_list(board, false), expected) << path;
    ASSERT_EQ(engine_list(board, true), oracle_list(board, true)) << path;
    if (depth == 0) return;
    for (Move m : expected) {
        Board copy = board;
        std::uint64_t key = 0;
        apply_move_keyed(&copy, m, &key);
        compare_tree(copy, depth - 1, nodes, path + " " + text_of(m));
        if (testing::Test::HasFatalFailure()) return;
    }
}

class OracleTree : public testing::TestWithParam<PerftCase> { };

TEST_P(OracleTree, EveryNodeMatches)
{
    const PerftCase &c = GetParam();
    // The deepest tree whose leaf count stays within the budget.
    int depth = 0;
    for (const PerftCount &count : c.counts)
        if (count.nodes <= node_budget) depth = std::max(depth, count.depth);
    std::uint64_t nodes = 0;
    compare_tree(fen(c.fen.c_str()), depth, &nodes, c.fen);
}

INSTANTIATE_TEST_SUITE_P(Positions, OracleTree, testing::ValuesIn(perft_cases()),
    [](const testing::TestParamInfo<PerftCase> &param) { return param.param.name; });

// Random games from the start position, far deeper than the perft trees reach.
TEST(Oracle, RandomGames)
{
    std::mt19937 random(12345);
#ifdef KORVANE_SANITIZE
    const int games = 20;
#else
    const int games = 200;
#endif
    for (int game = 0; game < games; game++) {
        Board board = start_board;
        for (int ply = 0; ply < 200; ply++) {
            const std::vector<Move> moves = oracle_list(board, false);
            ASSERT_EQ(engine_list(board, false), moves) << "game " << game << " ply " << ply;
            if (moves.empty()) break;
            std::uint64_t key = 0;
            apply_move_keyed(&board, moves[random() % moves.size()], &key);
        }
    }
}

// Boards no game reaches: random piece placement, stacked sets, missing or extra kings, pawns
// on the last ranks, odd en-passant files and castling rights. Everything must still agree.
TEST(Oracle, GarbledBoards)
{
    std::mt19937_64 random(777);
#ifdef KORVANE_SANITIZE
    const int boards = 2000;
#else
    const int boards = 20000;
#endif
    for (int i = 0; i < boards; i++) {
        Board b {};
        Bitboard *sets[12] = { &b.white_rooks, &b.white_knights, &b.white_bishops, &b.white_queens,
            &b.white_king, &b.white_pawns, &b.black_rooks, &b.black_knights, &b.black_bishops,
            &b.black_queens, &b.black_king, &b.black_pawns };
        const int pieces = int(random() % 24);
        for (int p = 0; p < pieces; p++) *sets[random() % 12] |= square_bit(int(random() % 64));
        if (random() % 4) b.white_king = square_bit(int(random() % 64));
        if (random() % 4) b.black_king = square_bit(int(random() % 64));
        if (random() % 3 == 0) b.white_king |= 0x10, b.white_rooks |= 0x81;
        if (random() % 3 == 0) b.black_king |= 0x10ULL << 56, b.black_rooks |= 0x81ULL << 56;
        b.white_oo = int(random() % 2), b.white_ooo = int(random() % 2);
        b.black_oo = int(random() % 2), b.black_ooo = int(random() % 2);
        b.enpassant_file = std::int8_t(int(random() % 11) - 2);
        b.white_to_move = int(random() % 2);
        ASSERT_EQ(engine_list(b, false), oracle_list(b, false)) << i;
        ASSERT_EQ(engine_list(b, true), oracle_list(b, true)) << i;
        // The square a missing king gives is attacked by nobody.
        ASSERT_EQ(attacked_by_white(b, 64), 0) << i;
        ASSERT_EQ(attacked_by_black(b, 64), 0) << i;
    }
}

// Boards that look like game positions, with one king each and no stacked pieces, but with
// random placement, rights the pieces don't back and en-passant files no pawn made: the fast
// path takes most of them and must still agree word for word.
TEST(Oracle, RandomPlacements)
{
    std::mt19937_64 random(4242);
#ifdef KORVANE_SANITIZE
    const int boards = 2000;
#else
    const int boards = 40000;
#endif
    int fast = 0;
    for (int i = 0; i < boards; i++) {
        Board b {};
        Bitboard used = 0;
        auto place = [&](Bitboard *set, Bitboard allowed) {
            for (int tries = 0; tries < 100; tries++) {
                const int s = int(random() % 64);
                if ((used | ~allowed) & square_bit(s)) continue;
                *set |= square_bit(s);
                used |= square_bit(s);
                return;
            }
        };
        constexpr Bitboard inner_ranks = 0x00FFFFFFFFFFFF00ULL;
        // Kings often at home, so that castling comes into play.
        if (random() % 2)
            b.white_king = 0x10, used |= 0x10;
        else
            place(&b.white_king, ~Bitboard(0));
        if (random() % 2)
            b.black_king = 0x10ULL << 56, used |= 0x10ULL << 56;
        else
            place(&b.black_king, ~Bitboard(0));
        if (random() % 2) b.white_rooks |= 0x81 & ~used, used |= b.white_rooks;
        if (random() % 2) b.black_rooks |= (0x81ULL << 56) & ~used, used |= b.black_rooks;
        Bitboard *sets[10] = { &b.white_rooks, &b.white_knights, &b.white_bishops, &b.white_queens,
            &b.white_pawns, &b.black_rooks, &b.black_knights, &b.black_bishops, &b.black_queens,
            &b.black_pawns };
        const int pieces = int(random() % 20);
        for (int p = 0; p < pieces; p++) {
            const int k = int(random() % 10);
            place(sets[k], k == 4 || k == 9 ? inner_ranks : ~Bitboard(0));
        }
        b.white_oo = int(random() % 2), b.white_ooo = int(random() % 2);
        b.black_oo = int(random() % 2), b.black_ooo = int(random() % 2);
        b.enpassant_file = std::int8_t(random() % 3 ? -1 : int(random() % 10) - 1);
        b.white_to_move = int(random() % 2);
        ASSERT_EQ(engine_list(b, false), oracle_list(b, false)) << i;
        ASSERT_EQ(engine_list(b, true), oracle_list(b, true)) << i;
        MoveList scratch;
        scratch.count = 0;
        if (generate_moves_fast(b, &scratch)) fast++;
    }
    // Most of them must have gone the fast way, or the comparison proves little.
    EXPECT_GT(fast, boards / 3);
}

// Crowded boards with more legal moves than a list holds: the full list keeps its first slots,
// and the captures are those among them, however the captures alone are found.
TEST(Oracle, CrowdedBoardsKeepTheSameCaptures)
{
    std::mt19937_64 random(9191);
    // A ring of queens round an enemy king that knights shield from check.
    const Board rings[2] = { fen("QQQQQQnk/Q5nn/Q4Q1Q/Q6Q/Q6Q/Q6Q/Q6Q/KQQQQQQQ w - - 0 1"),
        fen("kqqqqqqq/q6q/q6q/q6q/q6q/q4q1q/q5NN/qqqqqqNK b - - 0 1") };
    const int boards = 300;
    int crowded = 0;
    for (int i = 0; i < boards; i++) {
        Board b = rings[i % 2];
        // A few enemy pieces inside the ring, for the queens to take.
        const bool white = b.white_to_move;
        Bitboard *victims[3] = { white ? &b.black_rooks : &b.white_rooks,
            white ? &b.black_knights : &b.white_knights, white ? &b.black_pawns : &b.white_pawns };
        const int count = 1 + int(random() % 8);
        for (int v = 0; v < count; v++) {
            const int s = 8 * (1 + int(random() % 6)) + 1 + int(random() % 6);
            if ((white_set(b) | black_set(b)) & square_bit(s)) continue;
            *victims[random() % 3] |= square_bit(s);
        }
        if (oracle_list(b, false).size() == std::size_t(max_moves)) crowded++;
        ASSERT_EQ(engine_list(b, true), oracle_list(b, true)) << i;
    }
    // Enough of them must fill the list for the cut to be tested.
    EXPECT_GT(crowded, boards / 5);
}

} // namespace
