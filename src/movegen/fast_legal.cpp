// Legal moves by masks. The order and the words are those of the piece generators and the filter
// of generate_moves; what changes is how legality and the check bit are found:
//   - a move is legal if it neither leaves a pin line nor, in check, fails to take or block the
//     checker; a king step if its square is not attacked once the king has left its own;
//   - a move checks if it lands on a square from which its piece reaches the enemy king, or
//     moves a lone blocker off a line between one of our sliders and that king.
// En passant, promotions and castling are rare and shift more than one piece's lines, so they
// are tried on a copy of the board as the literal filter does.
#include "movegen/fast_legal.h"

#include "movegen/attacked.h"
#include "movegen/attacks.h"
#include "movegen/generate.h"
#include "movegen/lines.h"
#include "position/apply.h"

namespace {

// One side's sets.
struct army {
    Bitboard pawns, rooks, knights, bishops, queens, king, all;
};

inline army white_army(const Board &b)
{
    return { b.white_pawns, b.white_rooks, b.white_knights, b.white_bishops, b.white_queens,
        b.white_king, white_set(b) };
}

inline army black_army(const Board &b)
{
    return { b.black_pawns, b.black_rooks, b.black_knights, b.black_bishops, b.black_queens,
        b.black_king, black_set(b) };
}

// Whether `attackers` (a side with its king on `king_square`) reach `square` with the blockers
// `occupied`.
template <bool white_attacks>
inline bool reaches(const army &attackers, int king_square, int square, Bitboard occupied)
{
    return (knight_attacks[square] & attackers.knights)
        || (king_attacks[king_square] & square_bit(square))
        || (rook_attacks(square, occupied) & (attackers.rooks | attackers.queens))
        || (bishop_attacks(square, occupied) & (attackers.bishops | attackers.queens))
        || (pawn_attackers_of<white_attacks>(square) & attackers.pawns);
}

// Own pieces that stand alone between `king` and a slider of `sliders_side` bearing on it.
inline Bitboard lone_blockers(int king, const army &sliders_side, Bitboard own, Bitboard occupied)
{
    Bitboard blockers = 0;
    Bitboard snipers = (rook_attacks(king, 0) & (sliders_side.rooks | sliders_side.queens))
        | (bishop_attacks(king, 0) & (sliders_side.bishops | sliders_side.queens));
    for (; snipers; snipers &= snipers - 1) {
        const Bitboard between = between_squares[king][first_square(snipers)] & occupied;
        if (between && !(between & (between - 1)) && (between & own)) blockers |= between;
    }
    return blockers;
}

inline int code_on(const army &side, Bitboard square)
{
    if (side.pawns & square) return pawn;
    if (side.knights & square) return knight;
    if (side.bishops & square) return bishop;
    if (side.rooks & square) return rook;
    if (side.queens & square) return queen;
    return side.king & square ? king : no_piece;
}

// With `captures` set, only the moves that take something are written: the same words in the
// same order as the full list with its quiet moves struck out.
template <bool white, bool captures> struct generator {
    generator(const Board &b, MoveList *l)
        : board(b)
        , list(l)
    {
    }

    const Board &board;
    MoveList *list;
    army us {}, them {};
    Bitboard occupied = 0;
    int king_square = 0, enemy_king_square = 0;
    Bitboard pinned = 0, check_mask = 0;
    // Check bit: landing squares by kind, and our lone blockers in front of the enemy king.
    Bitboard check_squares[7] = {};
    Bitboard discoverers = 0;

    void append(Move word)
    {
        if (list->count < max_moves) list->moves[list->count++] = word;
    }

    // Capture bit and captured code, as the occupant table gives them.
    Move completed(Move word, int to) const
    {
        if (word & move_en_passant) word |= move_capture;
        const int captured = code_on(them, square_bit(to));
        if (captured) word |= captured_bits(captured) | move_capture;
        return word;
    }

    // The literal way, for the rare moves: try the word on a copy.
    bool legal_on_copy(Move word) const
    {
        Board copy = board;
        apply_move(&copy, word);
        const int king_now = first_square(white ? copy.white_king : copy.black_king);
        return !(white ? attacked_by_black(copy, king_now) : attacked_by_white(copy, king_now));
    }

    bool checks_on_copy(Move word) const
    {
        Board copy = board;
        apply_move(&copy, word);
        const int enemy_king = first_square(white ? copy.black_king : copy.white_king);
        return white ? attacked_by_white(copy, enemy_king) : attacked_by_black(copy, enemy_king);
    }

    void append_tried(Move word)
    {
        if (!legal_on_copy(word)) return;
        word = completed(word, move_to(word));
        if (checks_on_copy(word)) word |= move_gives_check;
        append(word);
    }

    // A move whose piece keeps its kind: direct check from `to`, or a line opened at `from`.
    void append_plain(Move word, int from, int to, int kind)
    {
        word = completed(word, to);
        if ((check_squares[kind] & square_bit(to))
            || ((discoverers & square_bit(from))
                && ray_direction[enemy_king_square][from] != ray_direction[enemy_king_square][to]))
            word |= move_gives_check;
        append(word);
    }

    Bitboard allowed(int from) const
    {
        return pinned & square_bit(from) ? check_mask & line_through[king_square][from]
                                         : check_mask;
    }

    void promotions(int from, int to)
    {
        for (int code : { queen, rook, bishop, knight })
            append_tried(promotion_word | promotion_bits(code) | make_move(from, to));
    }

    // Pawns that might take something: an enemy piece diagonally ahead, or any pawn on the
    // en-passant rank when a file is set. The pawn loop tests each move exactly; this only spares
    // it the pawns with nothing to take.
    Bitboard could_take() const
    {
        constexpr Bitboard enpassant_rank_set = white ? 0xFFULL << 32 : 0xFFULL << 24;
        const Bitboard toward_h_takers
            = white ? (them.all >> 9) & ~file_h : (them.all << 7) & ~file_h;
        const Bitboard toward_a_takers
            = white ? (them.all >> 7) & ~file_a : (them.all << 9) & ~file_a;
        return toward_h_takers | toward_a_takers
            | (board.enpassant_file != -1 ? enpassant_rank_set : 0);
    }

    void pawn_moves()
    {
        constexpr const PawnGeometry &g = pawn_geometry[white ? 0 : 1];
        constexpr int forward = g.forward, toward_h = g.toward_h, toward_a = g.toward_a;
        constexpr int double_rank = g.double_rank, enpassant_rank = g.enpassant_rank;
        constexpr int enpassant_row = g.enpassant_row;
        const int ep_file = board.enpassant_file;
        for (Bitboard pawns = captures ? us.pawns & could_take() : us.pawns; pawns;
             pawns &= pawns - 1) {
            const int from = first_square(pawns);
            const int file = square_file(from), rank = square_rank(from);
            const Bitboard targets = allowed(from);
            // The fast way takes no board with a pawn on its last rank.
            if (rank == g.promotion_rank) {
                if (!captures && !(occupied & square_bit(from + forward)))
                    if (targets & square_bit(from + forward)) promotions(from, from + forward);
                if (file != 7 && (them.all & targets & square_bit(from + toward_h)))
                    promotions(from, from + toward_h);
                if (file != 0 && (them.all & targets & square_bit(from + toward_a)))
                    promotions(from, from + toward_a);
                continue;
            }
            if (rank == enpassant_rank && file != 7 && ep_file == file + 1)
                append_tried(en_passant_word | make_move(from, enpassant_row + ep_file));
            if (rank == enpassant_rank && file != 0 && ep_file == file - 1)
                append_tried(en_passant_word | make_move(from, enpassant_row + ep_file));
            if (!captures && !(occupied & square_bit(from + forward))) {
                if (targets & square_bit(from + forward))
                    append_plain(
                        pawn_word | make_move(from, from + forward), from, from + forward, pawn);
                if (rank == double_rank && !(occupied & square_bit(from + 2 * forward))
                    && (targets & square_bit(from + 2 * forward)))
                    append_plain(pawn_word | make_move(from, from + 2 * forward), from,
                        from + 2 * forward, pawn);
            }
            if (file != 7 && (them.all & targets & square_bit(from + toward_h)))
                append_plain(
                    pawn_word | make_move(from, from + toward_h), from, from + toward_h, pawn);
            if (file != 0 && (them.all & targets & square_bit(from + toward_a)))
                append_plain(
                    pawn_word | make_move(from, from + toward_a), from, from + toward_a, pawn);
        }
    }

    template <int kind> void piece_moves(Bitboard pieces, Move kind_word)
    {
        for (; pieces; pieces &= pieces - 1) {
            const int from = first_square(pieces);
            Bitboard reach;
            if constexpr (kind == knight)
                reach = knight_attacks[from];
            else if constexpr (kind == rook)
                reach = rook_attacks(from, occupied);
            else if constexpr (kind == bishop)
                reach = bishop_attacks(from, occupied);
            else
                reach = rook_attacks(from, occupied) | bishop_attacks(from, occupied);
            for (Bitboard t = reach & (captures ? them.all : ~us.all) & allowed(from); t;
                 t &= t - 1) {
                const int to = first_square(t);
                append_plain(kind_word | make_move(from, to), from, to, kind);
            }
        }
    }

    void king_moves(bool in_check)
    {
        const Bitboard without_king = occupied & ~us.king;
        for (Bitboard t = king_attacks[king_square] & (captures ? them.all : ~us.all); t;
             t &= t - 1) {
            const int to = first_square(t);
            if (reaches<!white>(them, enemy_king_square, to, without_king)) continue;
            append_plain(king_word | make_move(king_square, to), king_square, to, king);
        }
        // Castling lands on an empty square: never a capture.
        if (in_check || captures) return;
        // Castling: the same tests in the same order as the generator. Once they pass, the king
        // stands safe on its new square too, since only squares beyond the corner open up.
        auto attacked
            = [&](int s) { return reaches<!white>(them, enemy_king_square, s, occupied); };
        auto castle = [&](std::int32_t right, int home, int corner, const int(&crossed)[3],
                          Bitboard between, Move word) {
            if (!right || us.king != square_bit(home) || !(us.rooks & square_bit(corner))) return;
            for (int s : crossed)
                if (attacked(s)) return;
            if (occupied & between) return;
            word = completed(word, move_to(word));
            if (checks_on_copy(word)) word |= move_gives_check;
            append(word);
        };
        constexpr const CastlingGeometry &oo = castling[white ? 0 : 1][0];
        constexpr const CastlingGeometry &ooo = castling[white ? 0 : 1][1];
        castle(white ? board.white_oo : board.black_oo, oo.king_from, oo.rook_from, oo.crossed,
            oo.between, white ? white_oo_word : black_oo_word);
        castle(white ? board.white_ooo : board.black_ooo, ooo.king_from, ooo.rook_from, ooo.crossed,
            ooo.between, white ? white_ooo_word : black_ooo_word);
    }

    // False for a board outside the cases the masks are proven for.
    bool run()
    {
        us = white ? white_army(board) : black_army(board);
        them = white ? black_army(board) : white_army(board);
        occupied = us.all | them.all;
        king_square = first_square(us.king);
        enemy_king_square = first_square(them.king);

        // Check bit: where each kind of ours would reach the enemy king.
        const Bitboard rook_lines = rook_attacks(enemy_king_square, occupied);
        const Bitboard bishop_lines = bishop_attacks(enemy_king_square, occupied);
        check_squares[no_piece] = 0;
        check_squares[pawn] = pawn_attackers_of<white>(enemy_king_square);
        check_squares[knight] = knight_attacks[enemy_king_square];
        check_squares[bishop] = bishop_lines;
        check_squares[rook] = rook_lines;
        check_squares[queen] = rook_lines | bishop_lines;
        check_squares[king] = 0;
        // The side not to move must not be in check already.
        if ((check_squares[pawn] & us.pawns) || (check_squares[knight] & us.knights)
            || (bishop_lines & (us.bishops | us.queens)) || (rook_lines & (us.rooks | us.queens))
            || (king_attacks[enemy_king_square] & us.king))
            return false;
        discoverers = lone_blockers(enemy_king_square, us, us.all, occupied);

        // Our king: checkers, and the pieces pinned to it.
        const Bitboard checkers = (knight_attacks[king_square] & them.knights)
            | (pawn_attackers_of<!white>(king_square) & them.pawns)
            | (rook_attacks(king_square, occupied) & (them.rooks | them.queens))
            | (bishop_attacks(king_square, occupied) & (them.bishops | them.queens));
        pinned = lone_blockers(king_square, them, us.all, occupied);
        check_mask = ~Bitboard(0);
        if (checkers) {
            check_mask = checkers | between_squares[king_square][first_square(checkers)];
            // Double check: only the king may move.
            if (checkers & (checkers - 1)) check_mask = 0;
        }

        pawn_moves();
        piece_moves<rook>(us.rooks, rook_word);
        piece_moves<knight>(us.knights, knight_word);
        piece_moves<bishop>(us.bishops, bishop_word);
        piece_moves<queen>(us.queens, queen_word);
        king_moves(checkers != 0);
        return true;
    }
};

inline bool one_square(Bitboard set) { return set && !(set & (set - 1)); }

inline bool ordinary(const Board &b)
{
    if (!one_square(b.white_king) || !one_square(b.black_king)) return false;
    if ((b.white_pawns | b.black_pawns) & 0xFF000000000000FFULL) return false;
    const Bitboard sets[12] = { b.white_rooks, b.white_knights, b.white_bishops, b.white_queens,
        b.white_king, b.white_pawns, b.black_rooks, b.black_knights, b.black_bishops,
        b.black_queens, b.black_king, b.black_pawns };
    // No square in two sets.
    Bitboard all = 0, stacked = 0;
    for (Bitboard s : sets) {
        stacked |= all & s;
        all |= s;
    }
    return !stacked;
}

} // namespace

namespace {

// More moves than the side to move can possibly have: a queen reaches at most 27 squares, a rook
// 14, a bishop 13, a knight 8, the king 8 and two castlings, a pawn about to promote 12 words,
// any other pawn 5.
int move_bound(const Board &b)
{
    const bool white = b.white_to_move;
    const Bitboard pawns = white ? b.white_pawns : b.black_pawns;
    const Bitboard last_but_one = white ? 0x00FF000000000000ULL : 0x000000000000FF00ULL;
    return 27 * square_count(white ? b.white_queens : b.black_queens)
        + 14 * square_count(white ? b.white_rooks : b.black_rooks)
        + 13 * square_count(white ? b.white_bishops : b.black_bishops)
        + 8 * square_count(white ? b.white_knights : b.black_knights) + 10
        + 12 * square_count(pawns & last_but_one) + 5 * square_count(pawns & ~last_but_one);
}

template <bool captures> bool generate_fast(const Board &board, MoveList *list)
{
    if (!ordinary(board)) return false;
    const int start = list->count;
    // The full list keeps only the moves that fit its slots, and the captures are those of the
    // kept moves; a board that might overflow takes the full way, so the cut falls alike.
    if (captures && start + move_bound(board) > max_moves) return false;
    bool done;
    if (board.white_to_move)
        done = generator<true, captures>(board, list).run();
    else
        done = generator<false, captures>(board, list).run();
    if (!done) list->count = start;
    return done;
}

} // namespace

bool generate_moves_fast(const Board &board, MoveList *list)
{
    return generate_fast<false>(board, list);
}

bool generate_captures_fast(const Board &board, MoveList *list)
{
    return generate_fast<true>(board, list);
}
