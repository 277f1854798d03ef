// The fixed positions of the evaluation benchmark: the reference positions, then random
// placements from a fixed seed, crowded, middling and sparse in turn.
#include "bench_positions.h"

#include <random>

#include "fen.h"
#include "random_boards.h"

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
    std::vector<Board> set;
    for (const char *f : fens) set.push_back(parse_fen(f));
    std::mt19937_64 rng(1234567);
    constexpr int max_pieces[3] = { 30, 18, 8 };
    for (int i = 0; i < 291; i++) set.push_back(random_position(rng, max_pieces[i % 3]));
    return set;
}
