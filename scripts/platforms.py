#!/usr/bin/env python3
"""Runs the tests on all platforms that this machine can build for, one after another, and prints a table of what
passed, what was skipped and why, and what failed.

usage: platforms.py [--list] [--page FILE] [PRESET...]

  --list       only print the presets, one a line
  --page FILE  also put the tables into a page, between its marks
  PRESET       these platforms alone
"""

import argparse
import collections
import os
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree

Platform = collections.namedtuple("Platform", "preset name library")

PLATFORMS = [
    Platform("debug", "Linux, x86-64", "libstdc++"),
    Platform("asan", "Linux, x86-64, sanitizers", "libstdc++"),
    Platform("clang-16", "Linux, x86-64", "libstdc++"),
    Platform("clang-19", "Linux, x86-64", "libstdc++"),
    Platform("clang-22", "Linux, x86-64", "libstdc++"),
    Platform("libcxx", "Linux, x86-64", "libc++"),
    Platform("libcxx-16", "Linux, x86-64", "libc++"),
    Platform("libcxx-19", "Linux, x86-64", "libc++"),
    Platform("libcxx-22", "Linux, x86-64", "libc++"),
    Platform("aarch64", "Linux, 64-bit ARM (qemu)", "libstdc++"),
    Platform("armhf", "Linux, 32-bit ARM (qemu)", "libstdc++"),
    Platform("s390x", "Linux, s390x, big-endian (qemu)", "libstdc++"),
    Platform("windows", "Windows, x86-64 (wine)", "libstdc++"),
    Platform("simdjson-3.12", "Linux, x86-64, simdjson 3.12", "libstdc++"),
    Platform("simdjson-4.6", "Linux, x86-64, simdjson 4.6", "libstdc++"),
]


class Outcome:
    """What became of the tests of one platform."""

    def __init__(self):
        self.compiler = ""
        self.passed = 0
        self.skipped = collections.Counter()  # by reason
        self.failed = []

    def row(self, platform):
        return [platform.name, self.compiler, platform.library, str(self.passed), str(self.skipped.total()),
                str(len(self.failed))]


def compiler_of(build):
    """Name and version of the compiler that a build folder was configured with."""
    facts = {}
    for found in build.glob("CMakeFiles/*/CMakeCXXCompiler.cmake"):
        facts.update(re.findall(r'set\((CMAKE_CXX_COMPILER_ID|CMAKE_CXX_COMPILER_VERSION) "([^"]*)"\)', found.read_text()))
    name = {"GNU": "g++", "Clang": "clang"}.get(facts.get("CMAKE_CXX_COMPILER_ID"), "unknown")
    return f"{name} {facts.get('CMAKE_CXX_COMPILER_VERSION', '')}".strip()


def read_outcome(report, outcome):
    """Adds a report of ctest. Most of its entries are a file of tests each, whose closing lines count them."""
    for case in xml.etree.ElementTree.parse(report).iter("testcase"):
        output = case.findtext("system-out") or ""
        status = case.get("status")
        tests = [int(count) for count in re.findall(r"^\[  PASSED  \] (\d+) tests?\.", output, re.M)]
        reasons = re.findall(r"^.*: Skipped\n(.*)$", output, re.M)
        if status == "run":
            outcome.passed += sum(tests) if tests else 1
            outcome.skipped.update(reasons)
        elif status in ("notrun", "disabled"):
            reason = re.search(r"^skipped: (.*)$", output, re.M)
            outcome.skipped.update(reasons or [reason[1] if reason else case.get("name")])
        else:
            failed = re.findall(r"^\[  FAILED  \] ([\w/.]+)(?: \(|, |$)", output, re.M)
            outcome.failed += sorted(set(failed)) or [case.get("name")]


def run(platform):
    outcome = Outcome()
    report = pathlib.Path("build", f"{platform.preset}.tests.xml").absolute()
    report.unlink(missing_ok=True)
    print(f"=== {platform.preset}", flush=True)
    done = subprocess.run(["./dev", "test", "--preset", platform.preset, "--output-junit", report,
                           "--test-output-size-passed", "100000"], text=True)
    outcome.compiler = compiler_of(pathlib.Path("build", platform.preset))
    if report.exists():
        read_outcome(report, outcome)
    if done.returncode != 0 and not outcome.failed:
        outcome.failed.append("the build")
    return outcome


def table(head, rows):
    lines = [head, ["---" if column < 3 else "--:" for column in range(len(head))]] + rows
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)


def main():
    parser = argparse.ArgumentParser(usage=__doc__.split("usage: ")[1])
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--page", type=pathlib.Path)
    parser.add_argument("presets", nargs="*")
    arguments = parser.parse_args()
    if arguments.list:
        print("\n".join(platform.preset for platform in PLATFORMS))
        return
    unknown = set(arguments.presets) - {platform.preset for platform in PLATFORMS}
    if unknown:
        sys.exit(f"platforms: no platform '{sorted(unknown)[0]}'; --list names them")
    chosen = [platform for platform in PLATFORMS if not arguments.presets or platform.preset in arguments.presets]

    outcomes = {platform: run(platform) for platform in chosen}
    text = table(["platform", "compiler", "standard library", "passed", "skipped", "failed"],
                 [outcome.row(platform) for platform, outcome in outcomes.items()])
    print(text)
    for platform, outcome in outcomes.items():
        for reason, count in outcome.skipped.most_common():
            print(f"skipped on {platform.preset}: {count} x {reason}")
        for name in outcome.failed:
            print(f"FAILED on {platform.preset}: {name}")
    if arguments.page:
        page = arguments.page.read_text()
        begin, end = "<!-- platforms -->\n", "<!-- end of platforms -->\n"
        head, rest = page.split(begin)
        arguments.page.write_text(head + begin + text + "\n" + end + rest.split(end)[1])
    if any(outcome.failed for outcome in outcomes.values()):
        sys.exit(1)


if __name__ == "__main__":
    os.chdir(pathlib.Path(__file__).resolve().parent.parent)
    main()
