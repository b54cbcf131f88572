#!/usr/bin/python3
"""The real window with an ffmpeg that behaves as a later release, and really converts."""

import os
import shutil
import signal
import tempfile

from harness import main, window
from movies import make_hevc
from test_controls import ControlsTest
from test_one_movie import MovieTest
from texts import text

STAND_IN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "ffmpeg_7_1")
FILTER = "reelshift-words"


class LaterRelease(ControlsTest, MovieTest):
    """Release 7.1 and later refuse -psnr and print no LPSNR=."""

    def setUp(self):
        folder = tempfile.mkdtemp(prefix="release-")
        self.addCleanup(shutil.rmtree, folder, ignore_errors=True)
        os.symlink(STAND_IN, os.path.join(folder, "ffmpeg"))
        before = os.environ["PATH"]
        self.addCleanup(os.environ.__setitem__, "PATH", before)
        os.environ["PATH"] = folder + ":" + before
        super().setUp()
        # The movies are made with the real one.
        os.environ["PATH"] = before

    def start_long(self, *others):
        encoder = super().start_long(*others)
        self.assertEqual(1, len(self.app.processes(FILTER)))
        with open(f"/proc/{encoder}/cmdline", "rb") as file:
            self.assertNotIn(b"-psnr", file.read().split(b"\0"))
        return encoder

    def check_nothing_is_left(self):
        self.wait(lambda: not self.app.encoders() and not self.app.processes(FILTER),
                  "the encoder and its filter to end")

    def test_converts(self):
        sources = [make_hevc(self.movie_path("Videos", "Holiday Video.mp4"), "1280x720", 2,
                             title="frame= 1 Lsize= trial and error"),
                   make_hevc(self.movie_path("Videos", "b.mp4"), "640x480", 1)]
        self.app.add_all(*sources)
        self.app.convert()
        self.app.box(limit=90)
        self.assertEqual([text("IDS_TXT_STATUS_CONVERTED")] * 2, self.app.column("progress"))
        self.close_summary()
        self.wait(lambda: self.app.row_count() == 0, "the converted rows to leave the list")
        for source, name, size in zip(sources, self.outputs(), ("1280x720", "640x480")):
            self.check_result(source, os.path.join(self.documents, name), size)
        self.check_nothing_is_left()

    def test_pause_resume_and_stop(self):
        encoder = self.start_long()
        self.pause()
        self.assertEqual("T", window.process_state(encoder))
        self.assertEqual([encoder], self.app.encoders())
        shown = self.percentage()
        window.click(self.app.cell(0, "im"))
        self.wait_for_progress(beyond=shown)
        self.assertEqual([encoder], self.app.encoders())
        self.stop("IDS_BTN_POPUP_OK")
        self.check_stopped()
        self.check_nothing_is_left()

    def test_close(self):
        self.start_long()
        self.app.close()
        self.assertEqual(0, self.app.wait_until_ended())
        self.check_nothing_is_left()
        self.assertEqual([], self.outputs())

    def test_sigkill(self):
        self.start_long()
        self.app.process.send_signal(signal.SIGKILL)
        self.app.wait_until_ended()
        self.check_nothing_is_left()


if __name__ == "__main__":
    main()
