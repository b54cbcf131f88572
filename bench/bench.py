#!/usr/bin/python3
"""Measures the program and prints a table: what, measured, bar, verdict, spread. Every figure is
taken in rounds that alternate with what it is compared with; README.md says how each is measured.

    bench.py BUILD_FOLDER [--markdown] [--quick] [--only NAME,NAME]     (on a desktop, see run)
"""

import argparse
import http.server
import json
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import threading
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path[:0] = [os.path.join(HERE, "..", "tests", "e2e")]
import machine  # noqa: E402
from desktop_session import die_with_parent  # noqa: E402
from figures import Row, save, show, spread, worse  # noqa: E402
from movies import make_hevc  # noqa: E402
from screen_clock import ScreenClock  # noqa: E402

CHECK_THREAD = "version check"
LEAST_ENCODE = 60.0
median = statistics.median


def note(text):
    print(f"... {text}", file=sys.stderr, flush=True)


class Bench:
    def __init__(self, build, quick, folder):
        self.build = os.path.abspath(build)
        self.quick = quick
        self.folder = folder
        self.home = os.path.join(folder, "home")
        self.documents = os.path.join(self.home, "Documents")
        os.makedirs(self.documents)
        self.encoder = shutil.which("ffmpeg")  # the bare one, not what the program has in between
        self.gaps = []  # (milliseconds, of which on a processor, waiting for one, where)

    # What is run

    def program(self, name="reelshift"):
        return os.path.join(self.build, "bin", name)

    def tool(self, name):
        return os.path.join(self.build, "bench", name)

    def environment(self, **more):
        environment = dict(os.environ, HOME=self.home,
                           XDG_STATE_HOME=os.path.join(self.home, "state"), **more)
        # As on a desktop where nobody has asked for assistive technology.
        environment.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)
        return environment

    def end(self, process):
        process.terminate()
        try:
            process.wait(10)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()

    def use(self, steps, where, program=None, limit=600, on=(), search_first=None, settings=None):
        """Runs the program through steps of the probe; what each of them has noted. `on`: a command
        in front of it; `search_first`: a folder with another ffmpeg; `settings`: the probe's own."""
        settings = settings or {}
        out = os.path.join(self.folder, "steps.json")
        if os.path.exists(out):
            os.remove(out)
        environment = self.environment(REELSHIFT_BENCH_OUT=out,
                                       REELSHIFT_BENCH_DO=";".join(steps + ["quit"]),
                                       **settings)
        if search_first:
            environment["PATH"] = search_first + os.pathsep + environment["PATH"]
        with open(os.path.join(self.folder, "program.log"), "ab") as log:
            preloaded = [self.tool("libbench_probe.so")]
            preloaded += filter(None, [settings.get("REELSHIFT_BENCH_TRACER")])
            command = [*on, "env", "LD_PRELOAD=" + ":".join(preloaded), program or self.program()]
            process = subprocess.run(command, env=environment, timeout=limit,
                                     stdin=subprocess.DEVNULL, stdout=log, stderr=log, check=False,
                                     preexec_fn=die_with_parent)
        with open(out, encoding="utf-8") as file:
            noted = [json.loads(line) for line in file]
        if process.returncode != 0 or len(noted) != len(steps):
            raise RuntimeError(f"the program ended with {process.returncode} after {noted}")
        for step in noted:
            if not step["clock"]:
                raise RuntimeError("the main loop does not stand on GLib: no gap is measured")
            self.gaps.append((step["gap_ms"], step["gap_cpu_ms"], step["gap_queued_ms"],
                              f"{where}, {step['step']}"))
        return noted

    def by_hand(self, commands):
        path = os.path.join(self.folder, "commands")
        with open(path, "wb") as file:
            file.write(b"".join(b"".join(os.fsencode(a) + b"\0" for a in command) + b"\0"
                                for command in commands))
        answer = subprocess.run([self.tool("bare_commands"), path], check=True,
                                capture_output=True, env=self.environment())
        return json.loads(answer.stdout)

    def list_of(self, movies):
        path = os.path.join(self.folder, "movies.txt")
        with open(path, "w", encoding="utf-8") as file:
            file.write("".join(movie + "\n" for movie in movies))
        return path

    def clear_outputs(self):
        for name in os.listdir(self.documents):
            if name.endswith(".mp4"):
                os.remove(os.path.join(self.documents, name))

    def outputs(self):
        return sorted(name for name in os.listdir(self.documents) if name.endswith(".mp4"))

    def commands_of(self, movies):
        """The very commands with which the program converts these movies: noted by a link in the
        encoder's place, in a copy of the program's folder."""
        stage = os.path.join(self.folder, "stage")
        share = os.path.join(stage, "share", "reelshift")
        os.makedirs(os.path.join(stage, "bin"))
        shutil.copytree(os.path.join(self.build, "share", "reelshift"), share, symlinks=True)
        shutil.copy(self.program(), os.path.join(stage, "bin"))
        encoder = os.path.join(share, "ffmpeg")
        real = os.path.realpath(os.path.join(self.build, "share", "reelshift", "ffmpeg"))
        os.remove(encoder)
        log = os.path.join(stage, "commands.log")
        with open(encoder, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\n[ $# -gt 2 ] && printf '%s\\0' \"$@\" '' >> '{log}'\n"
                       f"exec '{real}' \"$@\"\n")
        os.chmod(encoder, 0o755)
        self.use([f"add:{self.list_of(movies)}", "convert"], "a run of notes",
                 os.path.join(stage, "bin", "reelshift"))
        del self.gaps[-2:]  # another encoder, and nothing was in the caches
        with open(log, "rb") as file:
            commands = [list(map(os.fsdecode, command.split(b"\0")))
                        for command in file.read().split(b"\0\0") if command]
        shutil.rmtree(stage)
        if len(commands) != len(movies) or len(self.outputs()) != len(movies):
            raise RuntimeError(f"not every movie was converted: {commands}, {self.outputs()}")
        self.clear_outputs()
        # From 7.0 on ffmpeg refuses the option, and the program's launcher leaves it out.
        return [[self.encoder] + [each for each in command if each != "-psnr"]
                for command in commands]

    # The rows of the table

    def start(self):
        rounds = 4 if self.quick else 10
        clock = ScreenClock()
        times = {"bare": [], "program": []}
        for number in range(rounds + 1):
            for name, command in (("bare", self.tool("bare_window")), ("program", self.program())):
                process, seconds = clock.start([command], self.environment(),
                                               preexec_fn=die_with_parent,
                                               stderr=subprocess.DEVNULL)
                self.end(process)
                if number > 0:  # the first warms the caches
                    times[name].append(seconds * 1000)
        clock.close()
        ratios = [p / b for p, b in zip(times["program"], times["bare"])]
        ratio = median(times["program"]) / median(times["bare"])
        yield Row("start to window on screen, against a bare window",
                  f"{ratio:.2f} times ({median(times['program']):.0f} ms against "
                  f"{median(times['bare']):.0f} ms)", "at most 3 times", ratio <= 3, spread(ratios),
                  ratios)

    def memory(self):
        rounds = 2 if self.quick else 5
        server = UpdateServer()
        environment = self.environment(
            REELSHIFT_LOOPBACK_URL=f"http://127.0.0.1:{server.server_address[1]}")
        kinds = (("bare", self.tool("bare_window")),
                 ("answered", self.program("reelshift_loopback")), ("unreached", self.program()))
        found = {name: [] for name, _ in kinds}
        clock = ScreenClock()
        for _ in range(rounds):
            for name, command in kinds:
                server.asked.clear()
                process, _ = clock.start([command], environment, preexec_fn=die_with_parent,
                                         stderr=subprocess.DEVNULL)
                if name == "answered" and not server.asked.wait(30):
                    raise RuntimeError("the program has not asked for a new version")
                wait_until_checked(process.pid)
                time.sleep(1)
                found[name].append(memory_of(process.pid))
                self.end(process)
        clock.close()
        server.shutdown()
        server.server_close()
        for name, after in (("answered", "the version check"),
                            ("unreached", "a version check that found no server")):
            for at, kind in enumerate(("VmRSS", "PSS")):
                own = [each[at] for each in found[name]]
                bare = [each[at] for each in found["bare"]]
                ratio = median(own) / median(bare)
                yield Row(f"resident memory ({kind}), empty list, after {after}, against the bare "
                          "window",
                          f"{ratio:.2f} times ({median(own) / 1024:.1f} MiB against "
                          f"{median(bare) / 1024:.1f} MiB)",
                          "at most 1.6 times" if at == 0 else "(told beside it)",
                          ratio <= 1.6 if at == 0 else None,
                          spread([o / b for o, b in zip(own, bare)]),
                          [o / b for o, b in zip(own, bare)])

    def movies(self):
        count, rounds = (3, 2) if self.quick else (6, 3)
        folder = os.path.join(self.home, "Videos")
        first = make_hevc(os.path.join(folder, "movie 0.mp4"), "640x480", 4)
        movies = [first] + [shutil.copy(first, os.path.join(folder, f"movie {number}.mp4"))
                            for number in range(1, count)]
        commands = self.commands_of(movies)
        more, bare = [], []
        for _ in range(rounds):
            by_hand = self.by_hand(commands)["seconds"]
            if len(self.outputs()) != count:
                raise RuntimeError(f"by hand not every movie was converted: {self.outputs()}")
            self.clear_outputs()
            run = self.use([f"add:{self.list_of(movies)}", "convert", "wait:0.5"],
                           f"{count} movies")[1]
            if len(self.outputs()) != count:
                raise RuntimeError(f"not every movie was converted: {self.outputs()}")
            self.clear_outputs()
            bare.append(by_hand)
            more.append((run["seconds"] - by_hand) / count)
        yield Row(f"{count} movies through the program, against the same commands by hand",
                  f"{median(more):.2f} s a movie more (by hand {median(bare) / count:.2f} s each)",
                  "at most 2.1 s a movie more", median(more) <= 2.1, spread(more),
                  more)

    def cpu(self):
        rounds = 1 if self.quick else 2
        piece = make_hevc(os.path.join(self.home, "Videos", "piece.mp4"), "1280x720", 10)
        begin = time.monotonic()
        commands = self.commands_of([piece])
        seconds = self.by_hand(commands)["seconds"]
        self.clear_outputs()
        note(f"a piece takes {seconds:.1f} s, with the program {time.monotonic() - begin:.1f} s")
        least = LEAST_ENCODE * (0.3 if self.quick else 1)
        copies = int(least * 1.2 / seconds) + 1
        movie = None
        shares, lengths = [], []
        while len(shares) < rounds:
            if movie is None:
                movie = make_hevc(os.path.join(self.home, "Videos", "long.mp4"), "1280x720", 10,
                                  copies)
            run = self.use([f"add:{self.list_of([movie])}", "convert", "wait:0.5"],
                           "a long encode")[1]
            if len(self.outputs()) != 1:
                raise RuntimeError("the movie was not converted")
            self.clear_outputs()
            if run["seconds"] < least:  # the machine has become faster: once more, with more of it
                copies = int(copies * least * 1.3 / run["seconds"]) + 1
                movie = None
                continue
            shares.append(100 * run["own_cpu"] / run["children_cpu"])
            lengths.append(run["seconds"])
        yield Row(f"own CPU over an encode of {min(lengths):.0f} s, against the encoder's",
                  f"{median(shares):.2f} %", "under 1 %", median(shares) < 1, spread(shares, "{:.3f}"),
                  shares, "{:.3f}")

    def adding(self):
        count, rounds = (50, 2) if self.quick else (200, 3)
        folder = os.path.join(self.home, "Videos", "many")
        first = make_hevc(os.path.join(folder, "movie 000.mp4"), "640x480", 2)
        movies = [first]
        for number in range(1, count):
            movies.append(os.path.join(folder, f"movie {number:03}.mp4"))
            os.link(first, movies[-1])
        probes = [[self.encoder, "-i", movie] for movie in movies for _ in range(2)]
        processors = sorted(os.sched_getaffinity(0))
        for used in sorted({1, len(processors)}):
            on = ["taskset", "--cpu-list", ",".join(map(str, processors[:used]))]
            ratios, bare = [], [self.by_hand(probes)["seconds"]]
            first = len(self.gaps)
            for _ in range(rounds):
                own = self.use([f"add:{self.list_of(movies)}"], f"adding {count}, {used} processors",
                               on=on)[0]["seconds"]
                bare.append(self.by_hand(probes)["seconds"])
                # Against the mean of the bare rounds before and after: half a minute is long.
                ratios.append(2 * own / (bare[-2] + bare[-1]))
            most = 1.15 if used == 1 else 1.2 / used
            processors_text = "one processor" if used == 1 else f"{used} processors"
            yield Row(f"adding {count} movies on {processors_text}, against the {len(probes)} bare "
                      "probes that are demanded, one after the other",
                      f"{median(ratios):.3f} times (bare {median(bare):.1f} s)",
                      f"at most {most:.2f} times", median(ratios) <= most,
                      spread(ratios, "{:.3f}"), ratios, "{:.3f}")
            longest, own, queued, _ = max(self.gaps[first:])
            gaps = [gap[0] for gap in self.gaps[first:]]
            yield Row(f"longest gap between two turns of the main loop meanwhile, {processors_text}",
                      f"{longest:.0f} ms, of which {own:.0f} ms on a processor and {queued:.0f} ms waiting "
                      "for one", "under 20 ms", longest < 20,
                      spread(gaps, "{:.0f} ms"), gaps, "{:.0f} ms")

    def scripted_tools(self):
        """A folder with the tests' encoder in place of ffmpeg and ffprobe."""
        tools = os.path.join(self.folder, "tools")
        os.makedirs(tools, exist_ok=True)
        for name in ("ffmpeg", "ffprobe"):
            if not os.path.lexists(os.path.join(tools, name)):
                os.symlink(os.path.join(self.build, "tests", "encoder", "ffmpeg"),
                           os.path.join(tools, name))
        return tools

    def many(self):
        """Not in the usual table: with an encoder that costs next to nothing, what the program itself
        needs for a folder of movies shows."""
        tools = self.scripted_tools()
        counts = (500, 2000) if self.quick else (2500, 10000)
        each = []
        for count in counts:
            folder = os.path.join(self.home, "Videos", f"folder of {count}")
            os.makedirs(folder)
            first = os.path.join(folder, "movie 0.mp4")
            with open(first, "w", encoding="ascii") as movie:
                movie.write("#scripted movie\n[probe]\nreport size=1280x720\n")
            for number in range(1, count):
                os.link(first, os.path.join(folder, f"movie {number}.mp4"))
            begin = len(self.gaps)
            run = self.use([f"add:{self.list_of([folder])},{count}"], f"a folder of {count}",
                           search_first=tools, limit=1200)[0]
            each.append(run["seconds"] / count * 1000)
            gaps = [gap[0] for gap in self.gaps[begin:]]
            yield Row(f"a folder of {count} movies dropped, with an encoder that does nothing",
                      f"{each[-1]:.2f} ms a movie, {run['own_cpu'] / count * 1000:.2f} ms of the "
                      "program's own", "(told)", None)
            yield Row(f"longest gap between two turns of the main loop meanwhile, {count} movies",
                      f"{max(gaps):.0f} ms", "under 20 ms", max(gaps) < 20)
        yield Row(f"time a movie among {counts[1]}, against {counts[0]}",
                  f"{each[1] / each[0]:.2f} times", "at most 1.3 times (a square would be 4)",
                  each[1] / each[0] <= 1.3)

    def real(self):
        """Not in the usual table: real movies by the thousand, and what a user does to all of them."""
        from many_movies import folder_of
        counts = (500, 1000, 2000) if self.quick else (2500, 5000, 10000)
        kept = os.path.join(self.build, "bench", "movies")
        each = {}
        for count in counts:
            steps = ["wait:2", f"add:{self.list_of([folder_of(kept, count)])},{count}", "check", "check",
                     "quality:2", "remove"]
            noted = self.use(steps, f"{count} real movies", limit=3600)
            empty, added, *done = noted
            if added["rows"] != count or done[-1]["rows"] != 0:
                raise RuntimeError(f"{count} movies: {noted}")
            each[count] = {"a movie added": added["own_cpu"] / count * 1000,
                           "Select All": max(step["seconds"] for step in done[:2]) * 1000,
                           "a quality for all": done[2]["seconds"] * 1000,
                           "Remove Checked": done[3]["seconds"] * 1000}
            note(f"{count}: {each[count]}")
            yield Row(f"a folder of {count} real movies dropped",
                      f"{added['seconds']:.0f} s, {added['children_cpu'] / count * 1000:.0f} ms of ffmpeg "
                      f"and {each[count]['a movie added']:.1f} ms of the program's own a movie", "(told)",
                      None)
            yield Row(f"longest gap between two turns of the main loop meanwhile, {count} movies",
                      f"{added['gap_ms']:.0f} ms, of which {added['gap_cpu_ms']:.0f} ms on a processor",
                      "under 20 ms", added["gap_ms"] < 20)
            memory = (added["rss_kib"] - empty["rss_kib"]) / count
            yield Row(f"memory per row, {count} movies", f"{memory:.2f} KiB", "under 3 KiB", memory < 3)
            for what, bar in (("Select All", 50), ("a quality for all", 50), ("Remove Checked", 250)):
                value = each[count][what]
                yield Row(f"{count} movies: {what}, until painted", f"{value:.0f} ms", f"{bar} ms",
                          value <= bar)
        least, most = counts[0], counts[-1]
        for what, value in each[most].items():
            # Times for all rows may grow with the rows, those a movie not at all.
            growth = value / each[least][what]
            linear = 1 if what == "a movie added" else most / least
            yield Row(f"{what}: {most} movies against {least}", f"{growth:.2f} times",
                      f"linear: {linear:g} times (a square would be {linear * most / least:g})",
                      growth <= linear * 1.5)

    def long_run(self):
        """Not in the usual table: a run of many movies with an encoder that costs next to nothing,
        every demanded second cut down to 20 ms."""
        tools = self.scripted_tools()
        counts = (125, 250, 500) if self.quick else (500, 1000, 2000)
        each = []
        for count in counts:
            folder = os.path.join(self.home, "Videos", f"run of {count}")
            os.makedirs(folder)
            first = os.path.join(folder, "movie 0.mp4")
            with open(first, "w", encoding="ascii") as movie:
                movie.write("#scripted movie\n[encode]\nheader\ncreate\nwrite 4096\nsummary 10\n")
            for number in range(1, count):
                os.link(first, os.path.join(folder, f"movie {number}.mp4"))
            run = self.use([f"add:{self.list_of([folder])},{count}", "convert", "wait:0.5"],
                           f"a run of {count}", search_first=tools, limit=1800,
                           settings={"REELSHIFT_BENCH_SECOND": "20"})[1]
            if len(self.outputs()) != count:
                raise RuntimeError(f"{len(self.outputs())} of {count} movies were converted")
            self.clear_outputs()
            each.append(run["own_cpu"] / count * 1000)
            yield Row(f"a run of {count} movies with an encoder that does nothing, the second as 20 ms",
                      f"{run['seconds'] / count * 1000:.0f} ms a movie, {each[-1]:.1f} ms of the "
                      "program's own", "(told)", None)
            yield Row(f"longest gap between two turns of the main loop meanwhile, {count} movies",
                      f"{run['gap_ms']:.0f} ms, of which {run['gap_cpu_ms']:.0f} ms on a processor",
                      "under 100 ms", run["gap_ms"] < 100)
        yield Row(f"own time a movie in a run of {counts[-1]}, against {counts[0]}",
                  f"{each[-1] / each[0]:.2f} times",
                  f"at most 1.5 times (a square would be {counts[-1] / counts[0]:g})",
                  each[-1] / each[0] <= 1.5)

    def beside(self):
        """Not in the usual table: what users would take instead, in the same rounds."""
        from rivals import compare
        yield from compare(self)

    def gap(self):
        held = self.use(["wait:1", "hold:0.15"], "a check of the clock")[1]["gap_ms"]
        del self.gaps[-1:]
        if held < 150:
            raise RuntimeError(f"a main loop that was held for 150 ms was seen to be for {held} ms")
        for _ in range(2 if self.quick else 4):
            self.use(["wait:3"], "the start and an empty list")
        gaps = sorted(self.gaps, reverse=True)
        for gap in gaps[:8]:
            note("{:.1f} ms, {:.1f} on a processor, {:.1f} waiting for one: {}".format(*gap))
        longest, own, queued, where = gaps[0]
        yield Row("longest gap between two turns of the main loop in all of the above",
                  f"{longest:.0f} ms, of which {own:.0f} ms on a processor and {queued:.0f} ms "
                  f"waiting for one ({where})", "under 100 ms", longest < 100,
                  "next: " + ", ".join(f"{each[0]:.0f} ms" for each in gaps[1:4]))

    def rows(self):
        rounds = 2 if self.quick else 5
        short = [self.long_list(10000) for _ in range(rounds)]
        long = [self.long_list(100000) for _ in range(1 if self.quick else 3)]

        def of(name, lists=None):
            return [each[name] for each in lists or short]

        def row(what, names, bar, unit="ms"):
            worst = [max(each[name] for name in names) for each in short]
            return Row(f"10,000 rows: {what}", f"{median(worst):.1f} {unit}", f"{bar} {unit}",
                       median(worst) <= bar, spread(worst, "{:.1f}"), worst, "{:.1f}")

        yield row("paint event of the table over 200 scroll steps, 95th percentile",
                  ["paint_p95"], 16)
        yield row("a check-box edit, the slowest of ten", ["edit_max"], 50)
        yield row("Select All, the slowest of four", ["select_all_max"], 50)
        halves = ["remove_every_second", "remove_in_one_piece"]
        yield row("removing 5,000 checked rows", halves, 250)
        removals = halves + ["remove_most"]
        growth = [max(median(of(name, long)) / median(of(name)) for name in removals)]
        at_length = [max(each[name] for name in removals) for each in long]
        yield Row("removing half or most of 100,000 rows, against 10,000",
                  f"{growth[0]:.1f} times ({median(at_length):.0f} ms)",
                  "linear: some 10 times (a square would be 100)",
                  growth[0] <= 15, spread(at_length, "{:.0f} ms"), at_length, "{:.0f} ms")
        memory = [value / 1024 for value in of("bytes_per_row") + of("bytes_per_row", long)]
        yield Row("memory per row", f"{median(memory):.2f} KiB", "under 3 KiB",
                  max(memory) < 3, spread(memory), memory)

    def long_list(self, rows):
        answer = subprocess.run([self.tool("list_bench"), str(rows)], check=True, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                env=self.environment(), timeout=120)
        return {name: float(value) for name, value in map(str.split, answer.stdout.splitlines())}


class UpdateServer(http.server.ThreadingHTTPServer):
    """Says that no newer version is there."""

    DOCUMENT = (b'<?xml version="1.0" encoding="UTF-8"?>\n<product><version>0.0.0.1</version>'
                b"<setupFile><url>http://127.0.0.1/none</url></setupFile></product>\n")

    def __init__(self):
        super().__init__(("127.0.0.1", 0), UpdateHandler)
        self.asked = threading.Event()
        threading.Thread(target=self.serve_forever, args=(0.05,), daemon=True).start()


class UpdateHandler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def do_GET(self):
        self.send_response(200)
        self.send_header("Content-Length", str(len(UpdateServer.DOCUMENT)))
        self.end_headers()
        self.wfile.write(UpdateServer.DOCUMENT)
        self.server.asked.set()


def wait_until_checked(pid, limit=60):
    """Until the program's version check is over, however it ended."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        names = []
        for task in os.listdir(f"/proc/{pid}/task"):
            try:
                with open(f"/proc/{pid}/task/{task}/comm", encoding="utf-8") as file:
                    names.append(file.read().strip())
            except OSError:
                pass
        if CHECK_THREAD not in names:
            return
        time.sleep(0.1)
    raise RuntimeError("the version check does not end")


def memory_of(pid):
    """VmRSS and PSS in KiB."""
    def field(path, name):
        with open(path, encoding="utf-8") as file:
            return next(int(line.split()[1]) for line in file if line.startswith(name + ":"))
    return field(f"/proc/{pid}/status", "VmRSS"), field(f"/proc/{pid}/smaps_rollup", "Pss")


def main():
    parser = argparse.ArgumentParser(description="Measures the program and prints a table.")
    parser.add_argument("build")
    parser.add_argument("--markdown", action="store_true", help="for docs/benchmarks.md")
    parser.add_argument("--quick", action="store_true", help="fewer and shorter rounds")
    usual = ["start", "memory", "movies", "cpu", "adding", "gap", "rows"]
    names = usual + ["many", "real", "long_run", "beside"]
    parser.add_argument("--beside", action="store_true",
                        help="HandBrake and QWinFF beside it, from Debian's packages")
    parser.add_argument("--save", metavar="FILE", help="writes the rounds down")
    parser.add_argument("--against", metavar="FILE",
                        help="tells what is worse than the saved rounds by more than the noise")
    parser.add_argument("--only", default=",".join(usual),
                        help="parts of the table, with commas between: " + ", ".join(names))
    options = parser.parse_args()
    wanted = options.only.split(",") + ["beside"] * options.beside
    if unknown := set(wanted) - set(names):
        parser.error(f"no such part: {', '.join(unknown)}; there are {', '.join(names)}")
    load, begin = machine.load(), time.monotonic()
    rows = {}
    with tempfile.TemporaryDirectory(prefix="bench-") as folder:
        bench = Bench(options.build, options.quick, folder)
        for name in names:
            if name in wanted:
                note(name)
                rows.update((f"{name} {number}", row)
                            for number, row in enumerate(getattr(bench, name)()))
    for name, value in machine.describe():
        print(f"- {name}: {value}" if options.markdown else f"{name:>10}: {value}")
    load_line = f"{load:.1f} before, {machine.load():.1f} after {time.monotonic() - begin:.0f} s"
    print(f"- load: {load_line}\n" if options.markdown else f"{'load':>10}: {load_line}\n")
    show(list(rows.values()), options.markdown)
    if options.save:
        save(rows, options.save)
    if options.against:
        lines = list(worse(rows, options.against))
        print("\nWorse than before:" if lines else "\nNothing is worse than before.")
        for line in lines:
            print(f"- {line}")
        sys.exit(1 if lines else 0)


if __name__ == "__main__":
    main()
