"""A user who does whatever can be done, at any moment: by the accessibility tree, by keys of the X
server, and with the mouse. What cannot be done at that moment is not done."""

import os
import subprocess

from gi.repository import GLib

from harness import window
from test_drop import Mouse, PlacedSource
from texts import text
from window import Atspi, Role

LIMIT = 4.0  # seconds until a user does something else
LOCKED_IN_A_RUN = ("IDS_BTN_CONVERT", "IDS_BTN_ADD_FILE", "IDS_BTN_SELECT_FOLDER")
BUTTONS = (*LOCKED_IN_A_RUN, "IDS_BTN_STOP", "IDS_BTN_REMOVE_FILE")
KEYS = ("ctrl+Return", "ctrl+p", "ctrl+period", "Delete", "ctrl+shift+a", "Up", "Down", "Left",
        "Right", "space", "F2", "Escape", "Tab", "Return", "Menu")
# What happens when the window changes under the user's hands.
MISSED = (LookupError, StopIteration, window.Timeout, GLib.Error)


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=False, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, timeout=20)


class User:
    def __init__(self, random, movies, folders, sources, outputs, share):
        self.random = random
        self.movies = movies    # by folder
        self.folders = folders
        self.sources = sources
        self.outputs = outputs
        self.share = share
        self.app = None
        self._buttons = {}      # of this program; to look them up takes long
        self._source = None
        self._enough = 3        # movies to begin a run with
        self._detail = ""       # of the latest action
        self.done = {}
        self.missed = 0
        self._actions = {self.press_row: 8, self.press_key: 8, self.edit_cell: 6, self.check_row: 5,
                         self.convert: 4, self.add: 4, self.let_share_hang: 3, self.stop: 2,
                         self.select_folder: 2, self.choose_for_all: 2, self.move_a_movie: 1,
                         self.remove_checked: 1, self.drop_movies: 1, self.drag_row: 1}

    def meet(self, app):
        """From now on it is this program, whose window has just been opened."""
        self.app = app
        self._window = app.window()
        self._root = app.root()
        self._table = app.table()
        self._buttons = {key: app.button(key) for key in BUTTONS}
        # A box may be there already.
        self._children = self._window.get_child_count() - len(app.dialogs())

    def act(self):
        """Does one thing and gives its name."""
        boxes = self.boxes()
        if boxes and self.random.random() < 0.85:
            action = self.answer
        else:
            action = self._choose()
        name = action.__name__
        self._detail = ""
        try:
            action()
            self.done[name] = self.done.get(name, 0) + 1
            return name + self._detail
        except MISSED as error:
            self.missed += 1
            return f"{name}{self._detail} (missed: {str(error)[:80].splitlines()})"

    def _choose(self):
        """Movies first and then a run, more often than not: other things have little to work on."""
        try:
            rows = Atspi.Table.get_n_rows(self._table) if self.is_unlocked() else None
        except MISSED:
            rows = None
        if rows is not None and self.random.random() < 0.75:
            if rows >= self._enough:
                self._enough = self.random.randint(1, 8)
                return self.convert
            if not self.share.hangs():
                return self.drop_movies if self.random.random() < 0.15 else self.add
        return self.random.choices(list(self._actions), self._actions.values())[0]

    # What there is

    def ask(self):
        """Asks the window for its title."""
        return self._window.get_name() != ""

    def boxes(self):
        try:
            if self._root.get_child_count() == 1 \
                    and self._window.get_child_count() == self._children:
                return []
            return self.app.dialogs()
        except MISSED:
            return []

    def is_enabled(self, key):
        return window.is_enabled(self._buttons[key])

    def is_unlocked(self):
        return all(self.is_enabled(key) for key in LOCKED_IN_A_RUN)

    def _row(self):
        rows = Atspi.Table.get_n_rows(self._table)
        if rows < 1:
            raise LookupError("no row")
        return self.random.randrange(rows)

    def _cell(self, row, column):
        cell = Atspi.Table.get_accessible_at(self._table, row, window.COLUMNS.index(column))
        if cell is None:
            raise LookupError("the row has gone")
        return cell

    def _press(self, key):
        button = self._buttons[key]
        if not window.is_enabled(button):
            raise LookupError(f"{key} cannot be pressed")
        self._click_or(button, "Press")

    def _click_or(self, node, action):
        # Under a box a click would meet any of its buttons, and nobody could tell which.
        if self.random.random() < 0.3 and not self.boxes():
            window.click(node)
        else:
            window.do_action(node, action)

    # Boxes and panels

    def answer(self, calmly=False):
        """Answers the topmost box, any answer. `calmly`: the one that goes no further."""
        node = self.boxes()[-1]
        buttons = [n for n in window.descendants(node) if n.get_role() == Role.PUSH_BUTTON
                   and window.has_state(n, Atspi.StateType.SHOWING)]
        if window.find(node, Role.TEXT, required=False):  # a panel
            buttons = [n for n in buttons if n.get_name().replace("&", "") == "Cancel"]
        if calmly:
            stops = text("IDS_TXT_POPUP_STOPCONVERTING") in window.MessageBox(node).message
            button = buttons[-1 if stops else 0]
        else:
            button = self.random.choice(buttons)
        tick = window.find(node, Role.CHECK_BOX, required=False)
        is_ticked = tick is not None and window.has_state(tick, Atspi.StateType.CHECKED)
        if tick is not None and not calmly and self.random.random() < 0.2:
            is_ticked = True
            if not window.has_state(tick, Atspi.StateType.CHECKED):
                window.do_action(tick, "Toggle", "Press")
        name = button.get_name().replace("&", "")
        self._detail = f" {name!r} to {node.get_name()[:60]!r}"
        self._note(name, is_ticked)
        window.do_action(button, "Press")
        # The question of a new version goes on as the window of its download.
        window.wait_for(window.Dialog(button).is_gone, "the box to go", LIMIT)

    def _note(self, answer, is_ticked):
        if answer == text("IDS_BTN_POPUP_REPLACE"):
            self.outputs.told_to_replace += 1
            self.outputs.told_for_all |= is_ticked
        elif answer == text("IDS_BTN_POPUP_TRASH"):
            self.outputs.told_to_trash = True

    def _panel(self, key, *paths):
        panel = window.FilePanel(window.wait_for(
            lambda: next((node for node in self.app.dialogs() if node.get_name() == text(key)),
                         None), "the panel", LIMIT))
        if not paths:
            panel.cancel()
        else:
            panel.accept(*paths)

    # The controls

    def convert(self):
        self._press("IDS_BTN_CONVERT")

    def stop(self):
        self._press("IDS_BTN_STOP")

    def remove_checked(self):
        self._press("IDS_BTN_REMOVE_FILE")

    def add(self):
        if self.share.hangs():
            raise LookupError("the toolkit's panel would look at the share")
        folder = self.random.choice(list(self.movies))
        count = self.random.choice((0, 1, 1, 1, 1, 1, 1, 1))
        there = [path for path in self.movies[folder] if os.path.exists(path)]
        self._press("IDS_BTN_ADD_FILE")
        self._panel("IDS_TXT_PANEL_ADD", *self.random.sample(there, min(count, len(there))))

    def select_folder(self):
        if self.share.hangs():
            raise LookupError("the toolkit's panel would look at the share")
        self._press("IDS_BTN_SELECT_FOLDER")
        self._panel("IDS_TXT_PANEL_FOLDER", self.random.choice(self.folders))

    def choose_for_all(self):
        self._need_no_box()
        box = window.find(self._window, Role.COMBO_BOX)
        window.click(box)
        self._keys("Down", "Down", "Return")

    # The list

    def press_row(self):
        self._click_or(self._cell(self._row(), "im"), "Press")

    def check_row(self):
        window.do_action(self._cell(self._row(), "check"), "Toggle")

    def edit_cell(self):
        self._need_no_box()
        column = self.random.choice(("cmb", "res"))
        window.click(self._cell(self._row(), column))
        if column == "res" and self.random.random() < 0.3:
            self._keys("ctrl+a", "3", "2", "0", "x", "2", "4", "0", "Return")
        else:
            self._keys(*self.random.choices(("Down", "Up"), k=2), "Return")

    def press_key(self):
        self._need_no_box()
        self._keys(*self.random.choices(KEYS, k=self.random.randint(1, 3)))

    @staticmethod
    def _keys(*names):
        xdotool("key", "--clearmodifiers", *names)

    def _need_no_box(self):
        if self.boxes():
            raise LookupError("a box is open")

    # The mouse

    def drop_movies(self):
        self._need_no_box()
        paths = self.random.sample(self.movies[self.random.choice(list(self.movies))],
                                   self.random.randint(2, 6))
        x, y, width, height = self._extents(self._table)
        self.leave_drag_source()
        self._source = PlacedSource(*paths)
        mouse = self._source.drag()
        try:
            mouse.go(x + width // 2, y + height // 2)
        finally:
            mouse.release()
        self._source.wait_for("dropped")

    def leave_drag_source(self):
        """Ends the other program, which must be there for as long as what was dropped is read: the
        toolkit waits five seconds for one that is not."""
        if self._source:
            self._source.end()
            self._source = None

    def drag_row(self):
        self._need_no_box()
        row, to = self._row(), self._row()
        x, y, _, height = self._extents(self._cell(row, "name"))
        below = self._extents(self._cell(to, "name"))
        mouse = Mouse(x + 10, y + height // 2)
        try:
            mouse.go(below[0] + 40, below[1] + 3)
        finally:
            mouse.release()

    @staticmethod
    def _extents(node):
        box = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
        return box.x, box.y, box.width, box.height

    # The world

    def move_a_movie(self):
        folder = self.random.choice(list(self.movies))
        self.sources.take_or_give_back(self.random.choice(self.movies[folder]))

    def let_share_hang(self):
        self._need_no_box()  # the toolkit's panel would look at the share
        # Eight: a window that waited for the share would not answer in time.
        self.share.hang(self.random.choice((0.1, 0.3, 1, 3, 5, 8)))
