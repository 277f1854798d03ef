// Filling the attack tables at start-up.
#include "movegen/attacks.h"

#include <bit>

std::uint8_t rank_attacks[8][64];
Bitboard file_attacks[8][64];
Bitboard diagonal_attacks[64][64];
Bitboard antidiagonal_attacks[64][64];
Bitboard king_attacks[64];
std::uint8_t ray_direction[64][64];
slider_entry rook_entries[64], bishop_entries[64];
Bitboard slider_slots[rook_slot_count + bishop_slot_count];

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
    init_slider_tables();
}

namespace {

// Multipliers found by a random search over sparse 64-bit numbers (a fixed seed, the first
// number that works for each square): any number that sends every two blocker sets with
// different reaches to different slots will do. The test of the look-ups checks every set.
constexpr std::uint64_t rook_multipliers[64] = {
    0x1080004008801020ULL,
    0x0840092002C03000ULL,
    0x1900200010400900ULL,
    0x0880100008000480ULL,
    0x4200100420080200ULL,
    0x8100020100080400ULL,
    0x0200040110886200ULL,
    0x0200008040220411ULL,
    0x0404800084400220ULL,
    0x0000401000402000ULL,
    0x0086001081220440ULL,
    0x0408800800100280ULL,
    0x000A001201040820ULL,
    0x8848800200840080ULL,
    0x4001000100040200ULL,
    0x0442000102105084ULL,
    0x9080010020804100ULL,
    0x0040404000201009ULL,
    0x0000808010002009ULL,
    0x2200090021D00100ULL,
    0x0008008008040080ULL,
    0x0004004002010040ULL,
    0x0011040008015042ULL,
    0x00000A0001768104ULL,
    0x0000800080204009ULL,
    0x2010004140002001ULL,
    0x9800200280100080ULL,
    0x1000100080080080ULL,
    0x0442000A00049020ULL,
    0x2100040080020080ULL,
    0x0800120400900148ULL,
    0x0010040A00128541ULL,
    0x2800804000800030ULL,
    0x1010002000400041ULL,
    0x4000200011004100ULL,
    0x0610008410800800ULL,
    0x0400802402800800ULL,
    0xC100020080800400ULL,
    0x0002000802000401ULL,
    0x0182085882000401ULL,
    0x0220204000808000ULL,
    0x2860100040024022ULL,
    0x0001002004110040ULL,
    0x99101042000A0020ULL,
    0x0004080004008080ULL,
    0x0010040002008080ULL,
    0x2012004881020004ULL,
    0x8300842444820011ULL,
    0x0088403882010200ULL,
    0x0820400080210100ULL,
    0x0110910040A00300ULL,
    0x0801100280080480ULL,
    0x0242009008200600ULL,
    0x1002000489500200ULL,
    0x0040800200010080ULL,
    0x0091800041000080ULL,
    0x0000209300488001ULL,
    0x04C1002414824001ULL,
    0x020020000B001041ULL,
    0x7000100004200901ULL,
    0x8002002004100802ULL,
    0x30010002084C0007ULL,
    0x0888221800813004ULL,
    0x4000002840840112ULL,
};
constexpr std::uint64_t bishop_multipliers[64] = {
    0xA010041108003100ULL,
    0x006082020A002900ULL,
    0x6810010619200000ULL,
    0x08281A0520000408ULL,
    0x0001104001000400ULL,
    0x0018901008048400ULL,
    0x00040A0210245280ULL,
    0x000200210808A402ULL,
    0x9140048410821200ULL,
    0x0800091010820041ULL,
    0x20504804832202C0ULL,
    0x0100091401081000ULL,
    0x8021011140000012ULL,
    0x0810020804450400ULL,
    0x208B0542109008A2ULL,
    0x0080084A08040204ULL,
    0x0040E2A80811244CULL,
    0x2505022008008108ULL,
    0x0430220100420040ULL,
    0x010A040420220040ULL,
    0x1105000290400000ULL,
    0x0093001200822120ULL,
    0x4000A62048043004ULL,
    0x280120048A015004ULL,
    0x006090002A020814ULL,
    0x44042000240800D0ULL,
    0x01102800040A4400ULL,
    0x1004080080220040ULL,
    0x0001001011004024ULL,
    0x0010044000805040ULL,
    0x0914041200820100ULL,
    0x0004821012821480ULL,
    0x0024040500C05021ULL,
    0x0088611002080200ULL,
    0x0116080A00040020ULL,
    0x4000020080080080ULL,
    0x2450450140840040ULL,
    0x0000880201484100ULL,
    0x0222020404020092ULL,
    0x8081110600002E00ULL,
    0x2842101105000801ULL,
    0x1100809008001025ULL,
    0x00020202221C0400ULL,
    0x0422014022009020ULL,
    0x0210046102100C00ULL,
    0xC004008082029102ULL,
    0x00AA461801101200ULL,
    0x0404080080201108ULL,
    0x020542108C205002ULL,
    0x0410544804100100ULL,
    0x0040910841100000ULL,
    0x0400200042021100ULL,
    0x00004204850400C0ULL,
    0x0200100410A42102ULL,
    0x1040020801210102ULL,
    0x0805040410420000ULL,
    0x2884804130100200ULL,
    0x800C262201242000ULL,
    0x1058000194108800ULL,
    0x0014221054420204ULL,
    0x0104000012A02200ULL,
    0x0200881003300100ULL,
    0x0140400202840100ULL,
    0x0402020801010201ULL,
};

// Fills the entries of one kind from `first_slot` on; returns the slot after the last.
std::uint32_t fill_sliders(slider_entry (&entries)[64], const std::uint64_t (&multipliers)[64],
    std::uint32_t first_slot, bool rook_lines)
{
    std::uint32_t offset = first_slot;
    for (int square = 0; square < 64; square++) {
        const int rank = square_rank(square), file = square_file(square);
        const Bitboard lines = rook_lines
            ? rank_inner_mask[rank] | file_inner_mask[file]
            : diagonal_inner_mask[7 - rank + file] | antidiagonal_inner_mask[file + rank];
        slider_entry &e = entries[square];
        e.mask = lines & ~square_bit(square);
        e.multiplier = multipliers[square];
        e.offset = offset;
        e.shift = std::uint32_t(64 - std::popcount(e.mask));
        // Every subset of the mask, by the carry-rippler walk from the empty set.
        Bitboard blockers = 0;
        do {
            const Bitboard reach = rook_lines
                ? rank_lookup(square, blockers) | file_lookup(square, blockers)
                : diagonal_lookup(square, blockers) | antidiagonal_lookup(square, blockers);
            slider_slots[offset + (blockers * e.multiplier >> e.shift)] = reach;
            blockers = (blockers - e.mask) & e.mask;
        } while (blockers);
        offset += std::uint32_t(1) << (64 - e.shift);
    }
    return offset;
}

} // namespace

void init_slider_tables()
{
    const std::uint32_t rook_end = fill_sliders(rook_entries, rook_multipliers, 0, true);
    fill_sliders(bishop_entries, bishop_multipliers, rook_end, false);
}
