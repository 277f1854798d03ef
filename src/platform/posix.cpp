// POSIX services: clock_gettime, read(2) and poll(2) on descriptor 0, isatty for the console,
// anonymous mappings for the one large block, in large pages where the system gives them.
#include "platform/pages.h"
#include "platform/platform.h"
#include "platform/system_input.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <poll.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

void sleep_ms(int ms)
{
    const timespec pause = { ms / 1000, long(ms % 1000) * 1000000L };
    nanosleep(&pause, nullptr);
}

std::uint64_t physical_memory_bytes()
{
    const long pages = sysconf(_SC_PHYS_PAGES), size = sysconf(_SC_PAGE_SIZE);
    return pages > 0 && size > 0 ? std::uint64_t(pages) * std::uint64_t(size) : 0;
}

// POSIX streams don't translate line ends.
void platform_init() { }

std::uint64_t clock_ms()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::uint64_t(now.tv_sec) * 1000 + std::uint64_t(now.tv_nsec) / 1000000;
}

double clock_ms_real()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1e6;
}

int system_read(char *into, int most)
{
    ssize_t got;
    do got = read(0, into, std::size_t(most));
    while (got < 0 && errno == EINTR);
    return int(got);
}

bool stdin_is_pipe()
{
    struct stat info;
    if (fstat(0, &info) != 0) return false;
    return S_ISFIFO(info.st_mode) || S_ISSOCK(info.st_mode);
}

std::uint64_t coarse_tick()
{
    // The coarse clock is read from memory shared with the kernel, without a system call.
    timespec now;
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return std::uint64_t(now.tv_sec) * 1000 + std::uint64_t(now.tv_nsec) / 1000000;
}

int system_waiting()
{
    pollfd ready = { 0, POLLIN, 0 };
    if (poll(&ready, 1, 0) <= 0 || !(ready.revents & (POLLIN | POLLHUP | POLLERR))) return 0;
    // A ready descriptor answers one read(2) at once with what it holds, however much is asked;
    // at its end or on an error that read gives 0 or -1.
    return 1 << 30;
}

namespace {

// Large pages of 2 MiB, where the system gives them: a block touched at random (the hash table)
// then needs one address-translation entry and one page fault per 2 MiB instead of per 4 KiB.
constexpr std::size_t large_page = std::size_t(2) << 20;

} // namespace

void *allocate_zeroed(std::uint64_t bytes)
{
    // Mapped one large page longer, then trimmed so that the block starts on a large-page
    // boundary, which the system needs to back it with large pages.
    const std::size_t size = std::size_t(bytes);
    void *mapped = mmap(
        nullptr, size + large_page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    char *start = static_cast<char *>(mapped);
    char *block = reinterpret_cast<char *>(
        (reinterpret_cast<std::uintptr_t>(start) + large_page - 1) & ~(large_page - 1));
    if (block > start) munmap(start, std::size_t(block - start));
    char *end = start + size + large_page;
    if (end > block + size) munmap(block + size, std::size_t(end - (block + size)));
#ifdef MADV_HUGEPAGE
    madvise(block, size, MADV_HUGEPAGE); // advice only: without it the block is the same
#endif
    return block;
}

void release_zeroed(void *block, std::uint64_t bytes)
{
    if (block) munmap(block, std::size_t(bytes));
}

void back_pages(void *block, std::uint64_t bytes)
{
#ifdef MADV_POPULATE_WRITE
    // Linux 5.14 and later: the kernel backs the pages without touching their contents.
    if (madvise(block, std::size_t(bytes), MADV_POPULATE_WRITE) == 0) return;
#endif
    write_back_pages(block, bytes);
}

void rezero(void *block, std::uint64_t bytes)
{
    // An anonymous private mapping reads as zero again after MADV_DONTNEED; should the advice be
    // refused, fill it by hand.
    if (madvise(block, std::size_t(bytes), MADV_DONTNEED) != 0)
        std::memset(block, 0, std::size_t(bytes));
}

void clear_terminal()
{
    if (!isatty(1)) return;
    // Erase the screen and its scroll-back, then home the cursor.
    static const char sequence[] = "\x1b[2J\x1b[3J\x1b[H";
    ssize_t written = write(1, sequence, sizeof sequence - 1);
    (void)written;
}
