// The vocabulary of the evaluation: the colours, the game phases, the terms in report order with
// their names and weights, which term counts in which phase, and the facts every term reads.
#pragma once

#include <cstdint>

#include "position/board.h"

namespace eval {

enum colour : int { white = 0, black = 1 };

// Three discrete phases sorted by the material of both sides together (pawns included); there is
// no tapering between them. Material totals are multiples of 20.
enum phase : int { opening = 0, middlegame = 1, ending = 2 };
constexpr int opening_material = 6500; // this much or more is the opening
constexpr int middlegame_material = 2000; // this much or more, below the opening, the middlegame

constexpr int phase_of(std::int32_t total_material)
{
    return total_material >= opening_material   ? opening
        : total_material >= middlegame_material ? middlegame
                                                : ending;
}

// The first 24 terms are the report's, in its order. The last four count in the sum but are not
// reported. Penalties are stored as positive values and carry a negative weight.
enum term : int {
    rook_mobility,
    rook_attack,
    bishop_mobility,
    bishop_attack,
    knight_mobility,
    knight_attack,
    queen_mobility,
    queen_attack,
    king_safety_penalty,
    center_score,
    coord_score,
    rook_file_score,
    pawn_structure_penalty,
    bishop_block_penalty,
    bishop_king_pawn_block_penalty,
    king_side_bishop_trap_penalty,
    bishop_pair_bonus,
    king_development_score,
    castled_shield_penalty,
    central_pawn_opening_score,
    no_central_pawn_penalty,
    early_queen_penalty,
    knight_edge_penalty,
    rook_corner_trap_penalty,
    reported_term_count,
    material = reported_term_count,
    piece_tables, // rook, knight, bishop and queen square values
    king_pawn_tables, // king and pawn square values, with tables of their own in the ending
    free_squares,
    term_count
};

// Report names, by term.
constexpr const char *term_names[reported_term_count] = {
    "Rook Mobility",
    "Rook Attack",
    "Bishop Mobility",
    "Bishop Attack",
    "Knight Mobility",
    "Knight Attack",
    "Queen Mobility",
    "Queen Attack",
    "King Safety Penalty",
    "Center Score",
    "Coord Score",
    "Rook File Score",
    "Pawn Structure Penalty",
    "Bishop Block Penalty",
    "Bishop King Pawn Block Penalty",
    "King-Side Bishop Trap Penalty",
    "Bishop Pair Bonus",
    "King Development Score",
    "Castled Shield Penalty",
    "Central Pawn Opening Score",
    "No Central Pawn Penalty",
    "Early Queen Penalty",
    "Knight Edge Penalty",
    "Rook Corner Trap Penalty",
};

// What one unit of each term is worth in a colour's total: an own piece seen by a piece is worth
// 4, an enemy piece 6, and each unit of king danger costs 7.
constexpr std::int32_t term_weight[term_count] = {
    4, 6, 4, 6, 4, 6, 4, 6, // mobility and attack, by piece kind
    -7, // king safety
    1, 1, 1, // center, coordination, rook files
    -1, -1, -1, -1, // pawn structure, bishop block, bishop king pawn block, bishop trap
    1, 1, // bishop pair, king development
    -1, 1, -1, -1, // castled shield, central pawns, no central pawn, early queen
    -1, -1, // knight edge, rook corner trap
    1, 1, 1, 1, // material, piece tables, king and pawn tables, free squares
};

// Which term counts in which phase; an inactive term counts 0 and reports 0.
constexpr bool term_active[term_count][3] = {
    // opening, middlegame, ending
    { true, true, true }, // rook_mobility
    { true, true, true }, // rook_attack
    { true, true, true }, // bishop_mobility
    { true, true, true }, // bishop_attack
    { true, true, true }, // knight_mobility
    { true, true, true }, // knight_attack
    { true, true, true }, // queen_mobility
    { true, true, true }, // queen_attack
    { true, true, true }, // king_safety_penalty (weighed 6, 4, 1 by phase)
    { true, true, false }, // center_score (lower values in the middlegame)
    { true, true, true }, // coord_score
    { true, true, true }, // rook_file_score
    { true, true, true }, // pawn_structure_penalty
    { true, false, false }, // bishop_block_penalty
    { true, true, false }, // bishop_king_pawn_block_penalty
    { true, true, false }, // king_side_bishop_trap_penalty
    { true, true, true }, // bishop_pair_bonus
    { true, true, false }, // king_development_score (other values in the middlegame)
    { true, true, false }, // castled_shield_penalty
    { true, false, false }, // central_pawn_opening_score
    { true, false, false }, // no_central_pawn_penalty
    { true, false, false }, // early_queen_penalty
    { true, true, false }, // knight_edge_penalty
    { true, true, false }, // rook_corner_trap_penalty
    { true, true, true }, // material
    { true, true, false }, // piece_tables
    { true, true, true }, // king_pawn_tables (ending tables in the ending)
    { true, true, true }, // free_squares
};

// What one colour's rooks, bishops, knights and queens see, counted while the attack map is
// built from the same look-ups: the Mobility and Attack counts in term order (rook_mobility to
// queen_attack), the free figure, and each rook's reach (rank and file set together), rooks by
// ascending square, for the connection score. A garbled board fills up to 64 rooks.
struct piece_activity {
    std::int32_t count[queen_attack + 1];
    std::int32_t free;
    Bitboard rook_reach[64]; // entries past the rook count are left unset
};

// The figures that depend on the pawns and the kings of both colours and on nothing else, worked
// out once for each such structure and cached (evaluate.cpp). Indexed by colour.
struct pawn_king_facts {
    Bitboard attacked[2]; // squares the colour's pawns and its (lowest) king attack
    std::int32_t pawn_structure[2]; // Pawn Structure Penalty
    std::int32_t king_pawn_tables[2][2]; // king and pawn table values, [colour][ending or not]
    std::int32_t cover[2]; // own pawns on the king's pawn cover squares
    std::int32_t shield[2]; // Castled Shield Penalty, for the opening and the middlegame
    std::int32_t central_pawns[2]; // Central Pawn Opening Score
};

// The facts that every term reads, derived once per call from the twelve sets. Indexed by colour.
struct eval_input {
    Bitboard rooks[2], knights[2], bishops[2], queens[2], kings[2], pawns[2];
    Bitboard pieces[2]; // union of a colour's six sets
    Bitboard all; // every piece of both colours: the blockers of every attack set
    int king_square[2]; // lowest square of the king set; 64 when a garbled board has no king
    int rook_count[2], knight_count[2], bishop_count[2], queen_count[2]; // squares in each set
    pawn_king_facts pawn_king;
    piece_activity activity[2];
    Bitboard attacked[2]; // every square the colour attacks, as attacked_by_* answers
    int castling[2]; // nonzero while either castling flag of the colour is set
    std::int32_t material[2];
    int phase;
};

// The facts every term reads, from the twelve sets and the castling flags.
eval_input derive(const Board &b);

// Term values of both colours, before their weights, as the report prints them.
struct term_values {
    std::int32_t value[2][term_count];
};

// White's weighted sum less black's, added up as the terms are found: what the score needs,
// without the breakdown.
struct weighed_total {
    std::int32_t total;
};

// Where each term function hands over its values: kept for the report, or weighed into the
// total. Each term is put once per colour, and only in the phases where it counts.
template <int us, term t> void put(term_values &out, std::int32_t value)
{
    out.value[us][t] = value;
}
template <int us, term t> void put(weighed_total &out, std::int32_t value)
{
    out.total += (us == white ? term_weight[t] : -term_weight[t]) * value;
}

// The square as seen from the colour's own side: ranks mirrored for black, files kept.
template <int us> constexpr int relative_square(int square)
{
    return us == white ? square : square ^ 56;
}
template <int us> constexpr Bitboard relative_bit(int square)
{
    return square_bit(relative_square<us>(square));
}

constexpr Bitboard file_a = 0x0101010101010101, file_h = file_a << 7;
constexpr Bitboard rank_1 = 0xFF, rank_8 = rank_1 << 56;

} // namespace eval
