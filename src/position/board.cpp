// Board helpers and the text form of a move.
#include "position/board.h"

#include <cctype>

Board current_board = start_board;
std::uint64_t current_key = 0;

char piece_letter(int code) { return code >= 1 && code <= 6 ? piece_letters[code - 1] : ' '; }

int promotion_code(char letter)
{
    switch (letter) {
    case 'b':
        return bishop;
    case 'k':
        return king;
    case 'n':
        return knight;
    case 'p':
        return pawn;
    case 'q':
        return queen;
    case 'r':
        return rook;
    default:
        return no_piece;
    }
}

void move_to_text(Move move, char *text)
{
    int from = move_from(move), to = move_to(move);
    text[0] = char('a' + square_file(from));
    text[1] = char('1' + square_rank(from));
    text[2] = char('a' + square_file(to));
    text[3] = char('1' + square_rank(to));
    int length = 4;
    if (move & move_promoted) text[length++] = piece_letter(move_promotion(move) & 7);
    text[length] = '\0';
}

Move text_to_move(const char *text)
{
    // Each difference is a signed 8-bit number widened to 32 bits, so a character below 'A' or
    // '1' sets every high bit of the word: the fields fall as they may, never out of bounds.
    auto field = [](int c, int base) { return Move(std::int32_t(std::int8_t(c - base))); };
    Move move = field(std::toupper(static_cast<unsigned char>(text[0])), 'A');
    move |= field(text[1], '1') << 3;
    move |= field(std::toupper(static_cast<unsigned char>(text[2])), 'A') << 6;
    move |= field(text[3], '1') << 9;
    if (text[4] != '\0') move |= move_promoted | promotion_bits(promotion_code(text[4]));
    return move;
}
