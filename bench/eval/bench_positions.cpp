// The fixed positions of the evaluation benchmark: the reference positions, then positions from
// games of random legal moves played from a fixed seed, sampled so that openings, middlegames and
// endings come up in similar numbers.
#include "bench/eval/bench_positions.h"

#include <random>

#include "eval/evaluate.h"
#include "position/fen.h"
#include "tests/support/random_boards.h"

std::vector<Board> bench_positions()
{
    constexpr const char *fens[] = {
        "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
        "r1bqkbnr/pppp1ppp/2n5/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R w KQkq - 2 3",
        "r1bq1rk1/pp1nbppp/2p1pn2/3p2B1/2PP4/2NBPN2/PP3PPP/R2QK2R w KQ - 0 9",
        "2r2rk1/pp2bppp/2n1bn2/q2p4/3P4/P1NBBN2/1PQ2PPP/2R2RK1 b - - 3 15",
        "r4rk1/1b3ppp/p2bpn2/1p6/3P4/1BN1PN2/PP3PPP/2R2RK1 w - - 0 15",
        "r3r1k1/pp3ppp/2n5/3p4/3P2b1/2N2N2/PP3PPP/R3R1K1 b - - 0 18",
        "8/5pk1/6p1/8/3R4/6P1/5PK1/3r4 b - - 0 40",
        "8/2k5/3p4/3P4/2P5/4K3/8/8 w - - 0 50",
        "8/8/8/4k3/8/8/4K3/8 w - - 0 1",
    };
    constexpr int size = 300, per_phase = size / 3;
    std::vector<Board> set;
    int phases[3] = {};
    for (const char *f : fens) {
        set.push_back(parse_fen(f));
        phases[eval::evaluate_terms(set.back()).phase]++;
    }
    // Random games shed material quickly: the first plies give the openings, later ones the
    // rest. Every third position of a game at most, and no phase beyond its share.
    std::mt19937_64 rng(20240605);
    while (int(set.size()) < size) {
        const std::vector<Board> game = random_game(rng, 400);
        for (std::size_t ply = 1 + rng() % 3; ply < game.size() && int(set.size()) < size;
             ply += 3) {
            const int phase = eval::evaluate_terms(game[ply]).phase;
            if (phases[phase] >= per_phase) continue;
            phases[phase]++;
            set.push_back(game[ply]);
        }
    }
    return set;
}
