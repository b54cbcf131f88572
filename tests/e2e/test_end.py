#!/usr/bin/python3
"""The end of the program, asked for in every way and in every state of a run. A table in the
output, a line an end: no encoder is left, no partial output (but after SIGKILL), and every source
and older output is byte for byte what it was."""

import os
import shutil
import signal
import tempfile

from harness import ProgramTest, main, window
from movies import make_hevc
from texts import text

LIMIT = 60
OLDER = b"an older output\n"


class End(ProgramTest):
    """A test an end; each goes through the states of a run, with a program of its own."""

    @classmethod
    def setUpClass(cls):
        cls.store = tempfile.mkdtemp(prefix="movies-")
        cls.addClassCleanup(shutil.rmtree, cls.store, ignore_errors=True)
        cls.long = make_hevc(os.path.join(cls.store, "long.mp4"), "1280x720", 2, repeat=60)

    def setUp(self):
        self.home = tempfile.mkdtemp(prefix="home-")
        self.addCleanup(shutil.rmtree, self.home, ignore_errors=True)
        self.documents = os.path.join(self.home, "Documents")
        os.makedirs(self.documents)
        self.log = os.path.join(self.home, "program.log")

    # What a run comes through. Each leaves the program in its state.

    def waiting(self):
        self.app.add_all(*self.sources)

    def opening(self):
        # A movie that blocks whoever opens it: the encoder never gets beyond that.
        self.app.add_all(*self.sources)
        os.replace(self.sources[0], self.sources[0] + ".aside")
        os.mkfifo(self.sources[0])
        self.app.convert()
        window.wait_for(self.app.encoders, "the encoder")

    def encoding(self):
        self.app.add_all(*self.sources)
        self.app.convert()
        window.wait_for(lambda: self.partial() > 0, "the partial output", LIMIT)

    def paused(self):
        self.encoding()
        window.wait_for(lambda: "%" in self.app.cell_text(0, "progress"), "a percentage", LIMIT)
        window.do_action(self.app.cell(0, "im"), "Press")
        window.wait_for(lambda: self.app.cell_text(0, "progress")
                        == text("IDS_TXT_STATUS_PAUSED"), "the pause", LIMIT)

    def question_open(self):
        self.encoding()
        os.kill(self.app.encoders()[0], signal.SIGKILL)
        self.app.box(limit=LIMIT)

    def between_two_jobs(self):
        # The first movie is gone: after its question a second passes before the next one begins.
        self.app.add_all(*self.sources)
        os.replace(self.sources[0], self.sources[0] + ".aside")
        self.app.convert()
        self.app.box(limit=LIMIT).answer(text("IDS_BTN_POPUP_SKIP"))

    STATES = (waiting, opening, encoding, paused, question_open, between_two_jobs)

    # What ends it

    def check(self, name, end, leaves_partial=False, skipped=()):
        for state in self.STATES:
            with self.subTest(state=state.__name__):
                if state.__name__ in skipped:
                    self.row(state, name, skipped[state.__name__])
                    continue
                self.fresh()
                try:
                    state(self)
                    end()
                    self.app.wait_until_ended(15)
                    self.check_what_is_left(leaves_partial)
                except BaseException:
                    self.row(state, name, "FAILED")
                    raise
                finally:
                    self.app.__exit__()
                self.row(state, name, "survived")

    def fresh(self):
        """Another program, with two movies and older outputs."""
        videos = os.path.join(self.home, "Videos")
        for folder in (videos, self.documents):
            shutil.rmtree(folder, ignore_errors=True)
            os.makedirs(folder)
        self.sources = [shutil.copy(self.long, os.path.join(videos, name))
                        for name in ("a.mp4", "b.mp4")]
        for name in ("a_HQ_640x480.mp4", "older.mp4"):
            with open(os.path.join(self.documents, name), "wb") as file:
                file.write(OLDER)
        self.app = self.start()

    def partial(self):
        path = os.path.join(self.documents, "a_HQ_1280x720.mp4")
        return os.path.getsize(path) if os.path.exists(path) else 0

    def check_what_is_left(self, leaves_partial):
        window.wait_for(lambda: not self.app.encoders(), "the encoder to end", 15)
        for name in ("a_HQ_640x480.mp4", "older.mp4"):
            with open(os.path.join(self.documents, name), "rb") as file:
                self.assertEqual(OLDER, file.read(), name)
        if not leaves_partial:
            self.assertEqual(["a_HQ_640x480.mp4", "older.mp4"], self.outputs())
        with open(self.long, "rb") as file:
            movie = file.read()
        for path in self.sources:
            aside = path + ".aside"
            with open(aside if os.path.exists(aside) else path, "rb") as file:
                self.assertEqual(movie, file.read(), path)

    @staticmethod
    def row(state, name, verdict):
        fault = f"{name} while {state.__name__.replace('_', ' ')}"
        print(f"{fault:<58} | real     | {'-':<22} | {'ended':<34} | {verdict}", flush=True)

    def send(self, number):
        return lambda: self.app.process.send_signal(number)

    def test_the_window_is_closed(self):
        # Under an open box the close button does nothing.
        self.check("the window is closed", lambda: self.app.close(),
                   skipped={"question_open": "skipped: a box is open, closing does nothing"})

    def test_sigterm(self):
        self.check("SIGTERM", self.send(signal.SIGTERM))

    def test_sigint(self):
        self.check("SIGINT", self.send(signal.SIGINT))

    def test_sighup(self):
        self.check("SIGHUP", self.send(signal.SIGHUP))

    def test_sigkill(self):
        self.check("SIGKILL", self.send(signal.SIGKILL), leaves_partial=True)


if __name__ == "__main__":
    main()
