// The transposition table: what alpha-beta has learnt about positions during one search, one
// entry per slot, indexed by the low bits of the Zobrist key.
#pragma once

#include <cstdint>

#include "position/board.h"

enum : std::uint8_t { bound_empty = 0, bound_lower = 1, bound_upper = 2, bound_exact = 3 };

// Sixteen bytes. `bound` keeps the kind of bound in its low two bits; the six bits above hold the
// generation of the table that wrote it, and an entry of another generation reads as empty.
struct HashEntry {
    std::uint64_t key; // the whole key of the position
    Move move; // best move, 0 for none
    std::int16_t score; // as the search returned it; a kept table's mates count from the node
    std::uint8_t depth; // remaining depth of the search that produced the score
    std::uint8_t bound;
};
static_assert(sizeof(HashEntry) == 16);

extern HashEntry *hash_table;
extern std::uint64_t hash_table_bytes;
extern std::uint64_t hash_index_mask; // entries - 1: the entry count is a power of two

// Gives any table back and allocates one of `bytes` (a power of two, at least one entry), reading
// as empty: at start-up, for the Hash option and for the benchmark. Returns false, with no table,
// when the memory can't be had.
bool hash_resize(std::uint64_t bytes);
// Slots in a thousand that the running search has written: the first thousand slots sampled.
int hash_full_permille();
// Has the system back every page of the table with memory now rather than at each page's first
// store during the searches; does nothing when that was done since the table was last made zero.
// The table reads as before.
void hash_touch();
// Gives the table back at the end of the program.
void hash_free();
// Makes every slot read as empty. Costs nothing when nothing was stored since the last clear,
// and touches no memory but once every 63 clears, when the generations run out.
void hash_clear();

// The slot of `key`: the key modulo the entry count.
inline HashEntry *hash_slot(std::uint64_t key) { return &hash_table[key & hash_index_mask]; }

// Asks the processor to fetch the slot of `key`: a slot of the 512 MiB table is seldom in any
// cache, and the fetch then overlaps other work until the probe. Changes nothing.
inline void hash_prefetch(std::uint64_t key)
{
#if defined(__GNUC__) || defined(__clang__)
    __builtin_prefetch(hash_slot(key));
#else
    (void)key;
#endif
}

// Copies the content of the slot of `key` to `*entry`, an entry of another generation as an
// empty one, and with the generation bits taken off `bound`. Returns 1 when the slot holds `key`
// with a bound of 1..3, else 0.
int hash_probe(std::uint64_t key, HashEntry *entry);

// Writes the five fields to the slot of `key`, unless the slot already holds `key` at a greater
// depth. `score` is kept as 16 bits, `bound` and `depth` as 8.
void hash_store(
    std::uint64_t key, std::int32_t score, std::int32_t bound, std::int32_t depth, Move move);

// The kind of bound that `score` is for a node whose window was (alpha, beta).
inline std::int32_t bound_for(std::int32_t score, std::int32_t alpha, std::int32_t beta)
{
    if (score <= alpha) return bound_upper;
    if (score >= beta) return bound_lower;
    return bound_exact;
}
