// The piece generators: fresh words and their order, before any filtering.
#include <gtest/gtest.h>

#include <algorithm>

#include "movegen/generate.h"
#include "tests/support/helpers.h"

namespace {

PseudoMoveList pseudo;

// Sets up the shared state as generate_moves does and runs every generator of the side to move.
std::vector<Move> fresh_words(const Board &board)
{
    set_generator_state(board, &pseudo);
    if (board.white_to_move)
        white_pawn_moves();
    else
        black_pawn_moves();
    rook_moves();
    knight_moves();
    bishop_moves();
    queen_moves();
    king_moves();
    return std::vector<Move>(pseudo.moves, pseudo.moves + pseudo.count);
}

std::vector<std::string> texts(const std::vector<Move> &words)
{
    return texts_of(words.data(), int(words.size()));
}

// The texts of the words of one mover.
std::vector<std::string> texts_of_mover(const std::vector<Move> &words, int mover)
{
    std::vector<std::string> out;
    for (Move m : words)
        if (move_mover(m) == mover) out.push_back(text_of(m));
    return out;
}

using texts_t = std::vector<std::string>;

TEST(Generate, StartPosition)
{
    const std::vector<Move> words = fresh_words(start_board);
    EXPECT_EQ(texts(words),
        (texts_t { "a2a3", "a2a4", "b2b3", "b2b4", "c2c3", "c2c4", "d2d3", "d2d4", "e2e3", "e2e4",
            "f2f3", "f2f4", "g2g3", "g2g4", "h2h3", "h2h4", "b1a3", "b1c3", "g1f3", "g1h3" }));
    EXPECT_EQ(words[9], 0x0400070Cu);
    EXPECT_EQ(words[16], 0x0C000401u); // b1a3: a knight word
}

struct mover_case {
    const char *fen;
    int mover;
    texts_t words;
};

const mover_case mover_cases[] = {
    // Pawns: step, double step, then the capture toward file f + 1, for both colours.
    { "4k3/8/8/8/8/2n1n3/3P4/4K3 w - - 0 1", pawn, { "d2d3", "d2d4", "d2e3", "d2c3" } },
    { "4k3/3p4/2N1N3/8/8/8/8/4K3 b - - 0 1", pawn, { "d7d6", "d7d5", "d7e6", "d7c6" } },
    { "4k3/8/5n2/3pP3/8/8/8/4K3 w - d6 0 1", pawn, { "e5d6", "e5e6", "e5f6" } },
    { "4k3/8/8/8/3Pp3/4N3/8/4K3 b - d3 0 1", pawn, { "e4d3" } },
    // A blocked step rules out the double step.
    { "4k3/8/8/8/8/4n3/4P3/4K3 w - - 0 1", pawn, {} },
    { "4k3/8/8/8/4n3/8/4P3/4K3 w - - 0 1", pawn, { "e2e3" } },
    // Both neighbours of the double-stepped pawn take it, the file f + 1 side first.
    { "4k3/8/8/2PpP3/8/8/8/4K3 w - d6 0 1", pawn, { "c5d6", "c5c6", "e5d6", "e5e6" } },
    // The file alone vouches for the capture: nothing is on d5 here, and d6 is not looked at.
    { "4k3/8/8/4P3/8/8/8/4K3 w - d6 0 1", pawn, { "e5d6", "e5e6" } },
    // A pawn on the a-file never matches the -1 of no file, nor one on the h-file a file 8.
    { "4k3/8/8/Pp6/8/8/8/4K3 w - - 0 1", pawn, { "a5a6" } },
    { "4k3/8/8/7P/8/8/8/4K3 w - i6 0 1", pawn, { "h5h6" } },
    // Pawns never capture across the edge.
    { "4k3/8/n7/8/7P/P6n/8/4K3 w - - 0 1", pawn, { "a3a4", "h4h5" } },
    { "4k3/8/N6p/6N1/p7/8/7N/4K3 b - - 0 1", pawn, { "a4a3", "h6h5", "h6g5" } },
    // Promotions: queen, rook, bishop, knight on each target.
    { "n1n1k3/1P6/8/8/8/8/8/4K3 w - - 0 1", pawn,
        { "b7b8q", "b7b8r", "b7b8b", "b7b8n", "b7c8q", "b7c8r", "b7c8b", "b7c8n", "b7a8q", "b7a8r",
            "b7a8b", "b7a8n" } },
    { "4k3/8/8/8/8/8/1p6/N1N1K3 b - - 0 1", pawn,
        { "b2b1q", "b2b1r", "b2b1b", "b2b1n", "b2c1q", "b2c1r", "b2c1b", "b2c1n", "b2a1q", "b2a1r",
            "b2a1b", "b2a1n" } },
    // Other pieces: targets in square order, not ray by ray, captures among quiet moves; black
    // pieces are walked from a1 upward too.
    { "4k3/8/8/8/2n5/8/8/R2QK3 w - - 0 1", rook,
        { "a1b1", "a1c1", "a1a2", "a1a3", "a1a4", "a1a5", "a1a6", "a1a7", "a1a8" } },
    { "n3k1n1/8/8/8/8/8/8/4K3 b - - 0 1", knight, { "a8b6", "a8c7", "g8f6", "g8h6", "g8e7" } },
    // King steps, then castling short and long.
    { "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1", king,
        { "e1d1", "e1f1", "e1d2", "e1e2", "e1f2", "e1g1", "e1c1" } },
};

TEST(Generate, WordsOfEachMoverInOrder)
{
    for (const mover_case &c : mover_cases)
        EXPECT_EQ(texts_of_mover(fresh_words(fen(c.fen)), c.mover), c.words) << c.fen;
}

// The words themselves: en passant, promotions with and without capture, a quiet rook move,
// castling for both colours.
TEST(Generate, Words)
{
    const std::vector<Move> ep = fresh_words(fen("4k3/8/8/2PpP3/8/8/8/4K3 w - d6 0 1"));
    EXPECT_EQ(ep[0], 0x04400AE2u);
    EXPECT_EQ(ep[2], 0x04400AE4u);
    const std::vector<Move> words = fresh_words(fen("1n2k3/P7/8/8/8/8/8/4K3 w - - 0 1"));
    const std::vector<Move> expected = { 0x04806E30, 0x04802E30, 0x04804E30, 0x04803E30, 0x04806E70,
        0x04802E70, 0x04804E70, 0x04803E70 };
    EXPECT_EQ(std::vector<Move>(words.begin(), words.begin() + 8), expected);
    EXPECT_EQ(fresh_words(fen("4k3/8/8/8/2n5/8/8/R2QK3 w - - 0 1"))[0], 0x08000040u); // a1b1
    const std::vector<Move> white = fresh_words(fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1"));
    EXPECT_EQ(white[white.size() - 2], 0x14000184u);
    EXPECT_EQ(white[white.size() - 1], 0x14000084u);
    const std::vector<Move> black = fresh_words(fen("r3k2r/8/8/8/8/8/8/R3K2R b KQkq - 0 1"));
    EXPECT_EQ(black[black.size() - 2], 0x14000FBCu);
    EXPECT_EQ(black[black.size() - 1], 0x14000EBCu);
}

struct castling_case {
    const char *fen;
    Move word;
    bool present;
};

const castling_case castling_cases[] = {
    // b1 may be attacked but must be empty.
    { "1r2k3/8/8/8/8/8/8/R3K3 w Q - 0 1", white_ooo_word, true },
    { "4k3/8/8/8/8/8/8/RN2K3 w Q - 0 1", white_ooo_word, false },
    // The right alone does not vouch for the rook.
    { "4k3/8/8/8/8/8/8/4K3 w K - 0 1", white_oo_word, false },
    // A right with the king off its home square gives nothing, and no right no castling.
    { "4k3/8/8/8/8/8/8/R4K1R w KQ - 0 1", white_oo_word, false },
    { "4k3/8/8/8/8/8/8/R3K2R w - - 0 1", white_oo_word, false },
    // A rook in the corner under attack doesn't stop castling; a crossed square does, and so
    // does check.
    { "r3k2r/8/8/8/8/8/8/R3K2R w KQ - 0 1", white_oo_word, true },
    { "r3k2r/8/8/8/8/8/8/R3K2R w KQ - 0 1", white_ooo_word, true },
    { "5rk1/8/8/8/8/8/8/R3K2R w KQ - 0 1", white_oo_word, false },
    { "2r3k1/8/8/8/8/8/8/R3K2R w KQ - 0 1", white_ooo_word, false },
    { "4r1k1/8/8/8/8/8/8/R3K2R w KQ - 0 1", white_oo_word, false },
    // Black's squares likewise.
    { "r3k2r/8/8/8/8/8/8/3RK3 b kq - 0 1", black_ooo_word, false },
    { "r3k2r/8/8/8/8/8/8/1R2K3 b kq - 0 1", black_ooo_word, true },
};

TEST(Generate, CastlingConditions)
{
    for (const castling_case &c : castling_cases) {
        const std::vector<Move> words = fresh_words(fen(c.fen));
        EXPECT_EQ(std::count(words.begin(), words.end(), c.word), c.present ? 1 : 0)
            << c.fen << " " << text_of(c.word);
    }
}

} // namespace
