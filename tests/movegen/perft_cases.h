// Positions with their published perft counts, one row each, as (depth, leaves) pairs.
#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

struct PerftCount {
    int depth;
    std::uint64_t nodes;
};

struct PerftCase {
    const char *name;
    const char *fen;
    std::vector<PerftCount> counts;
};

inline const std::vector<PerftCase> &perft_cases()
{
    static const std::vector<PerftCase> cases = {
        { "start", "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1",
            { { 1, 20 }, { 2, 400 }, { 3, 8902 }, { 4, 197281 }, { 5, 4865609 },
                { 6, 119060324 } } },
        { "kiwipete", "r3k2r/p1ppqpb1/bn2pnp1/3PN3/1p2P3/2N2Q1p/PPPBBPPP/R3K2R w KQkq - 0 1",
            { { 1, 48 }, { 2, 2039 }, { 3, 97862 }, { 4, 4085603 }, { 5, 193690690 } } },
        { "rook_pawns_endgame", "8/2p5/3p4/KP5r/1R3p1k/8/4P1P1/8 w - - 0 1",
            { { 1, 14 }, { 2, 191 }, { 3, 2812 }, { 4, 43238 }, { 5, 674624 }, { 6, 11030083 },
                { 7, 178633661 } } },
        { "promotions_white", "r3k2r/Pppp1ppp/1b3nbN/nP6/BBP1P3/q4N2/Pp1P2PP/R2Q1RK1 w kq - 0 1",
            { { 1, 6 }, { 2, 264 }, { 3, 9467 }, { 4, 422333 }, { 5, 15833292 } } },
        { "promotions_black", "r2q1rk1/pP1p2pp/Q4n2/bbp1p3/Np6/1B3NBn/pPPP1PPP/R3K2R b KQ - 0 1",
            { { 1, 6 }, { 2, 264 }, { 3, 9467 }, { 4, 422333 }, { 5, 15833292 } } },
        { "bugs_position", "rnbq1k1r/pp1Pbppp/2p5/8/2B5/8/PPP1NnPP/RNBQK2R w KQ - 1 8",
            { { 1, 44 }, { 2, 1486 }, { 3, 62379 }, { 4, 2103487 }, { 5, 89941194 } } },
        { "middlegame", "r4rk1/1pp1qppp/p1np1n2/2b1p1B1/2B1P1b1/P1NP1N2/1PP1QPPP/R4RK1 w - - 0 10",
            { { 1, 46 }, { 2, 2079 }, { 3, 89890 }, { 4, 3894594 }, { 5, 164075551 } } },
        // En passant that would uncover the king along the rank or a diagonal.
        { "ep_rank_pin", "3k4/3p4/8/K1P4r/8/8/8/8 b - - 0 1", { { 6, 1134888 } } },
        { "ep_diagonal_pin", "8/8/4k3/8/2p5/8/B2P2K1/8 w - - 0 1", { { 6, 1015133 } } },
        { "ep_gives_check", "8/8/1k6/2b5/2pP4/8/5K2/8 b - d3 0 1", { { 6, 1440467 } } },
        // Castling that checks, and castling into, through and out of check.
        { "short_castle_check", "5k2/8/8/8/8/8/8/4K2R w K - 0 1", { { 6, 661072 } } },
        { "long_castle_check", "3k4/8/8/8/8/8/8/R3K3 w Q - 0 1", { { 6, 803711 } } },
        { "castle_rights", "r3k2r/1b4bq/8/8/8/8/7B/R3K2R w KQkq - 0 1", { { 4, 1274206 } } },
        { "castling_prevented", "r3k2r/8/3Q4/8/8/5q2/8/R3K2R b KQkq - 0 1", { { 4, 1720476 } } },
        { "castles_all", "r3k2r/8/8/8/8/8/8/R3K2R w KQkq - 0 1",
            { { 1, 26 }, { 2, 568 }, { 3, 13744 }, { 4, 314346 }, { 5, 7594526 },
                { 6, 179862938 } } },
        { "castles_b1_rook", "r3k2r/8/8/8/8/8/8/1R2K2R w Kkq - 0 1",
            { { 1, 25 }, { 2, 567 }, { 3, 14095 }, { 4, 328965 }, { 5, 8153719 },
                { 6, 195629489 } } },
        { "castles_c1_rook", "r3k2r/8/8/8/8/8/8/2R1K2R w Kkq - 0 1",
            { { 1, 25 }, { 2, 548 }, { 3, 13502 }, { 4, 312835 }, { 5, 7736373 },
                { 6, 184411439 } } },
        { "castles_g1_rook", "r3k2r/8/8/8/8/8/8/R3K1R1 w Qkq - 0 1",
            { { 1, 25 }, { 2, 547 }, { 3, 13579 }, { 4, 316214 }, { 5, 7878456 },
                { 6, 189224276 } } },
        { "castles_b8_rook", "1r2k2r/8/8/8/8/8/8/R3K2R w KQk - 0 1",
            { { 1, 26 }, { 2, 583 }, { 3, 14252 }, { 4, 334705 }, { 5, 8198901 },
                { 6, 198328929 } } },
        { "castles_c8_rook", "2r1k2r/8/8/8/8/8/8/R3K2R w KQk - 0 1",
            { { 1, 25 }, { 2, 560 }, { 3, 13592 }, { 4, 317324 }, { 5, 7710115 },
                { 6, 185959088 } } },
        { "castles_g8_rook", "r3k1r1/8/8/8/8/8/8/R3K2R w KQq - 0 1",
            { { 1, 25 }, { 2, 560 }, { 3, 13607 }, { 4, 320792 }, { 5, 7848606 },
                { 6, 190755813 } } },
        { "white_king_side", "4k3/8/8/8/8/8/8/4K2R w K - 0 1",
            { { 1, 15 }, { 2, 66 }, { 3, 1197 }, { 4, 7059 }, { 5, 133987 }, { 6, 764643 } } },
        { "white_queen_side", "4k3/8/8/8/8/8/8/R3K3 w Q - 0 1",
            { { 1, 16 }, { 2, 71 }, { 3, 1287 }, { 4, 7626 }, { 5, 145232 }, { 6, 846648 } } },
        { "black_king_side", "4k2r/8/8/8/8/8/8/4K3 w k - 0 1",
            { { 1, 5 }, { 2, 75 }, { 3, 459 }, { 4, 8290 }, { 5, 47635 }, { 6, 899442 } } },
        { "black_queen_side", "r3k3/8/8/8/8/8/8/4K3 w q - 0 1",
            { { 1, 5 }, { 2, 80 }, { 3, 493 }, { 4, 8897 }, { 5, 52710 }, { 6, 1001523 } } },
        { "white_both_sides", "4k3/8/8/8/8/8/8/R3K2R w KQ - 0 1",
            { { 1, 26 }, { 2, 112 }, { 3, 3189 }, { 4, 17945 }, { 5, 532933 }, { 6, 2788982 } } },
        { "black_both_sides", "r3k2r/8/8/8/8/8/8/4K3 w kq - 0 1",
            { { 1, 5 }, { 2, 130 }, { 3, 782 }, { 4, 22180 }, { 5, 118882 }, { 6, 3517770 } } },
        { "king_beside_rook", "8/8/8/8/8/8/6k1/4K2R w K - 0 1",
            { { 1, 12 }, { 2, 38 }, { 3, 564 }, { 4, 2219 }, { 5, 37735 }, { 6, 185867 } } },
        { "king_beside_long", "8/8/8/8/8/8/1k6/R3K3 w Q - 0 1",
            { { 1, 15 }, { 2, 65 }, { 3, 1018 }, { 4, 4573 }, { 5, 80619 }, { 6, 413018 } } },
        { "black_short_near_king", "4k2r/6K1/8/8/8/8/8/8 w k - 0 1",
            { { 1, 3 }, { 2, 32 }, { 3, 134 }, { 4, 2073 }, { 5, 10485 }, { 6, 179869 } } },
        { "black_long_near_king", "r3k3/1K6/8/8/8/8/8/8 w q - 0 1",
            { { 1, 4 }, { 2, 49 }, { 3, 243 }, { 4, 3991 }, { 5, 20780 }, { 6, 367724 } } },
        // Promotions, under-promotions and promotion with capture.
        { "promote_out_of_check", "2K2r2/4P3/8/8/8/8/8/3k4 w - - 0 1", { { 6, 3821001 } } },
        { "promote_to_check", "4k3/1P6/8/8/8/8/K7/8 w - - 0 1",
            { { 1, 9 }, { 2, 40 }, { 3, 472 }, { 4, 2661 }, { 5, 38983 }, { 6, 217342 } } },
        { "underpromote_to_check", "8/P1k5/K7/8/8/8/8/8 w - - 0 1",
            { { 1, 6 }, { 2, 27 }, { 3, 273 }, { 4, 1329 }, { 5, 18135 }, { 6, 92683 } } },
        { "promotion_race", "n1n5/PPPk4/8/8/8/8/4Kppp/5N1N b - - 0 1",
            { { 1, 24 }, { 2, 496 }, { 3, 9483 }, { 4, 182838 }, { 5, 3605103 },
                { 6, 71179139 } } },
        { "pawn_race", "8/PPPk4/8/8/8/8/4Kppp/8 w - - 0 1",
            { { 1, 18 }, { 2, 270 }, { 3, 4699 }, { 4, 79355 }, { 5, 1533145 }, { 6, 28859283 } } },
        { "capture_promotions", "n1n5/1Pk5/8/8/8/8/5Kp1/5N1N w - - 0 1",
            { { 1, 24 }, { 2, 421 }, { 3, 7421 }, { 4, 124608 }, { 5, 2193768 },
                { 6, 37665329 } } },
        // Discovered check, double check, stalemate and mate.
        { "discovered_check", "8/8/1P2K3/8/2n5/1q6/8/5k2 b - - 0 1", { { 5, 1004658 } } },
        { "self_stalemate", "K1k5/8/P7/8/8/8/8/8 w - - 0 1",
            { { 1, 2 }, { 2, 6 }, { 3, 13 }, { 4, 63 }, { 5, 382 }, { 6, 2217 } } },
        { "stalemate_and_mate", "8/k1P5/8/1K6/8/8/8/8 w - - 0 1",
            { { 1, 10 }, { 2, 25 }, { 3, 268 }, { 4, 926 }, { 5, 10857 }, { 6, 43261 },
                { 7, 567584 } } },
        { "stalemate_and_mate_black", "8/8/2k5/5q2/5n2/8/5K2/8 b - - 0 1",
            { { 1, 37 }, { 2, 183 }, { 3, 6559 }, { 4, 23527 } } },
        // Knights, bishops and rooks alone.
        { "knights", "8/1n4N1/2k5/8/8/5K2/1N4n1/8 w - - 0 1",
            { { 1, 14 }, { 2, 195 }, { 3, 2760 }, { 4, 38675 }, { 5, 570726 }, { 6, 8107539 } } },
        { "knights_centre", "8/8/4k3/3Nn3/3nN3/4K3/8/8 w - - 0 1",
            { { 1, 19 }, { 2, 289 }, { 3, 4442 }, { 4, 73584 }, { 5, 1198299 }, { 6, 19870403 } } },
        { "bishops_corners", "B6b/8/8/8/2K5/4k3/8/b6B w - - 0 1",
            { { 1, 17 }, { 2, 278 }, { 3, 4607 }, { 4, 76778 }, { 5, 1320507 }, { 6, 22823890 } } },
        { "rooks_seventh", "7k/RR6/8/8/8/8/rr6/7K w - - 0 1",
            { { 1, 19 }, { 2, 275 }, { 3, 5300 }, { 4, 104342 }, { 5, 2161211 },
                { 6, 44956585 } } },
        { "rooks_corners", "R6r/8/8/2K5/5k2/8/8/r6R w - - 0 1",
            { { 1, 36 }, { 2, 1027 }, { 3, 29215 }, { 4, 771461 }, { 5, 20506480 },
                { 6, 525169084 } } },
        { "queens", "K7/8/8/3Q4/4q3/8/8/7k w - - 0 1",
            { { 1, 6 }, { 2, 35 }, { 3, 495 }, { 4, 8349 }, { 5, 166741 }, { 6, 3370175 } } },
        { "kings_alone", "7k/8/8/8/8/8/8/K7 w - - 0 1",
            { { 1, 3 }, { 2, 9 }, { 3, 54 }, { 4, 324 }, { 5, 1890 }, { 6, 11024 } } },
    };
    return cases;
}

// Test names show the position's name rather than the bytes of the record.
inline void PrintTo(const PerftCase &c, std::ostream *out) { *out << c.name; }
