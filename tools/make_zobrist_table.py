#!/usr/bin/env python3
"""Writes src/position/zobrist_table.cpp from the published list of 781 Random64 numbers
(one hex number a line, entry 0 first; lines starting with '#' are skipped).

    tools/make_zobrist_table.py numbers.txt > src/position/zobrist_table.cpp
"""
import sys

numbers = [line.strip() for line in open(sys.argv[1]) if line.strip() and not line.startswith("#")]
assert len(numbers) == 781, len(numbers)
print("// The 781 Random64 numbers of the PolyGlot book format, entry 0 first.")
print("// Written by tools/make_zobrist_table.py; do not edit by hand.")
print('#include "zobrist.h"')
print()
print("const std::uint64_t zobrist_table[781] = {")
for i in range(0, 781, 3):
    print("    " + " ".join(f"0x{int(n, 16):016X}," for n in numbers[i:i + 3]))
print("};")
