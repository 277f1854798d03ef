"""Drives the engine binary through pipes, as a GUI does. A cross-built engine is started through
the emulator named in KORVANE_EMULATOR (blank-separated words, as CTest gives it)."""
import os
import re
import select
import subprocess
import time


EMULATOR = os.environ.get("KORVANE_EMULATOR", "").split()


def command(path, args=()):
    """The command line that starts the engine at `path`, through the emulator if there is one."""
    return [*EMULATOR, path, *args]


class Engine:
    def __init__(self, path, preexec_fn=None, args=()):
        self.proc = subprocess.Popen(command(path, args), stdin=subprocess.PIPE,
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE, bufsize=0,
                                     preexec_fn=preexec_fn)
        self.pending = b""

    def send(self, text):
        self.proc.stdin.write(text.encode() if isinstance(text, str) else text)
        self.proc.stdin.flush()

    def close_input(self):
        self.proc.stdin.close()

    def read_line(self, timeout):
        """The next line with its end (LF, any CR kept), or None after `timeout` seconds."""
        deadline = time.monotonic() + timeout
        while b"\n" not in self.pending:
            left = deadline - time.monotonic()
            if left <= 0:
                return None
            ready, _, _ = select.select([self.proc.stdout], [], [], left)
            if not ready:
                return None
            chunk = os.read(self.proc.stdout.fileno(), 65536)
            if not chunk:
                if self.pending:
                    line, self.pending = self.pending, b""
                    return line.decode()
                return None
            self.pending += chunk
        line, _, self.pending = self.pending.partition(b"\n")
        return line.decode() + "\n"

    def read_lines(self, timeout):
        """Every line that comes within `timeout` seconds."""
        lines, deadline = [], time.monotonic() + timeout
        while (line := self.read_line(max(0.0, deadline - time.monotonic()))) is not None:
            lines.append(line)
        return lines

    def read_until(self, prefix, timeout):
        """Lines up to and including the first that starts with `prefix`; raises on timeout."""
        lines = []
        deadline = time.monotonic() + timeout
        while True:
            line = self.read_line(max(0.0, deadline - time.monotonic()))
            if line is None:
                raise AssertionError("no %r within %.1f s; got %r" % (prefix, timeout, lines))
            lines.append(line)
            if line.startswith(prefix):
                return lines

    def search(self, go_line, timeout=60):
        """Sends a go line; returns (info lines, bestmove line, elapsed line)."""
        self.send(go_line + "\n")
        lines = self.read_until("bestmove", timeout)
        elapsed = self.read_until("elapsed time:", 5)
        return lines[:-1], lines[-1], elapsed[-1]

    def wait(self, timeout):
        try:
            return self.proc.wait(timeout)
        except subprocess.TimeoutExpired:
            self.proc.kill()
            raise AssertionError("the engine did not end within %.1f s" % timeout)

    def kill(self):
        if self.proc.poll() is None:
            self.proc.kill()
            self.proc.wait()


def run(path, text, timeout=60, args=()):
    """Runs the engine on `text` to the end of its input; returns (output, exit status)."""
    done = subprocess.run(command(path, args), input=text.encode("latin-1"), stdout=subprocess.PIPE,
                          timeout=timeout)
    return done.stdout.decode("latin-1"), done.returncode


def run_in_turns(path, text, timeout=60, args=()):
    """Runs the engine on `text` as a GUI talks to it: each part up to a `go` line is written
    when the answer to the one before has come, since a search ends at the end of input (in the
    standard dialect); then the input ends. Returns (output, exit status)."""
    e = Engine(path, args=args)
    out, part = [], ""
    for line in text.splitlines(keepends=True):
        part += line
        if line.startswith("go"):
            e.send(part)
            part = ""
            out += e.read_until("bestmove", timeout)
    e.send(part)
    e.close_input()
    out += e.read_lines(5)
    return "".join(out), e.wait(timeout)


def without_times(text):
    """`text` with the figures that vary from run to run masked: elapsed times, the `info` time
    field, and in the standard dialect nps, hashfull and the largest Hash, which the machine sets."""
    for pattern, mask in ((r"elapsed time: \d+ ms", "elapsed time: T ms"),
                          (r" time \d+ ", " time T "),
                          (r" nps \d+ hashfull \d+ ", " nps N hashfull H "),
                          (r"(option name Hash type spin .* max )\d+", r"\1M")):
        text = re.sub(pattern, mask, text)
    return text
