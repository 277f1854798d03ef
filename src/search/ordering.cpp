// The three move sorters. All of them sort (move, key) pairs by insertion, descending and
// stable, so moves of equal key stay in the order the generator gave them.
#include "search/ordering.h"

#include <cstring>
#include <initializer_list>

#include "eval/evaluate.h"
#include "position/apply.h"
#include "search/tt.h"

std::uint32_t alpha_counts[counter_plies][64][64];
std::uint32_t cutoff_counts[counter_plies][64][64];
Move pv_table[pv_rows * pv_columns];
std::int32_t pv_length[pv_rows];
int counter_rows = 13;
int pv_stride = 13;

namespace {

int counter_row(int ply) { return ply < 0 ? 0 : ply >= counter_rows ? counter_rows - 1 : ply; }

// The node's pv move: row 0, column `row` of the last line, while that line reaches so far.
Move pv_move_at(int row) { return row < pv_length[0] ? pv_cell(0, row) : 0; }

// Sorts moves[0..n) by keys, descending: a move passes an earlier one only on a greater key.
void sort_by_keys(Move *moves, std::int32_t *keys, int n)
{
    for (int i = 1; i < n; i++) {
        const Move m = moves[i];
        const std::int32_t k = keys[i];
        int j = i;
        for (; j > 0 && keys[j - 1] < k; j--) {
            moves[j] = moves[j - 1];
            keys[j] = keys[j - 1];
        }
        moves[j] = m;
        keys[j] = k;
    }
}

// The evaluation after `move`, from the side of the mover.
std::int32_t score_after(const Board &board, Move move)
{
    Board child = board;
    apply_move(&child, move);
    return evaluate(child, board.white_to_move, 0);
}

struct bucket {
    Move moves[max_moves];
    std::int32_t keys[max_moves];
    int count = 0;
    void add(Move m, std::int32_t key)
    {
        moves[count] = m;
        keys[count++] = key;
    }
};

} // namespace

std::int32_t capture_gain(Move move) { return victim_value(move) - value_of(move_mover(move)); }

void clear_counters()
{
    // Only the rows in use: the others are never written.
    std::memset(alpha_counts, 0, sizeof alpha_counts[0] * std::size_t(counter_rows));
    std::memset(cutoff_counts, 0, sizeof cutoff_counts[0] * std::size_t(counter_rows));
}

void order_moves(
    int ply, const Board &board, MoveList *list, std::uint64_t key, std::int32_t *child_evals)
{
    const int row = counter_row(ply);
    HashEntry entry;
    const Move hash_move = hash_probe(key, &entry) ? entry.move : 0;
    const Move pv_move = pv_move_at(row);

    Move found_pv = 0, found_hash = 0;
    bool has_pv = false, has_hash = false;
    bucket good, first, second, bad, other;
    for (int i = 0; i < list->count; i++) {
        const Move m = list->moves[i];
        const int from = move_from(m), to = move_to(m);
        if (pv_move && same_move(m, pv_move)) {
            found_pv = m;
            has_pv = true;
        } else if (hash_move && same_move(m, hash_move)) {
            found_hash = m;
            has_hash = true;
        } else if (m & move_capture) {
            const std::int32_t gain = capture_gain(m);
            if (gain >= 0)
                good.add(m, 7500 + gain);
            else
                bad.add(m, 3500 + gain);
        } else if (alpha_counts[row][from][to] > 0) {
            first.add(m, std::int32_t(8500 + alpha_counts[row][from][to]));
        } else if (cutoff_counts[row][from][to] > 0) {
            second.add(m, std::int32_t(6000 + cutoff_counts[row][from][to]));
        } else {
            other.add(m, score_after(board, m));
        }
    }

    int n = 0;
    if (has_pv) list->moves[n++] = found_pv;
    if (has_hash) list->moves[n++] = found_hash;
    for (bucket *b : { &good, &first, &second, &bad, &other }) {
        sort_by_keys(b->moves, b->keys, b->count);
        for (int i = 0; i < b->count; i++) list->moves[n++] = b->moves[i];
    }
    if (child_evals) {
        // Only the last bucket was sorted by evaluation.
        const int others_from = list->count - other.count;
        for (int i = 0; i < others_from; i++) child_evals[i] = unknown_eval;
        for (int i = 0; i < other.count; i++) child_evals[others_from + i] = other.keys[i];
    }
}

void order_by_evaluation(const Board &board, MoveList *list, std::int32_t *child_evals)
{
    if (list->count < 2) {
        if (child_evals && list->count == 1) child_evals[0] = unknown_eval;
        return;
    }
    std::int32_t local[max_moves];
    std::int32_t *keys = child_evals ? child_evals : local;
    for (int i = 0; i < list->count; i++) keys[i] = score_after(board, list->moves[i]);
    sort_by_keys(list->moves, keys, list->count);
}

void score_moves(int ply, const Board &board, MoveList *list, std::int32_t *scores)
{
    const int row = counter_row(ply);
    const Move pv_move = pv_move_at(row);
    for (int i = 0; i < list->count; i++) {
        const Move m = list->moves[i];
        const int from = move_from(m), to = move_to(m);
        std::int32_t score;
        if (pv_move && same_move(m, pv_move))
            score = 12000;
        else if (m & move_capture) {
            const std::int32_t gain = capture_gain(m);
            score = gain >= 0 ? 9000 + gain : 5500 + gain;
        } else if (alpha_counts[row][from][to] > 0)
            score = std::int32_t(7000 + alpha_counts[row][from][to]);
        else if (cutoff_counts[row][from][to] > 0)
            score = std::int32_t(4000 + cutoff_counts[row][from][to]);
        else
            score = score_after(board, m);
        scores[i] = score;
    }
    sort_by_keys(list->moves, scores, list->count);
}
