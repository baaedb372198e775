#!/usr/bin/env python3
"""Times a view against its floor, the two run by turns so that whatever else the machine does falls on both.

usage: compare.py RUNS VIEW_COMMAND FLOOR_COMMAND

Each command is a shell-free command line (split as a shell would, no pipes). After one warm-up run of each,
every round runs the view and the floor to /dev/null and then through a pipe into cat, the first of the two
alternating from round to round. Prints one line of medians: wall seconds to /dev/null (view, floor), CPU
seconds, user plus system, of the same runs (view, floor), wall seconds through the pipe (view, floor), and
peak RSS in KiB (view, floor; GNU time's %M).
"""
import os
import shlex
import statistics
import subprocess
import sys
import tempfile
import time


def run_null(argv, peak_file):
    # Through GNU time: a child forked from Python starts with Python's pages, which its peak would count.
    # wait4() gives the CPU time of time and what it waited for, ostrel or the floor.
    start = time.perf_counter()
    with open(os.devnull, "wb") as null:
        process = subprocess.Popen(["/usr/bin/time", "-f", "%M", "-o", peak_file, *argv], stdout=null)
        _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"compare.py: {shlex.join(argv)} exited with {process.returncode}")
    with open(peak_file) as peak:
        return wall, usage.ru_utime + usage.ru_stime, int(peak.read().split()[-1])


def run_pipe(argv):
    start = time.perf_counter()
    with open(os.devnull, "wb") as null:
        producer = subprocess.Popen(argv, stdout=subprocess.PIPE)
        consumer = subprocess.Popen(["cat"], stdin=producer.stdout, stdout=null)
        producer.stdout.close()
        producer.wait()
        consumer.wait()
    wall = time.perf_counter() - start
    if producer.returncode != 0 or consumer.returncode != 0:
        sys.exit(f"compare.py: {shlex.join(argv)} | cat failed")
    return wall


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__.strip().splitlines()[2])
    runs = int(sys.argv[1])
    commands = [shlex.split(sys.argv[2]), shlex.split(sys.argv[3])]
    with tempfile.TemporaryDirectory() as scratch:
        rounds(runs, commands, os.path.join(scratch, "peak"))


def rounds(runs, commands, peak_file):
    null = [[], []]
    cpu = [[], []]
    rss = [[], []]
    pipe = [[], []]
    for argv in commands:
        run_null(argv, peak_file)
        run_pipe(argv)
    for round_number in range(runs):
        order = (0, 1) if round_number % 2 == 0 else (1, 0)
        for which in order:
            wall, seconds, peak = run_null(commands[which], peak_file)
            null[which].append(wall)
            cpu[which].append(seconds)
            rss[which].append(peak)
        for which in order:
            pipe[which].append(run_pipe(commands[which]))
    medians = [statistics.median(samples[which]) for samples in (null, cpu, pipe) for which in (0, 1)]
    peaks = [int(statistics.median(rss[which])) for which in (0, 1)]
    print(" ".join(f"{value:.6f}" for value in medians), *peaks)


if __name__ == "__main__":
    main()
