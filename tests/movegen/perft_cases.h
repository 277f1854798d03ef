// The perft suite of tests/perft/suite.epd: positions with their published leaf counts.
#pragma once

#include <cstdint>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

struct PerftCount {
    int depth;
    std::uint64_t nodes;
};

struct PerftCase {
    std::string name;
    std::string fen;
    std::vector<PerftCount> counts;
};

// Lines "name ; fen ; D1 20 ; D2 400 ...", with # for comments. Read once.
inline const std::vector<PerftCase> &perft_cases()
{
    static const std::vector<PerftCase> cases = [] {
        std::vector<PerftCase> read;
        std::ifstream file(KORVANE_PERFT_SUITE);
        for (std::string line; std::getline(file, line);) {
            if (line.empty() || line[0] == '#') continue;
            std::vector<std::string> fields;
            std::istringstream split(line);
            for (std::string field; std::getline(split, field, ';');) {
                const std::size_t first = field.find_first_not_of(' ');
                const std::size_t last = field.find_last_not_of(' ');
                fields.push_back(
                    first == std::string::npos ? "" : field.substr(first, last - first + 1));
            }
            if (fields.size() < 3) continue;
            PerftCase c { fields[0], fields[1], {} };
            for (std::size_t i = 2; i < fields.size(); i++) {
                PerftCount count {};
                std::istringstream value(fields[i].substr(1));
                if (fields[i][0] == 'D' && (value >> count.depth >> count.nodes))
                    c.counts.push_back(count);
            }
            read.push_back(c);
        }
        return read;
    }();
    return cases;
}

// Test names show the position's name rather than the bytes of the record.
inline void PrintTo(const PerftCase &c, std::ostream *out) { *out << c.name; }
