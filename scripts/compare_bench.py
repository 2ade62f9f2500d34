#!/usr/bin/env python3
"""Runs the benchmark of another revision and the present one in turn, and prints for each document and each
question the time of the present library in that of the other one. The code written by hand is measured in both
as well: how far its own ratio is from 1 is what chance, or a change of that code, makes of it.

usage: compare_bench.py REVISION ITS_BENCHMARK PRESENT_BENCHMARK [--passes N] [ARGUMENTS OF BOTH]
"""

import csv
import re
import subprocess
import sys

LIBRARY = "QELModels"
BY_HAND = {"simdjson On-Demand, by hand", "by hand"}

# Short runs, so that the two follow each other closely; the passes bring the numbers.
DEFAULT_ARGUMENTS = ["--rounds", "3"]
DEFAULT_PASSES = 10
UNKNOWN_OPTION = 2


def fail(message):
    sys.exit(f"dev: {message}")


def run(command, revision):
    done = subprocess.run(command, capture_output=True, text=True)
    if done.returncode == UNKNOWN_OPTION:
        fail(f"the benchmark of {revision} does not know the arguments {' '.join(command[1:])}\n{done.stderr}")
    if done.returncode != 0:
        fail(f"the benchmark of {revision} failed\n{done.stderr}{done.stdout}")
    return done.stdout


def knows_csv(benchmark):
    return subprocess.run([benchmark, "--csv", "--help"], capture_output=True).returncode != UNKNOWN_OPTION


def times_of_csv(text):
    """(part, subject, way): nanoseconds, for all that is a time."""
    lines = csv.reader(text.splitlines())
    return {(part, subject, way): float(value) for part, subject, way, value, unit in lines if unit.startswith("ns ")}


def times_of_tables(text):
    """The same of a benchmark from before --csv, whose tables are of documents alone."""
    times = {}
    subject, column = None, None
    for line in text.splitlines():
        cells = [cell.strip().strip("*") for cell in line.strip("|").split("|")]
        if match := re.match(r"\*\*(.+)\*\* \(", line):
            subject = match[1]
        elif cells[0] == "bytes to filled assets":
            column = cells.index("µs an asset")
        elif column is not None and column < len(cells) and re.fullmatch(r"[0-9.]+", cells[column]):
            times["documents", subject, cells[0]] = float(cells[column]) * 1000
        elif not line:
            column = None
    return times


def quartiles(values):
    ordered = sorted(values)
    return [ordered[int(part * (len(ordered) - 1))] for part in (0.25, 0.5, 0.75)]


def ratios(key, passes):
    return quartiles([present[key] / other[key] for other, present in passes])


def by_hand_of(part, subject, times):
    return next((key for key in times if key[:2] == (part, subject) and key[2] in BY_HAND), None)


def print_table(revision, passes):
    other, present = passes[0]
    print(f"| present / {revision} | ratio | quartiles | present | {revision} | code by hand, ratio |")
    print("|---|--:|--:|--:|--:|--:|")
    for key in present:
        part, subject, way = key
        if way != LIBRARY or key not in other:
            continue
        first, median, third = ratios(key, passes)
        (_, other_time, _), (_, present_time, _) = (quartiles([times[key] for times in side]) for side in zip(*passes))
        by_hand = by_hand_of(part, subject, present)
        control = f"{ratios(by_hand, passes)[1]:.2f}" if by_hand in other else ""
        print(f"| {subject} | {median:.2f} | {first:.2f} to {third:.2f} | {present_time:.4g} ns "
              f"| {other_time:.4g} ns | {control} |")
    missing = sorted({part for part, _, way in present if way == LIBRARY} - {part for part, _, _ in other})
    if missing:
        print(f"\n{revision} does not measure: {', '.join(missing)}.")


def main(arguments):
    if len(arguments) < 3:
        sys.exit(__doc__)
    revision, other, present, *given = arguments
    passes = DEFAULT_PASSES
    if "--passes" in given:
        at = given.index("--passes")
        if at + 1 == len(given) or not re.fullmatch(r"[1-9][0-9]*", given[at + 1]):
            fail("--passes needs a number")
        passes = int(given[at + 1])
        del given[at:at + 2]

    both = DEFAULT_ARGUMENTS + given
    if knows_csv(other):
        read_other = lambda: times_of_csv(run([other, "--csv", *both], revision))
        read_present = lambda: times_of_csv(run([present, "--csv", *both], "the present sources"))
    else:
        print(f"{revision} has no --csv yet, so only what its table of documents has is compared.\n")
        read_other = lambda: times_of_tables(run([other, *both], revision))
        read_present = lambda: times_of_csv(run([present, "--csv", "--only", "documents", *both], "the present sources"))

    measured = []
    for number in range(passes):
        # Whatever comes second finds the machine as the first has left it, so each is second as often.
        if number % 2 == 0:
            times = read_other()
            measured.append((times, read_present()))
        else:
            times = read_present()
            measured.append((read_other(), times))

    if not any(key in measured[0][0] for key in measured[0][1]):
        fail(f"the benchmark of {revision} prints no table that can be compared")
    print_table(revision, measured)


if __name__ == "__main__":
    main(sys.argv[1:])
