// Small text helpers shared by the command readers.
#include "position/text.h"

#include <cstring>

std::int32_t text_to_int(const char *text)
{
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) text++;
    bool negative = *text == '-';
    if (*text == '-' || *text == '+') text++;
    std::int64_t value = 0;
    for (; *text >= '0' && *text <= '9'; text++) {
        value = value * 10 + (*text - '0');
        if (value > 0x80000000LL) value = 0x80000000LL;
    }
    if (negative) return std::int32_t(-value);
    return value > 0x7FFFFFFF ? 0x7FFFFFFF : std::int32_t(value);
}

void copy_cut(char *buffer, const char *text, std::size_t size)
{
    std::size_t length = strnlen(text, size - 1);
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
}

char *next_token(char **cursor, char separator)
{
    char *c = *cursor;
    while (*c == separator) c++;
    if (!*c) {
        *cursor = c;
        return nullptr;
    }
    char *token = c;
    while (*c && *c != separator) c++;
    if (*c) *c++ = '\0';
    *cursor = c;
    return token;
}
