// Filling the attack tables at start-up.
#include "attacks.h"

std::uint8_t rank_attacks[8][64];
Bitboard file_attacks[8][64];
Bitboard diagonal_attacks[64][64];
Bitboard antidiagonal_attacks[64][64];
Bitboard king_attacks[64];
std::uint8_t ray_direction[64][64];

namespace {

// The reach along one line of eight positions from position `p`, where `line` has a bit for each
// occupied position: walk down, then up, and stop in each direction after the first occupied
// position. Bit x of the result is position x.
unsigned line_reach(int p, unsigned line)
{
    unsigned reach = 0;
    for (int x = p - 1; x >= 0; x--) {
        reach |= 1u << x;
        if (line & (1u << x)) break;
    }
    for (int x = p + 1; x <= 7; x++) {
        reach |= 1u << x;
        if (line & (1u << x)) break;
    }
    return reach;
}

// Walks a diagonal from `square` with steps `down` (negative) and then `up`, where bit x of
// `line` stands for the square of that diagonal on file x. A step that changes the file by
// anything but one has wrapped past an edge.
Bitboard diagonal_reach(int square, unsigned line, int down, int up)
{
    Bitboard reach = 0;
    for (int step : { down, up }) {
        for (int s = square;;) {
            const int next = s + step;
            if (next < 0 || next > 63) break;
            const int file_change = square_file(next) - square_file(s);
            if (file_change != 1 && file_change != -1) break;
            reach |= square_bit(next);
            s = next;
            if (line & (1u << square_file(next))) break;
        }
    }
    return reach;
}

} // namespace

void init_rank_attacks()
{
    for (int p = 0; p < 8; p++)
        for (unsigned k = 0; k < 64; k++) rank_attacks[p][k] = std::uint8_t(line_reach(p, 2 * k));
}

void init_file_attacks()
{
    // Line position i is the a-file square of rank 7 - i: position 0 is a8, position 7 is a1.
    for (int p = 0; p < 8; p++)
        for (unsigned k = 0; k < 64; k++) {
            const unsigned reach = line_reach(p, 2 * k);
            Bitboard set = 0;
            for (int i = 0; i < 8; i++)
                if (reach & (1u << i)) set |= square_bit((7 - i) * 8);
            file_attacks[p][k] = set;
        }
}

void init_diagonal_attacks()
{
    for (int square = 0; square < 64; square++) {
        const int file = square_file(square), rank = square_rank(square);
        const int first_file = file > rank ? file - rank : 0;
        for (unsigned k = 0; k < 64; k++) {
            const unsigned line = ((2 * k) << first_file) & 255;
            diagonal_attacks[square][k] = diagonal_reach(square, line, -9, 9);
        }
    }
}

void init_antidiagonal_attacks()
{
    for (int square = 0; square < 64; square++) {
        const int file = square_file(square), rank = square_rank(square);
        const int first_file = file + rank > 7 ? file + rank - 7 : 0;
        for (unsigned k = 0; k < 64; k++) {
            const unsigned line = ((2 * k) << first_file) & 255;
            antidiagonal_attacks[square][k] = diagonal_reach(square, line, -7, 7);
        }
    }
}

void init_king_attacks()
{
    for (int square = 0; square < 64; square++) {
        Bitboard set = 0;
        for (int df = -1; df <= 1; df++)
            for (int dr = -1; dr <= 1; dr++) {
                const int file = square_file(square) + df, rank = square_rank(square) + dr;
                if ((df || dr) && file >= 0 && file < 8 && rank >= 0 && rank < 8)
                    set |= square_bit(rank * 8 + file);
            }
        king_attacks[square] = set;
    }
}

void init_ray_direction()
{
    for (int a = 0; a < 64; a++)
        for (int b = 0; b < 64; b++) {
            const int fa = square_file(a), ra = square_rank(a);
            const int fb = square_file(b), rb = square_rank(b);
            const int files = fa > fb ? fa - fb : fb - fa, ranks = ra > rb ? ra - rb : rb - ra;
            std::uint8_t direction = direction_none;
            if (a == b)
                direction = direction_none;
            else if (ra == rb)
                direction = fa < fb ? east : west;
            else if (fa == fb)
                direction = ra < rb ? north : south;
            else if (files == ranks && rb > ra)
                direction = fa < fb ? north_east : north_west;
            else if (files == ranks)
                direction = fa < fb ? south_east : south_west;
            ray_direction[a][b] = direction;
        }
}

void init_attack_tables()
{
    init_rank_attacks();
    init_file_attacks();
    init_diagonal_attacks();
    init_antidiagonal_attacks();
    init_king_attacks();
    init_ray_direction();
}
