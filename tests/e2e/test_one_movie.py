#!/usr/bin/python3
"""The road of one movie, in the real window with the real encoder."""

import glob
import os
import shutil
import signal
import unittest

from harness import ProgramTest, main, window
from movies import Facts, make_hevc
from texts import text

SAMPLES = os.environ.get("REELSHIFT_SAMPLES", "")


class MovieTest(ProgramTest):
    def check_result(self, source, path, size):
        """`path` is `source` as H.264 of that size, with the very same sound."""
        before, after = Facts(source), Facts(path)
        self.assertEqual("h264", after.video["codec_name"], path)
        self.assertEqual(size, after.size, path)
        self.assertIn(after.video["pix_fmt"], ("yuv420p", "yuvj420p"), path)
        self.assertEqual(51, after.video["level"], path)
        self.assertAlmostEqual(before.seconds, after.seconds, delta=0.25, msg=path)
        self.assertEqual(before.audio is None, after.audio is None, path)
        if before.audio is not None:
            self.assertEqual(before.audio["codec_name"], after.audio["codec_name"], path)
            self.assertEqual(before.audio_hash(), after.audio_hash(), path)
        self.assertEqual(os.stat(source).st_mtime_ns, os.stat(path).st_mtime_ns, path)
        return after


class OneMovie(MovieTest):
    def test_an_empty_window(self):
        self.assertEqual("Quorvex Reelshift 1.0.0.0", self.app.window().get_name())
        self.assertEqual(0, self.app.row_count())
        self.assertEqual(text("IDS_TXT_FILELIST") + "  (0)", self.app.file_count())
        self.assertEqual(self.documents, self.app.output_folder())

    def test_two_movies_become_h264(self):
        sources = [make_hevc(self.movie_path("Videos", "Holiday Video.mp4"), "1280x720", 2,
                             title="trial and error"),
                   make_hevc(self.movie_path("Videos", "Audio, Duration", "b.mp4"), "720x1280", 2)]
        os.utime(sources[1], ns=(1_234_567_890_123_456_789, 1_234_567_890_123_456_789))
        self.app.add_all(*sources)
        self.assertEqual(["Holiday Video.mp4", "b.mp4"], self.app.column("name"))
        self.assertEqual(["1280x720", "720x1280"], self.app.column("res"))
        self.assertEqual([text("IDS_TXT_STATUS_WAITING")] * 2, self.app.column("progress"))
        self.assertEqual(["AAC"] * 2, self.app.column("audio"))
        self.app.convert()
        window.wait_for(lambda: self.app.encoders(), "an encoder to run")
        self.assertFalse(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        box = self.app.box(limit=60)
        self.assertEqual([text("IDS_TXT_STATUS_CONVERTED")] * 2, self.app.column("progress"))
        self.assertEqual([text("IDS_BTN_POPUP_OK"), text("IDS_BTN_OPEN_FOLDER")], box.buttons)
        self.close_summary()

        window.wait_for(lambda: self.app.row_count() == 0, "the converted rows to leave the list")
        window.wait_for(lambda: self.app.file_count().endswith("(0)"), "the count of movies")
        self.assertEqual(["Holiday Video_HQ_1280x720.mp4", "b_HQ_720x1280.mp4"], self.outputs())
        for source, name, size in zip(sources, self.outputs(), ("1280x720", "720x1280")):
            after = self.check_result(source, os.path.join(self.documents, name), size)
            self.assertEqual("yuv420p", after.video["pix_fmt"])
        self.assertEqual([], self.app.encoders())
        self.app.close()
        self.assertEqual(0, self.app.wait_until_ended())

    def test_a_second_run_in_the_same_window(self):
        first = make_hevc(self.movie_path("a.mp4"))
        second = shutil.copy(first, self.movie_path("b.mp4"))
        for source, output in ((first, "a_HQ_640x480.mp4"), (second, "b_HQ_640x480.mp4")):
            self.app.add_all(source)
            self.app.convert()
            self.close_summary()
            window.wait_for(lambda: self.app.row_count() == 0, "the row to leave the list")
            self.assertIn(output, self.outputs())


@unittest.skipUnless(SAMPLES, "REELSHIFT_SAMPLES names no folder with real movies")
class RealMovies(MovieTest):
    def test_all_become_h264(self):
        shutil.copytree(SAMPLES, self.movie_path("Videos"))
        found = sorted(glob.glob(self.movie_path("Videos", "h*.mp4")))
        self.assertGreater(len(found), 0, SAMPLES)
        self.app.add_all(*found)
        refused = sorted(glob.glob(self.movie_path("Videos", "NEG*.mp4")))
        if refused:
            self.app.add(*refused)
            box = self.app.box(limit=30)
            self.assertIn(text("IDS_TXT_UNSUPPORTED").split("\n")[0], box.message)
            box.answer(text("IDS_BTN_POPUP_OK"))
        self.assertEqual([os.path.basename(path) for path in found], self.app.column("name"))
        sizes = self.app.column("res")
        self.app.convert()
        self.app.box(limit=150)
        self.close_summary()
        window.wait_for(lambda: self.app.row_count() == 0, "the converted rows to leave the list")
        for source, size in zip(found, sizes):
            base = os.path.splitext(os.path.basename(source))[0]
            with self.subTest(movie=base):
                self.check_result(source, os.path.join(self.documents, f"{base}_HQ_{size}.mp4"),
                                  size)


class EndInTheMiddle(ProgramTest):
    """The encoder never outlives the program, however it ends."""

    def setUp(self):
        super().setUp()
        self.source = make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=60)
        self.output = os.path.join(self.documents, "long_HQ_1280x720.mp4")
        self.app.add_all(self.source)
        self.app.convert()
        window.wait_for(lambda: os.path.exists(self.output) and os.path.getsize(self.output) > 0,
                        "the partial output")
        self.assertEqual(1, len(self.app.encoders()))

    def check_nothing_is_left(self, limit=15):
        window.wait_for(lambda: not self.app.encoders(), "the encoder to end", limit)
        self.assertTrue(os.path.exists(self.source))

    def test_close(self):
        self.app.close()
        self.assertEqual(0, self.app.wait_until_ended())
        self.check_nothing_is_left()
        self.assertEqual([], self.outputs())

    def test_sigterm(self):
        self.app.terminate()
        self.app.wait_until_ended()
        self.check_nothing_is_left()
        self.assertEqual([], self.outputs())

    def test_sigkill(self):
        self.app.process.send_signal(signal.SIGKILL)
        self.app.wait_until_ended()
        self.check_nothing_is_left()


if __name__ == "__main__":
    main()
