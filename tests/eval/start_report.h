// The term report of the start position, as the engine prints it: 24 lines for white, then the
// same 24 for black.
#pragma once

#include <string>

inline std::string start_report()
{
    constexpr const char *lines[24] = {
        "Rook Mobility: 4",
        "Rook Attack: 0",
        "Bishop Mobility: 4",
        "Bishop Attack: 0",
        "Knight Mobility: 2",
        "Knight Attack: 0",
        "Queen Mobility: 5",
        "Queen Attack: 0",
        "King Safety Penalty: 0",
        "Center Score: 0",
        "Coord Score: 0",
        "Rook File Score: 0",
        "Pawn Structure Penalty: 0",
        "Bishop Block Penalty: 22",
        "Bishop King Pawn Block Penalty: 0",
        "King-Side Bishop Trap Penalty: 16",
        "Bishop Pair Bonus: 18",
        "King Development Score: -18",
        "Castled Shield Penalty: 0",
        "Central Pawn Opening Score: 0",
        "No Central Pawn Penalty: 28",
        "Early Queen Penalty: 0",
        "Knight Edge Penalty: 14",
        "Rook Corner Trap Penalty: 0",
    };
    std::string text;
    for (const char *colour : { "White ", "Black " })
        for (const char *line : lines) text += std::string(colour) + line + "\n";
    return text;
}
