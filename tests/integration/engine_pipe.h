// Drives the real engine binary through pipes, as a GUI does.
#pragma once

#include <string>

#include <sys/types.h>

struct engine_process {
    pid_t pid = -1;
    int to_engine = -1; // the engine's standard input
    int from_engine = -1; // the engine's standard output
    std::string output; // everything read so far
};

// Starts the engine with its standard input and output on pipes; `limit_memory_kib` > 0 puts an
// address-space limit on the child first.
bool start_engine(engine_process *engine, long limit_memory_kib = 0);

// Writes `text` to the engine's standard input.
void send_text(engine_process *engine, const std::string &text);

// Reads output until it holds `wanted` after `from`, or `timeout_ms` has passed; true if found.
bool read_until(
    engine_process *engine, const std::string &wanted, int timeout_ms, std::size_t from = 0);

// Closes the engine's standard input, reads the rest of its output and waits for it to end.
// Returns the exit status, or -1 if it had to be killed after `timeout_ms`.
int finish_engine(engine_process *engine, int timeout_ms = 30000);

// Runs the engine on `input` from start to end of input; returns its output and exit status.
std::string run_engine(const std::string &input, int *status = nullptr);
