// Legal moves. The general way runs the piece generators, throws out what leaves the own king
// attacked, and completes the capture, captured and check fields of the rest by trying each
// move on a copy; ordinary positions take the quicker way of fast_legal.h, to the same words.
#include "movegen/legal.h"

#include "movegen/attacked.h"
#include "movegen/attacks.h"
#include "movegen/fast_legal.h"
#include "movegen/generate.h"
#include "position/apply.h"

namespace {

PseudoMoveList pseudo;

// Whether `word` leaves the mover's own king attacked. A move off every line through the king
// can't uncover it, and one off such a line can only uncover that line; king moves, en passant
// (it takes a second pawn off another line) and every move out of check have the king's square
// tested in full after the move. Without a king there is nothing to uncover.
bool leaves_king_attacked(const Board &board, Move word, int own_king, bool in_check)
{
    const bool white = board.white_to_move;
    const int from = move_from(word);
    Board copy = board;
    if (!in_check && !(word & move_en_passant) && from != own_king) {
        const int direction = own_king < 64 ? ray_direction[own_king][from] : 0;
        if (!direction) return false;
        apply_move(&copy, word);
        return white ? white_king_line_attacked(copy, own_king, direction)
                     : black_king_line_attacked(copy, own_king, direction);
    }
    apply_move(&copy, word);
    const int king_now = first_square(white ? copy.white_king : copy.black_king);
    return white ? attacked_by_black(copy, king_now) : attacked_by_white(copy, king_now);
}

// `word` with its capture bit, captured piece and check bit set.
Move completed_word(const Board &board, Move word, const std::uint8_t *enemy_occupants)
{
    const bool white = board.white_to_move;
    if (word & move_en_passant) word |= move_capture;
    const int captured = enemy_occupants[move_to(word)];
    if (captured) word |= captured_bits(captured) | move_capture;
    word &= ~move_gives_check;
    Board copy = board;
    apply_move(&copy, word);
    const int enemy_king = first_square(white ? copy.black_king : copy.white_king);
    if (white ? attacked_by_white(copy, enemy_king) : attacked_by_black(copy, enemy_king))
        word |= move_gives_check;
    return word;
}

// Every board, however garbled: the generators write every pseudo-legal word, and each is tried.
void generate_by_trial(const Board &board, MoveList *list)
{
    set_generator_state(board, &pseudo);

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
    const bool in_check
        = white ? attacked_by_black(board, own_king) : attacked_by_white(board, own_king);
    const std::uint8_t *enemy_occupants = white ? black_occupants : white_occupants;
    for (int i = 0; i < pseudo.count;) {
        if (leaves_king_attacked(board, pseudo.moves[i], own_king, in_check)) {
            remove_move(&pseudo, i);
            continue;
        }
        pseudo.moves[i] = completed_word(board, pseudo.moves[i], enemy_occupants);
        i++;
    }

    for (int i = 0; i < pseudo.count && list->count < max_moves; i++)
        list->moves[list->count++] = pseudo.moves[i];
}

} // namespace

void generate_moves(Board board, MoveList *list)
{
    if (list->count < 0 || list->count > max_moves) list->count = 0;
    // Positions a game reaches take the fast way; what it declines is tried move by move.
    if (generate_moves_fast(board, list)) return;
    generate_by_trial(board, list);
}

namespace {

// Keeps the words from `start` on that have the capture bit, in order.
void keep_captures(MoveList *list, int start)
{
    int kept = start;
    for (int i = start; i < list->count; i++)
        if (list->moves[i] & move_capture) list->moves[kept++] = list->moves[i];
    list->count = kept;
}

} // namespace

void generate_captures(Board board, MoveList *list)
{
    const int start = list->count >= 0 && list->count <= max_moves ? list->count : 0;
    list->count = start;
    if (generate_captures_fast(board, list)) return;
    generate_moves(board, list);
    keep_captures(list, start);
}

void generate_moves_literal(Board board, MoveList *list)
{
    if (list->count < 0 || list->count > max_moves) list->count = 0;
    generate_by_trial(board, list);
}

void generate_captures_literal(Board board, MoveList *list)
{
    if (list->count < 0 || list->count > max_moves) list->count = 0;
    const int start = list->count;
    generate_by_trial(board, list);
    keep_captures(list, start);
}
