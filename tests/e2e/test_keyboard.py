#!/usr/bin/python3
"""A whole run by somebody who has nothing but a keyboard: every key comes from the X server."""

import os
import shutil
import subprocess
import unittest

from harness import ARTIFACTS, ProgramTest, main, window
from movies import Facts, make_hevc
from texts import mnemonic, text
from window import Atspi


def keys(*names):
    subprocess.run(["xdotool", "key", "--clearmodifiers", *names], check=True)


def write(words):
    subprocess.run(["xdotool", "type", "--clearmodifiers", "--delay", "5", words], check=True)


def alt(key):
    keys("alt+" + mnemonic(key))


@unittest.skipUnless(shutil.which("xdotool"), "keys need xdotool")
class Keyboard(ProgramTest):
    def screen(self, name):
        window.screenshot(os.path.join(ARTIFACTS, self.id(), name + ".png"))

    def wait_for_cell(self, row, column, wanted):
        window.wait_for(lambda: self.app.cell_text(row, column) == wanted,
                        f"{wanted!r} in row {row}, not {self.app.cell_text(row, column)!r}", 60)

    def wait_for_active(self):
        window.wait_for(lambda: window.has_state(self.app.window(), Atspi.StateType.ACTIVE),
                        "the window to be active")

    def wait_for_focus(self, row, column):
        window.wait_for(lambda: window.has_state(self.app.cell(row, column),
                                                 Atspi.StateType.FOCUSED),
                        f"the focus in {column} of row {row}")

    def add(self, *paths):
        """Types the names into the panel that Ctrl+O opens."""
        for path in paths:
            count = self.app.row_count() + 1
            self.wait_for_active()
            keys("ctrl+o")
            panel = self.app.panel(text("IDS_TXT_PANEL_ADD"))
            field = window.find(panel.node, window.Role.TEXT)
            window.wait_for(lambda: window.has_state(field, Atspi.StateType.FOCUSED), "the field")
            write(path)
            window.wait_for(lambda: window.content(field) == path, f"{path} to be typed")
            # The list of completions takes the first of them.
            keys("Return")
            window.wait_for(panel.is_gone, "the panel to go")
            window.wait_for(lambda: self.app.row_count() == count, f"{count} rows", 60)

    def open_list(self):
        keys("space")

        def is_open():
            editor = next((node for node in window.descendants(self.app.table(), into_tables=True)
                           if node.get_role() == window.Role.COMBO_BOX), None)
            return editor and window.has_state(editor, Atspi.StateType.EXPANDED)
        window.wait_for(is_open, "the list of the cell")

    def test_a_whole_run(self):
        long = make_hevc(self.movie_path("long.mp4"), "1920x1080", 2, repeat=24)
        short = make_hevc(self.movie_path("short.mp4"), "640x480", 1)
        extra = shutil.copy(short, self.movie_path("extra.mp4"))
        self.add(long, short, extra)

        # To the list by its caption; the third movie goes again.
        alt("IDS_TXT_FILELIST")
        self.wait_for_focus(0, "name")
        keys("space", "Down", "space")
        self.wait_for_cell(0, "check", text("IDS_TXT_UNCHECKED"))
        self.wait_for_cell(1, "check", text("IDS_TXT_UNCHECKED"))
        keys("Delete")
        window.wait_for(lambda: self.app.column("name") == ["long.mp4", "short.mp4"], "two rows")

        # Size and quality of the first one.
        keys("Up", "Right", "Right", "Right")
        self.wait_for_focus(0, "res")
        self.open_list()
        keys("Down", "Return")
        self.wait_for_cell(0, "res", "960x540")
        keys("Right")
        self.wait_for_focus(0, "cmb")
        self.open_list()
        keys("Down", "Return")
        self.wait_for_cell(0, "cmb", text("IDS_TXT_PROFILELIST_3"))
        self.screen("list")

        keys("ctrl+Return")
        window.wait_for(lambda: "%" in self.app.cell_text(0, "progress"), "the first percentage", 60)
        keys("Escape")
        keys("ctrl+p")
        self.wait_for_cell(0, "progress", text("IDS_TXT_STATUS_PAUSED"))
        self.screen("paused")
        self.assertTrue(self.app.encoders())
        keys("ctrl+p")
        self.wait_for_cell(0, "im", text("IDS_A11Y_ROW_PAUSE").replace("%1", "long.mp4"))

        # Stop, and think better of it.
        keys("ctrl+period")
        box = self.app.box()
        self.assertIn(text("IDS_TXT_POPUP_STOPCONVERTING"), box.message)
        alt("IDS_BTN_POPUP_CANCEL")
        window.wait_for(box.is_gone, "the question to go")
        self.assertEqual(1, len(self.app.encoders()))

        box = self.app.box(limit=150)
        self.assertIn(text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL").split("\n")[0], box.message)
        self.screen("summary")
        alt("IDS_BTN_POPUP_OK")
        window.wait_for(box.is_gone, "the summary to go")
        window.wait_for(lambda: self.app.row_count() == 0, "the rows to go")
        names = self.outputs()
        self.assertEqual(2, len(names))
        sizes = [Facts(os.path.join(self.documents, name)).size for name in names]
        self.assertEqual(["640x480", "960x540"], sorted(sizes))

        # The folder is not shown by anything here; that it is missing is said.
        shutil.rmtree(self.documents)
        self.wait_for_active()
        alt("IDS_BTN_OPEN_FOLDER")
        box = self.app.box()
        self.assertEqual(text("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"), box.message)
        window.wait_for(lambda: window.has_state(box.node, Atspi.StateType.ACTIVE),
                        "the box to have the keys")
        keys("Return")
        window.wait_for(box.is_gone, "the box to go")
        os.mkdir(self.documents)
        keys("alt+F4")
        self.assertEqual(0, self.app.wait_until_ended())


if __name__ == "__main__":
    main()
