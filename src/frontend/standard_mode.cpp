// The standard UCI mode (korvane --uci): what GUIs' analysis boards, tournament managers and
// scripts expect of a UCI engine. Lines end in LF; `uci` lists the options; a search runs to
// `stop` when asked to and reports mates as mates; refused input is answered with one
// `info string` line and changes nothing. The debugging commands are the default mode's.
#include "frontend/standard_mode.h"

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "control/input.h"
#include "control/search_limits.h"
#include "frontend/commands.h"
#include "frontend/move_commands.h"
#include "movegen/attacked.h"
#include "movegen/legal.h"
#include "platform/platform.h"
#include "position/apply.h"
#include "position/fen.h"
#include "position/output.h"
#include "position/text.h"
#include "search/alpha_beta.h"
#include "search/iterate.h"
#include "search/ordering.h"
#include "search/tt.h"

namespace {

constexpr int default_hash_mib = 512;
constexpr std::int32_t mate_bound = mate_score - 1000; // scores beyond it are mates
int multipv = 1;

// Reads `text` whole as a decimal integer into *value. Returns false for anything else.
bool read_number(const char *text, long long *value)
{
    if (!text || !*text) return false;
    char *end = nullptr;
    errno = 0;
    *value = std::strtoll(text, &end, 10);
    return *end == '\0' && errno == 0;
}

bool same_words(const char *a, const char *b)
{
    for (; *a && *b; a++, b++)
        if ((*a | 0x20) != (*b | 0x20)) return false;
    return *a == *b;
}

// The table's sizes are powers of two: the largest such size the machine's memory allows, in
// MiB, is the Hash option's ceiling.
long long largest_hash_mib()
{
    const std::uint64_t memory = physical_memory_bytes() >> 20;
    return static_cast<long long>(std::bit_floor(memory ? memory : 4096));
}

void print_line(const analysis_line &l)
{
    char score[32];
    if (l.score > mate_bound)
        std::snprintf(score, sizeof score, "mate %d", (mate_score - l.score + 1) / 2);
    else if (l.score < -mate_bound)
        std::snprintf(score, sizeof score, "mate -%d", (mate_score + l.score) / 2);
    else
        std::snprintf(score, sizeof score, "cp %d", l.score);
    char multipv_field[24] = "";
    if (multipv > 1) std::snprintf(multipv_field, sizeof multipv_field, " multipv %d", l.multipv);
    const std::uint64_t time = std::uint64_t(l.time_ms > 0 ? l.time_ms : 0);
    out_printf("info depth %d%s score %s nodes %llu nps %llu hashfull %d time %llu pv %s\n",
        l.depth, multipv_field, score, static_cast<unsigned long long>(l.nodes),
        static_cast<unsigned long long>(l.nodes * 1000 / (time ? time : 1)), hash_full_permille(),
        static_cast<unsigned long long>(time), l.pv);
    out_flush();
}

int run_uci(char *)
{
    out_puts("id name Korvane 1.0");
    out_puts("id author Brennik Dolmar");
    out_printf("option name Hash type spin default %d min 1 max %lld\n", default_hash_mib,
        largest_hash_mib());
    out_puts("option name Clear Hash type button");
    out_printf("option name MultiPV type spin default 1 min 1 max %d\n", most_lines);
    // Testing frameworks set Threads for every engine; this one searches on one.
    out_puts("option name Threads type spin default 1 min 1 max 1");
    out_puts("uciok");
    out_flush();
    return 0;
}

// `setoption name <name> [value <value>]`; names in any case.
int run_setoption(char *rest)
{
    char name[256] = "", *value = nullptr;
    const char *word = next_token(&rest, ' ');
    if (!word || std::strcmp(word, "name") != 0) {
        out_puts("info string setoption needs: setoption name <name> [value <value>]");
        return 0;
    }
    while ((word = next_token(&rest, ' '))) {
        if (std::strcmp(word, "value") == 0) {
            value = next_token(&rest, ' ');
            break;
        }
        if (name[0] && std::strlen(name) + 1 < sizeof name) std::strcat(name, " ");
        if (std::strlen(name) + std::strlen(word) < sizeof name) std::strcat(name, word);
    }
    long long number = 0;
    const bool numeric = read_number(value, &number);
    if (same_words(name, "Clear Hash")) {
        hash_clear();
    } else if (same_words(name, "Hash")) {
        const long long most = largest_hash_mib();
        if (!numeric || number < 1 || number > most) {
            out_printf("info string Hash takes a size in MiB from 1 to the uci answer's max, not "
                       "'%s'\n",
                value ? value : "");
            return 0;
        }
        long long mib = static_cast<long long>(std::bit_floor(std::uint64_t(number)));
        if (mib != number)
            out_printf("info string Hash %lld MiB is taken as %lld MiB (the table's sizes are "
                       "powers of two)\n",
                number, mib);
        // Should the memory not come, ever smaller tables are tried.
        const long long asked = mib;
        while (!hash_resize(std::uint64_t(mib) << 20) && mib > 1) mib /= 2;
        if (!hash_table) {
            out_puts("info string no memory for a hash table");
            std::exit(1);
        }
        if (mib < asked) out_printf("info string Hash is %lld MiB: no memory for more\n", mib);
    } else if (same_words(name, "MultiPV")) {
        if (!numeric || number < 1 || number > most_lines) {
            out_printf("info string MultiPV takes a number from 1 to %d, not '%s'\n", most_lines,
                value ? value : "");
            return 0;
        }
        multipv = int(number);
    } else if (same_words(name, "Threads")) {
        if (!numeric || number != 1)
            out_printf("info string Threads can only be 1, not '%s'\n", value ? value : "");
    } else {
        out_printf("info string no option named '%s'\n", name);
    }
    return 0;
}

// Whether the FEN record of `fields` (four to six) is a position: eight ranks of eight squares,
// readable fields, one king each, no pawn on the first or last rank, the side not to move not in
// check. Returns the reason it is not, or null; the six fields (counters 0 and 1 when missing)
// go to `text` (fen_text_size bytes) and the board to *board.
constexpr int fen_text_size = 256; // what the FEN reader reads of a record

const char *fen_refusal(char *const fields[6], int count, char *text, Board *board)
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
    long long number;
    for (int i = 4; i < count; i++)
        if (!read_number(fields[i], &number) || number < 0) return "a move counter is not a number";
    const int length = std::snprintf(text, fen_text_size, "%s %s %s %s %s %s", fields[0], fields[1],
        fields[2], fields[3], count > 4 ? fields[4] : "0", count > 5 ? fields[5] : "1");
    if (length >= fen_text_size) return "it is longer than a FEN record can be";
    *board = parse_fen(text);
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

// The legal move of `board` written `text` (any case), 0 when there is none.
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

// `position startpos|fen <fen> [moves ...]`: a FEN that is not a position is refused and the
// position stays; the moves are played up to the first that is not legal, which is refused.
int run_position(char *rest)
{
    static char line[command_size];
    const char *kind = next_token(&rest, ' ');
    char *fields[6];
    int count = 0;
    char *word = next_token(&rest, ' ');
    Board board = start_board;
    int length;
    if (kind && std::strcmp(kind, "fen") == 0) {
        for (; word && std::strcmp(word, "moves") != 0 && count < 6; word = next_token(&rest, ' '))
            fields[count++] = word;
        char fen_text[fen_text_size];
        if (const char *why = fen_refusal(fields, count, fen_text, &board)) {
            out_printf("info string position refused: the FEN is not a position: %s\n", why);
            return 0;
        }
        length = std::snprintf(line, sizeof line, "position fen %s moves", fen_text);
    } else if (kind && std::strcmp(kind, "startpos") == 0) {
        length = std::snprintf(line, sizeof line, "position startpos moves");
    } else {
        out_puts("info string position refused: it needs startpos or fen <fen>");
        return 0;
    }
    if (word && std::strcmp(word, "moves") != 0) {
        out_printf("info string position refused: '%s' where moves or the end was due\n", word);
        return 0;
    }
    // The legal moves, as the engine writes them, go to the line the game is set up from, as far
    // as a command line holds them.
    while ((word = next_token(&rest, ' '))) {
        const Move move = legal_move_named(board, word);
        if (!move) {
            out_printf("info string move %s is not legal here; the moves before it stand\n", word);
            break;
        }
        char name[8];
        move_to_text(move, name);
        const int size = int(std::strlen(name));
        if (length + 1 + size >= int(sizeof line)) {
            out_printf(
                "info string move %s makes the line too long; the moves before it stand\n", word);
            break;
        }
        apply_move(&board, move);
        line[length++] = ' ';
        std::memcpy(line + length, name, std::size_t(size) + 1);
        length += size;
    }
    if (kind[0] == 'f')
        set_position_fen(line);
    else
        set_position_start(line);
    hash_clear();
    return 0;
}

// `go` with depth, nodes, movetime, mate, the clock words, infinite, ponder and searchmoves.
// Every limit given holds; without any the search runs until `stop` or its deepest iteration.
int run_go(char *rest)
{
    struct number_word {
        const char *name;
        long long lowest;
        long long value;
        bool seen;
    } numbers[] = { { "depth", 1, 0, false }, { "nodes", 1, 0, false }, { "movetime", 0, 0, false },
        { "mate", 1, 0, false }, { "wtime", -2147483647, 0, false },
        { "btime", -2147483647, 0, false }, { "winc", 0, 0, false }, { "binc", 0, 0, false },
        { "movestogo", 1, 0, false } };
    bool infinite = false, ponder = false, moves_given = false; // moves_given: after searchmoves
    int given = 0;
    Move chosen[max_moves];
    for (char *word; (word = next_token(&rest, ' '));) {
        bool known = false;
        for (number_word &n : numbers) {
            if (std::strcmp(word, n.name) != 0) continue;
            known = true;
            const char *value = next_token(&rest, ' ');
            if (!read_number(value, &n.value) || n.value < n.lowest) {
                out_printf("info string go refused: %s takes a number from %lld, not '%s'\n",
                    n.name, n.lowest, value ? value : "");
                return 0;
            }
            n.seen = true;
        }
        if (known) continue;
        if (std::strcmp(word, "infinite") == 0) {
            infinite = true;
        } else if (std::strcmp(word, "ponder") == 0) {
            ponder = true;
        } else if (std::strcmp(word, "searchmoves") == 0) {
            moves_given = true;
        } else if (moves_given) {
            const Move move = legal_move_named(current_board, word);
            if (!move) {
                out_printf(
                    "info string go refused: searchmoves %s is not a legal move here\n", word);
                return 0;
            }
            if (given < max_moves) chosen[given++] = move;
        } else {
            out_printf("info string go refused: '%s' is not a word of go\n", word);
            return 0;
        }
    }
    const auto &[depth, nodes, movetime, mate, wtime, btime, winc, binc, moves_to_go] = numbers;
    search_depth_limit = counter_plies - 1;
    if (depth.seen)
        search_depth_limit
            = int(depth.value < search_depth_limit ? depth.value : search_depth_limit);
    if (mate.seen && 2 * mate.value - 1 < search_depth_limit)
        search_depth_limit = int(2 * mate.value - 1);
    const number_word &own = current_board.white_to_move ? wtime : btime;
    const number_word &own_increment = current_board.white_to_move ? winc : binc;
    long long budget = -1;
    if (movetime.seen)
        budget = movetime.value;
    else if (own.seen)
        budget = clock_budget(own.value, own_increment.value, moves_to_go.value, 2147483647, 1);
    node_limit
        = nodes.seen ? std::uint64_t(nodes.value < 0xFFFFFFFFll ? nodes.value : 0xFFFFFFFFll) : 0;
    waits_for_stop = infinite || ponder;
    ponder_budget_ms
        = ponder && budget >= 0 ? std::int32_t(budget > 2147483647 ? 2147483647 : budget) : -1;
    time_limit_active = !waits_for_stop && (budget >= 0 || node_limit);
    search_time_limit_ms = budget >= 0 && budget < 2147483647 ? std::int32_t(budget) : 2147483647;
    if (infinite) node_limit = 0;
    // `searchmoves` with no move after it leaves every move to the search.
    root_move_count = given > 0 ? given : -1;
    for (int i = 0; i < given; i++) root_moves[i] = chosen[i];

    char reply[move_text_size];
    const char *best = "0000";
    reply[0] = '\0';
    if (one_king_each(current_board)) best = analyse(multipv, print_line, reply);
    // An analysis answers only once it is told to stop, whatever depth it reached.
    while (waits_for_stop && !search_stop) {
        poll_input();
        sleep_ms(1);
    }
    waits_for_stop = 0;
    node_limit = 0;
    if (reply[0])
        out_printf("bestmove %s ponder %s\n", best, reply);
    else
        out_printf("bestmove %s\n", best);
    out_flush();
    return 0;
}

int run_perft(char *rest)
{
    standard_perft_command(rest);
    return 0;
}

int run_nothing(char *) { return 0; }

int run_quit(char *) { return 1; }

struct command {
    const char *word;
    int (*run)(char *rest);
};

// The mode's own words; isready, ucinewgame and the debugging words are the default mode's, whose
// line ends the mode's LF output has already made plain.
constexpr command commands[] = {
    { "uci", run_uci },
    { "setoption", run_setoption },
    { "position", run_position },
    { "go", run_go },
    { "perft", run_perft },
    { "stop", run_nothing }, // with no search running
    { "ponderhit", run_nothing },
    { "debug", run_nothing },
    { "register", run_nothing },
    { "quit", run_quit },
};

constexpr const char *default_words[] = { "isready", "ucinewgame", "printboard", "boardkey",
    "movlist", "boardscore", "sortedmoves", "cls", "help" };

} // namespace

void start_standard_mode()
{
    standard_mode = 1;
    set_lf_only(true);
    counter_rows = counter_plies;
    pv_stride = pv_columns;
    search_single_reply = 1;
}

int standard_command(const char *text)
{
    static char copy[command_size];
    copy_cut(copy, text, sizeof copy);
    char *rest = copy;
    const char *word = next_token(&rest, ' ');
    if (!word) return 0;
    for (const command &c : commands)
        if (std::strcmp(word, c.word) == 0) return c.run(rest);
    for (const char *shared : default_words)
        if (std::strcmp(word, shared) == 0) return default_command(text);
    out_printf("info string unknown command '%s'\n", word);
    return 0;
}
