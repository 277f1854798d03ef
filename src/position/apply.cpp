// The move appliers. Both colours and both appliers share one body: `white` picks the sets and
// squares of the mover, `keyed` adds the key updates and the key-only rules.
#include "position/apply.h"

#include "position/zobrist.h"

std::uint64_t key_history[key_history_size];
std::int32_t key_history_count = 0;

namespace {

using Set = Bitboard Board::*;

// The mover's geometry; black mirrors white by ranks.
template <bool white> struct side {
    static constexpr Set pawns = white ? &Board::white_pawns : &Board::black_pawns;
    static constexpr Set rooks = white ? &Board::white_rooks : &Board::black_rooks;
    static constexpr Set knights = white ? &Board::white_knights : &Board::black_knights;
    static constexpr Set bishops = white ? &Board::white_bishops : &Board::black_bishops;
    static constexpr Set queens = white ? &Board::white_queens : &Board::black_queens;
    static constexpr Set king = white ? &Board::white_king : &Board::black_king;
    static constexpr int colour_kind = white ? 1 : 0;
    static constexpr const PawnGeometry &pawn_way = pawn_geometry[white ? 0 : 1];
    static constexpr int enpassant_from_rank = pawn_way.enpassant_rank;
    static constexpr int captured_pawn_offset = -pawn_way.forward;
    static constexpr int double_from_rank = pawn_way.double_rank;
    static constexpr int double_to_rank = pawn_way.double_rank + 2 * pawn_way.forward / 8;
    static constexpr const CastlingGeometry &king_side = castling[white ? 0 : 1][0];
    static constexpr const CastlingGeometry &queen_side = castling[white ? 0 : 1][1];
    static constexpr int queen_corner = queen_side.rook_from, king_corner = king_side.rook_from;
    static constexpr int queen_arrival = queen_side.king_to, king_arrival = king_side.king_to;
    static constexpr int queen_rook_to = queen_side.rook_to, king_rook_to = king_side.rook_to;
    static constexpr std::uint64_t queen_rook_key = white ? castle_rook_a1_d1 : castle_rook_a8_d8;
    static constexpr std::uint64_t king_rook_key = white ? castle_rook_h1_f1 : castle_rook_h8_f8;
    static constexpr std::int32_t Board::*oo = white ? &Board::white_oo : &Board::black_oo;
    static constexpr std::int32_t Board::*ooo = white ? &Board::white_ooo : &Board::black_ooo;
    static constexpr int oo_entry = white ? zobrist_white_oo : zobrist_black_oo;
    static constexpr int ooo_entry = white ? zobrist_white_ooo : zobrist_black_ooo;
};

// One application of a move, in named steps. The steps run in the order of apply(); each reads
// and writes the shared record below.
template <bool white, bool keyed> struct applier {
    using us = side<white>;
    using them = side<!white>;

    Board *b;
    Move move;
    int from, to;
    Bitboard from_bit, to_bit;
    int old_file;
    // Whether the old file's entry is in the key: always so for boards reached by this applier;
    // a FEN may name a file no pawn can use, and its entry is then absent (kept equal to full_key).
    bool old_file_keyed;
    bool new_file = false;
    // Where a capture takes a piece: `to`, or behind it en passant. A bit shifted off the board
    // (en passant onto the last rank of a garbled board) takes nothing.
    int capture_square;
    Bitboard capture_bit;
    std::uint64_t k;

    applier(Board *board, Move m, const std::uint64_t *key)
        : b(board)
        , move(m)
        , from(move_from(m))
        , to(move_to(m))
        , from_bit(square_bit(from))
        , to_bit(square_bit(to))
        , old_file(board->enpassant_file)
        , old_file_keyed(keyed && enpassant_in_key(*board))
        , capture_square(to)
        , capture_bit(to_bit)
        , k(keyed ? *key : 0)
    {
    }

    // The mover, looked for in this order, goes from `from` to `to`; returns its place in the
    // order, -1 when nothing stands on `from` (then nothing moves).
    int move_mover()
    {
        static constexpr Set order[6]
            = { us::pawns, us::rooks, us::king, us::knights, us::bishops, us::queens };
        static constexpr int kinds[6]
            = { kind_pawn, kind_rook, kind_king, kind_knight, kind_bishop, kind_queen };
        for (int i = 0; i < 6; i++)
            if (b->*order[i] & from_bit) {
                Bitboard &set = b->*order[i];
                set = (set & ~from_bit) | to_bit;
                if constexpr (keyed) {
                    const int kind = kinds[i] + us::colour_kind;
                    k ^= piece_key(kind, from) ^ piece_key(kind, to);
                }
                return i;
            }
        return -1;
    }

    // En passant moves the capture behind `to`; a double step sets the file (the keyed applier
    // only when an enemy pawn stands beside the arrival square).
    void pawn_steps()
    {
        b->fifty_move = 0;
        if (square_file(from) != square_file(to) && square_file(to) == old_file
            && square_rank(from) == us::enpassant_from_rank) {
            capture_square = to + us::captured_pawn_offset;
            capture_bit = white ? to_bit >> 8 : to_bit << 8;
        } else if (square_rank(from) == us::double_from_rank
            && square_rank(to) == us::double_to_rank) {
            bool beside = true;
            if constexpr (keyed) {
                const int file = square_file(to);
                Bitboard squares = 0;
                if (file > 0) squares |= square_bit(to - 1);
                if (file < 7) squares |= square_bit(to + 1);
                beside = (b->*them::pawns & squares) != 0;
            }
            if (beside) {
                b->enpassant_file = std::int8_t(square_file(from));
                new_file = true;
                if constexpr (keyed) k ^= enpassant_key(square_file(from));
            }
        }
    }

    // The pawn on `to` becomes the promotion piece: decided by the promoted bit, or in the keyed
    // applier by a non-zero promotion field. A code that names no piece leaves the square empty.
    void promote()
    {
        const int code = move_promotion(move);
        const bool promotes = keyed ? code != 0 : (move & move_promoted) != 0;
        if (!promotes) return;
        b->*us::pawns &= ~to_bit;
        if constexpr (keyed) k ^= piece_key(kind_pawn + us::colour_kind, to);
        Set piece = nullptr;
        int kind = 0;
        switch (code) {
        case rook:
            piece = us::rooks, kind = kind_rook;
            break;
        case bishop:
            piece = us::bishops, kind = kind_bishop;
            break;
        case knight:
            piece = us::knights, kind = kind_knight;
            break;
        case queen:
            piece = us::queens, kind = kind_queen;
            break;
        default:
            break;
        }
        if (piece) {
            b->*piece |= to_bit;
            if constexpr (keyed) k ^= piece_key(kind + us::colour_kind, to);
        }
    }

    void lose_right(std::int32_t Board::*right, int entry)
    {
        if (!(b->*right)) return;
        b->*right = 0;
        if constexpr (keyed) k ^= zobrist_table[entry];
    }

    // A rook leaving a corner gives up that side's right.
    void rook_leaves()
    {
        if (from == us::queen_corner) lose_right(us::ooo, us::ooo_entry);
        if (from == us::king_corner) lose_right(us::oo, us::oo_entry);
    }

    // Castling moves the rook too; any king move gives up both rights.
    void king_steps()
    {
        if ((to - from == 2 || from - to == 2)
            && (to == us::queen_arrival || to == us::king_arrival)) {
            const bool king_side = to == us::king_arrival;
            const int corner = king_side ? us::king_corner : us::queen_corner;
            const int rook_to = king_side ? us::king_rook_to : us::queen_rook_to;
            b->*us::rooks = (b->*us::rooks & ~square_bit(corner)) | square_bit(rook_to);
            if constexpr (keyed) k ^= king_side ? us::king_rook_key : us::queen_rook_key;
        }
        lose_right(us::oo, us::oo_entry);
        lose_right(us::ooo, us::ooo_entry);
    }

    // A capture takes the enemy piece off; a king is never taken off its set.
    void take_captured()
    {
        static constexpr Set victims[5]
            = { them::pawns, them::rooks, them::knights, them::bishops, them::queens };
        static constexpr int victim_kinds[5]
            = { kind_pawn, kind_rook, kind_knight, kind_bishop, kind_queen };
        if (b->*them::king & capture_bit) b->fifty_move = 0;
        for (int i = 0; i < 5; i++)
            if (b->*victims[i] & capture_bit) {
                b->fifty_move = 0;
                b->*victims[i] &= ~capture_bit;
                if constexpr (keyed)
                    k ^= piece_key(victim_kinds[i] + them::colour_kind, capture_square);
                break;
            }
    }

    // The turn passes; the old file goes unless this move set a new one.
    void finish(std::uint64_t *key)
    {
        b->white_to_move = !white;
        if constexpr (keyed) {
            k ^= zobrist_table[zobrist_white_to_move];
            if (old_file_keyed) k ^= enpassant_key(old_file);
            *key = k;
        }
        if (!new_file) b->enpassant_file = -1;
    }
};

template <bool white, bool keyed> void apply(Board *b, Move move, std::uint64_t *key)
{
    applier<white, keyed> a(b, move, key);
    b->fifty_move++;
    switch (a.move_mover()) {
    case 0: // pawn
        a.pawn_steps();
        a.promote();
        break;
    case 1:
        a.rook_leaves();
        break;
    case 2:
        a.king_steps();
        break;
    default:
        break;
    }
    a.take_captured();
    a.finish(key);
}

} // namespace

void apply_move(Board *board, Move move)
{
    if (board->white_to_move)
        apply<true, false>(board, move, nullptr);
    else
        apply<false, false>(board, move, nullptr);
}

void apply_move_keyed(Board *board, Move move, std::uint64_t *key)
{
    if (board->white_to_move)
        apply<true, true>(board, move, key);
    else
        apply<false, true>(board, move, key);
}

std::uint64_t likely_key_after(std::uint64_t key, bool white, Move move)
{
    const int us = white ? 1 : 0; // the white kind is the black one plus 1
    // A code outside pawn..queen names no piece and has no entry.
    const auto entry = [](int code, int colour_kind, int square) -> std::uint64_t {
        return code >= pawn && code <= queen
            ? piece_key(zobrist_kind_of[code - 1] + colour_kind, square)
            : 0;
    };
    const int mover = move_mover(move), to = move_to(move);
    const int arriving = (move & move_promoted) ? move_promotion(move) : mover;
    key ^= zobrist_table[zobrist_white_to_move] ^ entry(mover, us, move_from(move))
        ^ entry(arriving, us, to);
    if ((move & move_capture) && !(move & move_en_passant))
        key ^= entry(move_captured(move), 1 - us, to);
    return key;
}

void apply_null_move(Board *board, std::uint64_t *key)
{
    if (board->enpassant_file != -1) {
        if (enpassant_in_key(*board)) *key ^= enpassant_key(board->enpassant_file);
        board->enpassant_file = -1;
    }
    board->white_to_move = !board->white_to_move;
    *key ^= zobrist_table[zobrist_white_to_move];
}

namespace {

// Keys pushed when the history was full: they were not kept, and their pops take nothing off.
std::int32_t keys_not_kept = 0;

} // namespace

void push_key(std::uint64_t key)
{
    if (key_history_count < key_history_size)
        key_history[key_history_count++] = key;
    else
        keys_not_kept++;
}

void pop_key()
{
    if (keys_not_kept > 0)
        keys_not_kept--;
    else if (key_history_count > 0)
        key_history_count--;
}

void clear_key_history()
{
    key_history_count = 0;
    keys_not_kept = 0;
}

int is_third_repetition(std::uint64_t key)
{
    int seen = 0;
    for (int i = 0; i < key_history_count; i++)
        if (key_history[i] == key && ++seen > 2) return 1;
    return 0;
}
