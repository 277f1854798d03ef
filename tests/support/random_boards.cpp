// Random boards for the tests and the evaluation benchmark.
#include "tests/support/random_boards.h"

#include <algorithm>

#include "movegen/legal.h"
#include "position/apply.h"

namespace {

int distance(int a, int b)
{
    const int df = square_file(a) - square_file(b), dr = square_rank(a) - square_rank(b);
    return std::max(df < 0 ? -df : df, dr < 0 ? -dr : dr);
}

} // namespace

Board random_position(std::mt19937_64 &rng, int max_pieces)
{
    Board b {};
    std::uniform_int_distribution<int> square(0, 63);
    const int white_king = rng() % 2 ? e1 : square(rng);
    int black_king = rng() % 2 ? e8 : square(rng);
    while (distance(white_king, black_king) < 2) black_king = square(rng);
    b.white_king = square_bit(white_king);
    b.black_king = square_bit(black_king);
    Bitboard occupied = b.white_king | b.black_king;
    if (rng() % 2) b.white_rooks = (square_bit(a1) | square_bit(h1)) & ~occupied;
    if (rng() % 2) b.black_rooks = (square_bit(a8) | square_bit(h8)) & ~occupied;
    occupied |= b.white_rooks | b.black_rooks;
    // Pawns most often, queens least, as in games.
    constexpr int kinds[16] = { pawn, pawn, pawn, pawn, pawn, pawn, pawn, rook, rook, rook, knight,
        knight, knight, bishop, bishop, queen };
    const int pieces = std::uniform_int_distribution<int>(0, max_pieces)(rng);
    for (int i = 0; i < pieces; i++) {
        const int piece = kinds[rng() % 16];
        int s = square(rng);
        while ((occupied & square_bit(s)) || (piece == pawn && (s < 8 || s >= 56))) s = square(rng);
        occupied |= square_bit(s);
        b.*piece_sets[rng() % 2][piece - 1] |= square_bit(s);
    }
    b.white_oo = int(rng() % 2);
    b.white_ooo = int(rng() % 2);
    b.black_oo = int(rng() % 2);
    b.black_ooo = int(rng() % 2);
    b.white_to_move = int(rng() % 2);
    b.enpassant_file = std::int8_t(rng() % 3 ? -1 : int(rng() % 10) - 1);
    return b;
}

Board random_garbage(std::mt19937_64 &rng)
{
    Board b {};
    for (int colour = 0; colour < 2; colour++)
        for (int piece = 1; piece <= 6; piece++) {
            // Sparse, dense, empty or full, so every table edge gets its turn.
            Bitboard bits = 0;
            switch (rng() % 6) {
            case 0:
                break;
            case 1:
                bits = ~Bitboard(0);
                break;
            case 2:
                bits = rng() & rng() & rng();
                break;
            case 3:
                bits = rng();
                break;
            default:
                bits = square_bit(int(rng() % 64));
                break;
            }
            b.*piece_sets[colour][piece - 1] = bits;
        }
    b.white_oo = int(rng() % 3);
    b.white_ooo = int(rng() % 3);
    b.black_oo = int(rng() % 3);
    b.black_ooo = int(rng() % 3);
    b.white_to_move = int(rng() % 2);
    b.fifty_move = std::uint8_t(rng());
    b.enpassant_file = std::int8_t(rng());
    return b;
}

std::vector<Board> random_game(
    std::mt19937_64 &rng, int plies, const Board &start, std::vector<Move> *moves)
{
    std::vector<Board> game { start };
    Board b = start;
    for (int ply = 0; ply < plies; ply++) {
        MoveList list;
        list.count = 0;
        generate_moves(b, &list);
        if (list.count == 0) break;
        const Move move = list.moves[rng() % std::uint64_t(list.count)];
        if (moves) moves->push_back(move);
        apply_move(&b, move);
        game.push_back(b);
    }
    return game;
}
