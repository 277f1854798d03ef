// The board picture and the console.
#include "frontend/display.h"

#include <cstdio>
#include <cstring>

#include "platform/platform.h"
#include "position/board.h"
#include "position/output.h"

void print_board(bool whole_count)
{
    // Ten lines of 20 characters and CR LF; the dot of a square sits at 3 + 2 * file of the line
    // of its rank, counted from rank 8.
    constexpr int line_length = 22;
    char picture[10 * line_length + 1];
    for (int row = 0; row < 8; row++)
        std::snprintf(
            picture + row * line_length, line_length + 1, "%d| . . . . . . . . |\r\n", 8 - row);
    std::memcpy(picture + 8 * line_length, "  ________________  \r\n", line_length);
    std::memcpy(picture + 9 * line_length, "   a b c d e f g h  \r\n", line_length);
    picture[10 * line_length] = '\0';

    // Where garbled sets overlap, the later letter shows: black over white, and within a colour
    // in this order.
    const Board &b = current_board;
    static constexpr int order[6] = { pawn, rook, knight, bishop, queen, king };
    for (int colour = 0; colour < 2; colour++)
        for (int code : order) {
            const char lower = piece_letters[code - 1];
            const char letter = colour == 0 ? char(lower - 'a' + 'A') : lower;
            for (Bitboard set = b.*piece_sets[colour][code - 1]; set; set &= set - 1) {
                const int square = first_square(set);
                picture[(7 - square_rank(square)) * line_length + 3 + 2 * square_file(square)]
                    = letter;
            }
        }

    auto flag = [](std::int32_t value) { return value ? "True" : "False"; };
    out_puts("");
    out_flush();
    out_puts(picture);
    out_flush();
    out_printf("White oo: %s   White ooo: %s\n", flag(b.white_oo), flag(b.white_ooo));
    out_flush();
    out_printf("Black oo: %s   Black ooo: %s\n", flag(b.black_oo), flag(b.black_ooo));
    out_flush();
    out_printf("Fifty Move Variable = %d\n",
        whole_count ? int(b.fifty_move) : int(std::uint8_t(b.fifty_move)));
    out_flush();
    out_printf("Enpassant Rank No = %d\n", int(b.enpassant_file));
    out_flush();
    out_puts(b.white_to_move ? "Side To Move = White" : "Side To Move = Black");
    out_flush();
}

void clear_console() { clear_terminal(); }
