// The literal move generator (see oracle.h). Frozen: the engine's own code may change, this
// may not.
#include "oracle.h"

#include <cstring>

#include "apply.h"
#include "attacks.h"
#include "generate.h"

namespace oracle {

// Square and line tests.
namespace {

// Steps of the eight directions, indexed by direction number.
constexpr int direction_step[9] = { 0, 8, 9, 1, -7, -8, -9, -1, 7 };

// One step from `square`; -1 when it leaves the board or wraps past the a- or h-file.
inline int step_from(int square, int step)
{
    const int next = square + step;
    if (next < 0 || next > 63) return -1;
    const int file_change = square_file(next) - square_file(square);
    if (file_change > 1 || file_change < -1) return -1;
    return next;
}

// Walks each direction of `directions` in turn; true on reaching an attacker before a blocker.
template <int count>
bool slider_walk(int square, const int (&directions)[count], Bitboard attackers, Bitboard blockers)
{
    for (int direction : directions)
        for (int s = step_from(square, direction_step[direction]); s >= 0;
             s = step_from(s, direction_step[direction])) {
            if (attackers & square_bit(s)) return true;
            if (blockers & square_bit(s)) break;
        }
    return false;
}

// The order of the walks: east, west, south, north; then south-east, north-west, south-west,
// north-east.
constexpr int rook_order[4] = { east, west, south, north };
constexpr int bishop_order[4] = { south_east, north_west, south_west, north_east };

template <bool white> int attacked_by(const Board &b, int square)
{
    if (square < 0 || square > 63) return 0;
    const Bitboard knights = white ? b.white_knights : b.black_knights;
    const Bitboard king = white ? b.white_king : b.black_king;
    const Bitboard rooks = white ? b.white_rooks | b.white_queens : b.black_rooks | b.black_queens;
    const Bitboard bishops
        = white ? b.white_bishops | b.white_queens : b.black_bishops | b.black_queens;
    const Bitboard pawns = white ? b.white_pawns : b.black_pawns;
    const Bitboard all = white_set(b) | black_set(b);

    if (knight_attacks[square] & knights) return 1;
    if (king && (king_attacks[first_square(king)] & square_bit(square))) return 1;
    if (slider_walk(square, rook_order, rooks, all & ~rooks)) return 1;
    if (slider_walk(square, bishop_order, bishops, all & ~bishops)) return 1;

    // A pawn attacks diagonally forward; none stands behind its own second rank.
    const int file = square_file(square);
    if constexpr (white) {
        if (square < 16) return 0;
        return ((pawns & square_bit(square - 7)) && file < 7)
            || ((pawns & square_bit(square - 9)) && file != 0);
    } else {
        if (square > 47) return 0;
        return ((pawns & square_bit(square + 7)) && file != 0)
            || ((pawns & square_bit(square + 9)) && file < 7);
    }
}

template <bool white_slider> int king_line_attacked(const Board &b, int square, int direction)
{
    if (direction < 1 || direction > 8 || square < 0 || square > 63) return 0;
    const bool rook_line = direction & 1;
    const Bitboard sliders = white_slider
        ? (rook_line ? b.white_rooks : b.white_bishops) | b.white_queens
        : (rook_line ? b.black_rooks : b.black_bishops) | b.black_queens;
    const Bitboard all = white_set(b) | black_set(b);
    for (int s = step_from(square, direction_step[direction]); s >= 0;
         s = step_from(s, direction_step[direction])) {
        if (sliders & square_bit(s)) return 1;
        if (all & square_bit(s)) return 0;
    }
    return 0;
}

} // namespace

int attacked_by_white(const Board &board, int square) { return attacked_by<true>(board, square); }
int attacked_by_black(const Board &board, int square) { return attacked_by<false>(board, square); }

int black_king_line_attacked(const Board &board, int square, int direction)
{
    return king_line_attacked<true>(board, square, direction);
}

int white_king_line_attacked(const Board &board, int square, int direction)
{
    return king_line_attacked<false>(board, square, direction);
}

// Generators.
PseudoMoveList *gen_list;
Board gen_board;
Bitboard gen_occupied, gen_white, gen_black, gen_not_white, gen_not_black;
std::uint8_t gen_white_king_square, gen_black_king_square;
std::uint8_t white_occupants[64];
std::uint8_t black_occupants[64];

namespace {

inline void append(Move word)
{
    if (gen_list->count < max_pseudo_moves) gen_list->moves[gen_list->count++] = word;
}

// The four promotions of one pawn move: queen, rook, bishop, knight.
inline void append_promotions(int from, int to)
{
    for (int code : { queen, rook, bishop, knight })
        append(promotion_word | promotion_bits(code) | make_move(from, to));
}

// Pawn geometry of each colour; black mirrors white by ranks, and both look at the capture
// toward file f + 1 first.
template <bool white> void pawn_moves()
{
    const Bitboard enemies = white ? gen_black : gen_white;
    const int forward = white ? 8 : -8;
    const int toward_h = white ? 9 : -7, toward_a = white ? 7 : -9;
    const int double_rank = white ? 1 : 6, enpassant_rank = white ? 4 : 3;
    const int enpassant_row = white ? 40 : 16;
    const int ep_file = gen_board.enpassant_file;

    for (Bitboard pawns = white ? gen_board.white_pawns : gen_board.black_pawns; pawns;
         pawns &= pawns - 1) {
        const int from = first_square(pawns);
        const int file = square_file(from), rank = square_rank(from);
        // A pawn already on its last rank (a garbled FEN) has no square ahead.
        if (white ? from >= 56 : from < 8) continue;
        if (white ? from >= 48 : from < 16) {
            if (!(gen_occupied & square_bit(from + forward)))
                append_promotions(from, from + forward);
            if (file != 7 && (enemies & square_bit(from + toward_h)))
                append_promotions(from, from + toward_h);
            if (file != 0 && (enemies & square_bit(from + toward_a)))
                append_promotions(from, from + toward_a);
            continue;
        }
        // En passant trusts the file alone: the target and the pawn taken are not looked at.
        if (rank == enpassant_rank && file != 7 && ep_file == file + 1)
            append(en_passant_word | make_move(from, enpassant_row + ep_file));
        if (rank == enpassant_rank && file != 0 && ep_file == file - 1)
            append(en_passant_word | make_move(from, enpassant_row + ep_file));
        if (!(gen_occupied & square_bit(from + forward))) {
            append(pawn_word | make_move(from, from + forward));
            if (rank == double_rank && !(gen_occupied & square_bit(from + 2 * forward)))
                append(pawn_word | make_move(from, from + 2 * forward));
        }
        if (file != 7 && (enemies & square_bit(from + toward_h)))
            append(pawn_word | make_move(from, from + toward_h));
        if (file != 0 && (enemies & square_bit(from + toward_a)))
            append(pawn_word | make_move(from, from + toward_a));
    }
}

// Appends from | to << 6 | word for every target of `targets`, in square order.
inline void append_targets(int from, Bitboard targets, Move word)
{
    for (; targets; targets &= targets - 1) append(word | make_move(from, first_square(targets)));
}

inline Bitboard own_targets() { return gen_board.white_to_move ? gen_not_white : gen_not_black; }

// One castling, tested in a fixed order: the right, the king at home, the rook in the corner,
// the three squares the king stands on and crosses not attacked, the squares between empty.
void try_castle(std::int32_t right, Bitboard king, int home, Bitboard rooks, int corner,
    const int (&crossed)[3], Bitboard between, Move word)
{
    if (!right) return;
    if (king != square_bit(home)) return;
    if (!(rooks & square_bit(corner))) return;
    const bool white = gen_board.white_to_move;
    for (int s : crossed)
        if (white ? attacked_by_black(gen_board, s) : attacked_by_white(gen_board, s)) return;
    if (gen_occupied & between) return;
    append(word);
}

} // namespace

void white_pawn_moves() { pawn_moves<true>(); }
void black_pawn_moves() { pawn_moves<false>(); }

void rook_moves()
{
    const Bitboard targets = own_targets();
    for (Bitboard set = gen_board.white_to_move ? gen_board.white_rooks : gen_board.black_rooks;
         set; set &= set - 1) {
        const int from = first_square(set);
        append_targets(from, rook_attacks(from, gen_occupied) & targets, rook_word);
    }
}

void knight_moves()
{
    const Bitboard targets = own_targets();
    for (Bitboard set = gen_board.white_to_move ? gen_board.white_knights : gen_board.black_knights;
         set; set &= set - 1) {
        const int from = first_square(set);
        append_targets(from, knight_attacks[from] & targets, knight_word);
    }
}

void bishop_moves()
{
    const Bitboard targets = own_targets();
    for (Bitboard set = gen_board.white_to_move ? gen_board.white_bishops : gen_board.black_bishops;
         set; set &= set - 1) {
        const int from = first_square(set);
        append_targets(from, bishop_attacks(from, gen_occupied) & targets, bishop_word);
    }
}

void queen_moves()
{
    const Bitboard targets = own_targets();
    for (Bitboard set = gen_board.white_to_move ? gen_board.white_queens : gen_board.black_queens;
         set; set &= set - 1) {
        const int from = first_square(set);
        const Bitboard reach
            = rook_attacks(from, gen_occupied) | bishop_attacks(from, gen_occupied);
        append_targets(from, reach & targets, queen_word);
    }
}

void king_moves()
{
    const Board &b = gen_board;
    const Bitboard king = b.white_to_move ? b.white_king : b.black_king;
    if (!king) return;
    append_targets(first_square(king), king_attacks[first_square(king)] & own_targets(), king_word);
    // b1 and b8 must be empty but may be attacked; the corners are not tested for attacks.
    static constexpr int white_oo_crossed[3] = { 4, 5, 6 }, white_ooo_crossed[3] = { 2, 3, 4 };
    static constexpr int black_oo_crossed[3] = { 60, 61, 62 },
                         black_ooo_crossed[3] = { 58, 59, 60 };
    if (b.white_to_move) {
        try_castle(b.white_oo, king, 4, b.white_rooks, 7, white_oo_crossed, 0x60, white_oo_word);
        try_castle(b.white_ooo, king, 4, b.white_rooks, 0, white_ooo_crossed, 0x0E, white_ooo_word);
    } else {
        try_castle(b.black_oo, king, 60, b.black_rooks, 63, black_oo_crossed, 0x60ULL << 56,
            black_oo_word);
        try_castle(b.black_ooo, king, 60, b.black_rooks, 56, black_ooo_crossed, 0x0EULL << 56,
            black_ooo_word);
    }
}

namespace {

void fill_occupants(std::uint8_t (&table)[64], const Bitboard (&sets)[6])
{
    static constexpr std::uint8_t codes[6] = { pawn, knight, bishop, rook, queen, king };
    std::memset(table, 0, sizeof table);
    for (int i = 0; i < 6; i++)
        for (Bitboard set = sets[i]; set; set &= set - 1) table[first_square(set)] = codes[i];
}

} // namespace

void fill_white_occupants()
{
    const Board &b = gen_board;
    const Bitboard sets[6] = { b.white_pawns, b.white_knights, b.white_bishops, b.white_rooks,
        b.white_queens, b.white_king };
    fill_occupants(white_occupants, sets);
}

void fill_black_occupants()
{
    const Board &b = gen_board;
    const Bitboard sets[6] = { b.black_pawns, b.black_knights, b.black_bishops, b.black_rooks,
        b.black_queens, b.black_king };
    fill_occupants(black_occupants, sets);
}

// The filter.
namespace {

PseudoMoveList pseudo;

// Removes slot `index`, keeping the order of the rest.
void remove_pseudo(int index)
{
    for (int j = index; j + 1 < pseudo.count; j++) pseudo.moves[j] = pseudo.moves[j + 1];
    pseudo.count--;
}

} // namespace

void generate_moves(Board board, MoveList *list)
{
    if (list->count < 0 || list->count > max_moves) list->count = 0;
    gen_list = &pseudo;
    pseudo.count = 0;
    gen_board = board;
    gen_white = white_set(board);
    gen_black = black_set(board);
    gen_not_white = ~gen_white;
    gen_not_black = ~gen_black;
    gen_occupied = gen_white | gen_black;
    gen_white_king_square = std::uint8_t(first_square(board.white_king));
    gen_black_king_square = std::uint8_t(first_square(board.black_king));

    const bool white = board.white_to_move;
    if (white) {
        fill_black_occupants();
        white_pawn_moves();
    } else {
        fill_white_occupants();
        black_pawn_moves();
    }
    rook_moves();
    knight_moves();
    bishop_moves();
    queen_moves();
    king_moves();

    const int own_king = white ? gen_white_king_square : gen_black_king_square;
    const int in_check
        = white ? attacked_by_black(board, own_king) : attacked_by_white(board, own_king);
    const std::uint8_t *enemy_occupants = white ? black_occupants : white_occupants;

    for (int i = 0; i < pseudo.count;) {
        Move word = pseudo.moves[i];
        const int from = move_from(word);
        if (!in_check && !(word & move_en_passant) && from != own_king) {
            // A move off every line through the king can't uncover it; one off such a line can
            // only uncover that line. Without a king there is nothing to uncover.
            const int direction = own_king < 64 ? ray_direction[own_king][from] : 0;
            if (direction) {
                Board copy = board;
                apply_move(&copy, word);
                if (white ? white_king_line_attacked(copy, own_king, direction)
                          : black_king_line_attacked(copy, own_king, direction)) {
                    remove_pseudo(i);
                    continue;
                }
            }
        } else {
            // King moves, en passant (it takes a second pawn off another line) and every move
            // out of check: the king's square is tested in full after the move.
            Board copy = board;
            apply_move(&copy, word);
            const int king_now = first_square(white ? copy.white_king : copy.black_king);
            if (white ? attacked_by_black(copy, king_now) : attacked_by_white(copy, king_now)) {
                remove_pseudo(i);
                continue;
            }
        }

        if (word & move_en_passant) word |= move_capture;
        const int captured = enemy_occupants[move_to(word)];
        if (captured) word |= captured_bits(captured) | move_capture;
        word &= ~move_gives_check;
        Board copy = board;
        apply_move(&copy, word);
        const int enemy_king = first_square(white ? copy.black_king : copy.white_king);
        if (white ? attacked_by_white(copy, enemy_king) : attacked_by_black(copy, enemy_king))
            word |= move_gives_check;
        pseudo.moves[i] = word;
        i++;
    }

    for (int i = 0; i < pseudo.count && list->count < max_moves; i++)
        list->moves[list->count++] = pseudo.moves[i];
}

void generate_captures(Board board, MoveList *list)
{
    const int start = list->count >= 0 && list->count <= max_moves ? list->count : 0;
    generate_moves(board, list);
    int kept = start;
    for (int i = start; i < list->count; i++)
        if (list->moves[i] & move_capture) list->moves[kept++] = list->moves[i];
    list->count = kept;
}

} // namespace oracle
