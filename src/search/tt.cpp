// The transposition table. Instead of zero-filling 512 MiB for every search, each clear starts a
// new generation: slots written by an older one read as empty, so a search finds exactly what an
// empty table would give it, and a clear writes no memory. The system backs the pages all at
// once when hash_touch asks (at isready), or else each at its first store.
#include "search/tt.h"

#include "platform/platform.h"

HashEntry *hash_table = nullptr;
std::uint64_t hash_table_bytes = 0;
std::uint64_t hash_index_mask = 0;

namespace {

constexpr int generation_shift = 2;
constexpr std::uint8_t bound_mask = 3;
constexpr int last_generation = 63;

// Generation 0 is what a zero-filled slot holds, so the live generation is never 0.
int generation = 1;
bool stored_since_clear = false;
bool touched = false; // every page backed since the table was last made zero

bool is_live(const HashEntry &e) { return e.bound >> generation_shift == generation; }

} // namespace

bool hash_resize(std::uint64_t bytes)
{
    if (hash_table) hash_free();
    hash_table_bytes = bytes;
    hash_index_mask = bytes / sizeof(HashEntry) - 1;
    hash_table = static_cast<HashEntry *>(allocate_zeroed(hash_table_bytes));
    generation = 1;
    stored_since_clear = false;
    touched = false;
    return hash_table != nullptr;
}

int hash_full_permille()
{
    if (!hash_table) return 0;
    const std::uint64_t sample = hash_index_mask + 1 < 1000 ? hash_index_mask + 1 : 1000;
    std::uint64_t live = 0;
    for (std::uint64_t i = 0; i < sample; i++) live += is_live(hash_table[i]) ? 1 : 0;
    return int(live * 1000 / sample);
}

void hash_touch()
{
    if (touched || !hash_table) return;
    back_pages(hash_table, hash_table_bytes);
    touched = true;
}

void hash_free()
{
    if (hash_table) release_zeroed(hash_table, hash_table_bytes);
    hash_table = nullptr;
}

void hash_clear()
{
    if (!stored_since_clear) return;
    stored_since_clear = false;
    if (generation < last_generation) {
        generation++;
        return;
    }
    // The generations are used up: make the block zero again and start over.
    rezero(hash_table, hash_table_bytes);
    touched = false;
    generation = 1;
}

int hash_probe(std::uint64_t key, HashEntry *entry)
{
    const HashEntry &slot = *hash_slot(key);
    if (is_live(slot)) {
        *entry = slot;
        entry->bound &= bound_mask;
    } else {
        *entry = HashEntry {};
    }
    return entry->key == key && entry->bound != bound_empty;
}

void hash_store(
    std::uint64_t key, std::int32_t score, std::int32_t bound, std::int32_t depth, Move move)
{
    HashEntry &slot = *hash_slot(key);
    // The same position keeps its deeper entry; anything else is overwritten.
    if (is_live(slot) && slot.key == key && slot.depth > std::uint8_t(depth)) return;
    slot.key = key;
    slot.move = move;
    slot.score = std::int16_t(score);
    slot.depth = std::uint8_t(depth);
    // A bound outside 1..3 reads as an empty slot, as it would have been stored.
    const std::uint8_t kind = std::uint8_t(bound) <= bound_exact ? std::uint8_t(bound) : 0;
    slot.bound = std::uint8_t(kind | generation << generation_shift);
    stored_since_clear = true;
}
