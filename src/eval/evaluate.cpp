// The evaluation frame: the facts every term reads, the phase, the terms switched by the phase
// table, and the weighted sum of each colour.
#include "eval/evaluate.h"

#include "eval/activity.h"
#include "eval/attack_maps.h"
#include "eval/development.h"
#include "eval/king_safety.h"
#include "eval/patterns.h"
#include "eval/report.h"
#include "eval/tables.h"
#include "position/board.h"

namespace eval {

namespace {

// Material of one colour; the king has none.
std::int32_t material_of(const eval_input &in, int us)
{
    return material_of_counts(square_count(in.pawns[us]), in.knight_count[us], in.bishop_count[us],
        in.rook_count[us], in.queen_count[us]);
}

// The pawn-and-king cache: the figures of pawn_king_facts for the last pawn-and-king structure
// that came to each slot, with that structure. The figures read the two colours' pawn and king
// sets and nothing else, so a slot that holds the same four sets holds exactly the figures that
// would be worked out anew. Never cleared, as nothing in it can differ from a fresh computation.
// Static: 2^14 slots of 104 bytes, 1.6 MiB.
struct pawn_king_slot {
    Bitboard pawns[2], kings[2];
    pawn_king_facts facts;
    bool written;
};
constexpr int pawn_king_bits = 14;
pawn_king_slot pawn_king_cache[1 << pawn_king_bits];

template <int us> void fill_pawn_king(const eval_input &in, pawn_king_facts &f)
{
    const Bitboard pawns = in.pawns[us], kings = in.kings[us];
    const int king = in.king_square[us];
    f.attacked[us] = king_neighbours(king) | pawn_attacks<us == white>(pawns);
    f.pawn_structure[us] = doubled_pawn_penalty(pawns);
    f.king_pawn_tables[us][0] = king_pawn_table_sum<us>(false, kings, pawns);
    f.king_pawn_tables[us][1] = king_pawn_table_sum<us>(true, kings, pawns);
    f.cover[us] = cover_pawns<us>(king, pawns);
    f.shield[us] = shield_penalty<us>(king, pawns);
    f.central_pawns[us] = central_pawn_score<us>(pawns);
}

// The pawn-and-king figures of `in`, from the cache when it holds this structure.
inline const pawn_king_facts &pawn_king_of(const eval_input &in)
{
    const std::uint64_t h = in.pawns[white] * 0x9E3779B97F4A7C15
        + in.pawns[black] * 0xC2B2AE3D27D4EB4F + in.kings[white] * 0x165667B19E3779F9
        + in.kings[black] * 0xD6E8FEB86659FD93;
    pawn_king_slot &slot = pawn_king_cache[(h ^ (h >> 32)) & ((1 << pawn_king_bits) - 1)];
    if (slot.written && slot.pawns[white] == in.pawns[white] && slot.pawns[black] == in.pawns[black]
        && slot.kings[white] == in.kings[white] && slot.kings[black] == in.kings[black])
        return slot.facts;
    slot.pawns[white] = in.pawns[white];
    slot.pawns[black] = in.pawns[black];
    slot.kings[white] = in.kings[white];
    slot.kings[black] = in.kings[black];
    fill_pawn_king<white>(in, slot.facts);
    fill_pawn_king<black>(in, slot.facts);
    slot.written = true;
    return slot.facts;
}

// The facts every term reads; written here so that the evaluation inlines it.
inline eval_input derive_input(const Board &b)
{
    eval_input in;
    in.rooks[white] = b.white_rooks;
    in.knights[white] = b.white_knights;
    in.bishops[white] = b.white_bishops;
    in.queens[white] = b.white_queens;
    in.kings[white] = b.white_king;
    in.pawns[white] = b.white_pawns;
    in.rooks[black] = b.black_rooks;
    in.knights[black] = b.black_knights;
    in.bishops[black] = b.black_bishops;
    in.queens[black] = b.black_queens;
    in.kings[black] = b.black_king;
    in.pawns[black] = b.black_pawns;
    in.pieces[white] = white_set(b);
    in.pieces[black] = black_set(b);
    in.all = in.pieces[white] | in.pieces[black];
    in.king_square[white] = first_square(b.white_king);
    in.king_square[black] = first_square(b.black_king);
    for (int us = white; us <= black; us++) {
        in.rook_count[us] = square_count(in.rooks[us]);
        in.knight_count[us] = square_count(in.knights[us]);
        in.bishop_count[us] = square_count(in.bishops[us]);
        in.queen_count[us] = square_count(in.queens[us]);
    }
    in.castling[white] = b.white_oo || b.white_ooo;
    in.castling[black] = b.black_oo || b.black_ooo;
    in.material[white] = material_of(in, white);
    in.material[black] = material_of(in, black);
    in.phase = phase_of(in.material[white] + in.material[black]);
    in.pawn_king = pawn_king_of(in);
    in.attacked[white] = attacked_squares<white>(in);
    in.attacked[black] = attacked_squares<black>(in);
    return in;
}

// Whether the terms from `first` to `last` all count in the same phases as `first`.
constexpr bool same_phases(term first, term last)
{
    for (int t = first; t <= last; t++)
        for (int p = 0; p < 3; p++)
            if (term_active[t][p] != term_active[first][p]) return false;
    return true;
}
// A function that fills several terms runs when the first of them counts, so they must share
// its row of the phase table.
static_assert(same_phases(rook_mobility, queen_attack) && term_active[free_squares][ending]
    && term_active[free_squares][middlegame] && term_active[free_squares][opening]);
static_assert(same_phases(king_development_score, castled_shield_penalty));
// The king and pawn tables count in every phase, so table_terms always runs and switches the
// piece tables itself.
static_assert(term_active[king_pawn_tables][opening] && term_active[king_pawn_tables][ending]);

// The terms of one colour that count in `phase`; the phase table is read while compiling, so
// each phase and colour gets its own straight run of inlined terms.
template <int phase, int us, class Out> void fill_colour(const eval_input &in, Out &out)
{
    constexpr auto on = [](term t) { return term_active[t][phase]; };
    if constexpr (on(rook_mobility)) mobility_terms<us>(in, out); // also free_squares
    table_terms<us>(in, out); // king and pawn tables, and the piece tables where they count
    if constexpr (on(king_safety_penalty)) king_safety_terms<us>(in, out);
    if constexpr (on(center_score)) center_terms<us>(in, out);
    if constexpr (on(coord_score)) coord_terms<us>(in, out);
    if constexpr (on(rook_file_score)) rook_file_terms<us>(in, out);
    if constexpr (on(pawn_structure_penalty)) pawn_structure_terms<us>(in, out);
    if constexpr (on(bishop_block_penalty)) bishop_block_terms<us>(in, out);
    if constexpr (on(bishop_king_pawn_block_penalty)) bishop_king_pawn_block_terms<us>(in, out);
    if constexpr (on(king_side_bishop_trap_penalty)) king_side_bishop_trap_terms<us>(in, out);
    if constexpr (on(bishop_pair_bonus)) bishop_pair_terms<us>(in, out);
    if constexpr (on(king_development_score)) king_development_terms<us>(in, out); // and shield
    if constexpr (on(central_pawn_opening_score)) central_pawn_opening_terms<us>(in, out);
    if constexpr (on(no_central_pawn_penalty)) no_central_pawn_terms<us>(in, out);
    if constexpr (on(early_queen_penalty)) early_queen_terms<us>(in, out);
    if constexpr (on(knight_edge_penalty)) knight_edge_terms<us>(in, out);
    if constexpr (on(rook_corner_trap_penalty)) rook_corner_trap_terms<us>(in, out);
}

// Both colours: every term function is written once, for the colour as a template argument.
template <int phase, class Out> void fill_terms(const eval_input &in, Out &out)
{
    put<white, material>(out, in.material[white]);
    put<black, material>(out, in.material[black]);
    fill_colour<phase, white>(in, out);
    fill_colour<phase, black>(in, out);
}

// Every term of both colours, before the weights, and the phase.
int fill_terms(const Board &board, term_values &terms)
{
    const eval_input in = derive_input(board);
    if (in.phase == opening)
        fill_terms<opening>(in, terms);
    else if (in.phase == middlegame)
        fill_terms<middlegame>(in, terms);
    else
        fill_terms<ending>(in, terms);
    return in.phase;
}

// White's weighted sum less black's, over the terms that count in `phase`: the phase table is
// read while compiling, so the inactive terms are not even worked out.
template <int phase> std::int32_t white_view(const eval_input &in)
{
    weighed_total sum { 0 };
    fill_terms<phase>(in, sum);
    return sum.total;
}

// The score from white's side, without the breakdown.
std::int32_t white_view(const Board &board)
{
    const eval_input in = derive_input(board);
    if (in.phase == opening) return white_view<opening>(in);
    if (in.phase == middlegame) return white_view<middlegame>(in);
    return white_view<ending>(in);
}

} // namespace

eval_input derive(const Board &b) { return derive_input(b); }

breakdown evaluate_terms(const Board &board)
{
    breakdown scores {};
    scores.phase = fill_terms(board, scores.terms);
    for (int us = white; us <= black; us++) {
        std::int32_t total = 0;
        for (int t = 0; t < term_count; t++) total += term_weight[t] * scores.terms.value[us][t];
        scores.total[us] = total;
    }
    return scores;
}

} // namespace eval

namespace {

// The breakdown, printed, and its sum.
std::int32_t reported_white_view(const Board &board)
{
    using namespace eval;
    const breakdown scores = evaluate_terms(board);
    print_report(scores);
    return scores.total[white] - scores.total[black];
}

} // namespace

std::int32_t evaluate(const Board &board, int side, int report)
{
    // The silent path adds each weighed term of white and takes off each of black as the terms
    // are found, which gives the same sum as the report's two totals.
    const std::int32_t score = report ? reported_white_view(board) : eval::white_view(board);
    return side ? score : -score;
}
