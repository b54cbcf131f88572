#!/usr/bin/python3
"""Random use of the real program in its real window, with the fake encoder: by the accessibility
tree, keys, the mouse and drops, beside a share that hangs and an update server that misbehaves. It
ends at any moment, by the window manager or a signal, and is started again over the same home. What
is done comes from a seed, REELSHIFT_SOAK_SEED; how long, in seconds, from REELSHIFT_SOAK_SECONDS;
REELSHIFT_SOAK_VERBOSE prints every action. At the end come the figures.
"""

import os
import random
import shutil
import signal
import statistics
import tempfile
import threading
import time
import unittest
import unittest.mock

from close_request import request_close
from hanging_share import PRELOADED, HangingShare
from harness import ARTIFACTS, main, window
from loopback import PORT, PROGRAM
from scripted_movies import ENCODES, PROBES, scripted_movie
from soak_files import Outputs, Sources
from soak_server import SoakServer
from soak_user import MISSED, User

ENCODER = os.environ.get("REELSHIFT_FAKE_ENCODER", "")
SECONDS = float(os.environ.get("REELSHIFT_SOAK_SECONDS", "30"))
VERBOSE = "REELSHIFT_SOAK_VERBOSE" in os.environ
SEED = int(os.environ.get("REELSHIFT_SOAK_SEED", "20240229"))

LONGEST_ANSWER = 5.0    # seconds, of a question by the accessibility tree
LONGEST_SHOWN = 3.0     # until the window has gone
LONGEST_END = 5.0       # until the program has ended
GIVEN_UP = 20.0
LONGEST_REST = 60.0     # until all is at rest: an examination may be silent for 30
LONGEST_LOCKED = 20.0   # that the controls stay locked where nothing runs
MEMORY_ALLOWANCE = 24e6  # bytes of growth in a long session
SHARE_OF_LONG_SESSION = 0.4
TOOLS = ("xdotool", "import")


@unittest.skipUnless(PROGRAM and ENCODER and all(map(shutil.which, TOOLS)),
                     f"needs {', '.join(TOOLS)}")
class Soak(unittest.TestCase):
    def setUp(self):
        self.random = random.Random(SEED)
        self.pause = threading.Event()
        self.home = tempfile.mkdtemp(prefix="soak-")
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.log = self.path("program.log")
        self.lock = self.path("alone")
        open(self.lock, "w", encoding="ascii").close()
        self.share = HangingShare(self.path("share"), self.path("hangs"))
        self.addCleanup(self.share.answer)
        folders = [self.path("Documents"), self.path("Converted"), self.path("share", "out")]
        self.outputs = Outputs(folders, self.path("starts"))
        movies = self.make_movies()
        self.sources = Sources([path for paths in movies.values() for path in paths])
        # The folder of the program's own notes about folders is another one than that of movies.
        self.user = User(self.random, movies, folders[1:], self.sources, self.outputs, self.share)
        self.server = None
        self.app = None
        self.history = []
        self.faults = []
        self.ends = {}
        self.shown, self.ended = [], []
        self.memory = None
        self.locked_since = None
        self.slowest = 0.0
        window.Atspi.set_timeout(15000, 30000)

    def path(self, *parts):
        return os.path.join(self.home, *parts)

    def make_movies(self):
        movies = {}
        kinds = list(ENCODES) + list(PROBES) + ["junk"]
        for place in ("Videos", "Camera", "share/movies"):
            folder = self.path(place)
            movies[folder] = []
            for kind in kinds:
                path = os.path.join(folder, f"{kind} {place[0]}.mp4")
                scripted_movie(path, kind, self.lock, self.outputs.starts)
                movies[folder].append(path)
                if kind == "junk":
                    with open(path, "w", encoding="ascii") as file:
                        file.write("no movie\n")
        for folder in self.outputs.folders:
            os.makedirs(folder)
            for name in ("usual V_HQ_640x480.mp4", "quick C_HQ_1920x1080.mp4", "older.mp4"):
                with open(os.path.join(folder, name), "wb") as file:
                    file.write(b"OUTPUT of another year THE END\n")
        return movies

    # The program's life

    def start(self):
        self.share.answer()
        bin_ = self.path("bin")
        shutil.rmtree(bin_, ignore_errors=True)
        os.makedirs(bin_)
        os.symlink(ENCODER, os.path.join(bin_, "ffmpeg"))
        with open(os.path.join(bin_, "ffmpeg.release"), "w", encoding="ascii") as file:
            file.write(self.random.choice(("4.4", "5.1", "7.1", "9.0")))
        if self.random.random() < 0.8:
            self.server = SoakServer(PORT, random.Random(self.random.random()))
        with unittest.mock.patch.dict(os.environ, PATH=bin_, **self.share.environment):
            self.app = window.Application(PROGRAM, self.home, self.log)
        self.addCleanup(self.app.__exit__)
        self.outputs.begin_session()
        self.locked_since = None
        self.note("start")
        self.user.meet(self.app)

    def note(self, what):
        self.history.append(f"{time.monotonic() - self.begun:.1f} s: {what}")
        if VERBOSE:
            print(self.history[-1], flush=True)

    def fault(self, what):
        self.note("FAULT " + what)
        self.faults.append(what)
        print(self.history[-1], flush=True)
        folder = os.path.join(ARTIFACTS, self.id(), str(len(self.faults)))
        os.makedirs(folder, exist_ok=True)
        root = self.app.root()
        with open(os.path.join(folder, "tree.txt"), "w", encoding="utf-8") as file:
            file.write("\n".join([what, *self.history[-80:], ""]))
            file.write("not in the tree\n" if root is None else window.describe(root))
        shutil.copy(self.log, folder)
        window.screenshot(os.path.join(folder, "screen.png"))

    def take(self, faults):
        for each in faults:
            self.fault(each)

    # What is checked all the time

    def check_step(self, step):
        if self.app.process.poll() is not None:
            self.fault(f"the program ended by itself with {self.app.process.returncode}")
            return
        begun = time.monotonic()
        try:
            answered = self.user.ask()
        except MISSED:
            answered = self.app.process.poll() is not None
        took = time.monotonic() - begun
        self.slowest = max(self.slowest, took)
        if not answered or took > LONGEST_ANSWER:
            self.fault(f"the window did not answer within {took:.1f} s")
        self.check_controls()
        if step % 10 == 0:
            self.take(self.outputs.faults_while_running() + self.sources.faults())
            self.check_alone()

    def check_controls(self):
        """Where nothing is open and nothing runs the controls are enabled, after a while."""
        try:
            busy = (self.share.hangs() or self.user.boxes() or self.app.encoders()
                    or self.user.is_unlocked())
        except MISSED:
            busy = True
        if busy:
            self.locked_since = None
        elif self.locked_since is None:
            self.locked_since = time.monotonic()
        elif time.monotonic() - self.locked_since > LONGEST_LOCKED:
            self.fault("the controls stay locked and nothing runs")
            self.locked_since = None

    def check_alone(self):
        with open(self.lock, encoding="ascii") as file:
            others = file.read().split()
        if others:
            self.fault(f"encoders beside another: {others}")
            open(self.lock, "w", encoding="ascii").close()

    # Rest: nothing open, nothing running

    def is_at_rest(self):
        try:
            return not self.user.boxes() and self.user.is_unlocked() and not self.app.encoders()
        except MISSED:
            return False

    def come_to_rest(self):
        self.share.answer()
        end = time.monotonic() + LONGEST_REST
        while not self.is_at_rest():
            if time.monotonic() > end:
                self.fault("the program does not come to rest")
                return
            try:
                if self.user.boxes():
                    self.user.answer(calmly=True)
                elif self.user.is_enabled("IDS_BTN_STOP"):
                    self.user.stop()
            except MISSED as error:
                self.note(f"resting: {str(error)[:100]}")
            self.pause.wait(0.2)
        # A box that follows, such as the summary, is not there at once.
        try:
            window.wait_for(lambda: not self.outputs.partial(), "partial outputs to go", 10)
        except window.Timeout:
            pass
        if self.is_at_rest():
            self.take(self.outputs.judge() + self.sources.faults())
            self.check_alone()

    def empty_list(self):
        """Takes every row off the list."""
        for _ in range(200):
            self.come_to_rest()
            try:
                if self.app.row_count() == 0:
                    return
                window.do_action(self.app.cell(0, "im"), "Press")
            except MISSED:
                pass

    def memory_in_use(self):
        """Bytes of the program that are its own."""
        with open(f"/proc/{self.app.process.pid}/statm", encoding="ascii") as file:
            pages = file.read().split()
        return (int(pages[1]) - int(pages[2])) * os.sysconf("SC_PAGE_SIZE")

    # Ends

    def end_somehow(self):
        kind = self.random.choice(("close", "close", "close", "sigterm", "sigterm", "sigkill"))
        if self.random.random() < 0.35 and not self.user.boxes():
            self.share.hang()
            kind += " with a dead share"
        self.note(kind)
        if not self.end(kind):
            self.note("the close was refused")
            self.share.answer()
            return
        self.ends[kind] = self.ends.get(kind, 0) + 1
        self.check_what_is_left(kind)

    def end(self, kind):
        """False where the window was not to be closed, for a box was open."""
        number, = window.wait_for(self.app.window_numbers, "the window's number")
        closes = kind.startswith("close")
        had_boxes = bool(self.user.boxes())
        begun = time.monotonic()
        if closes:
            request_close(int(number))
        else:
            self.app.process.send_signal(signal.SIGKILL if kind.startswith("sigkill")
                                         else signal.SIGTERM)
        while self.app.window_numbers() and time.monotonic() - begun < GIVEN_UP:
            if closes and time.monotonic() - begun > LONGEST_SHOWN \
                    and (had_boxes or self.user.boxes()):
                return False
            self.pause.wait(0.02)
        shown = time.monotonic() - begun
        others = False
        end = time.monotonic() + GIVEN_UP
        while self.app.process.poll() is None and time.monotonic() < end:
            if time.monotonic() - begun > 1 and self.user.boxes():
                others = True  # the question of a new version, say, stays until it is answered
                try:
                    self.user.answer(calmly=True)
                except MISSED:
                    pass
                begun = time.monotonic()
            self.pause.wait(0.02)
        took = time.monotonic() - begun
        if not others:
            self.shown.append(shown)
            self.ended.append(took)
        if shown > LONGEST_SHOWN:
            self.fault(f"{kind}: the window was there for {shown:.1f} s")
        if took > LONGEST_END:
            self.fault(f"{kind}: the program ended after {took:.1f} s")
        self.app.__exit__()
        wanted = -signal.SIGKILL if kind.startswith("sigkill") else 0
        if self.app.process.returncode != wanted:
            self.fault(f"{kind}: the program ended with {self.app.process.returncode}")
        return True

    def check_what_is_left(self, kind):
        try:
            window.wait_for(lambda: not self.app.processes(), "all processes to end", 10)
        except window.Timeout:
            self.fault(f"{kind}: processes are left: {self.app.processes()}")
        self.user.leave_drag_source()
        if self.server:
            self.server.end()
            self.server = None
        gone_share = self.share.folder if self.share.hangs() else None
        self.share.answer()
        self.take(self.outputs.judge(kind.startswith("sigkill"), gone_share))
        self.take(self.sources.faults())
        self.check_alone()
        downloads = self.path("Downloads")
        if os.path.exists(downloads) and os.listdir(downloads):
            if not kind.startswith("sigkill"):
                self.fault(f"{kind}: left of a download: {os.listdir(downloads)}")
            shutil.rmtree(downloads)

    # The whole

    def use(self, seconds, until=lambda: False):
        end = time.monotonic() + seconds
        step = 0
        while time.monotonic() < end and self.app.process.poll() is None and not until():
            self.note(self.user.act())
            step += 1
            self.check_step(step)
            self.pause.wait(self.random.choice((0, 0, 0.1, 0.5)))

    def is_running(self):
        try:
            return self.user.is_enabled("IDS_BTN_STOP")
        except MISSED:
            return False

    def long_session(self, seconds):
        self.start()
        self.use(seconds / 3)
        self.empty_list()
        before = self.memory_in_use()
        self.use(seconds * 2 / 3)
        self.empty_list()
        self.memory = before, self.memory_in_use()
        # A sanitizer, beside which nothing is preloaded, keeps what was freed.
        if PRELOADED and self.memory[1] - before > MEMORY_ALLOWANCE:
            self.fault(f"the memory has grown from {before} to {self.memory[1]} bytes")

    def test_random_use(self):
        self.begun = time.monotonic()
        self.outputs.take_note()
        self.long_session(SECONDS * SHARE_OF_LONG_SESSION)
        while True:
            self.end_somehow()
            over = time.monotonic() - self.begun > SECONDS
            if self.app.process.poll() is None:
                if over:
                    self.come_to_rest()
                continue
            if over:
                break
            self.sources.give_all_back()
            self.outputs.tidy(30, self.random)
            self.start()
            self.use(self.random.choice((0, 1, 3, 6)))
            if self.random.random() < 0.7:
                self.use(10, until=self.is_running)
                self.pause.wait(self.random.random() * 2)
        self.tell()
        self.assertEqual([], self.faults)

    def tell(self):
        ends = ", ".join(f"{count} {kind}" for kind, count in sorted(self.ends.items()))
        before, after = self.memory
        shown, ended = self.shown or [0], self.ended or [0]
        print(f"seed {SEED}: {time.monotonic() - self.begun:.0f} s, "
              f"{sum(self.user.done.values())} actions ({self.user.missed} missed), "
              f"{self.outputs.jobs} jobs, {self.outputs.finished} outputs, "
              f"{self.user.done.get('drop_movies', 0)} drops, the share hung {self.share.times} "
              f"times; ends: {ends}; window gone after {statistics.median(shown):.2f} s "
              f"(at most {max(shown):.2f}), ended after {statistics.median(ended):.2f} s "
              f"(at most {max(ended):.2f}); slowest answer {self.slowest:.2f} s; memory "
              f"{before / 1e6:.1f} to {after / 1e6:.1f} MB; {len(self.faults)} faults", flush=True)
        print(", ".join(f"{count} {name}" for name, count in sorted(self.user.done.items())),
              flush=True)


if __name__ == "__main__":
    main()
