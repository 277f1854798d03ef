// Perft: every node gets the full legal list, words completed, and each move is applied as the
// game applies it; the last ply is counted from the list.
#include "movegen/perft.h"

#include "movegen/legal.h"
#include "position/apply.h"

std::uint64_t perft(int depth, Board board, bool (*interrupted)())
{
    if (depth <= 0) return 1;
    if (interrupted && depth > 1 && interrupted()) return 0;
    MoveList list;
    list.count = 0;
    generate_moves(board, &list);
    // One ply from the leaves the count is the length of the list: every word was completed,
    // and applying each move would only give back a 1.
    if (depth == 1) return std::uint64_t(list.count);
    std::uint64_t total = 0;
    for (int i = 0; i < list.count; i++) {
        Board copy = board;
        // The key is a scratch copy, thrown away: only the applier's rules matter here.
        std::uint64_t key = current_key;
        apply_move_keyed(&copy, list.moves[i], &key);
        total += perft(depth - 1, copy, interrupted);
    }
    return total;
}
