// Property: along long random games the incrementally kept key equals the key from scratch after
// every move. The games use a small pseudo-legal mover written here (kings may be taken, rights
// survive a rook's capture), which exercises castling, en passant and every promotion, and
// garbled positions as well as legal ones.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "position/apply.h"
#include "position/fen.h"
#include "position/zobrist.h"

namespace {

void add_slides(std::vector<Move> &moves, int from, Bitboard own, Bitboard all, const int *steps,
    int step_count, bool slide)
{
    for (int d = 0; d < step_count; d++) {
        int file_step = steps[2 * d], rank_step = steps[2 * d + 1];
        int f = square_file(from), r = square_rank(from);
        for (;;) {
            f += file_step;
            r += rank_step;
            if (f < 0 || f > 7 || r < 0 || r > 7) break;
            int to = 8 * r + f;
            if (own & square_bit(to)) break;
            moves.push_back(make_move(from, to));
            if ((all & square_bit(to)) || !slide) break;
        }
    }
}

std::vector<Move> pseudo_legal_moves(const Board &b)
{
    static const int rook_steps[] = { 1, 0, -1, 0, 0, 1, 0, -1 };
    static const int bishop_steps[] = { 1, 1, 1, -1, -1, 1, -1, -1 };
    static const int queen_steps[] = { 1, 0, -1, 0, 0, 1, 0, -1, 1, 1, 1, -1, -1, 1, -1, -1 };
    static const int knight_steps[] = { 1, 2, 2, 1, 2, -1, 1, -2, -1, -2, -2, -1, -2, 1, -1, 2 };
    const bool white = b.white_to_move;
    const Bitboard own = white ? white_set(b) : black_set(b);
    const Bitboard enemy = white ? black_set(b) : white_set(b);
    const Bitboard all = own | enemy;
    std::vector<Move> moves;
    auto each = [](Bitboard set, auto f) {
        for (; set; set &= set - 1) f(first_square(set));
    };
    each(white ? b.white_rooks : b.black_rooks,
        [&](int s) { add_slides(moves, s, own, all, rook_steps, 4, true); });
    each(white ? b.white_bishops : b.black_bishops,
        [&](int s) { add_slides(moves, s, own, all, bishop_steps, 4, true); });
    each(white ? b.white_queens : b.black_queens,
        [&](int s) { add_slides(moves, s, own, all, queen_steps, 8, true); });
    each(white ? b.white_knights : b.black_knights,
        [&](int s) { add_slides(moves, s, own, all, knight_steps, 8, false); });
    each(white ? b.white_king : b.black_king,
        [&](int s) { add_slides(moves, s, own, all, queen_steps, 8, false); });
    const int up = white ? 8 : -8;
    each(white ? b.white_pawns : b.black_pawns, [&](int s) {
        const int r = square_rank(s), f = square_file(s);
        std::vector<int> targets;
        if (s + up >= 0 && s + up < 64 && !(all & square_bit(s + up))) {
            targets.push_back(s + up);
            if (r == (white ? 1 : 6) && !(all & square_bit(s + 2 * up)))
                targets.push_back(s + 2 * up);
        }
        for (int side : { -1, 1 }) {
            if (f + side < 0 || f + side > 7 || s + up + side < 0 || s + up + side > 63) continue;
            int to = s + up + side;
            bool enpassant = r == (white ? 4 : 3) && b.enpassant_file == f + side;
            if (((enemy & square_bit(to)) || enpassant) && !(own & square_bit(to)))
                targets.push_back(to);
        }
        for (int to : targets) {
            if (square_rank(to) == 7 || square_rank(to) == 0) {
                for (const char *letter : { "q", "r", "b", "n" })
                    moves.push_back(make_move(s, to) | move_promoted
                        | promotion_bits(promotion_code(letter[0])));
            } else {
                moves.push_back(make_move(s, to));
            }
        }
    });
    // Castling with the squares between empty; attacks are not looked at here.
    const int home = white ? 4 : 60;
    if ((white ? b.white_king : b.black_king) == square_bit(home)) {
        if ((white ? b.white_oo : b.black_oo)
            && !(all & (square_bit(home + 1) | square_bit(home + 2))))
            moves.push_back(make_move(home, home + 2));
        if ((white ? b.white_ooo : b.black_ooo)
            && !(all & (square_bit(home - 1) | square_bit(home - 2) | square_bit(home - 3))))
            moves.push_back(make_move(home, home - 2));
    }
    return moves;
}

void play_random_games(const char *fen, unsigned seed, int games, int length)
{
    std::mt19937 random(seed);
    for (int game = 0; game < games; game++) {
        Board b = parse_fen(fen);
        std::uint64_t key = full_key(&b);
        for (int ply = 0; ply < length; ply++) {
            std::vector<Move> moves = pseudo_legal_moves(b);
            if (moves.empty()) break;
            Move m = moves[random() % moves.size()];
            Board plain = b;
            apply_move_keyed(&b, m, &key);
            apply_move(&plain, m);
            ASSERT_EQ(key, full_key(&b))
                << "game " << game << " ply " << ply << " move " << std::hex << m << " fen " << fen;
            // The two appliers differ only in the en-passant file after a double step.
            if (plain.enpassant_file != b.enpassant_file) {
                EXPECT_EQ(b.enpassant_file, -1);
                plain.enpassant_file = -1;
            }
            ASSERT_EQ(plain, b);
        }
    }
}

} // namespace

TEST(RandomGames, IncrementalKeyEqualsFullKey)
{
    play_random_games("rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 1, 200, 300);
    play_random_games(
        "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 2, 200, 200);
    play_random_games("8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1", 3, 200, 200);
    play_random_games(
        "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1", 4, 200, 200);
}
