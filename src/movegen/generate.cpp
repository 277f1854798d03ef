// Pseudo-legal move generators. Only castling tests attacks here; everything else about
// legality and the capture and check fields is left to generate_moves.
#include "movegen/generate.h"

#include <cstring>

#include "movegen/attacked.h"
#include "movegen/attacks.h"

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
    constexpr const PawnGeometry &g = pawn_geometry[white ? 0 : 1];
    constexpr int forward = g.forward, toward_h = g.toward_h, toward_a = g.toward_a;
    const int ep_file = gen_board.enpassant_file;

    for (Bitboard pawns = white ? gen_board.white_pawns : gen_board.black_pawns; pawns;
         pawns &= pawns - 1) {
        const int from = first_square(pawns);
        const int file = square_file(from), rank = square_rank(from);
        // A pawn already on its last rank (a garbled FEN) has no square ahead.
        if (rank == g.last_rank) continue;
        if (rank == g.promotion_rank) {
            if (!(gen_occupied & square_bit(from + forward)))
                append_promotions(from, from + forward);
            if (file != 7 && (enemies & square_bit(from + toward_h)))
                append_promotions(from, from + toward_h);
            if (file != 0 && (enemies & square_bit(from + toward_a)))
                append_promotions(from, from + toward_a);
            continue;
        }
        // En passant trusts the file alone: the target and the pawn taken are not looked at.
        if (rank == g.enpassant_rank && file != 7 && ep_file == file + 1)
            append(en_passant_word | make_move(from, g.enpassant_row + ep_file));
        if (rank == g.enpassant_rank && file != 0 && ep_file == file - 1)
            append(en_passant_word | make_move(from, g.enpassant_row + ep_file));
        if (!(gen_occupied & square_bit(from + forward))) {
            append(pawn_word | make_move(from, from + forward));
            if (rank == g.double_rank && !(gen_occupied & square_bit(from + 2 * forward)))
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

namespace {

// Each piece of one kind, in a1-to-h8 order, with its reach from `from` through gen_occupied.
template <Bitboard Board::*white_set, Bitboard Board::*black_set, Move word, typename Reach>
void piece_moves(Reach reach)
{
    const Bitboard targets = own_targets();
    for (Bitboard set = gen_board.white_to_move ? gen_board.*white_set : gen_board.*black_set; set;
         set &= set - 1) {
        const int from = first_square(set);
        append_targets(from, reach(from) & targets, word);
    }
}

} // namespace

void rook_moves()
{
    piece_moves<&Board::white_rooks, &Board::black_rooks, rook_word>(
        [](int from) { return rook_attacks(from, gen_occupied); });
}

void knight_moves()
{
    piece_moves<&Board::white_knights, &Board::black_knights, knight_word>(
        [](int from) { return knight_attacks[from]; });
}

void bishop_moves()
{
    piece_moves<&Board::white_bishops, &Board::black_bishops, bishop_word>(
        [](int from) { return bishop_attacks(from, gen_occupied); });
}

void queen_moves()
{
    piece_moves<&Board::white_queens, &Board::black_queens, queen_word>([](int from) {
        return rook_attacks(from, gen_occupied) | bishop_attacks(from, gen_occupied);
    });
}

void king_moves()
{
    const Board &b = gen_board;
    const Bitboard king = b.white_to_move ? b.white_king : b.black_king;
    if (!king) return;
    append_targets(first_square(king), king_attacks[first_square(king)] & own_targets(), king_word);
    const int colour = b.white_to_move ? 0 : 1;
    const CastlingGeometry &oo = castling[colour][0], &ooo = castling[colour][1];
    const Bitboard rooks = b.white_to_move ? b.white_rooks : b.black_rooks;
    try_castle(b.white_to_move ? b.white_oo : b.black_oo, king, oo.king_from, rooks, oo.rook_from,
        oo.crossed, oo.between, b.white_to_move ? white_oo_word : black_oo_word);
    try_castle(b.white_to_move ? b.white_ooo : b.black_ooo, king, ooo.king_from, rooks,
        ooo.rook_from, ooo.crossed, ooo.between, b.white_to_move ? white_ooo_word : black_ooo_word);
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

void set_generator_state(const Board &board, PseudoMoveList *list)
{
    gen_list = list;
    list->count = 0;
    gen_board = board;
    gen_white = white_set(board);
    gen_black = black_set(board);
    gen_not_white = ~gen_white;
    gen_not_black = ~gen_black;
    gen_occupied = gen_white | gen_black;
    gen_white_king_square = std::uint8_t(first_square(board.white_king));
    gen_black_king_square = std::uint8_t(first_square(board.black_king));
}
