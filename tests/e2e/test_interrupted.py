#!/usr/bin/python3
"""A program that dies in the middle of a run, and its next start."""

import os
import shutil
import signal
import tempfile

from harness import ProgramTest, main, window
from movies import make_hevc
from texts import text


class InterruptedRun(ProgramTest):
    @classmethod
    def setUpClass(cls):
        cls.store = tempfile.mkdtemp(prefix="movies-")
        cls.addClassCleanup(shutil.rmtree, cls.store, ignore_errors=True)
        cls.long = make_hevc(os.path.join(cls.store, "long.mp4"), "1280x720", 2, repeat=60)

    def setUp(self):
        super().setUp()
        self.notes = self.movie_path(".local", "state", "reelshift")
        self.trash = self.movie_path(".local", "share", "Trash", "files")
        self.source = shutil.copy(self.long, self.movie_path("long.mp4"))
        with open(self.source, "rb") as file:
            self.movie = file.read()
        self.output = os.path.join(self.documents, "long_HQ_1280x720.mp4")
        self.app.add_all(self.source)
        self.app.convert()
        window.wait_for(lambda: os.path.exists(self.output) and os.path.getsize(self.output) > 0,
                        "the partial output")
        self.assertEqual(1, len(os.listdir(self.notes)))
        self.app.process.send_signal(signal.SIGKILL)
        self.app.wait_until_ended()
        window.wait_for(lambda: not self.app.encoders(), "the encoder to end", 15)
        self.size = os.path.getsize(self.output)
        self.assertEqual(1, len(os.listdir(self.notes)))

    def start_again(self):
        self.app = self.start()
        return self.app

    def check_that_nothing_is_said(self):
        """The next start: the note has gone with the answer, and the window can be used."""
        window.wait_for(lambda: not os.listdir(self.notes), "the note to go")
        self.app.close()
        self.assertEqual(0, self.app.wait_until_ended())
        self.start_again()
        self.app.add_all(self.source)
        self.assertEqual([], self.app.boxes())
        with open(self.source, "rb") as file:
            self.assertEqual(self.movie, file.read())

    def test_to_the_trash(self):
        self.start_again()
        box = self.app.box()
        self.assertIn(text("IDS_TXT_POPUP_INTERRUPTED"), box.message)
        self.assertIn(self.output, box.message)
        self.assertEqual([text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_POPUP_TRASH")], box.buttons)
        box.answer(text("IDS_BTN_POPUP_TRASH"))
        window.wait_for(lambda: not os.path.exists(self.output), "the half movie to go")
        self.assertEqual(["long_HQ_1280x720.mp4"], os.listdir(self.trash))
        self.assertEqual(self.size,
                         os.path.getsize(os.path.join(self.trash, "long_HQ_1280x720.mp4")))
        self.check_that_nothing_is_said()

    def test_kept(self):
        self.start_again()
        self.app.box().answer(text("IDS_BTN_POPUP_CANCEL"))
        self.check_that_nothing_is_said()
        self.assertEqual(self.size, os.path.getsize(self.output))
        self.assertFalse(os.path.exists(self.trash))

    def test_a_trash_that_cannot_be_made(self):
        os.makedirs(os.path.dirname(os.path.dirname(self.trash)))
        with open(os.path.dirname(self.trash), "w", encoding="ascii"):
            pass
        self.start_again()
        self.app.box().answer(text("IDS_BTN_POPUP_TRASH"))
        box = window.wait_for(lambda: next((box for box in self.app.boxes() if
                                            text("IDS_TXT_POPUP_NOTTRASHED") in box.message), None),
                              "the message")
        self.assertIn(self.output, box.message)
        box.answer(text("IDS_BTN_POPUP_OK"))
        self.check_that_nothing_is_said()
        self.assertEqual(self.size, os.path.getsize(self.output))

    def test_sigterm_under_the_question(self):
        self.start_again()
        self.app.box()
        self.app.terminate()
        self.assertEqual(0, self.app.wait_until_ended())
        self.assertEqual(self.size, os.path.getsize(self.output))
        self.start_again()
        self.app.box().answer(text("IDS_BTN_POPUP_CANCEL"))
        self.check_that_nothing_is_said()


if __name__ == "__main__":
    main()
