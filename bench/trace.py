#!/usr/bin/python3
"""Traces a run of a few movies and tells where the time of a job goes: a table of medians, and on
request a picture of one job. README.md says what is seen and how.

    trace.py BUILD_FOLDER [--picture FILE.svg] [--markdown] [--movies N]    (on a desktop, see trace)
    trace.py --read FILE ...          a trace that --keep has kept
"""

import argparse
import os
import shutil
import statistics
import tempfile

import machine
from bench import Bench
from movies import make_hevc
from trace_jobs import Trace
from trace_picture import draw


def record(build, count, folder):
    """A run of so many movies; the trace."""
    bench = Bench(build, False, folder)
    videos = os.path.join(bench.home, "Videos")
    first = make_hevc(os.path.join(videos, "movie 0.mp4"), "640x480", 4)
    movies = [first] + [shutil.copy(first, os.path.join(videos, f"movie {number}.mp4"))
                        for number in range(1, count)]
    bench.commands_of(movies[:1])  # what is read from the disk for the first time
    path = os.path.join(folder, "trace")
    bench.use([f"add:{bench.list_of(movies)}", "convert", "wait:0.3"], "a traced run",
              settings={"REELSHIFT_BENCH_TRACE": path,
                        "REELSHIFT_BENCH_TRACER": bench.tool("libbench_trace.so")})
    if len(bench.outputs()) != count:
        raise RuntimeError(f"not every movie was converted: {bench.outputs()}")
    return path


def show(jobs, markdown):
    """The medians of all jobs but the first, which begins with a press, and that one beside it."""
    first, later = jobs[0], jobs[1:]
    lines = [("phase", "who is at work", "ms, median", "least to most", "the first job")]
    for number, phase in enumerate(first.phases):
        own = [job.phases[number].milliseconds for job in later]
        lines.append((phase.what, phase.who, f"{statistics.median(own):.1f}",
                      f"{min(own):.1f} to {max(own):.1f}", f"{phase.milliseconds:.1f}"))
    for what, value in (("all", lambda job: job.total), ("of it the demanded seconds", lambda job:
                        job.demanded), ("of it ffmpeg, as by hand", lambda job: job.encoder),
                        ("what is left besides", lambda job: job.besides),
                        ("of that the launcher", lambda job: job.launcher)):
        own = [value(job) for job in later]
        lines.append((what, "", f"{statistics.median(own):.1f}",
                      f"{min(own):.1f} to {max(own):.1f}", f"{value(first):.1f}"))
    if markdown:
        for number, line in enumerate(lines):
            print("| " + " | ".join(line) + " |")
            if number == 0:
                print("|" + "---|" * len(line))
        return
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def main():
    parser = argparse.ArgumentParser(description="Shows where the time of a job goes.")
    parser.add_argument("build", nargs="?")
    parser.add_argument("--picture", metavar="FILE", help="an SVG picture of the median job")
    parser.add_argument("--markdown", action="store_true", help="for docs/benchmarks.md")
    parser.add_argument("--movies", type=int, default=8, help="how many jobs the run has")
    parser.add_argument("--keep", metavar="FILE", help="keeps the trace itself")
    parser.add_argument("--read", metavar="FILE", help="reads one that was kept")
    options = parser.parse_args()
    if not options.read and not options.build:
        parser.error("which build?")
    if options.movies < 2:
        parser.error("a run has two movies at least")
    load = machine.load()
    with tempfile.TemporaryDirectory(prefix="trace-") as folder:
        path = options.read or record(options.build, options.movies, folder)
        if options.keep:
            shutil.copy(path, options.keep)
        jobs = Trace(path).jobs()
    if not options.read:
        for name, value in machine.describe():
            print(f"- {name}: {value}" if options.markdown else f"{name:>10}: {value}")
        text = f"{load:.1f} before, {machine.load():.1f} after"
        print(f"- load: {text}\n" if options.markdown else f"{'load':>10}: {text}\n")
    show(jobs, options.markdown)
    if options.picture:
        shown = sorted(jobs[1:], key=lambda job: job.besides)[(len(jobs) - 2) // 2]
        with open(options.picture, "w", encoding="utf-8") as file:
            file.write(draw(shown))


if __name__ == "__main__":
    main()
