#!/usr/bin/python3
"""Movies dragged from another program, and rows dragged inside the table, with a real mouse on a
real display."""

import os
import shutil
import subprocess
import unittest

from harness import ProgramTest, main, window
from drag_source import SOURCE, DragSource
from movies import make_hevc
from texts import text

SCREENS = os.environ.get("REELSHIFT_E2E_ARTIFACTS", "")
SOURCE_PLACE = (20, 20)


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


class Mouse:
    """The left button, held down from the start of a drag to its end."""

    def __init__(self, x, y):
        self.x, self.y = x, y
        xdotool("mousemove", x, y, "mousedown", 1)

    def go(self, x, y, steps=12):
        """A drag begins and goes on with many small moves, as by hand."""
        start = (self.x, self.y)
        for step in range(1, steps + 1):
            self.x = start[0] + (x - start[0]) * step // steps
            self.y = start[1] + (y - start[1]) * step // steps
            xdotool("mousemove", self.x, self.y)

    def release(self):
        xdotool("mouseup", 1)


def pixels(x, y, width, height):
    """What is shown there, as text."""
    return subprocess.run(["import", "-silent", "-window", "root", "-crop",
                           f"{width}x{height}+{x}+{y}", "-depth", "8", "txt:-"],
                          check=True, stdout=subprocess.PIPE).stdout


class PlacedSource(DragSource):
    """The other program, at a place of its own."""

    def __init__(self, *files):
        super().__init__(*SOURCE_PLACE, *files)

    def drag(self):
        mouse = Mouse(SOURCE_PLACE[0] + 80, SOURCE_PLACE[1] + 45)
        mouse.go(SOURCE_PLACE[0] + 140, SOURCE_PLACE[1] + 70)
        self.wait_for("dragging")
        return mouse


@unittest.skipUnless(SOURCE and shutil.which("xdotool") and shutil.which("import"),
                     "a real drag needs xdotool and import (imagemagick)")
class DropTest(ProgramTest):
    def source(self, *files):
        source = PlacedSource(*files)
        self.addCleanup(source.end)
        return source

    def extents(self, node):
        box = window.Atspi.Component.get_extents(node, window.Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    def screen(self, name):
        if SCREENS:
            window.screenshot(os.path.join(SCREENS, self.id(), name + ".png"))

    def drop_on_table(self, source, name):
        """Drags to the middle of the table and lets go when the table shows that it is the goal."""
        x, y, width, height = self.extents(self.app.table())
        edge = (x, y + height // 2, 8, 1)
        before = pixels(*edge)
        mouse = source.drag()
        mouse.go(x + width // 2, y + height // 2)
        window.wait_for(lambda: pixels(*edge) != before, "the table to be marked as the goal")
        self.screen(name + "_over")
        mouse.release()
        answer = source.wait_for("dropped")
        window.wait_for(lambda: pixels(*edge) == before, "the mark to go")
        return answer


class DropFromAnotherProgram(DropTest):
    def test_movies_are_added_and_stay_where_they_are(self):
        paths = [make_hevc(self.movie_path("Videos", "clip 1.MOV")),
                 make_hevc(self.movie_path("Videos", "\u00fcber.mp4"), "1280x720", 2)]
        before = [(os.stat(path).st_ino, os.stat(path).st_mtime_ns) for path in paths]
        source = self.source(*paths)
        # The source asks for a move; the answer is a copy, so it deletes nothing.
        self.assertEqual("dropped copy", self.drop_on_table(source, "two_movies"))
        window.wait_for(lambda: self.app.row_count() == 2, "two rows", 60)
        window.wait_for(lambda: self.app.file_count().endswith("(2)"), "the count of movies")
        self.screen("two_movies_added")
        self.assertEqual(["clip 1.MOV", "\u00fcber.mp4"], self.app.column("name"))
        self.assertEqual(["640x480", "1280x720"], self.app.column("res"))
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_REMOVE_FILE")))
        self.assertEqual(before, [(os.stat(path).st_ino, os.stat(path).st_mtime_ns)
                                  for path in paths])
        self.assertEqual(sorted(map(os.path.basename, paths)),
                         sorted(os.listdir(self.movie_path("Videos"))))

    def test_what_is_no_movie_is_told_once(self):
        movie = make_hevc(self.movie_path("a.mp4"))
        source = self.source(self.documents, self.movie_path("missing.mp4"), movie)
        self.drop_on_table(source, "no_movies")
        box = self.app.box()
        self.assertIn(text("IDS_TXT_UNSUPPORTED").split("\n")[0], box.message)
        box.answer(text("IDS_BTN_POPUP_OK"))
        window.wait_for(lambda: self.app.row_count() == 1, "one row", 60)
        window.wait_for(lambda: self.app.file_count().endswith("(1)"), "the count of movies")
        self.assertEqual(["a.mp4"], self.app.column("name"))
        self.assertEqual([], self.app.boxes())
        self.assertTrue(os.path.isdir(self.documents))

    def test_broken_data_of_the_private_type_moves_nothing(self):
        first = make_hevc(self.movie_path("a.mp4"))
        self.app.add_all(first)
        self.app.add_all(shutil.copy(first, self.movie_path("b.mp4")))
        far = "5253525700000002" + "00000000" + "7fffffff"
        for data in ("", "00ff", "ff" * 5000, far):
            source = PlacedSource("--data", "MyPrivateTableViewDataType", data)
            x, y, width, _ = self.extents(self.app.cell(1, "name"))
            mouse = source.drag()
            mouse.go(x + width // 2, y + 4)
            mouse.release()
            source.wait_for("dropped")
            source.end()
        # A reorder would show now.
        self.app.add_all(shutil.copy(first, self.movie_path("c.mp4")))
        self.assertEqual(["a.mp4", "b.mp4", "c.mp4"], self.app.column("name"))

    def test_a_drop_during_a_run_is_refused(self):
        long = make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=60)
        self.app.add_all(long)
        self.app.convert()
        window.wait_for(lambda: self.app.encoders(), "an encoder to run")
        source = self.source(long)
        x, y, width, height = self.extents(self.app.table())
        sign = (x + width // 2 - 30, y + height // 2 - 30, 60, 60)
        before = pixels(*sign)
        mouse = source.drag()
        mouse.go(x + width // 2 - 100, y + height // 2)
        window.wait_for(lambda: pixels(*sign) != before, "the sign of a refusal")
        self.screen("refused_over")
        mouse.release()
        source.wait_for("dropped")
        window.wait_for(lambda: pixels(*sign) == before, "the sign to go")
        window.press(self.app.button("IDS_BTN_STOP"))
        box = self.app.box()
        self.assertEqual(1, self.app.row_count())
        box.answer(text("IDS_BTN_POPUP_OK"))
        window.wait_for(lambda: not self.app.encoders(), "the encoder to end")
        window.wait_for(lambda: window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")),
                        "the run to be over")
        self.assertEqual(1, self.app.row_count())
        self.assertTrue(self.app.file_count().endswith("(1)"))


class DragOfRows(DropTest):
    def test_the_order_changes_with_the_next_add(self):
        first = make_hevc(self.movie_path("a.mp4"))
        for path in (first, self.movie_path("b.mp4"), self.movie_path("c.mp4")):
            self.app.add_all(path if path == first else shutil.copy(first, path))
        x, y, width, height = self.extents(self.app.cell(2, "name"))
        top = self.extents(self.app.cell(0, "name"))
        line = (top[0] + top[2] // 2, top[1], 1, 4)
        before = pixels(*line)
        mouse = Mouse(x + 40, y + height // 2)
        mouse.go(x + 60, y + 2)
        mouse.go(top[0] + 80, top[1] + 3)
        window.wait_for(lambda: pixels(*line) != before, "the line above the first row")
        self.screen("line")
        mouse.release()
        window.wait_for(lambda: pixels(*line) == before, "the line to go")
        self.assertEqual(["a.mp4", "b.mp4", "c.mp4"], self.app.column("name"))
        self.app.add_all(shutil.copy(first, self.movie_path("d.mp4")))
        self.assertEqual(["c.mp4", "a.mp4", "b.mp4", "d.mp4"], self.app.column("name"))
        self.screen("moved")

    def test_the_program_ends_while_rows_are_dragged(self):
        self.app.add_all(make_hevc(self.movie_path("a.mp4")))
        x, y, width, height = self.extents(self.app.cell(0, "name"))
        line = (x + width // 2, y, 1, 4)
        before = pixels(*line)
        mouse = Mouse(x + 10, y + height // 2)
        self.addCleanup(mouse.release)
        mouse.go(x + 60, y + 3)
        window.wait_for(lambda: pixels(*line) != before, "the line above the row")
        self.app.terminate()
        self.assertEqual(0, self.app.wait_until_ended())


if __name__ == "__main__":
    main()
