#!/usr/bin/env bash
# Runs every count of suite.epd through the engine binary's perft command, deepest included.
# Usage: tests/perft/deep_perft.sh [max-leaves] [engine]
#   max-leaves  skip counts above this many leaves (default: none skipped)
#   engine      the binary to drive (default: build/korvane)
# Prints one line per count and exits non-zero if any count differs.
set -uo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
max=${1:-0}
engine=${2:-"$here/../../build/korvane"}
[ -x "$engine" ] || { echo "no engine at $engine (build it first)" >&2; exit 2; }

failures=0
checked=0
while IFS= read -r line; do
    case "$line" in '#'* | '') continue ;; esac
    IFS=';' read -r -a fields <<< "$line"
    name=$(echo "${fields[0]}" | xargs)
    fen=$(echo "${fields[1]}" | xargs)
    for field in "${fields[@]:2}"; do
        read -r depth_word nodes <<< "$field"
        depth=${depth_word#D}
        if [ "$max" -gt 0 ] && [ "$nodes" -gt "$max" ]; then continue; fi
        output=$(printf 'position fen %s\nperft %s\nquit\n' "$fen" "$depth" | "$engine")
        got=$(printf '%s\n' "$output" | sed -n "s/^$depth=\([0-9]*\)$/\1/p")
        ms=$(printf '%s\n' "$output" | sed -n 's/^elapsed time: \([0-9]*\) ms$/\1/p')
        checked=$((checked + 1))
        if [ "$got" = "$nodes" ]; then
            printf 'ok    %-26s depth %d  %12s leaves  %7s ms\n' "$name" "$depth" "$nodes" "$ms"
        else
            printf 'FAIL  %-26s depth %d  expected %s, got %s\n' "$name" "$depth" "$nodes" "${got:-nothing}"
            failures=$((failures + 1))
        fi
    done
done < "$here/suite.epd"
echo "$checked counts checked, $failures failed"
[ "$failures" -eq 0 ]
