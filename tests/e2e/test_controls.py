#!/usr/bin/python3
"""Every control of the real window, before, during and after runs of the real encoder."""

import os
import re
import shutil
import tempfile

from harness import ProgramTest, main, window
from movies import Facts, make_hevc
from texts import text

SCREENS = os.environ.get("REELSHIFT_E2E_ARTIFACTS", "")
LONG_OUTPUT = "long_HQ_1920x1080.mp4"
LIMIT = 90  # for what an encoder does on a busy machine


class ControlsTest(ProgramTest):
    @classmethod
    def setUpClass(cls):
        cls.store = tempfile.mkdtemp(prefix="movies-")
        cls.addClassCleanup(shutil.rmtree, cls.store, ignore_errors=True)
        make_hevc(os.path.join(cls.store, "long.mp4"), "1920x1080", 2, repeat=40)
        make_hevc(os.path.join(cls.store, "short.mp4"), "640x480", 1)

    def movie(self, kind, name=None):
        path = self.movie_path("Videos", (name or kind) + ".mp4")
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return shutil.copy(os.path.join(self.store, kind + ".mp4"), path)

    def screen(self, name):
        if SCREENS:
            window.screenshot(os.path.join(SCREENS, self.id(), name + ".png"))

    # What the window shows

    def wait(self, condition, what):
        return window.wait_for(condition, what, LIMIT)

    def wait_for_cell(self, row, column, wanted):
        self.wait(lambda: self.app.cell_text(row, column) == wanted, f"{wanted!r} in row {row}")

    def wait_for_names(self, *names):
        self.wait(lambda: self.app.column("name") == list(names), f"the rows {names}")
        self.wait(lambda: self.app.file_count().endswith(f"({len(names)})"), "the count of movies")

    def percentage(self, row=0):
        shown = re.search(r"(\d+)\s*%", self.app.cell_text(row, "progress"))
        return int(shown.group(1)) if shown else -1

    def wait_for_progress(self, beyond=0, row=0):
        self.wait(lambda: self.percentage(row) > beyond, f"more than {beyond} % in row {row}")
        return self.percentage(row)

    def wait_for_button(self, row, key, name):
        self.wait_for_cell(row, "im", text(key).replace("%1", name))

    def wait_until_unlocked(self):
        for key in ("IDS_BTN_CONVERT", "IDS_BTN_ADD_FILE", "IDS_BTN_SELECT_FOLDER"):
            self.wait(lambda k=key: window.is_enabled(self.app.button(k)), f"{key} to be enabled")

    def check_locked(self):
        for key in ("IDS_BTN_CONVERT", "IDS_BTN_ADD_FILE", "IDS_BTN_SELECT_FOLDER"):
            self.assertFalse(window.is_enabled(self.app.button(key)), key)

    def header_box(self):
        return next(node for node in window.descendants(self.app.table(), into_tables=True)
                    if node.get_role() == window.Role.CHECK_BOX
                    and node.get_name() == text("IDS_A11Y_SELECT_ALL"))

    def is_all_checked(self):
        return window.has_state(self.header_box(), window.Atspi.StateType.CHECKED)

    def editor(self):
        """The editor that is open in the table."""
        return next((node for node in window.descendants(self.app.table(), into_tables=True)
                     if node.get_role() == window.Role.COMBO_BOX), None)

    # What a user does

    def press_row_button(self, row):
        window.do_action(self.app.cell(row, "im"), "Press")

    def check(self, *rows):
        """Checks these rows and no others."""
        for row in range(self.app.row_count()):
            wanted = text("IDS_TXT_CHECKED" if row in rows else "IDS_TXT_UNCHECKED")
            if self.app.cell_text(row, "check") != wanted:
                window.do_action(self.app.cell(row, "check"), "Toggle")
                self.wait_for_cell(row, "check", wanted)

    def remove_checked(self):
        window.press(self.app.button("IDS_BTN_REMOVE_FILE"))

    def start_long(self, *others):
        """A run whose first movie takes long; gives its encoder."""
        self.app.add_all(self.movie("long"), *others)
        self.app.convert()
        self.wait_for_progress()
        self.assertIn(LONG_OUTPUT, self.outputs())
        pid, = self.app.encoders()
        return pid

    def pause(self, row=0, name="long.mp4"):
        self.wait_for_button(row, "IDS_A11Y_ROW_PAUSE", name)
        window.click(self.app.cell(row, "im"))
        self.wait_for_cell(row, "progress", text("IDS_TXT_STATUS_PAUSED"))
        self.wait_for_button(row, "IDS_A11Y_ROW_RESUME", name)

    def stop(self, answer):
        window.press(self.app.button("IDS_BTN_STOP"))
        box = self.app.box()
        self.assertIn(text("IDS_TXT_POPUP_STOPCONVERTING"), box.message)
        self.assertEqual([text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_POPUP_OK")], box.buttons)
        box.answer(text(answer))
        self.wait_until_boxes_are_deleted()

    def wait_until_boxes_are_deleted(self):
        """A box that is hidden but still listed can go while the tree is looked through."""
        def listed():
            tops = list(window.children(self.app.root()))
            nodes = tops + [child for top in tops for child in window.children(top)]
            return [node for node in nodes if node.get_role() in window.DIALOGS]
        window.wait_for(lambda: not listed(), "the box to leave the tree")

    def check_stopped(self, row=0, name="long.mp4"):
        self.wait_until_unlocked()
        self.wait_for_cell(row, "progress", text("IDS_TXT_STATUS_WAITING"))
        self.wait_for_button(row, "IDS_A11Y_ROW_REMOVE", name)
        self.wait(lambda: not self.app.encoders(), "the encoder to end")
        self.wait(lambda: not self.outputs(), "the partial output to go")
        self.assertEqual([], self.app.boxes())

    def finish(self, *outputs):
        """The run ends by itself and leaves exactly these."""
        self.close_summary()
        self.wait_for_names()
        self.assertEqual(sorted(outputs), self.outputs())
        self.wait(lambda: not self.app.encoders(), "the encoder to end")


class PauseAndStop(ControlsTest):
    def test_pause_and_resume(self):
        pid = self.start_long()
        self.pause()
        self.wait(lambda: window.process_state(pid) == "T", "the encoder to be suspended")
        self.screen("paused")
        self.check_locked()
        self.assertEqual([pid], self.app.encoders())
        before = os.path.getsize(os.path.join(self.documents, LONG_OUTPUT))
        window.click(self.app.cell(0, "im"))
        self.wait_for_button(0, "IDS_A11Y_ROW_PAUSE", "long.mp4")
        self.wait(lambda: window.process_state(pid) != "T", "the encoder to go on")
        first = self.wait_for_progress()
        self.wait_for_progress(first)
        self.wait(lambda: os.path.getsize(os.path.join(self.documents, LONG_OUTPUT)) > before,
                  "the output to grow")
        self.assertEqual([pid], self.app.encoders())
        self.check_locked()

    def test_stop_asks_and_convert_follows_at_once(self):
        pid = self.start_long(self.movie("short"))
        self.stop("IDS_BTN_POPUP_CANCEL")
        self.wait_for_progress(self.percentage())
        self.assertEqual([pid], self.app.encoders())
        self.check_locked()
        self.stop("IDS_BTN_POPUP_OK")
        self.check_stopped()
        self.screen("stopped")
        self.assertEqual(["long.mp4", "short.mp4"], self.app.column("name"))

        self.app.convert()
        self.wait_for_progress()
        again, = self.app.encoders()
        self.assertNotEqual(pid, again)
        # Now as soon as the button can be pressed, while the old encoder still ends.
        self.stop("IDS_BTN_POPUP_OK")
        self.wait(lambda: window.is_enabled(self.app.button("IDS_BTN_CONVERT")), "Convert")
        self.app.convert()
        self.wait(lambda: again not in self.app.encoders(), "the old encoder to end")
        self.wait_for_progress()
        self.assertEqual(1, len(self.app.encoders()))
        self.assertEqual(text("IDS_TXT_STATUS_WAITING"), self.app.cell_text(1, "progress"))

    def test_stop_while_paused(self):
        pid = self.start_long()
        self.pause()
        self.stop("IDS_BTN_POPUP_CANCEL")
        self.assertEqual("T", window.process_state(pid))
        self.assertEqual(text("IDS_TXT_STATUS_PAUSED"), self.app.cell_text(0, "progress"))
        self.stop("IDS_BTN_POPUP_OK")
        self.check_stopped()
        self.app.convert()
        self.wait_for_progress()
        self.assertEqual(1, len(self.app.encoders()))
        self.assertIn(LONG_OUTPUT, self.outputs())


class Removal(ControlsTest):
    def test_before_a_run(self):
        self.app.add_all(*(self.movie("short", name) for name in "abcd"))
        self.wait_for_button(1, "IDS_A11Y_ROW_REMOVE", "b.mp4")
        window.click(self.app.cell(1, "im"))
        self.wait_for_names("a.mp4", "c.mp4", "d.mp4")
        self.check(0, 2)
        self.remove_checked()
        self.wait_for_names("c.mp4")
        self.app.convert()
        self.finish("c_HQ_640x480.mp4")
        self.assertFalse(window.is_enabled(self.app.button("IDS_BTN_REMOVE_FILE")))
        self.assertEqual(4, len(os.listdir(self.movie_path("Videos"))))

    def test_of_waiting_and_converting_rows(self):
        pid = self.start_long(*(self.movie("short", name) for name in "abc"))
        self.press_row_button(1)
        self.wait_for_names("long.mp4", "b.mp4", "c.mp4")
        self.check(2)
        self.remove_checked()
        self.wait_for_names("long.mp4", "b.mp4")
        self.assertEqual([pid], self.app.encoders())
        self.wait_for_progress(self.percentage())
        self.check(0)
        self.remove_checked()
        self.wait_for_names("b.mp4")
        self.wait(lambda: pid not in self.app.encoders(), "the removed movie's encoder to end")
        self.finish("b_HQ_640x480.mp4")
        Facts(os.path.join(self.documents, "b_HQ_640x480.mp4"))

    def test_of_a_paused_row(self):
        pid = self.start_long(self.movie("short"))
        self.pause()
        self.check(0)
        self.remove_checked()
        self.wait_for_names("short.mp4")
        self.wait(lambda: pid not in self.app.encoders(), "the removed movie's encoder to end")
        self.finish("short_HQ_640x480.mp4")

    def test_of_the_only_row(self):
        self.start_long()
        self.check(0)
        self.remove_checked()
        self.wait_for_names()
        self.wait(lambda: not self.app.encoders(), "the encoder to end")
        self.wait(lambda: not self.outputs(), "the partial output to go")
        self.wait_until_unlocked()
        self.assertEqual([], self.app.boxes())
        self.app.add_all(self.movie("short"))
        self.app.convert()
        self.finish("short_HQ_640x480.mp4")


class Table(ControlsTest):
    def wait_for_list(self):
        def look():
            editor = self.editor()
            return editor and window.has_state(editor, window.Atspi.StateType.EXPANDED)
        self.wait(look, "the list of the cell to open")

    def choose(self, row, column, *keys):
        """Opens the cell's list with one click, and takes an entry by keys."""
        window.click(self.app.cell(row, column))
        self.wait_for_list()
        for name in (*keys, "Return"):
            window.key(name)
        self.wait(lambda: self.editor() is None, "the editor to close")

    def check_refuses_editing(self, row, column):
        cell = self.app.cell(row, column)
        self.assertFalse(window.is_enabled(cell), column)
        with self.assertRaises(LookupError):
            window.do_action(cell, "Press")
        before = self.app.cell_text(row, column)
        window.click(cell)
        self.wait(lambda: window.has_state(self.app.cell(row, column),
                                           window.Atspi.StateType.SELECTED), "the selected row")
        self.assertIsNone(self.editor())
        self.assertEqual(before, self.app.cell_text(row, column))

    def test_quality_and_size(self):
        qualities = [text(f"IDS_TXT_PROFILELIST_{number}") for number in (1, 2, 3)]
        self.app.add_all(self.movie("long"), self.movie("short"))
        others = [self.app.cell_text(1, column) for column in ("res", "cmb")]
        self.assertEqual("1920x1080", self.app.cell_text(0, "res"))
        self.choose(0, "res", "Down")
        self.wait_for_cell(0, "res", "960x540")
        self.choose(0, "cmb", "Down", "Down")
        self.wait_for_cell(0, "cmb", qualities[2])
        # Once more without the mouse.
        window.key("Space")
        self.wait_for_list()
        window.key("Up")
        window.key("Return")
        self.wait(lambda: self.editor() is None, "the editor to close")
        self.wait_for_cell(0, "cmb", qualities[1])
        self.assertEqual(others, [self.app.cell_text(1, column) for column in ("res", "cmb")])

        self.app.convert()
        self.wait_for_progress()
        for column in ("res", "cmb"):
            self.check_refuses_editing(0, column)
            self.check_refuses_editing(1, column)
        output, = self.outputs()
        self.assertRegex(output, r"^long_.+_960x540\.mp4$")
        self.stop("IDS_BTN_POPUP_OK")
        self.check_stopped()
        for column in ("res", "cmb"):
            self.assertTrue(window.is_enabled(self.app.cell(0, column)), column)
        self.assertEqual("960x540", self.app.cell_text(0, "res"))
        self.choose(0, "res", "Up")
        self.wait_for_cell(0, "res", "1920x1080")

    def test_the_box_in_the_header(self):
        self.app.add_all(*(self.movie("short", name) for name in "abc"))
        self.check()
        self.wait(lambda: not self.is_all_checked(), "the header's box to be off")
        window.click(self.header_box())
        self.wait(lambda: self.app.column("check") == [text("IDS_TXT_CHECKED")] * 3,
                  "three checked rows")
        self.assertTrue(self.is_all_checked())
        window.click(self.app.cell(1, "check"))
        self.wait_for_cell(1, "check", text("IDS_TXT_UNCHECKED"))
        self.wait(lambda: not self.is_all_checked(), "the header's box to go off")
        window.click(self.app.cell(1, "check"))
        self.wait(self.is_all_checked, "the header's box to go on")
        window.press(self.header_box())
        self.wait(lambda: self.app.column("check") == [text("IDS_TXT_UNCHECKED")] * 3,
                  "three unchecked rows")
        self.assertFalse(self.is_all_checked())


class Folders(ControlsTest):
    def test_another_output_folder(self):
        folder = self.movie_path("Converted movies")
        os.mkdir(folder)
        self.app.add_all(self.movie("short"))
        window.press(self.app.button("IDS_BTN_SELECT_FOLDER"))
        self.app.panel(text("IDS_TXT_PANEL_FOLDER")).cancel()
        self.assertEqual(self.documents, self.app.output_folder())
        window.press(self.app.button("IDS_BTN_SELECT_FOLDER"))
        self.app.panel(text("IDS_TXT_PANEL_FOLDER")).accept(folder)
        self.wait(lambda: self.app.output_folder() == folder, "the chosen folder")
        self.app.convert()
        self.close_summary()
        self.wait_for_names()
        self.assertEqual(["short_HQ_640x480.mp4"], os.listdir(folder))
        self.assertEqual([], self.outputs())

        self.app.close()
        self.assertEqual(0, self.app.wait_until_ended())
        self.app = self.start()
        self.assertEqual(folder, self.app.output_folder())
        shutil.rmtree(folder)
        window.press(self.app.button("IDS_BTN_OPEN_FOLDER"))
        box = self.app.box()
        self.assertEqual(text("IDS_BTN_POPUP_OUTFLDRUNAVAILABLE"), box.message)
        self.assertEqual([text("IDS_BTN_POPUP_OK")], box.buttons)
        box.answer(text("IDS_BTN_POPUP_OK"))
        self.assertEqual(folder, self.app.output_folder())


if __name__ == "__main__":
    main()
