// Attack tables: the fixed values, and every look-up against a slow walk along the rays.
#include <gtest/gtest.h>

#include <random>

#include "movegen/attacks.h"
#include "tests/support/helpers.h"

namespace {

// Squares reached from `square` stepping (df, dr) until the edge or the first piece of `occupied`.
Bitboard walk(int square, int df, int dr, Bitboard occupied)
{
    Bitboard set = 0;
    int file = square_file(square) + df, rank = square_rank(square) + dr;
    for (; file >= 0 && file < 8 && rank >= 0 && rank < 8; file += df, rank += dr) {
        set |= square_bit(rank * 8 + file);
        if (occupied & square_bit(rank * 8 + file)) break;
    }
    return set;
}

Bitboard walk_rank(int s, Bitboard occ) { return walk(s, 1, 0, occ) | walk(s, -1, 0, occ); }
Bitboard walk_file(int s, Bitboard occ) { return walk(s, 0, 1, occ) | walk(s, 0, -1, occ); }
Bitboard walk_diagonal(int s, Bitboard occ) { return walk(s, 1, 1, occ) | walk(s, -1, -1, occ); }
Bitboard walk_antidiagonal(int s, Bitboard occ)
{
    return walk(s, 1, -1, occ) | walk(s, -1, 1, occ);
}

// Every square of the line through `square` in direction (df, dr), both ways, and the square.
Bitboard whole_line(int square, int df, int dr)
{
    return walk(square, df, dr, 0) | walk(square, -df, -dr, 0) | square_bit(square);
}

// The subsets of `set`, one by one (Carry-Rippler enumeration).
template <typename F> void for_each_subset(Bitboard set, F f)
{
    Bitboard subset = 0;
    do {
        f(subset);
        subset = (subset - set) & set;
    } while (subset);
}

TEST(Attacks, RookValues)
{
    EXPECT_EQ(rook_attacks(sq("a1"), 0), 0x01010101010101FEULL);
    EXPECT_EQ(rook_attacks(sq("a1"), ~Bitboard(0)), 0x102ULL);
    EXPECT_EQ(rook_attacks(sq("d4"), 0), 0x08080808F7080808ULL);
    // Occupied end squares never shorten a ray.
    EXPECT_EQ(rook_attacks(sq("d4"), set_of({ "a4", "h4", "d1", "d8" })), 0x08080808F7080808ULL);
    const Bitboard blocked = rook_attacks(sq("d4"), set_of({ "d6", "f4" }));
    EXPECT_EQ(blocked, 0x80837080808ULL);
    EXPECT_TRUE(blocked & square_bit(sq("d6")));
    EXPECT_TRUE(blocked & square_bit(sq("f4")));
    EXPECT_FALSE(blocked & set_of({ "d7", "d8", "g4", "h4" }));
}

TEST(Attacks, BishopValues)
{
    EXPECT_EQ(bishop_attacks(sq("a1"), 0), 0x8040201008040200ULL);
    EXPECT_EQ(bishop_attacks(sq("h1"), 0), 0x0102040810204000ULL);
    EXPECT_EQ(bishop_attacks(sq("d4"), 0), 0x8041221400142241ULL);
}

// Lines of one or two squares: the index is 0 whatever stands there.
TEST(Attacks, CornerCuttingLines)
{
    for (Bitboard occ : { Bitboard(0), ~Bitboard(0), set_of({ "b8", "a7" }) }) {
        EXPECT_EQ(antidiagonal_lookup(sq("a1"), occ), 0u);
        EXPECT_EQ(diagonal_lookup(sq("a7"), occ), set_of({ "b8" }));
        EXPECT_EQ(diagonal_lookup(sq("a8"), occ), 0u);
        EXPECT_EQ(antidiagonal_lookup(sq("h8"), occ), 0u);
        EXPECT_EQ(diagonal_lookup(sq("g1"), occ), set_of({ "h2" }));
    }
}

// The step tables against every step of one king or knight move that stays on the board.
TEST(Attacks, KingAndKnightValues)
{
    EXPECT_EQ(king_attacks[sq("a1")], 0x302ULL);
    EXPECT_EQ(king_attacks[sq("h8")], 0x40C0000000000000ULL);
    EXPECT_EQ(king_attacks[sq("e4")], 0x3828380000ULL);
    for (int s = 0; s < 64; s++) {
        Bitboard kings = 0, knights = 0;
        for (int df = -2; df <= 2; df++)
            for (int dr = -2; dr <= 2; dr++) {
                const Bitboard step = walk(s, df, dr, ~Bitboard(0));
                if (df * df + dr * dr <= 2 && (df || dr)) kings |= step;
                if (df * df + dr * dr == 5) knights |= step;
            }
        EXPECT_EQ(king_attacks[s], kings) << s;
        EXPECT_EQ(knight_attacks[s], knights) << s;
    }
}

TEST(Attacks, RayDirectionValues)
{
    EXPECT_EQ(ray_direction[sq("e1")][sq("e8")], 1);
    EXPECT_EQ(ray_direction[sq("h1")][sq("a8")], 8);
    EXPECT_EQ(ray_direction[sq("a8")][sq("h1")], 4);
    EXPECT_EQ(ray_direction[sq("a1")][sq("b3")], 0);
    EXPECT_EQ(ray_direction[sq("e4")][sq("e4")], 0);
}

// Every pair of squares against the eight rays walked from the first square.
TEST(Attacks, RayDirectionMatchesRays)
{
    constexpr int steps[9][2] = { { 0, 0 }, { 0, 1 }, { 1, 1 }, { 1, 0 }, { 1, -1 }, { 0, -1 },
        { -1, -1 }, { -1, 0 }, { -1, 1 } };
    for (int a = 0; a < 64; a++) {
        int expected[64] = {};
        for (int d = 1; d <= 8; d++)
            for (Bitboard t = walk(a, steps[d][0], steps[d][1], 0); t; t &= t - 1)
                expected[first_square(t)] = d;
        for (int b = 0; b < 64; b++) EXPECT_EQ(ray_direction[a][b], expected[b]) << a << " " << b;
    }
}

// Exhaustive: every square, every occupancy of each line through it.
TEST(Attacks, EveryLineOccupancyMatchesTheWalk)
{
    for (int s = 0; s < 64; s++) {
        for_each_subset(whole_line(s, 1, 0), [&](Bitboard occ) {
            ASSERT_EQ(rank_lookup(s, occ), walk_rank(s, occ)) << s << " " << occ;
        });
        for_each_subset(whole_line(s, 0, 1), [&](Bitboard occ) {
            ASSERT_EQ(file_lookup(s, occ), walk_file(s, occ)) << s << " " << occ;
        });
        for_each_subset(whole_line(s, 1, 1), [&](Bitboard occ) {
            ASSERT_EQ(diagonal_lookup(s, occ), walk_diagonal(s, occ)) << s << " " << occ;
        });
        for_each_subset(whole_line(s, 1, -1), [&](Bitboard occ) {
            ASSERT_EQ(antidiagonal_lookup(s, occ), walk_antidiagonal(s, occ)) << s << " " << occ;
        });
    }
}

// The one-look-up rook and bishop reach against the line look-ups: every blocker set on the
// lines through every square, with random pieces elsewhere (the ends of the lines and the
// square itself included). All slots are filled before the first look-up, so slots that
// overlapped would show here.
TEST(Attacks, SliderSlotsMatchTheLines)
{
    std::mt19937_64 random(5150);
    for (const slider_entry *entries : { rook_entries, bishop_entries })
        for (int s = 0; s < 64; s++) {
            const slider_entry &e = entries[s];
            const bool rook = entries == rook_entries;
            for_each_subset(e.mask, [&](Bitboard blockers) {
                const Bitboard occ = blockers | (random() & ~e.mask);
                if (rook)
                    ASSERT_EQ(rook_attacks(s, occ), rank_lookup(s, occ) | file_lookup(s, occ))
                        << s << " " << occ;
                else
                    ASSERT_EQ(bishop_attacks(s, occ),
                        diagonal_lookup(s, occ) | antidiagonal_lookup(s, occ))
                        << s << " " << occ;
            });
        }
}

} // namespace
