// Backing a block's pages by writing one byte of each back as it was: what each system's module
// does where the system has no cheaper way. Used inside src/platform only.
#pragma once

#include <cstdint>

inline void write_back_pages(void *block, std::uint64_t bytes)
{
    constexpr std::uint64_t page = 4096; // the smallest page of either system
    volatile char *bytes_of = static_cast<volatile char *>(block);
    for (std::uint64_t at = 0; at < bytes; at += page) bytes_of[at] = bytes_of[at];
}
