// The two move appliers, the null move and the key history.
#include <gtest/gtest.h>

#include "position/apply.h"
#include "position/fen.h"
#include "position/zobrist.h"

namespace {

struct keyed_board {
    Board board;
    std::uint64_t key;
};

keyed_board from_fen(const char *fen)
{
    keyed_board k { parse_fen(fen), 0 };
    k.key = full_key(&k.board);
    return k;
}

void play(keyed_board &k, const char *move)
{
    apply_move_keyed(&k.board, text_to_move(move), &k.key);
    EXPECT_EQ(k.key, full_key(&k.board)) << "after " << move;
}

} // namespace

TEST(Apply, DoubleStepFileDiffersBetweenTheAppliers)
{
    keyed_board k { start_board, full_key(&start_board) };
    play(k, "e2e4");
    EXPECT_EQ(k.board.enpassant_file, -1); // no black pawn on d4 or f4
    Board plain = start_board;
    apply_move(&plain, text_to_move("e2e4"));
    EXPECT_EQ(plain.enpassant_file, 4);
    plain.enpassant_file = -1;
    EXPECT_EQ(plain, k.board);
}

TEST(Apply, EnpassantFileLivesOneMove)
{
    keyed_board k = from_fen("4k3/8/8/8/4p3/8/3P4/4K3 w - - 0 1");
    std::uint64_t before = k.key;
    play(k, "d2d4");
    EXPECT_EQ(k.board.enpassant_file, 3);
    Board no_file = k.board;
    no_file.enpassant_file = -1;
    EXPECT_EQ(k.key ^ full_key(&no_file), zobrist_table[775]);
    EXPECT_NE(k.key, before);
    play(k, "e8e7");
    EXPECT_EQ(k.board.enpassant_file, -1);

    // A reply that is itself a capturable double step leaves only the new file's entry.
    keyed_board r = from_fen("4k3/3p4/8/4P3/8/8/3P4/4K3 w - - 0 1");
    r.board.black_pawns |= square_bit(28); // a black pawn on e4, beside d2-d4
    r.key = full_key(&r.board);
    play(r, "d2d4");
    EXPECT_EQ(r.board.enpassant_file, 3);
    play(r, "d7d5");
    EXPECT_EQ(r.board.enpassant_file, 3);
    Board cleared = r.board;
    cleared.enpassant_file = -1;
    EXPECT_EQ(r.key ^ full_key(&cleared), zobrist_table[775]);
}

TEST(Apply, CastlingMovesTheRookAndClearsBothRights)
{
    keyed_board k = from_fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    play(k, "e1g1");
    EXPECT_EQ(k.board.white_king, square_bit(6));
    EXPECT_EQ(k.board.white_rooks, square_bit(0) | square_bit(5));
    EXPECT_FALSE(k.board.white_oo);
    EXPECT_FALSE(k.board.white_ooo);
    EXPECT_TRUE(k.board.black_oo && k.board.black_ooo);
    play(k, "e8c8");
    EXPECT_EQ(k.board.black_king, square_bit(58));
    EXPECT_EQ(k.board.black_rooks, square_bit(59) | square_bit(63));
    EXPECT_FALSE(k.board.black_oo || k.board.black_ooo);

    // A plain king step gives up both rights too.
    keyed_board step = from_fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    play(step, "e1f1");
    EXPECT_FALSE(step.board.white_oo || step.board.white_ooo);
    EXPECT_EQ(step.board.white_rooks, square_bit(0) | square_bit(7));
}

TEST(Apply, RookMovesAndCapturesOnCorners)
{
    keyed_board k = from_fen("r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1");
    play(k, "h1h8"); // takes the rook on h8: black keeps its right, the key its entry
    EXPECT_FALSE(k.board.white_oo);
    EXPECT_TRUE(k.board.white_ooo);
    EXPECT_TRUE(k.board.black_oo);
    EXPECT_EQ(k.board.black_rooks, square_bit(56));
    EXPECT_EQ(k.board.fifty_move, 0);

    // A rook leaving h1 with the right already gone changes no flag and no castling entry.
    keyed_board gone = from_fen("4k3/8/8/8/8/8/8/R3K2R w Q - 0 1");
    std::uint64_t before = gone.key;
    play(gone, "h1h2");
    EXPECT_TRUE(gone.board.white_ooo);
    EXPECT_FALSE(gone.board.white_oo);
    EXPECT_EQ(gone.key ^ before,
        piece_key(kind_rook + 1, 7) ^ piece_key(kind_rook + 1, 15) ^ zobrist_table[780]);
}

TEST(Apply, EnpassantCaptureTakesThePawnBehind)
{
    keyed_board k = from_fen("4k3/8/8/3pP3/8/8/8/4K3 w - d6 5 1");
    play(k, "e5d6");
    EXPECT_EQ(k.board.white_pawns, square_bit(43));
    EXPECT_EQ(k.board.black_pawns, 0u);
    EXPECT_EQ(k.board.fifty_move, 0);
    EXPECT_EQ(k.board.enpassant_file, -1);
}

// A pawn on the en-passant rank stepping onto the en-passant file of the mover's first rank (only
// a garbled board has one) would take on a square off the board: nothing is taken, not even the
// piece standing on `to`, in both appliers and for both colours.
TEST(Apply, EnpassantOntoTheFirstRankTakesNothing)
{
    struct {
        const char *fen, *move, *after;
        Bitboard Board::*stacked; // the piece left on `to` under the pawn, if any
    } cases[] = {
        { "3pk3/8/8/3pP3/8/8/8/4K3 w - d6 0 1", "e5d1", "3pk3/8/8/3p4/8/8/8/3PK3 b - - 0 1",
            nullptr },
        { "4k3/8/8/3pP3/8/8/8/3nK3 w - d6 0 1", "e5d1", "4k3/8/8/3p4/8/8/8/3PK3 b - - 0 1",
            &Board::black_knights },
        { "4k1R1/8/8/8/5pP1/8/8/4K3 b - g3 3 1", "f4g8", "4k1p1/8/8/8/6P1/8/8/4K3 w - - 0 1",
            &Board::white_rooks },
    };
    for (const auto &c : cases) {
        keyed_board k = from_fen(c.fen);
        Board plain = k.board;
        Board expected = parse_fen(c.after);
        expected.enpassant_file = -1;
        if (c.stacked) expected.*c.stacked |= square_bit(move_to(text_to_move(c.move)));
        play(k, c.move);
        EXPECT_EQ(k.board, expected) << c.fen;
        apply_move(&plain, text_to_move(c.move));
        EXPECT_EQ(plain, expected) << c.fen;
    }
}

TEST(Apply, PromotionsWithAndWithoutCapture)
{
    keyed_board k = from_fen("1n2k3/P7/8/8/8/8/8/4K3 w - - 7 1");
    std::uint64_t before = k.key;
    play(k, "a7b8q");
    EXPECT_EQ(k.board.white_queens, square_bit(57));
    EXPECT_EQ(k.board.white_pawns, 0u);
    EXPECT_EQ(k.board.black_knights, 0u);
    EXPECT_EQ(k.board.fifty_move, 0);
    // The pawn leaves a7, reaches b8 and is exchanged for the queen; the knight goes.
    EXPECT_EQ(k.key ^ before,
        piece_key(kind_pawn + 1, 48) ^ piece_key(kind_pawn + 1, 57) ^ piece_key(kind_pawn + 1, 57)
            ^ piece_key(kind_queen + 1, 57) ^ piece_key(kind_knight, 57) ^ zobrist_table[780]);

    for (const char *move : { "a7a8r", "a7a8b", "a7a8n" }) {
        keyed_board q = from_fen("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
        play(q, move);
        EXPECT_EQ(q.board.white_pawns, 0u);
        EXPECT_EQ(
            q.board.white_rooks | q.board.white_bishops | q.board.white_knights, square_bit(56));
    }

    // Without a known letter the pawn stays a pawn on the last rank (keyed applier); a word with
    // promoted set and no code takes the pawn off in the plain applier.
    keyed_board none = from_fen("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    play(none, "a7a8Q");
    EXPECT_EQ(none.board.white_pawns, square_bit(56));
    Board plain = parse_fen("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    apply_move(&plain, text_to_move("a7a8Q"));
    EXPECT_EQ(plain.white_pawns, 0u);
    EXPECT_EQ(plain.white_queens, 0u);
    // Letters p and k take the pawn off in both.
    keyed_board gone = from_fen("4k3/P7/8/8/8/8/8/4K3 w - - 0 1");
    play(gone, "a7a8k");
    EXPECT_EQ(gone.board.white_pawns | gone.board.white_king, square_bit(4));
}

TEST(Apply, GarbledMovesStillPassTheTurn)
{
    keyed_board k { start_board, full_key(&start_board) };
    play(k, "e4e5"); // no piece on e4
    EXPECT_FALSE(k.board.white_to_move);
    EXPECT_EQ(k.board.fifty_move, 1);
    Board pieces = k.board;
    pieces.white_to_move = 1;
    pieces.fifty_move = 0;
    EXPECT_EQ(pieces, start_board);
    // No own piece on from, but an enemy piece on to is still taken off.
    keyed_board t { start_board, full_key(&start_board) };
    play(t, "a3a7");
    EXPECT_EQ(t.board.black_pawns, 0x00FE000000000000u);
}

TEST(Apply, FiftyMoveCountWrapsAt256)
{
    keyed_board k = from_fen("4k3/8/8/8/8/8/8/R3K3 w - - 255 1");
    play(k, "a1a2");
    EXPECT_EQ(k.board.fifty_move, 0);
    play(k, "e8e7");
    EXPECT_EQ(k.board.fifty_move, 1);
}

TEST(Apply, NullMovePassesTheTurn)
{
    keyed_board k = from_fen("4k3/8/8/8/4p3/8/3P4/4K3 w - - 9 1");
    play(k, "d2d4");
    apply_null_move(&k.board, &k.key);
    EXPECT_EQ(k.board.enpassant_file, -1);
    EXPECT_TRUE(k.board.white_to_move);
    EXPECT_EQ(k.board.fifty_move, 0);
    EXPECT_EQ(k.key, full_key(&k.board));
}

TEST(Apply, FenFileWithNoPawnBesideKeepsTheKeysEqual)
{
    keyed_board k = from_fen("4k3/8/8/8/8/8/8/4K3 w - e6 0 1");
    play(k, "e1e2");
    EXPECT_EQ(k.board.enpassant_file, -1);
}

TEST(History, ThirdRepetitionAndBounds)
{
    clear_key_history();
    EXPECT_EQ(is_third_repetition(7), 0);
    push_key(7);
    push_key(1);
    push_key(7);
    EXPECT_EQ(is_third_repetition(7), 0);
    push_key(2);
    push_key(7);
    EXPECT_EQ(is_third_repetition(7), 1);
    EXPECT_EQ(is_third_repetition(1), 0);
    pop_key();
    EXPECT_EQ(is_third_repetition(7), 0);
    clear_key_history();
    pop_key();
    EXPECT_EQ(key_history_count, 0);
    for (int i = 0; i < key_history_size + 10; i++) push_key(std::uint64_t(i));
    EXPECT_EQ(key_history_count, key_history_size);
    clear_key_history();
}
