// Drives korvane.exe through anonymous pipes made with CreatePipe and a process made with
// CreateProcess, as a Windows GUI starts an engine. Usage: pipe_driver ENGINE CASE; exits 0 when
// the case holds and 1 with a message when it doesn't. `pipe_driver ENGINE session NAME TABLE` runs
// one session of the pipe sessions' table, `pipe_driver ENGINE dialogue NAME TABLE` one dialogue of
// the timed dialogues' table (steps as tests/search_pipes/dialogues.txt describes them).
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace {

const char start_key[] = "463b96181691fc9c";

bool failed = false;

void expect(bool condition, const std::string &what)
{
    if (condition) return;
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
    failed = true;
}

double now_seconds()
{
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return double(count.QuadPart) / double(frequency.QuadPart);
}

struct Engine {
    HANDLE process = nullptr;
    HANDLE to_engine = nullptr; // our end of its standard input
    HANDLE from_engine = nullptr; // our end of its standard output
    std::string pending; // bytes read and not yet handed out as lines
    bool output_ended = false;
};

bool start(Engine *e, const char *path, const std::string &arguments = "")
{
    SECURITY_ATTRIBUTES inherit = { sizeof inherit, nullptr, TRUE };
    HANDLE child_in = nullptr, child_out = nullptr;
    if (!CreatePipe(&child_in, &e->to_engine, &inherit, 0)) return false;
    if (!CreatePipe(&e->from_engine, &child_out, &inherit, 0)) return false;
    // Our ends stay with us.
    SetHandleInformation(e->to_engine, HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(e->from_engine, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = child_in;
    startup.hStdOutput = child_out;
    startup.hStdError = child_out;
    PROCESS_INFORMATION info = {};
    std::string command = std::string("\"") + path + "\"" + arguments;
    if (!CreateProcessA(
            nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &info))
        return false;
    CloseHandle(info.hThread);
    CloseHandle(child_in);
    CloseHandle(child_out);
    e->process = info.hProcess;
    return true;
}

void send(Engine *e, const std::string &text)
{
    DWORD written = 0;
    expect(WriteFile(e->to_engine, text.data(), DWORD(text.size()), &written, nullptr)
            && written == text.size(),
        "write to the engine");
}

void close_input(Engine *e)
{
    CloseHandle(e->to_engine);
    e->to_engine = nullptr;
}

// Reads what waits on the engine's output, waiting up to `timeout` seconds for something.
// False when nothing came in time or the output has ended.
bool read_some(Engine *e, double timeout)
{
    const double deadline = now_seconds() + timeout;
    for (;;) {
        DWORD waiting = 0;
        if (!PeekNamedPipe(e->from_engine, nullptr, 0, nullptr, &waiting, nullptr)) {
            e->output_ended = true;
            return false;
        }
        if (waiting > 0) {
            std::vector<char> bytes(waiting);
            DWORD got = 0;
            if (!ReadFile(e->from_engine, bytes.data(), waiting, &got, nullptr) || got == 0) {
                e->output_ended = true;
                return false;
            }
            e->pending.append(bytes.data(), got);
            return true;
        }
        // Once the process has ended, all it wrote is in the pipe: an empty pipe is the end.
        // (Under wine the look doesn't fail on a pipe whose writer has gone.)
        if (WaitForSingleObject(e->process, 0) == WAIT_OBJECT_0) {
            e->output_ended = true;
            return false;
        }
        if (now_seconds() > deadline) return false;
        Sleep(1);
    }
}

// Lines, each with its line end, up to and including the first that starts with `prefix`.
// Empty when it doesn't come within `timeout` seconds.
std::vector<std::string> read_until(Engine *e, const char *prefix, double timeout)
{
    std::vector<std::string> lines;
    const double deadline = now_seconds() + timeout;
    for (;;) {
        std::size_t end;
        while ((end = e->pending.find('\n')) != std::string::npos) {
            lines.push_back(e->pending.substr(0, end + 1));
            e->pending.erase(0, end + 1);
            if (lines.back().rfind(prefix, 0) == 0) return lines;
        }
        const double left = deadline - now_seconds();
        if (left <= 0 || !read_some(e, left)) break;
    }
    std::string got;
    for (const std::string &line : lines) got += line;
    expect(false, std::string("no line starting with '") + prefix + "' came; got: " + got);
    return {};
}

// Everything up to the end of the engine's output.
std::string read_all(Engine *e, double timeout)
{
    const double deadline = now_seconds() + timeout;
    while (!e->output_ended && now_seconds() < deadline) read_some(e, deadline - now_seconds());
    std::string all;
    all.swap(e->pending);
    return all;
}

// The exit status, or -1 when the process is still running after `timeout` seconds.
int wait_exit(Engine *e, double timeout)
{
    if (WaitForSingleObject(e->process, DWORD(timeout * 1000)) != WAIT_OBJECT_0) {
        TerminateProcess(e->process, 99);
        return -1;
    }
    DWORD status = 0;
    GetExitCodeProcess(e->process, &status);
    return int(status);
}

std::string joined(const std::vector<std::string> &lines)
{
    std::string all;
    for (const std::string &line : lines) all += line;
    return all;
}

void start_long_search(Engine *e)
{
    // No time limit: only stop, quit or twelve iterations end it.
    send(e, "position startpos\ngo depth 12\n");
    read_until(e, "info depth 3", 60);
}

std::string board_key(Engine *e)
{
    send(e, "boardkey\n");
    const std::vector<std::string> lines = read_until(e, "static  key:", 10);
    return lines.empty() ? std::string() : lines.back();
}

// The lines of the entry `name` of a table of sessions or dialogues ("=== name [arguments]",
// then its lines up to the next entry; comment lines left out), with its arguments. False when
// there is no such entry.
bool read_entry(
    const char *table, const char *name, std::string *arguments, std::vector<std::string> *lines)
{
    std::ifstream file(table);
    bool inside = false, found = false;
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("=== ", 0) == 0) {
            std::istringstream words(line.substr(4));
            std::string word;
            words >> word;
            inside = word == name;
            found = found || inside;
            if (inside) std::getline(words, *arguments);
        } else if (inside && line.rfind("# ", 0) != 0) {
            lines->push_back(line);
        }
    }
    return found;
}

// One session of tests/search_pipes/sessions.txt, as the Python runner reads it: the input lines
// written in one go (in turns for the standard dialect), then all the output up to the end, with
// elapsed times masked and each CR shown as \r, equal to the recorded text.
bool run_session(const char *engine, const char *name, const char *table)
{
    std::string arguments, input, wanted;
    std::vector<std::string> entry;
    const bool found = read_entry(table, name, &arguments, &entry);
    for (const std::string &line : entry) {
        if (line.rfind(">", 0) == 0)
            input += line.substr(line.size() > 1 ? 2 : 1) + "\n";
        else
            wanted += line + "\n";
    }
    Engine e;
    if (!found || !start(&e, engine, arguments)) {
        std::fprintf(stderr, "no session %s in %s, or the engine did not start\n", name, table);
        return false;
    }
    // The standard dialect's sessions are written in turns, a GUI's way: a search ends at the
    // end of input there, so each part up to a `go` line waits for the answer to the one before.
    std::string out, part;
    std::istringstream lines(input);
    for (std::string line; std::getline(lines, line);) {
        part += line + "\n";
        if (arguments.find("--uci") == std::string::npos || line.rfind("go", 0) != 0) continue;
        send(&e, part);
        part.clear();
        out += joined(read_until(&e, "bestmove", 120));
    }
    send(&e, part);
    close_input(&e);
    out += read_all(&e, 120);
    out = std::regex_replace(out, std::regex("elapsed time: [0-9]+ ms"), "elapsed time: T ms");
    out = std::regex_replace(out, std::regex(" time [0-9]+ "), " time T ");
    out = std::regex_replace(out, std::regex(" nps [0-9]+ hashfull [0-9]+ "), " nps N hashfull H ");
    out = std::regex_replace(out, std::regex("(option name Hash type spin .* max )[0-9]+"), "$1M");
    out = std::regex_replace(out, std::regex("\r"), "\\r");
    expect(out == wanted, std::string("session ") + name + " gave:\n" + out);
    expect(wait_exit(&e, 10) == 0, "exit status at the end of input");
    return !failed;
}

// A line of text with each {N*c} written out as N times c.
std::string expand(const std::string &text)
{
    static const std::regex pattern("\\{([0-9]+)\\*(.)\\}");
    std::string out;
    std::smatch m;
    std::string rest = text;
    while (std::regex_search(rest, m, pattern)) {
        out += m.prefix().str() + std::string(std::stoul(m[1].str()), m[2].str()[0]);
        rest = m.suffix().str();
    }
    return out + rest;
}

// One dialogue of tests/search_pipes/dialogues.txt, step by step, as the Python runner runs it.
bool run_dialogue(const char *engine, const char *name, const char *table)
{
    std::string arguments;
    std::vector<std::string> steps;
    const bool found = read_entry(table, name, &arguments, &steps);
    steps.erase(std::remove(steps.begin(), steps.end(), std::string()), steps.end());
    Engine e;
    if (!found || !start(&e, engine, arguments)) {
        std::fprintf(stderr, "no dialogue %s in %s, or the engine did not start\n", name, table);
        return false;
    }
    std::vector<std::string> last;
    std::string pending, pv, best, best_pv;
    double mark = now_seconds(), ended = mark;
    steps.push_back("flush");
    for (std::size_t n = 0; n < steps.size() && !failed; n++) {
        const std::string &step = steps[n];
        const std::string where
            = std::string(name) + " step " + std::to_string(n + 1) + ": " + step.substr(0, 80);
        const std::size_t blank = step.find(' ');
        const std::string head = step.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : step.substr(blank + 1);
        if (head == ">-") {
            pending += expand(rest);
            continue;
        }
        const int times
            = head.size() > 1 && (head[0] == '>' || head[0] == '<') ? std::stoi(head.substr(1)) : 1;
        if (head[0] == '>') {
            for (int i = 0; i < times; i++) pending += expand(rest) + "\n";
            continue;
        }
        if (!pending.empty()) {
            send(&e, pending);
            pending.clear();
            mark = now_seconds();
        }
        if (head[0] == '<') {
            last.clear();
            for (int i = 0; i < times; i++)
                for (const std::string &line : read_until(&e, rest.c_str(), 10))
                    last.push_back(line);
            ended = now_seconds();
            for (const std::string &line : last) {
                const std::size_t at = line.find(" pv ");
                if (line.rfind("info depth", 0) == 0 && at != std::string::npos)
                    pv = line.substr(at + 4, line.find_first_of(" \r\n", at + 4) - at - 4);
                else if (line.rfind("bestmove ", 0) == 0)
                    best = line.substr(9, line.find_first_of(" \r\n", 9) - 9), best_pv = pv;
            }
        } else if (head == "lacks" || head == "has") {
            bool seen = false;
            for (const std::string &line : last)
                seen = seen || line.find(rest) != std::string::npos;
            expect(seen == (head == "has"), where + "; got: " + joined(last));
        } else if (head == "=") {
            expect(!last.empty() && last.back() == rest + "\n", where + "; got: " + joined(last));
        } else if (head == "took") {
            const double took = (ended - mark) * 1000, limit = std::stod(rest.substr(2));
            expect(rest[0] == '<' ? took < limit : took > limit,
                where + "; took " + std::to_string(took) + " ms");
        } else if (head == "pv") {
            expect(!best.empty() && best == best_pv, where + "; " + best + " after pv " + best_pv);
        } else if (head == "legal") {
            send(&e, rest + " moves " + best + "\nisready\n");
            const std::vector<std::string> lines = read_until(&e, "readyok", 10);
            expect(lines.size() == 1, where + "; " + best + ": " + joined(lines));
        } else if (head == "wait") {
            Sleep(DWORD(std::stoi(rest)));
        } else if (head == "close") {
            close_input(&e);
            mark = now_seconds();
        } else if (head == "exit") {
            const int status = wait_exit(&e, 10);
            const double took = (now_seconds() - mark) * 1000;
            expect(status == 0 && took < std::stod(rest),
                where + "; status " + std::to_string(status) + " after " + std::to_string(took)
                    + " ms");
        } else if (head != "flush") {
            expect(false, "unknown step " + where);
        }
    }
    if (wait_exit(&e, failed ? 0 : 10) == -1) expect(false, "the engine was still running");
    return !failed;
}

void case_stop_is_prompt(Engine *e)
{
    start_long_search(e);
    Sleep(200);
    const double sent = now_seconds();
    send(e, "stop\n");
    const std::vector<std::string> lines = read_until(e, "bestmove", 10);
    const double took = now_seconds() - sent;
    // The tick count's grain (about 16 ms) bounds how late the poll looks; wine adds its own.
    expect(took < 0.5, "stop took " + std::to_string(took) + " s");
    for (std::size_t i = 0; i + 1 < lines.size(); i++)
        expect(lines[i].rfind("info depth", 0) == 0, "before bestmove: " + lines[i]);
    read_until(e, "elapsed time:", 5);
    send(e, "quit\n");
    expect(wait_exit(e, 10) == 0, "exit status after quit");
}

void case_quit_during_search(Engine *e)
{
    start_long_search(e);
    const double sent = now_seconds();
    send(e, "quit\n");
    read_until(e, "bestmove", 10);
    read_until(e, "elapsed time:", 5);
    expect(wait_exit(e, 10) == 0, "exit status after quit");
    expect(now_seconds() - sent < 2.0, "quit was slow");
}

void case_lines_wait_for_bestmove(Engine *e)
{
    start_long_search(e);
    // The lines run after the search; the stop in the same write ends it.
    send(e, "isready\nposition startpos moves e2e4\nstop\n");
    const std::vector<std::string> lines = read_until(e, "readyok", 10);
    expect(lines.size() >= 3 && lines[lines.size() - 2].rfind("elapsed time:", 0) == 0
            && lines[lines.size() - 3].rfind("bestmove ", 0) == 0,
        "readyok before the bestmove: " + joined(lines));
    const std::string key = board_key(e);
    expect(key.find(start_key) == std::string::npos, "position didn't run: " + key);
    send(e, "quit\n");
    expect(wait_exit(e, 10) == 0, "exit status after quit");
}

void case_stop_drops_rest_of_chunk(Engine *e)
{
    start_long_search(e);
    send(e, "stop\nposition startpos moves e2e4\n");
    read_until(e, "elapsed time:", 10);
    const std::string key = board_key(e);
    expect(key.find(start_key) != std::string::npos, "the line behind stop ran: " + key);
    send(e, "quit\n");
    expect(wait_exit(e, 10) == 0, "exit status after quit");
}

struct Case {
    const char *name;
    void (*run)(Engine *);
};

const Case cases[] = {
    { "stop_is_prompt", case_stop_is_prompt },
    { "quit_during_search", case_quit_during_search },
    { "lines_wait_for_bestmove", case_lines_wait_for_bestmove },
    { "stop_drops_rest_of_chunk", case_stop_drops_rest_of_chunk },
};

} // namespace

int main(int argc, char **argv)
{
    if (argc == 5 && std::strcmp(argv[2], "session") == 0)
        return run_session(argv[1], argv[3], argv[4]) ? 0 : 1;
    if (argc == 5 && std::strcmp(argv[2], "dialogue") == 0)
        return run_dialogue(argv[1], argv[3], argv[4]) ? 0 : 1;
    if (argc != 3) {
        std::fprintf(stderr, "usage: pipe_driver ENGINE CASE | ENGINE session NAME TABLE\n");
        return 2;
    }
    for (const Case &c : cases) {
        if (std::strcmp(c.name, argv[2]) != 0) continue;
        Engine e;
        if (!start(&e, argv[1])) {
            std::fprintf(stderr, "can't start %s (error %lu)\n", argv[1], GetLastError());
            return 1;
        }
        c.run(&e);
        if (wait_exit(&e, 0) == -1) expect(false, "the engine was still running");
        if (failed) return 1;
        std::printf("ok %s\n", c.name);
        return 0;
    }
    std::fprintf(stderr, "no case %s\n", argv[2]);
    return 2;
}
