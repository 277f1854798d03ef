// The position command.
#include "frontend/position_command.h"

#include <cstdio>
#include <cstring>

#include "frontend/options.h"
#include "movegen/attacked.h"
#include "movegen/legal.h"
#include "position/apply.h"
#include "position/fen.h"
#include "position/output.h"
#include "position/text.h"
#include "search/tt.h"

namespace {

constexpr int fen_text_size = 256; // what the FEN reader reads of a record
constexpr long long most_half_moves = 0x7FFF; // more reads as this, far from the counter's top

// Whether the FEN record of `fields` (four to six) is a position: eight ranks of eight squares,
// readable fields, one king each, no pawn on the first or last rank, the side not to move not in
// check. Returns the reason it is not, or null, with the board in *board.
const char *fen_refusal(char *const fields[6], int count, Board *board)
{
    if (count < 4) return "it has fewer than four fields";
    int rank = 0, squares = 0;
    for (const char *c = fields[0]; *c; c++) {
        if (*c == '/') {
            if (squares != 8) return "a rank does not have eight squares";
            rank++;
            squares = 0;
        } else if (*c >= '1' && *c <= '8') {
            squares += *c - '0';
        } else if (std::strchr("pnbrqkPNBRQK", *c)) {
            squares++;
        } else {
            return "its placement has a character that is no piece and no count";
        }
    }
    if (rank != 7 || squares != 8) return "it does not have eight ranks of eight squares";
    if (std::strcmp(fields[1], "w") != 0 && std::strcmp(fields[1], "b") != 0)
        return "the side to move is not w or b";
    if (std::strcmp(fields[2], "-") != 0)
        for (const char *c = fields[2]; *c; c++)
            if (!std::strchr("KQkq", *c) || std::strchr(c + 1, *c))
                return "the castling field is not - or some of KQkq";
    const char *ep = fields[3];
    if (std::strcmp(ep, "-") != 0
        && !(ep[0] >= 'a' && ep[0] <= 'h' && (ep[1] == '3' || ep[1] == '6') && !ep[2]))
        return "the en-passant field is not - or a square of the third or sixth rank";
    long long counters[2] = { 0, 1 };
    for (int i = 4; i < count; i++)
        if (!read_number(fields[i], &counters[i - 4]) || counters[i - 4] < 0)
            return "a move counter is not a number";
    char text[fen_text_size];
    const int length = std::snprintf(
        text, sizeof text, "%s %s %s %s 0 1", fields[0], fields[1], fields[2], fields[3]);
    if (length >= fen_text_size) return "it is longer than a FEN record can be";
    *board = parse_fen(text);
    board->fifty_move
        = std::uint16_t(counters[0] < most_half_moves ? counters[0] : most_half_moves);
    // An en-passant square that no pawn of the side not to move has just passed reads as none,
    // as GUIs write it for every double step: the capture would take nothing.
    if (board->enpassant_file >= 0) {
        const int file = board->enpassant_file, white = board->white_to_move;
        const int passed = white ? 40 + file : 16 + file; // the square the pawn passed
        const Bitboard pawn = square_bit(white ? passed - 8 : passed + 8);
        const Bitboard empty = square_bit(passed) | square_bit(white ? passed + 8 : passed - 8);
        const Bitboard all = board->white_rooks | board->white_knights | board->white_bishops
            | board->white_queens | board->white_king | board->white_pawns | board->black_rooks
            | board->black_knights | board->black_bishops | board->black_queens | board->black_king
            | board->black_pawns;
        if (ep[1] != (white ? '6' : '3')
            || !((white ? board->black_pawns : board->white_pawns) & pawn) || (all & empty))
            board->enpassant_file = -1;
    }
    const Board &b = *board;
    if (!one_king_each(b)) return "it does not have one king of each colour";
    constexpr Bitboard edge_ranks = 0xFF000000000000FFull;
    if ((b.white_pawns | b.black_pawns) & edge_ranks)
        return "a pawn stands on the first or last rank";
    const int waiting_king = first_square(b.white_to_move ? b.black_king : b.white_king);
    if (b.white_to_move ? attacked_by_white(b, waiting_king) : attacked_by_black(b, waiting_king))
        return "the side not to move is in check";
    return nullptr;
}

void refuse(const char *format, const char *what)
{
    out_printf(format, what);
    out_flush();
}

// The standard dialect's position: checked, then set as a board and its legal moves.
void standard_position(char *rest)
{
    const char *kind = next_token(&rest, ' ');
    char *fields[6];
    int count = 0;
    char *word = next_token(&rest, ' ');
    Board board = start_board;
    if (kind && std::strcmp(kind, "fen") == 0) {
        for (; word && std::strcmp(word, "moves") != 0 && count < 6; word = next_token(&rest, ' '))
            fields[count++] = word;
        if (const char *why = fen_refusal(fields, count, &board)) {
            refuse("info string position refused: the FEN is not a position: %s\n", why);
            return;
        }
    } else if (!kind || std::strcmp(kind, "startpos") != 0) {
        refuse("info string position refused: it needs startpos or fen <fen>%s\n", "");
        return;
    }
    if (word && std::strcmp(word, "moves") != 0) {
        refuse("info string position refused: '%.100s' where moves or the end was due\n", word);
        return;
    }
    start_game(board);
    while ((word = next_token(&rest, ' '))) {
        const Move move = legal_move_named(current_board, word);
        if (!move) {
            refuse("info string move %.100s is not legal here; the moves before it stand\n", word);
            break;
        }
        play_game_move(move);
    }
}

} // namespace

Move legal_move_named(const Board &board, const char *text)
{
    char lower[8];
    int n = 0;
    for (; text[n] && n < 7; n++) lower[n] = char(text[n] | 0x20);
    lower[n] = '\0';
    if (text[n]) return 0;
    MoveList list;
    list.count = 0;
    generate_moves(board, &list);
    char name[8];
    for (int i = 0; i < list.count; i++) {
        move_to_text(list.moves[i], name);
        if (std::strcmp(name, lower) == 0) return list.moves[i];
    }
    return 0;
}

int run_position(Session *session, const char *line, char *rest)
{
    if (session->dialect->standard) {
        // The table keeps what it learnt: the next position is most often the last one and a
        // move or two.
        standard_position(rest);
        return 0;
    }
    const char *word = next_token(&rest, ' ');
    if (!word) return 0;
    const bool fen = std::strcmp(word, "fen") == 0, start = std::strcmp(word, "startpos") == 0;
    if (fen) set_position_fen(line);
    if (start) set_position_start(line);
    // The hash table keeps nothing across a new position.
    if (fen || start) hash_clear();
    return 0;
}
