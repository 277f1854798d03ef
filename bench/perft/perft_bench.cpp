// Leaves per second of perft on the start position (depth 6) and Kiwipete (depth 5).
//   perft_bench            the engine's generator
//   perft_bench --literal  the literal generator, every leaf applied, no shortcut at depth 1
//   perft_bench --check    small trees only; prints the leaf total, which a test pins
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "movegen/attacks.h"
#include "movegen/legal.h"
#include "movegen/perft.h"
#include "position/apply.h"
#include "position/fen.h"

namespace {

// Perft as the literal generator does it: every leaf applied and generated.
std::uint64_t literal_perft(int depth, const Board &board)
{
    if (depth == 0) return 1;
    MoveList list;
    list.count = 0;
    generate_moves_literal(board, &list);
    std::uint64_t total = 0;
    for (int i = 0; i < list.count; i++) {
        Board copy = board;
        std::uint64_t key = 0;
        apply_move_keyed(&copy, list.moves[i], &key);
        total += literal_perft(depth - 1, copy);
    }
    return total;
}

struct bench_case {
    const char *name;
    const char *fen;
    int depth, check_depth;
};

constexpr bench_case cases[] = {
    { "startpos", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1", 6, 4 },
    { "kiwipete", "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1", 5, 3 },
};

} // namespace

int main(int argc, char **argv)
{
    const bool literal = argc > 1 && std::strcmp(argv[1], "--literal") == 0;
    const bool check = argc > 1 && std::strcmp(argv[1], "--check") == 0;
    init_attack_tables();
    std::uint64_t total = 0;
    for (const bench_case &c : cases) {
        const Board board = parse_fen(c.fen);
        const int depth = check ? c.check_depth : c.depth;
        const auto start = std::chrono::steady_clock::now();
        const std::uint64_t leaves = literal ? literal_perft(depth, board) : perft(depth, board);
        const double seconds
            = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        total += leaves;
        if (!check)
            std::printf("%-9s perft %d: %llu leaves in %.3f s, %.1f M leaves/s%s\n", c.name, depth,
                static_cast<unsigned long long>(leaves), seconds, leaves / seconds / 1e6,
                literal ? " (literal)" : "");
    }
    if (check) std::printf("leaves %llu\n", static_cast<unsigned long long>(total));
    return 0;
}
