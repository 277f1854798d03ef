// The engine's generator against the literal one (every word tried on a copy and walked): identical
// lists, word for word and in order, on every node of the suite's perft trees, on random games and
// on garbled boards; along the random games, the keys and the two appliers as well.
#include <gtest/gtest.h>

#include <random>

#include "movegen/attacked.h"
#include "movegen/fast_legal.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "position/zobrist.h"
#include "tests/movegen/perft_cases.h"
#include "tests/support/helpers.h"
#include "tests/support/random_boards.h"

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

// Random games, far deeper than the perft trees reach, from the start and from positions rich in
// castling, en passant and promotions. Along them the lists agree, the key kept by the keyed
// applier equals the key from scratch, and the two appliers leave the same board.
TEST(Oracle, RandomGamesAgreeAndKeepTheirKeys)
{
    std::mt19937_64 random(12345);
#ifdef KORVANE_SANITIZE
    const int games = 20;
#else
    const int games = 200;
#endif
    const Board starts[4] = { start_board,
        fen("r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1"),
        fen("8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1"),
        fen("r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1") };
    for (int game = 0; game < games; game++) {
        std::vector<Move> moves;
        const std::vector<Board> boards = random_game(random, 200, starts[game % 4], &moves);
        Board keyed = boards[0];
        std::uint64_t key = full_key(&keyed);
        for (std::size_t ply = 0; ply < boards.size(); ply++) {
            ASSERT_EQ(engine_list(boards[ply], false), oracle_list(boards[ply], false))
                << "game " << game << " ply " << ply;
            if (ply == moves.size()) break;
            apply_move_keyed(&keyed, moves[ply], &key);
            ASSERT_EQ(key, full_key(&keyed)) << "game " << game << " ply " << ply;
            // The plain applier sets the file after every double step, the keyed one only when
            // an enemy pawn stands beside.
            Board plain = boards[ply + 1];
            if (plain.enpassant_file != keyed.enpassant_file) {
                ASSERT_EQ(keyed.enpassant_file, -1);
                plain.enpassant_file = -1;
            }
            ASSERT_EQ(plain, keyed) << "game " << game << " ply " << ply;
        }
    }
}

// Boards no game reaches: stacked sets, missing or extra kings, pawns on the last ranks, odd
// en-passant files and castling rights. Everything must still agree.
TEST(Oracle, GarbledBoards)
{
    std::mt19937_64 random(777);
#ifdef KORVANE_SANITIZE
    const int boards = 2000;
#else
    const int boards = 20000;
#endif
    for (int i = 0; i < boards; i++) {
        const Board b = random_garbage(random);
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
        const Board b = random_position(random, 20);
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
// word for word, and the captures are those among them, however the captures alone are found.
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
        const std::vector<Move> all = oracle_list(b, false);
        if (all.size() == std::size_t(max_moves)) crowded++;
        ASSERT_EQ(engine_list(b, false), all) << i;
        ASSERT_EQ(engine_list(b, true), oracle_list(b, true)) << i;
    }
    // Enough of them must fill the list for the cut to be tested.
    EXPECT_GT(crowded, boards / 5);
}

} // namespace
