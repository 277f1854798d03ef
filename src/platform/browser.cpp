// The browser's services, for the WebAssembly build: the engine runs in a Web Worker, and its
// standard input is a ring of bytes in a SharedArrayBuffer that the page writes command lines
// into. The worker's script hands the ring to the module as Module.korvaneRing = { head, data }:
// head an Int32Array of [bytes written, bytes read], both counters that run on and wrap at 2^32,
// data a Uint8Array whose length is a power of two. Reading blocks on Atomics.wait while the ring
// is empty. Without a ring (the build run by node from a shell) standard input is descriptor 0,
// read with blocking reads and never looked into during a search.
#include "platform/platform.h"
#include "platform/system_input.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <emscripten.h>
#include <emscripten/heap.h>

namespace {

// Copies up to `most` waiting bytes of the ring (or of node's standard input) to `into`. When
// nothing waits it returns 0 at once if `block` is 0, else it waits for bytes; -1 at the end of
// node's input.
// clang-format off
EM_JS(int, ring_read, (char *into, int most, int block), {
    var ring = Module["korvaneRing"];
    if (!ring) {
        if (!block || typeof require !== "function") return block ? -1 : 0;
        var fs = require("fs"), chunk = Buffer.alloc(most);
        for (;;) {
            try {
                var got = fs.readSync(0, chunk, 0, most, null);
                HEAPU8.set(chunk.subarray(0, got), into);
                return got;
            } catch (e) {
                if (e.code !== "EAGAIN") return -1;
            }
        }
    }
    var head = ring.head, data = ring.data, mask = data.length - 1;
    var written = Atomics.load(head, 0), read = Atomics.load(head, 1);
    while (written === read) {
        if (!block) return 0;
        Atomics.wait(head, 0, written);
        written = Atomics.load(head, 0);
    }
    var count = Math.min((written - read) | 0, most);
    for (var i = 0; i < count; i++) HEAPU8[into + i] = data[(read + i) & mask];
    Atomics.store(head, 1, (read + count) | 0);
    return count;
});

// How many bytes wait in the ring; 0 without one.
EM_JS(int, ring_waiting, (), {
    var ring = Module["korvaneRing"];
    if (!ring) return 0;
    return (Atomics.load(ring.head, 0) - Atomics.load(ring.head, 1)) | 0;
});

// Sleeps `ms` milliseconds, or less when a line arrives in the ring meanwhile: a wait for `stop`
// answers it as soon as it comes.
EM_JS(void, ring_sleep, (int ms), {
    var ring = Module["korvaneRing"];
    var head = ring ? ring.head : new Int32Array(new SharedArrayBuffer(4));
    var written = Atomics.load(head, 0);
    if (ring && written !== Atomics.load(head, 1)) return;
    Atomics.wait(head, 0, written, ms);
});

// True when the module has a ring, so input arrives as through a pipe.
EM_JS(int, ring_present, (), { return Module["korvaneRing"] ? 1 : 0; });
// clang-format on

} // namespace

// The browser's streams don't translate line ends.
void platform_init() { }

std::uint64_t clock_ms() { return std::uint64_t(emscripten_get_now()); }

double clock_ms_real() { return emscripten_get_now(); }

int system_waiting() { return ring_waiting(); }

namespace {

// The tick last read from the clock, when it was read, and how often it is read: at every
// `stride`th ask, counted in `asks`.
std::uint64_t held_tick = 0;
double last_read = 0;
unsigned stride = 1, asks = 0;
constexpr unsigned most_stride = 1024;
// The time between two reads that the stride is fitted to, in milliseconds.
constexpr double read_gap = 0.25;

// Reads the clock at the next ask, and from then on at every ask until the asks come fast.
void read_soon()
{
    stride = 1;
    asks = 0;
}

} // namespace

// The search asks for the tick at every quiescence node and move, millions of times a second, and
// reading the clock is a call out to JavaScript, many times dearer than the ask itself. So the
// clock is read at every `stride`th ask and the tick held in between, the stride fitted to how
// fast the asks come: doubled while reads come less than a quarter of a millisecond apart, cut in
// proportion when they come further apart (a perft asks far more slowly than a search). After a
// read of input or a sleep the clock is read at every ask again: a new command may ask at any
// pace, and a slow loop (the wait for stop) sees the tick move at each turn.
std::uint64_t coarse_tick()
{
    if (++asks < stride) return held_tick;
    asks = 0;
    const double now = emscripten_get_now();
    const double gap = now - last_read;
    last_read = now;
    if (gap < read_gap)
        stride = stride * 2 < most_stride ? stride * 2 : most_stride;
    else if (gap > 2 * read_gap)
        stride = stride * read_gap / gap >= 1 ? unsigned(stride * read_gap / gap) : 1;
    held_tick = std::uint64_t(now);
    return held_tick;
}

int system_read(char *into, int most)
{
    read_soon();
    return ring_read(into, most, 1);
}

bool stdin_is_pipe() { return ring_present() != 0; }

void sleep_ms(int ms)
{
    ring_sleep(ms);
    read_soon();
}

// The most memory the module may grow to: all the engine can ever have.
std::uint64_t physical_memory_bytes() { return emscripten_get_heap_max(); }

// WebAssembly memory has no pages to hand back or to back in advance: the block is zeroed by hand
// and is backed from the start.
void *allocate_zeroed(std::uint64_t bytes)
{
    if (bytes > emscripten_get_heap_max()) return nullptr;
    void *block = std::aligned_alloc(64, std::size_t(bytes));
    if (block) std::memset(block, 0, std::size_t(bytes));
    return block;
}

void release_zeroed(void *block, std::uint64_t) { std::free(block); }

void back_pages(void *, std::uint64_t) { }

void rezero(void *block, std::uint64_t bytes) { std::memset(block, 0, std::size_t(bytes)); }

// The page has no terminal to clear.
void clear_terminal() { }
