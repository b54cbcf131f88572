#!/usr/bin/python3
"""The real window where there is a Wayland display and no other one."""

import os
import re

from drag_source import DragSource
from harness import ARTIFACTS, ProgramTest, main, window
from movies import Facts, make_hevc
from test_closing import HANGS, SlowExaminations
from texts import text
import wayland

SIZE = (1280, 800)
LIMIT = 60


class WaylandTest(ProgramTest):
    def setUp(self):
        for name in ("DISPLAY", "QT_QPA_PLATFORM"):
            self.assertNotIn(name, os.environ)
        self.devices = wayland.Devices(SIZE)
        self.devices.__enter__()
        self.addCleanup(self.devices.__exit__)
        super().setUp()

    def wait(self, condition, what):
        return window.wait_for(condition, what, LIMIT)

    def surface(self, pid, title):
        """The window whose title begins so, as the compositor has it."""
        return self.wait(lambda: next((each for each in wayland.windows(pid)
                                       if (each["name"] or "").startswith(title)
                                       and each["visible"]), None), f"the window {title!r}")

    def main_surface(self):
        return self.surface(self.app.process.pid, window.APP_NAME + " ")

    def middle(self, surface, node):
        """Where on the screen the middle of a control is."""
        left, top, _, _ = wayland.place(surface)
        box = window.Atspi.Component.get_extents(node, window.Atspi.CoordType.WINDOW)
        return left + box.x + box.width // 2, top + box.y + box.height // 2

    def click(self, node):
        self.devices.click(*self.middle(self.main_surface(), node))

    def close_by_the_compositor(self):
        wayland.sway(f"[con_id={self.main_surface()['id']}] kill")

    def wait_until_active(self):
        self.wait(lambda: window.has_state(self.app.window(), window.Atspi.StateType.ACTIVE),
                  "the window to be active")

    def add(self, path):
        """Types the path into the panel that Ctrl+O opens."""
        count = self.app.row_count() + 1
        self.wait_until_active()
        wayland.keys("ctrl+o")
        panel = self.app.panel(text("IDS_TXT_PANEL_ADD"))
        field = window.find(panel.node, window.Role.TEXT)
        self.wait(lambda: window.has_state(field, window.Atspi.StateType.FOCUSED), "the field")
        wayland.write(path)
        self.wait(lambda: window.content(field) == path, f"{path} to be typed")
        wayland.keys("Return")
        self.wait(panel.is_gone, "the panel to go")
        self.wait(lambda: self.app.row_count() == count, f"{count} rows")

    def drop(self, path):
        """Drags a movie from another program's window to the middle of the table; once more where
        the button came up before the compositor had heard that the table takes it."""
        results = []
        while "dropped copy" not in results and len(results) < 5:
            results.append(self.drag(path))
        self.assertEqual("dropped copy", results[-1])

    def drag(self, path):
        source = DragSource(0, 0, path)
        self.addCleanup(source.end)
        other = self.surface(source.process.pid, "drag source")
        wayland.sway(f"[con_id={other['id']}] move absolute position 4 4")
        self.wait(lambda: self.surface(source.process.pid, "drag source")["rect"]["x"] == 4,
                  "the other window at its place")
        left, top, width, height = wayland.place(
            self.surface(source.process.pid, "drag source"))
        goal = self.middle(self.main_surface(), self.app.table())
        self.devices.move(left + width // 2, top + height // 2)
        with self.devices.held():
            # A drag begins and goes on with small moves, as by hand.
            for step in range(1, 21):
                self.devices.move(left + width // 2 + step, top + height // 2 + step)
            source.wait_for("dragging")
            self.devices.glide(goal)
            for step in range(40):
                self.devices.move(goal[0] + step % 5, goal[1])
        result = source.wait_for("dropped")
        source.end()
        return result

    def percentage(self, row=0):
        shown = re.search(r"(\d+)\s*%", self.app.cell_text(row, "progress"))
        return int(shown.group(1)) if shown else -1

    def wait_for_cell(self, row, column, wanted):
        self.wait(lambda: self.app.cell_text(row, column) == wanted,
                  f"{wanted!r} in row {row}")

    def picture(self, name):
        return window.screenshot(os.path.join(ARTIFACTS, self.id(), name + ".png"))


class OneWindow(WaylandTest):
    def test_opens_and_closes(self):
        surface = self.main_surface()
        self.assertEqual("xdg_shell", surface["shell"])
        # The name of the desktop entry, by which its icon is found.
        self.assertEqual("example.quorvex.reelshift", surface["app_id"])
        self.assertEqual(0, self.app.row_count())
        self.picture("empty")
        self.close_by_the_compositor()
        self.assertEqual(0, self.app.wait_until_ended())


class WholeRun(WaylandTest):
    def test_a_whole_run(self):
        long = make_hevc(self.movie_path("Videos", "long.mp4"), "1280x720", 2, repeat=60)
        short = make_hevc(self.movie_path("Videos", "short.mp4"), "640x480", 1)
        self.add(long)
        self.drop(short)
        self.wait(lambda: self.app.column("name") == ["long.mp4", "short.mp4"], "two rows")
        self.wait(lambda: self.app.file_count().endswith("(2)"), "the count of movies")

        self.click(self.app.button("IDS_BTN_CONVERT"))
        self.wait(lambda: self.percentage() > 0, "a percentage")
        pid, = self.app.encoders()
        self.picture("running")
        self.click(self.app.cell(0, "im"))
        self.wait_for_cell(0, "progress", text("IDS_TXT_STATUS_PAUSED"))
        self.wait(lambda: window.process_state(pid) == "T", "the encoder to be suspended")
        wayland.keys("ctrl+p")
        self.wait(lambda: window.process_state(pid) != "T", "the encoder to go on")
        self.wait_for_cell(0, "im", text("IDS_A11Y_ROW_PAUSE").replace("%1", "long.mp4"))

        wayland.keys("ctrl+period")
        box = self.app.box()
        self.assertIn(text("IDS_TXT_POPUP_STOPCONVERTING"), box.message)
        # The second button; the first one is Cancel.
        wayland.keys("Tab", "Return")
        self.wait(box.is_gone, "the question to go")
        self.wait_for_cell(0, "im", text("IDS_A11Y_ROW_REMOVE").replace("%1", "long.mp4"))
        self.wait(lambda: not self.app.encoders(), "the encoder to end")
        self.wait(lambda: not self.outputs(), "the partial output to go")

        self.click(self.app.cell(0, "im"))
        self.wait(lambda: self.app.column("name") == ["short.mp4"], "one row")
        self.wait_until_active()
        wayland.keys("ctrl+Return")
        box = self.app.box(limit=LIMIT)
        self.assertIn(text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL").split("\n")[0], box.message)
        self.picture("summary")
        wayland.keys("Return")
        self.wait(box.is_gone, "the summary to go")
        self.assertEqual(["short_HQ_640x480.mp4"], self.outputs())
        made = Facts(os.path.join(self.documents, "short_HQ_640x480.mp4"))
        self.assertEqual(("h264", "640x480"), (made.video["codec_name"], made.size))
        self.assertEqual(["long.mp4", "short.mp4"],
                         sorted(os.listdir(self.movie_path("Videos"))))

        self.add(long)
        wayland.keys("ctrl+Return")
        self.wait(lambda: "long_HQ_1280x720.mp4" in self.outputs(), "the partial output")
        self.close_by_the_compositor()
        self.assertEqual(0, self.app.wait_until_ended())
        self.wait(lambda: not self.app.encoders(), "the encoder to end")
        self.assertEqual(["short_HQ_640x480.mp4"], self.outputs())


class Closing(WaylandTest, SlowExaminations):
    """The window closed by the compositor while it waits for something that does not come."""

    def is_shown(self):
        return bool(wayland.windows(self.app.process.pid))

    def by_window_manager(self):
        self.close_by_the_compositor()

    def test_an_examination_that_hangs(self):
        self.examine(HANGS, "a.mp4")
        self.check_ends(self.by_window_manager)


if __name__ == "__main__":
    main()
