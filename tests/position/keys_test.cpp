// Zobrist keys from scratch: the published numbers and the keys of known positions.
#include <gtest/gtest.h>

#include <string>

#include "position/apply.h"
#include "position/fen.h"
#include "position/zobrist.h"

namespace {

// The key after `moves` from the start, as the position command keeps it move by move; it must
// equal the key from scratch.
std::uint64_t key_after(const char *moves)
{
    set_position_start((std::string("position startpos moves ") + moves).c_str());
    EXPECT_EQ(current_key, full_key(&current_board)) << moves;
    return current_key;
}

} // namespace

TEST(Keys, PublishedNumbers)
{
    EXPECT_EQ(zobrist_table[0], 0x9D39247E33776D41u);
    EXPECT_EQ(zobrist_table[1], 0x2AF7398005AAA5C7u);
    EXPECT_EQ(zobrist_table[768], 0x31D71DCE64B2C310u);
    EXPECT_EQ(zobrist_table[780], 0xF8D626AAAF278509u);
}

TEST(Keys, KnownPositions)
{
    EXPECT_EQ(full_key(&start_board), 0x463B96181691FC9Cu);
    EXPECT_EQ(key_after("e2e4"), 0x823C9B50FD114196u);
    EXPECT_EQ(key_after("e2e4 d7d5 e4e5 f7f5"), 0x22A48B5A8E47FF78u);
    // Further book-format keys of the same line of play.
    EXPECT_EQ(key_after("e2e4 d7d5"), 0x0756B94461C50FB0u);
    EXPECT_EQ(key_after("e2e4 d7d5 e4e5"), 0x662FAFB965DB29D4u);
    EXPECT_EQ(key_after("e2e4 d7d5 e4e5 f7f5 e1e2"), 0x652A607CA3F242C1u);
    EXPECT_EQ(key_after("e2e4 d7d5 e4e5 f7f5 e1e2 e8f7"), 0x00FDD303C946BDD9u);
    EXPECT_EQ(key_after("a2a4 b7b5 h2h4 b5b4 c2c4"), 0x3C8123EA7B067637u);
    EXPECT_EQ(key_after("a2a4 b7b5 h2h4 b5b4 c2c4 b4c3 a1a3"), 0x5C3F9B829B279560u);
}

TEST(Keys, EnpassantTermNeedsAPawnBeside)
{
    Board b = start_board;
    std::uint64_t key = full_key(&b);
    for (const char *m : { "e2e4", "d7d5", "e4e5", "f7f5" })
        apply_move_keyed(&b, text_to_move(m), &key);
    ASSERT_EQ(b.enpassant_file, 5);
    Board no_file = b;
    no_file.enpassant_file = -1;
    EXPECT_EQ(full_key(&b) ^ full_key(&no_file), zobrist_table[777]);

    // Pawns on both e5 and g5 put the entry in once.
    Board both = b;
    both.white_pawns |= square_bit(38);
    Board both_no_file = both;
    both_no_file.enpassant_file = -1;
    EXPECT_EQ(full_key(&both) ^ full_key(&both_no_file), zobrist_table[777]);

    // With no pawn beside the file, or only the fifty-move count changed, the key is the same.
    Board lone = parse_fen("4k3/8/8/3p4/8/8/8/4K3 w - d6 0 1");
    Board lone_no_file = lone;
    lone_no_file.enpassant_file = -1;
    lone_no_file.fifty_move = 33;
    EXPECT_EQ(full_key(&lone), full_key(&lone_no_file));
}

TEST(Keys, EdgeFilesLookOnOneSideOnly)
{
    // File a looks at file b only, file h at file g only.
    Board a = parse_fen("4k3/8/8/pP6/8/8/8/4K3 w - a6 0 1");
    Board a_far = parse_fen("4k3/8/8/p6P/8/8/8/4K3 w - a6 0 1");
    EXPECT_TRUE(enpassant_in_key(a));
    EXPECT_FALSE(enpassant_in_key(a_far));
    Board h = parse_fen("4k3/8/8/8/6pP/8/8/4K3 b - h3 0 1");
    Board h_far = parse_fen("4k3/8/8/8/p6P/8/8/4K3 b - h3 0 1");
    EXPECT_TRUE(enpassant_in_key(h));
    EXPECT_FALSE(enpassant_in_key(h_far));
    // A file outside a-h never enters the key.
    Board wild = h;
    wild.enpassant_file = 25;
    EXPECT_FALSE(enpassant_in_key(wild));
}
