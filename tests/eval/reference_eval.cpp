// The evaluation written out literally: loops over squares, rays walked one step at a time,
// per-file pawn counts, piece lists of ten, and the sum with its weights spelt out.
#include "tests/eval/reference_eval.h"

namespace {

using namespace eval;

bool has(Bitboard set, int file, int rank)
{
    return file >= 0 && file < 8 && rank >= 0 && rank < 8 && (set >> (rank * 8 + file) & 1);
}
bool has(Bitboard set, int square) { return set >> square & 1; }

int count(Bitboard set)
{
    int n = 0;
    for (int s = 0; s < 64; s++) n += has(set, s);
    return n;
}

int lowest(Bitboard set)
{
    for (int s = 0; s < 64; s++)
        if (has(set, s)) return s;
    return 64;
}

// The colour's sets, by piece code.
struct sides {
    Bitboard piece[2][7];
    Bitboard all_of[2];
    Bitboard all;
};

sides split(const Board &b)
{
    sides s {};
    s.piece[white][rook] = b.white_rooks;
    s.piece[white][knight] = b.white_knights;
    s.piece[white][bishop] = b.white_bishops;
    s.piece[white][queen] = b.white_queens;
    s.piece[white][king] = b.white_king;
    s.piece[white][pawn] = b.white_pawns;
    s.piece[black][rook] = b.black_rooks;
    s.piece[black][knight] = b.black_knights;
    s.piece[black][bishop] = b.black_bishops;
    s.piece[black][queen] = b.black_queens;
    s.piece[black][king] = b.black_king;
    s.piece[black][pawn] = b.black_pawns;
    for (int c = 0; c < 2; c++)
        for (int p = 1; p <= 6; p++) s.all_of[c] |= s.piece[c][p];
    s.all = s.all_of[white] | s.all_of[black];
    return s;
}

// Squares from `square` in steps of (df, dr), up to and including the first occupied one.
Bitboard walk(int square, int df, int dr, Bitboard occupied)
{
    Bitboard set = 0;
    int file = square % 8 + df, rank = square / 8 + dr;
    while (file >= 0 && file < 8 && rank >= 0 && rank < 8) {
        set |= Bitboard(1) << (rank * 8 + file);
        if (has(occupied, file, rank)) break;
        file += df;
        rank += dr;
    }
    return set;
}

Bitboard jumps(int square, const int (*steps)[2])
{
    Bitboard set = 0;
    for (int i = 0; i < 8; i++) {
        const int file = square % 8 + steps[i][0], rank = square / 8 + steps[i][1];
        if (file >= 0 && file < 8 && rank >= 0 && rank < 8) set |= Bitboard(1) << (rank * 8 + file);
    }
    return set;
}
constexpr int knight_steps[8][2]
    = { { 1, 2 }, { 2, 1 }, { 2, -1 }, { 1, -2 }, { -1, -2 }, { -2, -1 }, { -2, 1 }, { -1, 2 } };
constexpr int king_steps[8][2]
    = { { 0, 1 }, { 1, 1 }, { 1, 0 }, { 1, -1 }, { 0, -1 }, { -1, -1 }, { -1, 0 }, { -1, 1 } };

int attacked(const sides &s, int colour, int square)
{
    if (jumps(square, knight_steps) & s.piece[colour][knight]) return 1;
    const int k = lowest(s.piece[colour][king]);
    if (k < 64 && has(jumps(k, king_steps), square)) return 1;
    const Bitboard straight = s.piece[colour][rook] | s.piece[colour][queen];
    const Bitboard diagonal = s.piece[colour][bishop] | s.piece[colour][queen];
    for (int i = 0; i < 8; i++) {
        const Bitboard ray = walk(square, king_steps[i][0], king_steps[i][1], s.all);
        const bool is_diagonal = king_steps[i][0] != 0 && king_steps[i][1] != 0;
        if (ray & (is_diagonal ? diagonal : straight)) return 1;
    }
    const int file = square % 8, rank = square / 8;
    const Bitboard pawns = s.piece[colour][pawn];
    if (colour == white)
        return rank >= 2 && (has(pawns, file - 1, rank - 1) || has(pawns, file + 1, rank - 1));
    return rank <= 5 && (has(pawns, file - 1, rank + 1) || has(pawns, file + 1, rank + 1));
}

// Square of (file, rank given from the colour's own side): rank r becomes 9 - r for black.
int own_square(int colour, int file, int rank)
{
    return colour == white ? rank * 8 + file : (7 - rank) * 8 + file;
}
// Files a..h as 0..7, ranks 1..8 as 0..7.
bool own_has(Bitboard set, int colour, int file, int rank)
{
    return has(set, own_square(colour, file, rank));
}

constexpr std::int32_t king_table_ending[64] = { 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
    0, 1, 1, 1, 1, 0, 0, 0, 0, 1, 2, 2, 1, 0, 0, 0, 0, 1, 2, 2, 1, 0, 0, 0, 0, 1, 1, 1, 1, 0, 0, 0,
    0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 };
constexpr std::int32_t king_table[64]
    = { 10, 15, 18, 15, 17, 15, 18, 10, 5, 10, 10, 10, 10, 10, 10, 5, 0, 5, 5, 5, 5, 5, 5, 0 };
constexpr std::int32_t queen_table[64] = { -2, -1, -1, 2, 2, -1, -1, -2, -1, 1, 1, 1, 1, 1, 1, -1,
    -1, 1, 1, 1, 1, 1, 1, -1, -2, 1, 1, 1, 1, 1, 1, -2, -2, 1, 1, 1, 1, 1, 1, -2, -1, 1, 1, 1, 1, 1,
    1, -1, -1, 1, 1, 1, 1, 1, 1, -1, -2, -1, -1, 2, 2, -1, -1, -2 };
constexpr std::int32_t rook_table[64] = { 0, 0, 0, 0, 0, 0, 0, 0, -1, 0, 0, 0, 0, 0, 0, -1, -1, 0,
    0, 0, 0, 0, 0, -1, -1, 0, 0, 0, 0, 0, 0, -1, -1, 0, 0, 0, 0, 0, 0, -1, -1, 0, 0, 0, 0, 0, 0, -1,
    -1, 0, 0, 0, 0, 0, 0, -1, 0, 0, 1, 1, 1, 1, 0, 0 };
constexpr std::int32_t bishop_table[64] = { -2, -1, -2, -1, -1, -2, -1, -2, -1, 2, 0, 1, 1, 0, 2,
    -1, -1, 0, 1, 1, 1, 1, 0, -1, -1, 1, 2, 2, 2, 2, 1, -1, -1, 1, 2, 2, 2, 2, 1, -1, -1, 0, 1, 1,
    1, 1, 0, -1, -1, 2, 0, 1, 1, 0, 2, -1, -2, -1, -2, -1, -1, -2, -1, -2 };
constexpr std::int32_t knight_table[64] = { -5, -2, -4, -4, -4, -4, -2, -5, -4, -4, -3, -3, -3, 0,
    -4, -4, -4, -3, 0, -1, -1, 0, -3, -4, -4, -3, 0, 1, 1, 0, -3, -4, -4, -3, 0, 1, 1, 0, -3, -4,
    -4, -3, 0, -1, -1, 0, -3, -4, -4, -4, -3, -3, -3, -3, -4, -4, -5, -2, -4, -4, -4, -4, -2, -5 };
constexpr std::int32_t pawn_table[64] = { 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, -1, -1, 1, 1, 0, 0, 0,
    -1, 0, 0, -1, 0, 0, 0, 0, 0, 3, 3, 0, 0, 0, 1, 1, 1, 3, 3, 1, 3, 1, 2, 2, 2, 4, 4, 2, 2, 2, 3,
    3, 3, 3, 3, 3, 3, 3, 0, 0, 0, 0, 0, 0, 0, 0 };
constexpr std::int32_t pawn_table_ending[64] = { 0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 2,
    2, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3, 4, 4, 4, 4, 4, 4, 4, 4, 5, 5, 5, 5, 5, 5, 5, 5, 6,
    6, 6, 6, 6, 6, 6, 6, 0, 0, 0, 0, 0, 0, 0, 0 };

std::int32_t table_value(const std::int32_t *table, int colour, int piece, int square)
{
    if (colour == white) return table[square];
    if (piece == king && square / 8 == 7) return table[square & 7];
    return table[63 - square];
}

// Two pieces on one rank or file with no occupied square strictly between them, found by
// stepping from the first toward the second. A piece is not connected with one on its own square.
bool connected(int a, int b, Bitboard all)
{
    if (a == b) return false;
    int df = 0, dr = 0;
    if (a / 8 == b / 8)
        df = b > a ? 1 : -1;
    else if (a % 8 == b % 8)
        dr = b > a ? 1 : -1;
    else
        return false;
    int file = a % 8 + df, rank = a / 8 + dr;
    while (rank * 8 + file != b) {
        if (has(all, file, rank)) return false;
        file += df;
        rank += dr;
    }
    return true;
}

// Every term of colour c but the home-square row of King Development Score, which needs the
// castling flags.
void colour_terms(const sides &s, int c, int phase, const int file_pawns[2][8], std::int32_t *v)
{
    const int them = 1 - c;
    const Bitboard own = s.all_of[c], enemy = s.all_of[them], all = s.all;
    const int king_square = lowest(s.piece[c][king]);

    // Piece activity: rooks (rank, file), bishops (a1-h8, a8-h1), knights, by ascending square.
    struct kind {
        int piece;
        int lines[2][2]; // directions (df, dr) of each set's first half; the set is both ways
        int line_count;
        int mobility_term;
    };
    const kind kinds[3] = {
        { rook, { { 1, 0 }, { 0, 1 } }, 2, rook_mobility },
        { bishop, { { 1, 1 }, { 1, -1 } }, 2, bishop_mobility },
        { knight, {}, 1, knight_mobility },
    };
    int free_total = 0;
    for (const kind &k : kinds) {
        int own_count = 0, enemy_count = 0, free_figure = 0;
        for (int sq = 0; sq < 64; sq++) {
            if (!has(s.piece[c][k.piece], sq)) continue;
            for (int l = 0; l < k.line_count; l++) {
                const Bitboard set = k.piece == knight ? jumps(sq, knight_steps)
                                                       : walk(sq, k.lines[l][0], k.lines[l][1], all)
                        | walk(sq, -k.lines[l][0], -k.lines[l][1], all);
                own_count += count(set & own);
                enemy_count += count(set & enemy);
                free_figure += count(set) - own_count - enemy_count;
            }
        }
        v[k.mobility_term] = own_count;
        v[k.mobility_term + 1] = enemy_count;
        free_total += free_figure;
    }
    v[free_squares] = free_total;
    for (int sq = 0; sq < 64; sq++) {
        if (!has(s.piece[c][queen], sq)) continue;
        for (int i = 0; i < 8; i++) {
            const Bitboard set = walk(sq, king_steps[i][0], king_steps[i][1], all);
            v[queen_mobility] += count(set & own);
            v[queen_attack] += count(set & enemy);
        }
    }

    // Rook files.
    for (int sq = 0; sq < 64; sq++) {
        if (!has(s.piece[c][rook], sq)) continue;
        const int f = sq % 8;
        if (file_pawns[c][f] == 0) v[rook_file_score] += file_pawns[them][f] == 0 ? 12 : 7;
    }

    // Coordination over lists of at most ten.
    int rooks[10], queens[10], rook_count = 0, queen_count = 0;
    for (int sq = 0; sq < 64; sq++) {
        if (has(s.piece[c][rook], sq) && rook_count < 10) rooks[rook_count++] = sq;
        if (has(s.piece[c][queen], sq) && queen_count < 10) queens[queen_count++] = sq;
    }
    for (int i = 0; i < rook_count; i++)
        for (int j = i + 1; j < rook_count; j++)
            if (connected(rooks[i], rooks[j], all)) v[coord_score] += 16;
    for (int i = 0; i < rook_count; i++)
        for (int j = 0; j < queen_count; j++)
            if (connected(rooks[i], queens[j], all)) v[coord_score] += 10;

    // King safety.
    {
        int n = 0;
        int cover = 0;
        bool check = false;
        if (king_square < 64) {
            const int kf = king_square % 8, kr = king_square / 8;
            for (int df = -1; df <= 1; df++)
                for (int dr = -1; dr <= 1; dr++) {
                    const int f = kf + df, r = kr + dr;
                    if (f >= 0 && f < 8 && r >= 0 && r < 8) n += attacked(s, them, r * 8 + f);
                }
            const int forward = c == white ? 1 : -1;
            for (int step = 1; step <= 2; step++)
                for (int df = -1; df <= 1; df++)
                    cover += has(s.piece[c][pawn], kf + df, kr + forward * step);
            check = attacked(s, them, king_square);
        }
        int raw = 2 * n - cover + (check ? 4 : 0);
        if (raw < 0) raw = 0;
        const int factor[3] = { 6, 4, 1 };
        v[king_safety_penalty] = raw * factor[phase];
    }

    // Centre.
    if (phase != ending) {
        const int centre[4] = { 27, 28, 35, 36 }; // d4, e4, d5, e5
        for (int sq : centre) {
            if (has(s.piece[c][pawn], sq))
                v[center_score] += phase == opening ? 10 : 5;
            else if (has(own, sq))
                v[center_score] += phase == opening ? 6 : 3;
            if (phase == opening) {
                const int a = attacked(s, c, sq), b = attacked(s, them, sq);
                if (a && b)
                    v[center_score] += 5;
                else if (a)
                    v[center_score] += 8;
            }
        }
    }

    // Pawn structure and the bishop pair.
    for (int f = 0; f < 8; f++) {
        const int n = file_pawns[c][f];
        if (n >= 2) v[pawn_structure_penalty] += 10 * (n - 1);
        if (n >= 3) v[pawn_structure_penalty] += 6 * (n - 2);
    }
    if (count(s.piece[c][bishop]) >= 2) v[bishop_pair_bonus] = 18;

    const Bitboard pawns = s.piece[c][pawn], bishops = s.piece[c][bishop];
    const Bitboard knights = s.piece[c][knight];
    // Files a..h as 0..7 and ranks 1..8 as 0..7, from the colour's own side.
    enum { fa, fb, fc, fd, fe, ff, fg, fh };

    if (phase != ending) {
        for (int sq = 0; sq < 64; sq++) {
            if (!has(knights, sq)) continue;
            const int f = sq % 8, r = sq / 8;
            const bool corner = (f == 0 || f == 7) && (r == 0 || r == 7);
            if (corner)
                v[knight_edge_penalty] += 12;
            else if (f == 0 || f == 7 || r == 0 || r == 7)
                v[knight_edge_penalty] += 7;
        }
        if (own_has(bishops, c, fe, 2) && own_has(pawns, c, fe, 1)) {
            v[bishop_king_pawn_block_penalty] = 28;
            if (own_has(bishops, c, ff, 0) && own_has(pawns, c, fg, 1))
                v[bishop_king_pawn_block_penalty] = 48;
        }
        if (own_has(bishops, c, ff, 0) && own_has(pawns, c, fe, 1) && own_has(pawns, c, fg, 1))
            v[king_side_bishop_trap_penalty] = 16;
        if (king_square == own_square(c, fb, 0) && own_has(s.piece[c][rook], c, fa, 0)
            && own_has(pawns, c, fa, 1))
            v[rook_corner_trap_penalty] += 16;
        if (king_square == own_square(c, fg, 0) && own_has(s.piece[c][rook], c, fh, 0)
            && own_has(pawns, c, fh, 1))
            v[rook_corner_trap_penalty] += 16;

        if (king_square == own_square(c, fg, 0)) {
            v[king_development_score] = phase == opening ? 14 : 8;
            for (int f = ff; f <= fh; f++)
                if (!own_has(pawns, c, f, 1)) v[castled_shield_penalty] += 10;
        } else if (king_square == own_square(c, fc, 0)) {
            v[king_development_score] = phase == opening ? 14 : 8;
            for (int f = fa; f <= fc; f++)
                if (!own_has(pawns, c, f, 1)) v[castled_shield_penalty] += 10;
        }
    }

    if (phase == opening) {
        for (int sq = 0; sq < 64; sq++) {
            if (!has(bishops, sq)) continue;
            const int f = sq % 8, r = sq / 8;
            const int ahead = c == white ? r + 1 : r - 1;
            if (ahead < 0 || ahead > 7) continue;
            const int n = has(pawns, f - 1, ahead) + has(pawns, f + 1, ahead);
            v[bishop_block_penalty] += n == 0 ? 0 : n == 1 ? 7 : 11;
        }
        if (own_has(pawns, c, fd, 2)) v[central_pawn_opening_score] += 5;
        if (own_has(pawns, c, fe, 2)) v[central_pawn_opening_score] += 5;
        if (own_has(pawns, c, fd, 3)) v[central_pawn_opening_score] += 12;
        if (own_has(pawns, c, fe, 3)) v[central_pawn_opening_score] += 12;
        const int knights_home = own_has(knights, c, fb, 0) + own_has(knights, c, fg, 0);
        const int minors_home
            = knights_home + own_has(bishops, c, fc, 0) + own_has(bishops, c, ff, 0);
        if (own_has(pawns, c, fd, 1) && own_has(pawns, c, fe, 1)) {
            if (minors_home > 2) v[no_central_pawn_penalty] += 28;
            v[no_central_pawn_penalty] += 16 * (2 - knights_home);
        }
        if (!own_has(s.piece[c][queen], c, fd, 0) && minors_home > 1)
            v[early_queen_penalty] = 14 * (minors_home - 1);
    }

    // Material and tables.
    v[material] = 100 * count(s.piece[c][pawn]) + 500 * count(s.piece[c][rook])
        + 300 * count(s.piece[c][knight]) + 320 * count(s.piece[c][bishop])
        + 900 * count(s.piece[c][queen]);
    for (int sq = 0; sq < 64; sq++) {
        if (phase != ending) {
            if (has(s.piece[c][rook], sq)) v[piece_tables] += table_value(rook_table, c, rook, sq);
            if (has(s.piece[c][knight], sq))
                v[piece_tables] += table_value(knight_table, c, knight, sq);
            if (has(s.piece[c][bishop], sq))
                v[piece_tables] += table_value(bishop_table, c, bishop, sq);
            if (has(s.piece[c][queen], sq))
                v[piece_tables] += table_value(queen_table, c, queen, sq);
        }
        if (has(s.piece[c][king], sq))
            v[king_pawn_tables]
                += table_value(phase == ending ? king_table_ending : king_table, c, king, sq);
        if (has(s.piece[c][pawn], sq))
            v[king_pawn_tables]
                += table_value(phase == ending ? pawn_table_ending : pawn_table, c, pawn, sq);
    }
}

} // namespace

reference_scores reference_evaluate(const Board &board)
{
    const sides s = split(board);
    reference_scores r {};
    int total_material = 0;
    for (int c = 0; c < 2; c++)
        total_material += 100 * count(s.piece[c][pawn]) + 500 * count(s.piece[c][rook])
            + 300 * count(s.piece[c][knight]) + 320 * count(s.piece[c][bishop])
            + 900 * count(s.piece[c][queen]);
    r.phase = total_material >= 6500 ? 0 : total_material >= 2000 ? 1 : 2;
    int file_pawns[2][8] = {};
    for (int c = 0; c < 2; c++)
        for (int sq = 0; sq < 64; sq++) file_pawns[c][sq % 8] += has(s.piece[c][pawn], sq);
    for (int c = 0; c < 2; c++) colour_terms(s, c, r.phase, file_pawns, r.value[c]);

    // The king on its home square, charged while it keeps a castling right.
    const int rights[2] = { board.white_oo || board.white_ooo, board.black_oo || board.black_ooo };
    const int home[2] = { 4, 60 };
    for (int c = 0; c < 2; c++)
        if (r.phase != ending && lowest(s.piece[c][king]) == home[c] && rights[c])
            r.value[c][king_development_score] = r.phase == opening ? -18 : -24;

    for (int c = 0; c < 2; c++) {
        const std::int32_t *v = r.value[c];
        r.total[c] = v[material] + v[piece_tables] + v[king_pawn_tables]
            + 4 * (v[rook_mobility] + v[bishop_mobility] + v[knight_mobility] + v[queen_mobility])
            + 6 * (v[rook_attack] + v[bishop_attack] + v[knight_attack] + v[queen_attack])
            + v[free_squares] + v[rook_file_score] + v[coord_score] + v[center_score]
            - 7 * v[king_safety_penalty] - v[pawn_structure_penalty] + v[bishop_pair_bonus]
            - v[knight_edge_penalty] - v[bishop_block_penalty] - v[bishop_king_pawn_block_penalty]
            - v[king_side_bishop_trap_penalty] - v[rook_corner_trap_penalty]
            + v[king_development_score] - v[castled_shield_penalty] + v[central_pawn_opening_score]
            - v[no_central_pawn_penalty] - v[early_queen_penalty];
    }
    return r;
}

std::int32_t reference_score(const Board &board, int side)
{
    const reference_scores r = reference_evaluate(board);
    return side ? r.total[white] - r.total[black] : r.total[black] - r.total[white];
}

int reference_attacked(const Board &board, int colour, int square)
{
    return attacked(split(board), colour, square);
}
