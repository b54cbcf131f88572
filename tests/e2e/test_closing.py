#!/usr/bin/python3
"""The window closed by the window manager, or the program ended by a signal, while it waits for
something that does not come: the window goes within three seconds, and nothing is left."""

import os
import shutil
import signal
import tempfile
import time
import unittest
import unittest.mock

from hanging_share import PRELOADED, HangingShare
from harness import ProgramTest, main, window
from movies import make_hevc
from texts import text

LONGEST = 3.0  # seconds until the window has gone
# Of an examination: the encoder says nothing for so long.
HANGS = "600"
SLOW = "2"


class SlowExaminations(ProgramTest):
    @classmethod
    def setUpClass(cls):
        cls.store = tempfile.mkdtemp(prefix="movies-")
        cls.addClassCleanup(shutil.rmtree, cls.store, ignore_errors=True)
        cls.short = make_hevc(os.path.join(cls.store, "short.mp4"), "640x480", 1)

    def setUp(self):
        """An encoder that takes its time over every examination stands first in PATH."""
        self.bin = tempfile.mkdtemp(prefix="bin-")
        self.addCleanup(shutil.rmtree, self.bin, ignore_errors=True)
        self.started = os.path.join(self.bin, "started")
        before = os.environ["PATH"]
        self.addCleanup(os.environ.__setitem__, "PATH", before)
        with open(os.path.join(self.bin, "ffmpeg"), "w", encoding="utf-8") as file:
            file.write(f'#!/bin/sh\n: >>"{self.started}"\n'
                       f'read seconds <"{self.bin}/seconds"\n'
                       f'[ "$seconds" -lt {HANGS} ] || exec sleep {HANGS}\n'
                       f'sleep "$seconds"\n'
                       f'PATH={before} exec ffmpeg "$@"\n')
        os.chmod(os.path.join(self.bin, "ffmpeg"), 0o755)
        os.environ["PATH"] = self.bin + ":" + before
        super().setUp()
        os.environ["PATH"] = before

    def examine(self, seconds, *names):
        with open(os.path.join(self.bin, "seconds"), "w", encoding="utf-8") as file:
            file.write(seconds + "\n")
        folder = self.movie_path("Videos")
        os.makedirs(folder)
        paths = [shutil.copy(self.short, os.path.join(folder, name)) for name in names]
        self.app.add(*paths)
        window.wait_for(lambda: os.path.exists(self.started), "an examination to begin")

    def is_shown(self):
        return bool(self.app.window_numbers())

    def check_ends(self, end):
        """The times until the window has gone and until the program has ended."""
        self.assertTrue(self.is_shown())
        begin = time.monotonic()
        end()
        window.wait_for(lambda: not self.is_shown(), "the window to go", 60)
        gone = time.monotonic() - begin
        self.assertEqual(0, self.app.wait_until_ended(60))
        ended = time.monotonic() - begin
        print(f"{self.id()}: window gone after {gone:.1f} s, ended after {ended:.1f} s",
              flush=True)
        self.assertLess(gone, LONGEST)
        self.assertLess(ended, LONGEST + 2)
        window.wait_for(lambda: not self.app.processes("sleep") and not self.app.encoders(),
                        "the encoder to end", 10)
        self.assertTrue(os.path.exists(os.path.join(self.documents, "default_hevc_path.txt")))

    def by_window_manager(self):
        self.app.close()


class Closing(SlowExaminations):
    def by_signal(self):
        self.app.process.send_signal(signal.SIGTERM)

    def test_an_examination_that_hangs(self):
        self.examine(HANGS, "a.mp4")
        self.check_ends(self.by_window_manager)

    def test_many_movies(self):
        self.examine(SLOW, *(f"{number}.mp4" for number in range(5)))
        self.check_ends(self.by_window_manager)

    def test_sigterm(self):
        self.examine(HANGS, "a.mp4")
        self.check_ends(self.by_signal)

    def test_what_is_clicked_meanwhile_comes_afterwards(self):
        self.examine(SLOW, "a.mp4")
        window.click(self.app.button("IDS_BTN_SELECT_FOLDER"))
        self.assertEqual([], self.app.dialogs())
        self.app.panel(text("IDS_TXT_PANEL_FOLDER")).cancel()
        self.assertEqual(1, self.app.row_count())


@unittest.skipUnless(PRELOADED, "nothing makes a share hang")
class ClosingBesideAShare(Closing):
    def start(self):
        self.share = HangingShare(self.movie_path("share"), self.movie_path("hangs"))
        self.addCleanup(self.share.answer)
        os.mkdir(self.share.folder)
        with unittest.mock.patch.dict(os.environ, self.share.environment):
            return super().start()

    def test_a_folder_that_the_panel_has_shown_hangs(self):
        with open(os.path.join(self.bin, "seconds"), "w", encoding="utf-8") as file:
            file.write("0\n")
        self.app.add_all(shutil.copy(self.short, os.path.join(self.share.folder, "0.mp4")))
        os.unlink(self.started)
        self.examine("4", "a.mp4")
        # The file that this makes in the home has a panel that is still there look at the share.
        self.share.hang()
        self.check_ends(self.by_window_manager)


if __name__ == "__main__":
    main()
