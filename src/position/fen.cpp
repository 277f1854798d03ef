// FEN reader and the position command. Nothing here checks legality and nothing is reported:
// the GUI is trusted, and garbled text is read as far as it goes.
#include "position/fen.h"

#include <cctype>
#include <cstring>

#include "position/apply.h"
#include "position/text.h"
#include "position/zobrist.h"

namespace {

constexpr int line_size = 16384, fen_size = 256;

// First place of `word` in `text`, in any mix of case; null if absent.
const char *find_any_case(const char *text, const char *word)
{
    std::size_t length = std::strlen(word);
    for (; *text; text++)
        if (strncasecmp(text, word, length) == 0) return text;
    return nullptr;
}

// Splits `text` in place at each `separator`, at most `most` pieces; returns how many.
int split(char *text, char separator, char **pieces, int most)
{
    int count = 0;
    pieces[count++] = text;
    for (char *c = text; *c && count < most; c++)
        if (*c == separator) {
            *c = '\0';
            pieces[count++] = c + 1;
        }
    return count;
}

// The set a FEN piece letter names (upper case white), null for any other character.
Bitboard *piece_set(Board &b, char letter)
{
    for (int code = pawn; code <= queen; code++) {
        if (letter == piece_letters[code - 1]) return &(b.*piece_sets[1][code - 1]);
        if (letter == piece_letters[code - 1] - 'a' + 'A') return &(b.*piece_sets[0][code - 1]);
    }
    return nullptr;
}

// Sets up `board` with a one-entry history, then plays the moves of `moves` (null for none).
void start_and_play(const Board &board, char *moves)
{
    start_game(board);
    if (!moves) return;
    trim_blanks(moves);
    for (char *token; (token = next_token(&moves, ' '));) {
        // A token shorter than a move (four characters) is skipped: nothing is played for it.
        if (std::strlen(token) < 4) continue;
        play_game_move(text_to_move(token));
    }
}

} // namespace

void trim_blanks(char *text)
{
    std::size_t start = 0, end = std::strlen(text);
    while (start < end && (text[start] == ' ' || text[start] == '\t')) start++;
    while (end > start && (text[end - 1] == ' ' || text[end - 1] == '\t')) end--;
    std::memmove(text, text + start, end - start);
    text[end - start] = '\0';
}

Board parse_fen(const char *text)
{
    Board board {};
    char buffer[fen_size];
    copy_cut(buffer, text, sizeof buffer);
    char *fields[8];
    if (split(buffer, ' ', fields, 8) < 5) return board;
    char *rows[8];
    // A placement of fewer than eight rows is read like a record of too few fields.
    if (split(fields[0], '/', rows, 8) < 8) return Board {};
    // Rows past the eighth are ignored.
    if (char *ninth = std::strchr(rows[7], '/')) *ninth = '\0';
    for (int row = 0; row < 8; row++) {
        int file = 0;
        const int base = 56 - 8 * row;
        // Rows longer than eight squares run on into the rank above, modulo 64.
        for (const char *c = rows[row]; *c; c++) {
            if (*c >= '1' && *c <= '8') {
                file += *c - '0';
                continue;
            }
            if (Bitboard *set = piece_set(board, *c)) *set |= square_bit((base + file) & 63);
            file++;
        }
    }
    board.white_to_move = fields[1][0] == 'w' || fields[1][0] == 'W';
    for (const char *c = fields[2]; *c; c++) {
        if (*c == 'K') board.white_oo = 1;
        if (*c == 'Q') board.white_ooo = 1;
        if (*c == 'k') board.black_oo = 1;
        if (*c == 'q') board.black_ooo = 1;
    }
    // The file as read, unchecked; a file outside a-h takes part in no key and no move.
    board.enpassant_file = fields[3][0] == '-' ? -1 : std::int8_t(fields[3][0] - 'a');
    board.fifty_move = std::uint8_t(text_to_int(fields[4]));
    return board;
}

void set_position_fen(const char *line)
{
    static char buffer[line_size];
    copy_cut(buffer, line, sizeof buffer);
    if (!buffer[0]) return;
    char *argument = const_cast<char *>(find_any_case(buffer, "fen"));
    if (!argument) return;
    argument += 3;
    char *moves = std::strstr(argument, "moves");
    if (moves) {
        *moves = '\0';
        moves += 5;
    }
    trim_blanks(argument);
    start_and_play(parse_fen(argument), moves);
}

void set_position_start(const char *line)
{
    static char buffer[line_size];
    copy_cut(buffer, line, sizeof buffer);
    if (!buffer[0]) return;
    char *argument = const_cast<char *>(find_any_case(buffer, "startpos"));
    if (!argument) return;
    argument += 8;
    trim_blanks(argument);
    char *moves = std::strstr(argument, "moves");
    start_and_play(start_board, moves ? moves + 5 : nullptr);
}

void new_game()
{
    current_key = full_key(&current_board);
    clear_key_history();
    push_key(current_key);
}

void start_game(const Board &board)
{
    current_board = board;
    new_game();
}

void play_game_move(Move move)
{
    apply_move_keyed(&current_board, move, &current_key);
    push_key(current_key);
    // A game longer than the counter's range without a capture or a pawn move stays at its top
    // half, where every reading of it is a draw and a search's plies can't make it wrap.
    if (current_board.fifty_move > 0x7FFF) current_board.fifty_move = 0x7FFF;
}
