// Small text helpers shared by the command readers.
#pragma once

#include <cstddef>
#include <cstdint>

// Reads an optional sign and decimal digits after leading white space, as atoi does; a value
// beyond the 32-bit range saturates instead of being undefined.
std::int32_t text_to_int(const char *text);

// Copies at most size - 1 characters of `text` into `buffer` and terminates it.
void copy_cut(char *buffer, const char *text, std::size_t size);

// Cuts the next token off `*cursor` in place: runs of `separator` count as one and leading ones
// are skipped. Returns null when no token is left.
char *next_token(char **cursor, char separator);
