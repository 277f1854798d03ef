// The evaluation frame: the facts every term reads, the phase, the terms switched by the phase
// table, and the weighted sum of each colour.
#include "eval/evaluate.h"

#include <algorithm>
#include <utility>

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
    return value_of(pawn) * square_count(in.pawns[us]) + value_of(rook) * in.rook_count[us]
        + value_of(knight) * in.knight_count[us] + value_of(bishop) * in.bishop_count[us]
        + value_of(queen) * in.queen_count[us];
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

// The facts every term reads but the attack maps.
inline void derive_sets(const Board &b, eval_input &in)
{
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
}

// Every fact; written here so that the evaluation inlines it.
inline void derive_input(const Board &b, eval_input &in)
{
    derive_sets(b, in);
    in.pawn_king = pawn_king_of(in);
    in.attacked[white] = attacked_squares<white>(in);
    in.attacked[black] = attacked_squares<black>(in);
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
// The king and pawn tables count in every phase, with the ending's tables in the ending.
static_assert(term_active[king_pawn_tables][opening] && term_active[king_pawn_tables][middlegame]
    && term_active[king_pawn_tables][ending]);

// Which of the inputs of the terms differ between a position and one a move away: a bit for
// each of the twelve sets, 6 * colour + code - 1, then each colour's castling figure, then
// whether each colour's rook reaches had to be looked up again.
constexpr unsigned set_bit(int us, int code) { return 1u << (6 * us + code - 1); }
constexpr unsigned castling_bit(int us) { return 1u << (12 + us); }
constexpr unsigned rook_reach_bit(int us) { return 1u << (14 + us); }
constexpr unsigned pawn_king_sets
    = set_bit(white, pawn) | set_bit(white, king) | set_bit(black, pawn) | set_bit(black, king);

// The terms of one colour that count in `phase`; the phase table is read while compiling, so
// each phase and colour gets its own straight run of inlined terms. With `every` false, a term
// family whose inputs are not in `changed` keeps the value already in `out`; the families that
// read the attack maps and the phase always run.
template <int phase, int us, bool every = true>
void fill_colour(const eval_input &in, term_values &out, unsigned changed = 0)
{
    constexpr int them = 1 - us;
    constexpr auto on = [](term t) { return term_active[t][phase]; };
    const auto due = [changed](unsigned inputs) { return every || (changed & inputs) != 0; };
    constexpr unsigned rooks = set_bit(us, rook), knights = set_bit(us, knight),
                       bishops = set_bit(us, bishop), queens = set_bit(us, queen),
                       kings = set_bit(us, king), pawns = set_bit(us, pawn);
    if constexpr (on(rook_mobility)) mobility_terms<us>(in, out); // also free_squares
    if constexpr (on(piece_tables))
        if (due(rooks | knights | bishops | queens)) piece_table_terms<us>(in, out);
    if (due(pawn_king_sets)) king_pawn_table_terms<us>(in, out);
    if constexpr (on(king_safety_penalty)) king_safety_terms<us>(in, out);
    if constexpr (on(center_score)) center_terms<us>(in, out);
    if constexpr (on(coord_score))
        if (due(rooks | queens | rook_reach_bit(us))) coord_terms<us>(in, out);
    if constexpr (on(rook_file_score))
        if (due(rooks | pawns | set_bit(them, pawn))) rook_file_terms<us>(in, out);
    if constexpr (on(pawn_structure_penalty))
        if (due(pawn_king_sets)) pawn_structure_terms<us>(in, out);
    if constexpr (on(bishop_block_penalty))
        if (due(bishops | pawns)) bishop_block_terms<us>(in, out);
    if constexpr (on(bishop_king_pawn_block_penalty))
        if (due(bishops | pawns)) bishop_king_pawn_block_terms<us>(in, out);
    if constexpr (on(king_side_bishop_trap_penalty))
        if (due(bishops | pawns)) king_side_bishop_trap_terms<us>(in, out);
    if constexpr (on(bishop_pair_bonus))
        if (due(bishops)) bishop_pair_terms<us>(in, out);
    if constexpr (on(king_development_score)) // and the shield
        if (due(kings | castling_bit(us) | pawn_king_sets)) king_development_terms<us>(in, out);
    if constexpr (on(central_pawn_opening_score))
        if (due(pawn_king_sets)) central_pawn_opening_terms<us>(in, out);
    if constexpr (on(no_central_pawn_penalty))
        if (due(pawns | knights | bishops)) no_central_pawn_terms<us>(in, out);
    if constexpr (on(early_queen_penalty))
        if (due(queens | knights | bishops)) early_queen_terms<us>(in, out);
    if constexpr (on(knight_edge_penalty))
        if (due(knights)) knight_edge_terms<us>(in, out);
    if constexpr (on(rook_corner_trap_penalty))
        if (due(kings | rooks | pawns)) rook_corner_trap_terms<us>(in, out);
}

// Both colours: every term function is written once, for the colour as a template argument.
template <int phase, bool every = true>
void fill_terms(const eval_input &in, term_values &out, unsigned changed = 0)
{
    out.value[white][material] = in.material[white];
    out.value[black][material] = in.material[black];
    fill_colour<phase, white, every>(in, out, changed);
    fill_colour<phase, black, every>(in, out, changed);
}

// Every term of both colours, before the weights, and the phase.
int fill_terms(const Board &board, term_values &terms)
{
    eval_input in;
    derive_input(board, in);
    if (in.phase == opening)
        fill_terms<opening>(in, terms);
    else if (in.phase == middlegame)
        fill_terms<middlegame>(in, terms);
    else
        fill_terms<ending>(in, terms);
    return in.phase;
}

// White's weighted sum less black's, over the terms that count in `phase`: the phase table is
// read while compiling, so the inactive terms are neither written nor read.
template <int phase, std::size_t... t>
std::int32_t weighed_difference(const term_values &terms, std::index_sequence<t...>)
{
    return (
        (term_active[t][phase] ? term_weight[t] * (terms.value[white][t] - terms.value[black][t])
                               : 0)
        + ...);
}
template <int phase> std::int32_t weighed_difference(const term_values &terms)
{
    return weighed_difference<phase>(terms, std::make_index_sequence<term_count>());
}

template <int phase> std::int32_t white_view(const eval_input &in)
{
    term_values terms; // each term is written by its family before it is read
    fill_terms<phase>(in, terms);
    return weighed_difference<phase>(terms);
}

// The score from white's side, without the breakdown.
std::int32_t white_view(const Board &board)
{
    eval_input in;
    derive_input(board, in);
    if (in.phase == opening) return white_view<opening>(in);
    if (in.phase == middlegame) return white_view<middlegame>(in);
    return white_view<ending>(in);
}

// One position's evaluation kept whole, from which the positions a move away are scored: its
// facts (with its own copy of the pawn-and-king figures,
// since the cache slot may be taken by another structure meanwhile), the figures of each piece
// kind and every term. One frame at a time: the orderings that use it score all the children
// of a node before any of them is searched.
struct frame {
    eval_input in; // with the twelve sets
    kind_figures kinds[2][kind_count];
    term_values terms;
};
frame the_frame;

// A piece kind's figures are the parent's when its set is the same and none of its attack sets
// meets a square where any set differs: such a set has the same blockers and the same own and
// enemy pieces in it. Otherwise the kind is counted again. Rook reaches are copied when the
// connection term needs them and the rooks kept their figures.
template <int us, piece_kind kind>
kind_figures child_kind(eval_input &in, Bitboard set, int code, const frame &f, Bitboard differ,
    unsigned changed, bool &counted)
{
    const kind_figures &parent = f.kinds[us][kind];
    counted = (changed & set_bit(us, code)) || (parent.reach & differ);
    if (!counted) return parent;
    return kind_look_up<kind>(
        set, in.all, in.pieces[us], in.pieces[1 - us], in.activity[us].rook_reach);
}

template <int us>
void child_attacks(eval_input &in, const frame &f, Bitboard differ, unsigned &changed)
{
    kind_figures k[kind_count];
    bool counted;
    k[knight_kind]
        = child_kind<us, knight_kind>(in, in.knights[us], knight, f, differ, changed, counted);
    k[bishop_kind]
        = child_kind<us, bishop_kind>(in, in.bishops[us], bishop, f, differ, changed, counted);
    k[queen_kind]
        = child_kind<us, queen_kind>(in, in.queens[us], queen, f, differ, changed, counted);
    k[rook_kind] = child_kind<us, rook_kind>(in, in.rooks[us], rook, f, differ, changed, counted);
    if (counted)
        changed |= rook_reach_bit(us);
    else if (changed & set_bit(us, queen))
        std::copy_n(f.in.activity[us].rook_reach, std::min(in.rook_count[us], rook_reach_count),
            in.activity[us].rook_reach);
    in.attacked[us] = in.pawn_king.attacked[us] | gather_activity(in.activity[us], k);
}

// The child's terms: the frame's, with each family worked out again whose inputs differ.
template <int phase>
std::int32_t child_white_view(const eval_input &in, const frame &f, unsigned changed)
{
    term_values terms = f.terms;
    fill_terms<phase, false>(in, terms, changed);
    return weighed_difference<phase>(terms);
}

} // namespace

eval_input derive(const Board &b)
{
    eval_input in;
    derive_input(b, in);
    return in;
}

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

void frame_position(const Board &board)
{
    using namespace eval;
    frame &f = the_frame;
    derive_sets(board, f.in);
    f.in.pawn_king = pawn_king_of(f.in);
    f.in.attacked[white] = attacked_squares<white>(f.in, f.kinds[white]);
    f.in.attacked[black] = attacked_squares<black>(f.in, f.kinds[black]);
    if (f.in.phase == opening)
        fill_terms<opening>(f.in, f.terms);
    else if (f.in.phase == middlegame)
        fill_terms<middlegame>(f.in, f.terms);
    else
        fill_terms<ending>(f.in, f.terms);
}

std::int32_t evaluate_child(const Board &child, int side)
{
    using namespace eval;
    const frame &f = the_frame;
    // The sets by colour and code - 1, as set_bit numbers them.
    const eval_input &was = f.in;
    const Bitboard moved[12]
        = { was.pawns[white] ^ child.white_pawns, was.rooks[white] ^ child.white_rooks,
              was.knights[white] ^ child.white_knights, was.bishops[white] ^ child.white_bishops,
              was.kings[white] ^ child.white_king, was.queens[white] ^ child.white_queens,
              was.pawns[black] ^ child.black_pawns, was.rooks[black] ^ child.black_rooks,
              was.knights[black] ^ child.black_knights, was.bishops[black] ^ child.black_bishops,
              was.kings[black] ^ child.black_king, was.queens[black] ^ child.black_queens };
    unsigned changed = 0;
    Bitboard differ = 0; // every square where some set differs
    for (int i = 0; i < 12; i++) {
        differ |= moved[i];
        changed |= unsigned(moved[i] != 0) << i;
    }
    eval_input in;
    derive_sets(child, in);
    // A child in another phase weighs other terms and other values: scored from nothing.
    if (in.phase != f.in.phase) return evaluate(child, side, 0);
    for (int us = white; us <= black; us++)
        if (in.castling[us] != f.in.castling[us]) changed |= castling_bit(us);
    in.pawn_king = changed & pawn_king_sets ? pawn_king_of(in) : f.in.pawn_king;
    child_attacks<white>(in, f, differ, changed);
    child_attacks<black>(in, f, differ, changed);
    std::int32_t score;
    if (in.phase == opening)
        score = child_white_view<opening>(in, f, changed);
    else if (in.phase == middlegame)
        score = child_white_view<middlegame>(in, f, changed);
    else
        score = child_white_view<ending>(in, f, changed);
    return side ? score : -score;
}

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
    // The silent path weighs the differences of the two colours' terms once, which gives the
    // same sum as the report's two totals.
    const std::int32_t score = report ? reported_white_view(board) : eval::white_view(board);
    return side ? score : -score;
}
