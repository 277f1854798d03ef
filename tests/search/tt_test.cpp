// The hash table: probe and replacement rules, and clears that leave every slot empty.
#include <gtest/gtest.h>

#include "control/dialect.h"

#include "search/tt.h"

namespace {

// Two keys of one slot: they differ only above the index bits.
constexpr std::uint64_t key_a = 0x123456789ABCDEF1ull;
// (the table is 512 MiB, 2^25 entries, in this suite)
constexpr std::uint64_t key_b = key_a + (fixed_dialect.table_bytes / sizeof(HashEntry)) * 7;

class HashTable : public testing::Test {
protected:
    void SetUp() override
    {
        // A store first, so that the clear has something to forget.
        hash_store(1, 0, bound_exact, 0, 0);
        hash_clear();
    }
};

TEST_F(HashTable, EmptySlotHoldsKeyZeroAndNoBound)
{
    HashEntry e;
    EXPECT_EQ(hash_probe(0, &e), 0);
    EXPECT_EQ(e.key, 0u);
    EXPECT_EQ(e.bound, bound_empty);
    EXPECT_EQ(hash_probe(key_a, &e), 0);
}

TEST_F(HashTable, StoreAndProbeGiveBackAllFields)
{
    hash_store(key_a, -9997, bound_upper, 7, 0x400070C);
    HashEntry e;
    ASSERT_EQ(hash_probe(key_a, &e), 1);
    EXPECT_EQ(e.key, key_a);
    EXPECT_EQ(e.score, -9997);
    EXPECT_EQ(e.bound, bound_upper);
    EXPECT_EQ(e.depth, 7);
    EXPECT_EQ(e.move, 0x400070Cu);
    EXPECT_EQ(hash_slot(key_a), hash_slot(key_b));
    EXPECT_EQ(hash_probe(key_b, &e), 0);
}

TEST_F(HashTable, AnotherKeyAlwaysReplaces)
{
    hash_store(key_a, 50, bound_exact, 9, 1);
    hash_store(key_b, -20, bound_lower, 1, 2);
    HashEntry e;
    EXPECT_EQ(hash_probe(key_a, &e), 0);
    ASSERT_EQ(hash_probe(key_b, &e), 1);
    EXPECT_EQ(e.depth, 1);
    EXPECT_EQ(e.move, 2u);
}

TEST_F(HashTable, SameKeyKeepsTheStrictlyDeeperEntry)
{
    hash_store(key_a, 10, bound_exact, 5, 1);
    hash_store(key_a, 20, bound_lower, 3, 2);
    HashEntry e;
    ASSERT_EQ(hash_probe(key_a, &e), 1);
    EXPECT_EQ(e.score, 10);
    EXPECT_EQ(e.depth, 5);
    hash_store(key_a, 30, bound_upper, 5, 3);
    ASSERT_EQ(hash_probe(key_a, &e), 1);
    EXPECT_EQ(e.score, 30);
    EXPECT_EQ(e.bound, bound_upper);
}

TEST_F(HashTable, ScoreIsKeptAsSixteenBitsAndOddBoundsReadEmpty)
{
    hash_store(key_a, 70000, bound_exact, 1, 0);
    HashEntry e;
    ASSERT_EQ(hash_probe(key_a, &e), 1);
    EXPECT_EQ(e.score, std::int16_t(70000));
    hash_store(key_a, 1, 5, 2, 0);
    EXPECT_EQ(hash_probe(key_a, &e), 0);
}

TEST_F(HashTable, EveryClearEmptiesTheTableThroughManyGenerations)
{
    // More clears than there are generations, each after a store, so the real clear runs too.
    for (int round = 0; round < 150; round++) {
        hash_store(key_a + 1 + std::uint64_t(round), round, bound_exact, 3, 1);
        hash_store(key_b, round, bound_lower, 200, 1);
        HashEntry e;
        ASSERT_EQ(hash_probe(key_a + 1 + std::uint64_t(round), &e), 1);
        hash_clear();
        ASSERT_EQ(hash_probe(key_a + 1 + std::uint64_t(round), &e), 0) << "round " << round;
        ASSERT_EQ(hash_probe(key_b, &e), 0) << "round " << round;
        // A slot from an older generation is no obstacle to a shallower store.
        hash_store(key_b, 1, bound_upper, 0, 0);
        ASSERT_EQ(hash_probe(key_b, &e), 1);
        EXPECT_EQ(e.depth, 0);
        hash_clear();
    }
}

// Backing the table's pages (at isready) keeps every slot, the first slot of each page too, whose
// first byte is written back where the system has no other way. The rounds run past the clear
// that hands the table back, after which it is backed again.
TEST_F(HashTable, BackingThePagesKeepsEverySlot)
{
    constexpr std::uint64_t per_page = 4096 / sizeof(HashEntry);
    const std::uint64_t keys[3] = { (fixed_dialect.table_bytes / sizeof(HashEntry)) * 5,
        per_page + (fixed_dialect.table_bytes / sizeof(HashEntry)) * 9,
        per_page * 1000 + (fixed_dialect.table_bytes / sizeof(HashEntry)) * 3 };
    for (int round = 0; round < 70; round++) {
        for (const std::uint64_t key : keys) hash_store(key, round, bound_exact, 4, 0x4000FFFF);
        hash_touch();
        for (const std::uint64_t key : keys) {
            HashEntry e;
            ASSERT_EQ(hash_probe(key, &e), 1) << "round " << round << " key " << key;
            EXPECT_EQ(e.score, round);
            EXPECT_EQ(e.depth, 4);
            EXPECT_EQ(e.move, 0x4000FFFFu);
        }
        hash_clear();
    }
}

} // namespace
