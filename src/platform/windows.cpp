// Windows services: the performance counter for the clock, ReadFile on the standard-input handle
// with PeekNamedPipe for the non-blocking look, the console API for cls, and reserved-then-
// committed virtual memory for the one large block.
#include "platform/pages.h"
#include "platform/platform.h"
#include "platform/system_input.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

void sleep_ms(int ms) { Sleep(DWORD(ms)); }

std::uint64_t physical_memory_bytes()
{
    MEMORYSTATUSEX status;
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) ? std::uint64_t(status.ullTotalPhys) : 0;
}

void platform_init()
{
    // The C runtime's text mode would turn every LF into CR LF, so the CR LF of the UCI answers
    // would leave as CR CR LF. In binary mode the bytes go out as the engine writes them.
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

namespace {

std::int64_t read_frequency()
{
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    // Never zero on a working system; guard the division all the same.
    return frequency.QuadPart > 0 ? frequency.QuadPart : 1;
}

// Ticks per second of the performance counter, read once before main.
const std::int64_t counter_frequency = read_frequency();

} // namespace

std::uint64_t clock_ms()
{
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    // Multiplication first, in 64 bits: whole milliseconds without a rounding of the frequency.
    return std::uint64_t(counter.QuadPart * 1000 / counter_frequency);
}

// The same whole milliseconds: the deadline is measured in the grain the counter formula gives.
double clock_ms_real() { return double(clock_ms()); }

namespace {

HANDLE input_handle()
{
    static const HANDLE handle = GetStdHandle(STD_INPUT_HANDLE);
    return handle;
}

bool valid(HANDLE handle) { return handle != nullptr && handle != INVALID_HANDLE_VALUE; }

} // namespace

// A pipe whose writer has gone reports ERROR_BROKEN_PIPE; a file or a console at its end reads 0
// bytes. Both are the end of input.
int system_read(char *into, int most)
{
    DWORD got = 0;
    if (!valid(input_handle()) || !ReadFile(input_handle(), into, DWORD(most), &got, nullptr))
        return 0;
    return int(got);
}

bool stdin_is_pipe()
{
    const HANDLE handle = input_handle();
    if (!valid(handle)) return false;
    return (GetFileType(handle) & ~DWORD(FILE_TYPE_REMOTE)) == FILE_TYPE_PIPE;
}

std::uint64_t coarse_tick()
{
    // GetTickCount64 reads memory the system keeps up to date, without a call into the kernel;
    // its grain is 10 to 16 ms, which bounds how late a `stop` is seen.
    return GetTickCount64();
}

int system_waiting()
{
    DWORD waiting = 0;
    // A broken pipe is the end of input: the read that follows says so at once. Asking for
    // exactly what waits keeps the read from blocking.
    if (!PeekNamedPipe(input_handle(), nullptr, 0, nullptr, &waiting, nullptr)) {
        if (GetLastError() == ERROR_BROKEN_PIPE) return 1;
        // A file never blocks a read: what it still holds, or its end, comes at once. A console
        // is not looked into (a line typed there waits until the search is over).
        return GetFileType(input_handle()) == FILE_TYPE_DISK ? 1 << 16 : 0;
    }
    return waiting > 0x40000000 ? 0x40000000 : int(waiting);
}

void *allocate_zeroed(std::uint64_t bytes)
{
    // Committed pages read as zero and take no physical memory until they are first written.
    return VirtualAlloc(nullptr, SIZE_T(bytes), MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void release_zeroed(void *block, std::uint64_t)
{
    if (block) VirtualFree(block, 0, MEM_RELEASE);
}

void back_pages(void *block, std::uint64_t bytes) { write_back_pages(block, bytes); }

void rezero(void *block, std::uint64_t bytes)
{
    // Decommitting hands the written pages back; committing them again gives zero pages, and
    // untouched ones cost nothing either way. Should the decommit be refused, fill by hand.
    if (!VirtualFree(block, SIZE_T(bytes), MEM_DECOMMIT)) {
        std::memset(block, 0, std::size_t(bytes));
        return;
    }
    if (VirtualAlloc(block, SIZE_T(bytes), MEM_COMMIT, PAGE_READWRITE)) return;
    // The system gave the commit charge to someone else in between: the table can't be had
    // again, which ends the engine as at start-up rather than letting it touch missing pages.
    static const char message[] = "Failed to allocate hash table\r\n";
    std::fwrite(message, 1, sizeof message - 1, stderr);
    std::exit(1);
}

void clear_terminal()
{
    const HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    if (!valid(out)) return;
    CONSOLE_SCREEN_BUFFER_INFO info;
    // Fails when standard output is a pipe or a file: nothing is written then.
    if (!GetConsoleScreenBufferInfo(out, &info)) return;
    const DWORD cells = DWORD(info.dwSize.X) * DWORD(info.dwSize.Y);
    const COORD home = { 0, 0 };
    DWORD done = 0;
    FillConsoleOutputCharacterA(out, ' ', cells, home, &done);
    FillConsoleOutputAttribute(out, info.wAttributes, cells, home, &done);
    SetConsoleCursorPosition(out, home);
}
