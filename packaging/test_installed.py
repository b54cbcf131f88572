#!/usr/bin/python3
"""The installed program in a bare system, in three languages: started, read and used. Prints the
control tree and leaves pictures in REELSHIFT_E2E_ARTIFACTS. Run by packaging/test."""

import os
import sys

TOP = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
sys.path[:0] = [os.path.join(TOP, "tests", "e2e"), os.path.join(TOP, "scripts")]
import screenshots  # noqa: E402
import test_language  # noqa: E402
import test_one_movie  # noqa: E402
from harness import ARTIFACTS, main, window  # noqa: E402
from movies import make_hevc  # noqa: E402
from texts import text  # noqa: E402

# What Qt's own file panel remembers of itself; the rest of a home folder is the user's.
REMEMBERED = {"Documents/default_hevc_path.txt", "Documents/add_hevc_file_path.txt"}
QT = {".config/QtProject.conf"}


class InstalledProgram(test_language.InALanguage, test_one_movie.MovieTest):
    cancel = "Cancel"

    def picture(self, name):
        return window.screenshot(os.path.join(ARTIFACTS, f"{self.desktop}-{name}.png"))

    def say_tree(self, what):
        print(f"--- {what}, {self.desktop}\n{window.describe(self.app.window())}", flush=True)

    def files(self):
        return {os.path.relpath(os.path.join(folder, name), self.home)
                for folder, _, names in os.walk(self.home) for name in names}

    def use(self):
        self.assertEqual(self.cancel, self.cancel_of_the_panel())
        self.say_tree("the empty window")
        movie = make_hevc(self.movie_path("Videos", "Holiday.mp4"), "1280x720", 4, repeat=5)
        before = self.files()
        screenshots.add(self.app, movie)
        self.assertEqual([text("IDS_TXT_STATUS_WAITING")], self.app.column("progress"))
        self.app.convert()
        window.wait_for(lambda: screenshots.percentage(self.app) > 9, "a percentage", 120)
        self.picture("window")
        self.say_tree("the window in a run")
        box = self.app.box(limit=120)
        self.picture("box")
        self.assertEqual([text("IDS_TXT_STATUS_CONVERTED")], self.app.column("progress"))
        box.answer(text("IDS_BTN_POPUP_OK"))
        self.assertEqual(["Holiday_HQ_1280x720.mp4"], self.outputs())
        output = os.path.join(self.documents, "Holiday_HQ_1280x720.mp4")
        self.check_result(movie, output, "1280x720")
        self.check_the_end()
        left = self.files() - before - {os.path.relpath(output, self.home)}
        self.assertEqual(REMEMBERED, left - QT)


class English(InstalledProgram):
    def test(self):
        self.assertEqual(0, self.app.row_count())
        self.use()


class German(InstalledProgram):
    desktop = shown = "de"
    cancel = "Abbrechen"

    def test(self):
        self.assertLess(self.left("IDS_BTN_ADD_FILE"), self.left("IDS_BTN_REMOVE_FILE"))
        self.use()


class Arabic(InstalledProgram):
    desktop = "ar_EG"
    shown = "ar"
    cancel = "ألغِ"

    def test(self):
        self.assertGreater(self.left("IDS_BTN_ADD_FILE"), self.left("IDS_BTN_REMOVE_FILE"))
        self.use()


if __name__ == "__main__":
    main()
