// Pipes to and from a child engine process, with poll(2) so that neither side blocks the other.
#include "engine_pipe.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

long long now_ms()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// Reads what is there within `wait_ms`; false once the engine's output has ended.
bool read_some(engine_process *engine, int wait_ms)
{
    if (engine->from_engine < 0) return false;
    pollfd ready = { engine->from_engine, POLLIN, 0 };
    if (poll(&ready, 1, wait_ms) <= 0) return true;
    char buffer[65536];
    ssize_t got = read(engine->from_engine, buffer, sizeof buffer);
    if (got <= 0) {
        if (got < 0 && errno == EINTR) return true;
        close(engine->from_engine);
        engine->from_engine = -1;
        return false;
    }
    engine->output.append(buffer, std::size_t(got));
    return true;
}

} // namespace

bool start_engine(engine_process *engine, long limit_memory_kib)
{
    std::signal(SIGPIPE, SIG_IGN);
    int in[2], out[2];
    if (pipe(in) != 0 || pipe(out) != 0) return false;
    engine->pid = fork();
    if (engine->pid < 0) return false;
    if (engine->pid == 0) {
        dup2(in[0], 0);
        dup2(out[1], 1);
        close(in[0]);
        close(in[1]);
        close(out[0]);
        close(out[1]);
        if (limit_memory_kib > 0) {
            rlimit limit = { rlim_t(limit_memory_kib) * 1024, rlim_t(limit_memory_kib) * 1024 };
            setrlimit(RLIMIT_AS, &limit);
        }
        execl(KORVANE_BINARY, KORVANE_BINARY, static_cast<char *>(nullptr));
        _exit(127);
    }
    close(in[0]);
    close(out[1]);
    engine->to_engine = in[1];
    engine->from_engine = out[0];
    engine->output.clear();
    return true;
}

void send_text(engine_process *engine, const std::string &text)
{
    std::size_t sent = 0;
    while (sent < text.size() && engine->to_engine >= 0) {
        pollfd ready[2] = { { engine->to_engine, POLLOUT, 0 }, { engine->from_engine, POLLIN, 0 } };
        int count = engine->from_engine >= 0 ? 2 : 1;
        if (poll(ready, nfds_t(count), 1000) <= 0) continue;
        if (count == 2 && (ready[1].revents & (POLLIN | POLLHUP))) read_some(engine, 0);
        if (ready[0].revents & (POLLERR | POLLHUP)) break;
        if (ready[0].revents & POLLOUT) {
            ssize_t wrote = write(engine->to_engine, text.data() + sent, text.size() - sent);
            if (wrote < 0 && errno != EINTR && errno != EAGAIN) break;
            if (wrote > 0) sent += std::size_t(wrote);
        }
    }
}

bool read_until(engine_process *engine, const std::string &wanted, int timeout_ms, std::size_t from)
{
    const long long deadline = now_ms() + timeout_ms;
    for (;;) {
        if (engine->output.find(wanted, from) != std::string::npos) return true;
        long long left = deadline - now_ms();
        if (left <= 0) return false;
        if (!read_some(engine, int(left < 50 ? left : 50))
            && engine->output.find(wanted, from) == std::string::npos)
            return false;
    }
}

int finish_engine(engine_process *engine, int timeout_ms)
{
    if (engine->to_engine >= 0) {
        close(engine->to_engine);
        engine->to_engine = -1;
    }
    const long long deadline = now_ms() + timeout_ms;
    while (engine->from_engine >= 0 && now_ms() < deadline) read_some(engine, 50);
    int status = 0;
    for (;;) {
        pid_t done = waitpid(engine->pid, &status, WNOHANG);
        if (done == engine->pid) break;
        if (now_ms() >= deadline) {
            kill(engine->pid, SIGKILL);
            waitpid(engine->pid, &status, 0);
            return -1;
        }
        usleep(1000);
    }
    if (engine->from_engine >= 0) close(engine->from_engine);
    engine->from_engine = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

std::string run_engine(const std::string &input, int *status)
{
    engine_process engine;
    if (!start_engine(&engine)) return "<engine did not start>";
    send_text(&engine, input);
    int code = finish_engine(&engine);
    if (status) *status = code;
    return engine.output;
}
