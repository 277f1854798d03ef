// Standard output. Every byte the engine prints goes through here, so that one switch can end
// its lines in a line feed alone for readers that split lines at LF and keep the CR.
#pragma once

#include <cstddef>

// With `on`, a carriage return right before a line feed is dropped; nothing else changes. Off
// (the default), bytes go out exactly as given.
void set_lf_only(bool on);

// Writes `length` bytes.
void out_write(const char *bytes, std::size_t length);

// Writes `text` and a line feed, as puts does.
void out_puts(const char *text);

// Writes formatted text, as printf does, however long.
#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
void out_printf(const char *format, ...);

// Hands what has been written to the system.
void out_flush();
