#!/usr/bin/env python3
"""Checks that a folder includes only from the folders above it, that no headers include each other in a
circle, that the umbrella header has every public header and no other, and that nobody outside the libraries
includes from a folder `detail`. With --self-test it checks itself on small trees that keep and break the
rules."""

import re
import sys
import tempfile
from pathlib import Path

# A folder may include from itself and from the folders above it; its subfolder `detail` counts as the folder
# itself.
LAYERS = [
    "QELModels/Platform",
    "QELModels/Values",
    "QELModels/Process",
    "QELModels/Memory",
    "QELModels/Representation",
    "QELModels/Records",
    "QELModels/Mapping",
    "QELModels/Categories",
    "QELModels/Functions",
    "QELModels/Transformers",
    "QELModels/Models",
    "QELModels/Mappers",
    "QELModels",
    "JSON",
    "tool",
    "tool/audit",
    "tool/generate",
    "tool/commands",
]

UMBRELLA = "QELModels/QELModels.h"
NOT_IN_UMBRELLA = {
    "QELModels/Memory/MemoryResourceZone.h",  # not every standard library has memory resources
}

# Who may include what is not for users: the libraries themselves.
LIBRARIES = ("QELModels/", "JSON/")

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<((?:QELModels|JSON|tool)/[^>]+)>)')


def is_detail(path):
    return Path(path).parent.name == "detail"


def folder_of(path):
    parent = Path(path).parent
    return str(parent.parent if is_detail(path) else parent)


def layer_of(path):
    return LAYERS.index(folder_of(path)) if folder_of(path) in LAYERS else None


def includes_of(root, path):
    for number, line in enumerate((root / path).read_text(encoding="utf-8").splitlines(), 1):
        if match := INCLUDE.match(line):
            yield number, match[1] or match[2]


def cycle_in(graph):
    """The headers of one cycle, first and last the same, or None."""
    done = set()
    for start in sorted(graph):
        if start in done:
            continue
        stack, trail, on_trail = [(start, iter(graph[start]))], [start], {start}
        while stack:
            node, rest = stack[-1]
            following = next((n for n in rest if n in graph and n not in done), None)
            if following is None:
                done.add(node)
                stack.pop()
                on_trail.discard(trail.pop())
            elif following in on_trail:
                return trail[trail.index(following):] + [following]
            else:
                stack.append((following, iter(graph[following])))
                trail.append(following)
                on_trail.add(following)
    return None


def faults_in(root):
    """One line for every broken rule, as `file:line: what is wrong`."""
    files = sorted(str(path.relative_to(root))
                   for layer in LAYERS for folder in (root / layer, root / layer / "detail")
                   for path in folder.glob("*") if path.suffix in (".h", ".cpp"))
    graph = {}
    for path in files:
        graph[path] = []
        for number, target in includes_of(root, path):
            graph[path].append(target)
            if not (root / target).is_file():
                yield f"{path}:{number}: no such file from the root: {target}"
            elif layer_of(target) is None:
                yield f"{path}:{number}: {target} is in none of the library's folders"
            elif layer_of(target) > layer_of(path):
                yield f"{path}:{number}: {folder_of(path)} must not include from {folder_of(target)}"
            elif is_detail(target) and (path == UMBRELLA or not path.startswith(LIBRARIES)):
                yield f"{path}:{number}: {target} is not for users"
    if UMBRELLA in graph:
        for path in files:
            if not path.startswith("QELModels/") or not path.endswith(".h") or is_detail(path):
                continue
            if path not in graph[UMBRELLA] and path != UMBRELLA and path not in NOT_IN_UMBRELLA:
                yield f"{UMBRELLA}: {path} is missing"
    if cycle := cycle_in(graph):
        yield "include cycle: " + " -> ".join(cycle)


def self_test():
    cases = [
        ("upwards and within a folder",
         {"QELModels/Models/A.h": '#include "QELModels/Platform/B.h"\n#include <vector>\n',
          "QELModels/Platform/B.h": '#include "QELModels/Platform/C.h"\n', "QELModels/Platform/C.h": ""}, None),
        ("the umbrella includes all",
         {"QELModels/QELModels.h": "#include <QELModels/Models/A.h>\n", "QELModels/Models/A.h": ""}, None),
        ("the umbrella lacks one",
         {"QELModels/QELModels.h": '#include "QELModels/Models/A.h"\n', "QELModels/Models/A.h": "",
          "QELModels/Mapping/B.h": "", "JSON/C.h": ""},
         "QELModels/QELModels.h: QELModels/Mapping/B.h is missing"),
        ("the umbrella gives details away",
         {"QELModels/QELModels.h": '#include "QELModels/Memory/detail/A.h"\n', "QELModels/Memory/detail/A.h": ""},
         "QELModels/QELModels.h:1: QELModels/Memory/detail/A.h is not for users"),
        ("details of the library in another room of it, and in JSON",
         {"QELModels/Memory/detail/A.h": "", "QELModels/Records/B.h": '#include "QELModels/Memory/detail/A.h"\n',
          "JSON/detail/C.h": '#include "QELModels/Memory/detail/A.h"\n'}, None),
        ("details of the library in the command",
         {"QELModels/Memory/detail/A.h": "", "tool/B.cpp": '#include "QELModels/Memory/detail/A.h"\n'},
         "tool/B.cpp:1: QELModels/Memory/detail/A.h is not for users"),
        ("details that include downwards",
         {"QELModels/Memory/detail/A.h": '#include "QELModels/Records/B.h"\n', "QELModels/Records/B.h": ""},
         "QELModels/Memory/detail/A.h:1: QELModels/Memory must not include from QELModels/Records"),
        ("downwards in quotes",
         {"QELModels/Platform/B.h": '\n#include "QELModels/Models/A.h"\n', "QELModels/Models/A.h": ""},
         "QELModels/Platform/B.h:2: QELModels/Platform must not include from QELModels/Models"),
        ("downwards in brackets, from a source",
         {"QELModels/Mapping/B.cpp": "#  include <QELModels/Categories/A.h>\n", "QELModels/Categories/A.h": ""},
         "QELModels/Mapping/B.cpp:1: QELModels/Mapping must not include from QELModels/Categories"),
        ("a command that includes what commands share",
         {"tool/commands/A.cpp": '#include "tool/B.h"\n#include "tool/audit/C.h"\n', "tool/B.h": "",
          "tool/audit/C.h": '#include "tool/B.h"\n'}, None),
        ("what commands share includes a command",
         {"tool/B.cpp": '#include "tool/commands/A.h"\n', "tool/commands/A.h": ""},
         "tool/B.cpp:1: tool must not include from tool/commands"),
        ("the library does without JSON",
         {"QELModels/Models/A.cpp": '#include "JSON/R.h"\n', "JSON/R.h": ""},
         "QELModels/Models/A.cpp:1: QELModels/Models must not include from JSON"),
        ("relative to the file", {"JSON/A.cpp": '#include "A.h"\n', "JSON/A.h": ""},
         "JSON/A.cpp:1: no such file from the root: A.h"),
        ("out of the library", {"JSON/A.cpp": '#include "tests/A.h"\n', "tests/A.h": ""},
         "JSON/A.cpp:1: tests/A.h is in none of the library's folders"),
        ("a circle of three",
         {"JSON/A.h": '#include "JSON/B.h"\n', "JSON/B.h": '#include "JSON/C.h"\n',
          "JSON/C.h": '#include "JSON/A.h"\n'},
         "include cycle: JSON/A.h -> JSON/B.h -> JSON/C.h -> JSON/A.h"),
        ("a diamond is not a circle",
         {"JSON/A.h": '#include "JSON/B.h"\n#include "JSON/C.h"\n', "JSON/B.h": '#include "JSON/D.h"\n',
          "JSON/C.h": '#include "JSON/D.h"\n', "JSON/D.h": ""}, None),
    ]
    failed = 0
    for name, files, expected in cases:
        with tempfile.TemporaryDirectory() as folder:
            for path, text in files.items():
                (Path(folder) / path).parent.mkdir(parents=True, exist_ok=True)
                (Path(folder) / path).write_text(text, encoding="utf-8")
            found = list(faults_in(Path(folder)))
        if found != ([expected] if expected else []):
            print(f"{name}: expected {expected}, found {found}")
            failed += 1
    return failed


def main():
    if "--self-test" in sys.argv[1:]:
        return 1 if self_test() else 0
    faults = list(faults_in(Path(__file__).resolve().parent.parent))
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
