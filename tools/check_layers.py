#!/usr/bin/env python3
"""Fails when a file includes a header of a layer above its own.

Every include of the engine's headers names its folder ("eval/evaluate.h"). Each folder of src/
may include its own headers and those of the folders below it; a suite under tests/ or a
benchmark under bench/ may include what the folder it is named after may include. Run it with the
project's root as the argument (CTest does); it prints every wrong-way include and exits 1, or
exits 0 when there is none.
"""
import pathlib
import re
import sys

# Each layer with the layers it may reach into, directly or through another.
BELOW = {
    "platform": set(),
    "position": set(),
    "movegen": {"position"},
    "eval": {"movegen", "position"},
    "control": {"platform", "position"},
    "search": {"eval", "movegen", "position", "control", "platform"},
    "frontend": {"search", "eval", "movegen", "position", "control", "platform"},
}
# Suites and benchmarks that are not named after a layer, with the layer whose reach they have.
STANDS_FOR = {"perft": "movegen", "search_pipes": "frontend"}
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)


def layer_of(path: pathlib.Path, root: pathlib.Path):
    parts = path.relative_to(root).parts
    if len(parts) < 3 or parts[0] not in ("src", "tests", "bench"):
        return None
    name = STANDS_FOR.get(parts[1], parts[1])
    return name if name in BELOW else None


def main() -> int:
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".").resolve()
    wrong = []
    checked = 0
    for top in ("src", "tests", "bench"):
        for path in sorted((root / top).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            layer = layer_of(path, root)
            if layer is None:
                continue
            checked += 1
            allowed = BELOW[layer] | {layer}
            for number, line in enumerate(path.read_text().splitlines(), 1):
                match = INCLUDE.match(line)
                if not match:
                    continue
                target = match.group(1).split("/")
                if len(target) == 1:
                    if top == "src":
                        wrong.append(f"{path.relative_to(root)}:{number}: {match.group(1)} names no folder")
                    continue
                if target[0] in ("tests", "bench"):
                    continue
                if target[0] not in allowed:
                    wrong.append(f"{path.relative_to(root)}:{number}: {layer} includes {match.group(1)}")
    for w in wrong:
        print(w)
    print(f"{checked} files checked, {len(wrong)} wrong-way includes")
    return 1 if wrong or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
