"""The program's window as a user of assistive technology has it: every control is found in the
accessibility tree by its role and name, and every wait is for a condition."""

import contextlib
import itertools
import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

from desktop_session import die_with_parent  # noqa: E402
import texts  # noqa: E402
from texts import text  # noqa: E402

APP_NAME = "Quorvex Reelshift"
LIMIT = 30.0
Role = Atspi.Role
LISTS = (Role.TABLE, Role.TREE, Role.TREE_TABLE, Role.LIST)
DIALOGS = (Role.DIALOG, Role.ALERT, Role.FILE_CHOOSER)
COLUMNS = ("check", "name", "duration", "audio", "res", "cmb", "progress", "im")


class Timeout(AssertionError):
    """A condition did not come true in its time."""


def wait_for(condition, what, limit=LIMIT):
    """Polls until `condition()` is true (or any truthy value) and gives that value."""
    end = time.monotonic() + limit
    while True:
        try:
            value = condition()
        except GLib.Error:  # a control that went away while it was looked at
            value = None
        if value:
            return value
        if time.monotonic() > end:
            raise Timeout(f"waited {limit:.0f} s for: {what}")
        time.sleep(0.03)


def children(node):
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield child


def descendants(node, into_tables=False):
    for child in children(node):
        yield child
        if into_tables or child.get_role() not in LISTS:
            yield from descendants(child, into_tables)


def has_state(node, state):
    return node.get_state_set().contains(state)


def find(node, role, name=None, required=True):
    """The one control of that role or one of those roles (and name) that is showing. Roles are
    compared, not what they are called: that differs between releases."""
    roles = role if isinstance(role, tuple) else (role,)
    for found in descendants(node):
        if found.get_role() in roles and name in (None, found.get_name()) \
                and has_state(found, Atspi.StateType.SHOWING):
            return found
    if required:
        nicks = " or ".join(each.value_nick for each in roles)
        raise LookupError(f"no {nicks} named {name!r} in:\n{describe(node)}")
    return None


def describe(node, depth=0):
    """The tree as text, for reports of failures."""
    try:
        states = [state.value_nick for state in node.get_state_set().get_states()]
        line = f"{'  ' * depth}{node.get_role_name()} {node.get_name()!r} {','.join(states)}\n"
        return line + "".join(describe(child, depth + 1) for child in children(node))
    except GLib.Error as error:
        return f"{'  ' * depth}({error.message})\n"


def is_enabled(node):
    return has_state(node, Atspi.StateType.ENABLED)


def do_action(node, *names):
    """Does the first of the actions called `names` that the control has."""
    offered = []
    if "Action" in node.get_interfaces():
        count = Atspi.Action.get_n_actions(node)
        offered = [Atspi.Action.get_action_name(node, i) for i in range(count)]
    for name in names:
        if name in offered:
            return Atspi.Action.do_action(node, offered.index(name))
    raise LookupError(f"{node.get_role_name()} {node.get_name()!r} offers {offered}, not {names}")


def press(node):
    wait_for(lambda: is_enabled(node), f"{node.get_name()!r} to be enabled")
    do_action(node, "Press", "Toggle")


def content(node):
    """The text of a text field."""
    return Atspi.Text.get_text(node, 0, -1)


def type_into(node, value):
    Atspi.EditableText.set_text_contents(node, value)


def click(node, button=1, double=False):
    """A real click of the mouse in the middle of the control."""
    box = Atspi.Component.get_extents(node, Atspi.CoordType.SCREEN)
    Atspi.generate_mouse_event(box.x + box.width // 2, box.y + box.height // 2,
                               f"b{button}{'d' if double else 'c'}")


# Key codes of the standard layout, which is the one that the virtual display has.
KEYS = {"Escape": 9, "Tab": 23, "Return": 36, "Space": 65, "Alt": 64, "Control": 37, "Shift": 50,
        "F1": 67, "F2": 68, "F4": 70, "F10": 76, "Up": 111, "Down": 116, "Left": 113, "Right": 114,
        "Delete": 119, "Menu": 135}


@contextlib.contextmanager
def held(*modifiers):
    for modifier in modifiers:
        Atspi.generate_keyboard_event(KEYS[modifier], None, Atspi.KeySynthType.PRESS)
    try:
        yield
    finally:
        for modifier in reversed(modifiers):
            Atspi.generate_keyboard_event(KEYS[modifier], None, Atspi.KeySynthType.RELEASE)


def key(name, *modifiers):
    """A real press of a key, with modifiers held down: key("F4", "Alt")."""
    with held(*modifiers):
        Atspi.generate_keyboard_event(KEYS[name], None, Atspi.KeySynthType.PRESSRELEASE)


def screenshot(path):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    wayland = "WAYLAND_DISPLAY" in os.environ
    subprocess.run(["grim", path] if wayland else ["import", "-silent", "-window", "root", path],
                   check=True)
    return path


def process_state(pid):
    with open(f"/proc/{pid}/stat", encoding="utf-8", errors="replace") as file:
        return file.read().rsplit(")", 1)[1].split()[0]


class Dialog:
    """Any window of the program that is open for a while."""

    def __init__(self, node):
        self.node = node

    def is_gone(self):
        try:
            return not has_state(self.node, Atspi.StateType.SHOWING)
        except GLib.Error:
            return True

    def press(self, *names):
        """Presses the button with one of the names and waits until the dialog is gone."""
        press(self._button(*names))
        wait_for(self.is_gone, f"the dialog to go after {names}")

    def _button(self, *names):
        def look():
            return next((n for n in descendants(self.node) if n.get_role() == Role.PUSH_BUTTON
                         and n.get_name().replace("&", "") in names), None)
        return wait_for(look, f"one of the buttons {names}")


class MessageBox(Dialog):
    """One of the program's questions."""

    @property
    def message(self):
        labels = [n for n in descendants(self.node) if n.get_role() == Role.LABEL]
        return "\n".join(label.get_name() for label in labels if label.get_name())

    @property
    def buttons(self):
        return [n.get_name() for n in descendants(self.node) if n.get_role() == Role.PUSH_BUTTON]

    def tick(self):
        press(find(self.node, Role.CHECK_BOX))

    def answer(self, button):
        self.press(button)


class FilePanel(Dialog):
    """The toolkit's own panel that opens files or chooses a folder."""

    def accept(self, *paths):
        """Opens files of one folder, or chooses the one folder that is given."""
        folder = os.path.dirname(paths[0])
        if any(os.path.dirname(path) != folder for path in paths):
            raise ValueError(f"files of several folders at once: {paths}")
        if len(paths) == 1:
            self._type(paths[0])
        else:
            self._type(folder)
            press(self._button("Open"))
            # The press takes effect a moment later: a file that was selected before would be opened.
            field = find(self.node, Role.TEXT)
            wait_for(lambda: content(field) == "", f"the panel to enter {folder}")
            names = {os.path.basename(path) for path in paths}
            files = self._files(names)
            for path in paths:
                files = self._select(os.path.basename(path), files, path is not paths[0])
        self.press("Open", "Choose")

    def _listed(self, names):
        """The files of those names in the panel's list, once all of them are there."""
        files = {node.get_name(): node for node in descendants(find(self.node, Role.TREE, "Files"))}
        return files if set(names) <= files.keys() else None

    def _files(self, names):
        return wait_for(lambda: self._listed(names), f"the panel to list {names}")

    def _select(self, name, files, more):
        # With the mouse: of several names typed at once the panel can lose the first. On a busy
        # machine the panel still fills or sorts its list when the first click comes, and what was
        # listed before may be none of its files any more: then they are looked up again.
        def pick():
            nonlocal files
            with held("Control") if more else contextlib.nullcontext():
                click(files[name])
            try:
                return wait_for(lambda: has_state(files[name], Atspi.StateType.SELECTED), "it",
                                limit=3)
            except Timeout:
                files = self._files(files.keys())
                return False
        wait_for(pick, f"{name} to be selected")
        return files

    def _type(self, path):
        # What the panel finds in the folder on show it shortens to the bare name.
        field = find(self.node, Role.TEXT)
        type_into(field, path)
        wait_for(lambda: content(field) in (path, os.path.basename(path)), f"{path!r} to be typed")

    def cancel(self):
        self.press("Cancel")


class Application:
    """The running program; a context manager that leaves nothing behind."""

    def __init__(self, program, home, log, *arguments):
        self.program = os.path.abspath(program)
        self.home = home
        environment = dict(os.environ, HOME=home, LC_ALL="C.UTF-8", LANGUAGE=texts.language,
                           XDG_STATE_HOME=os.path.join(home, ".local", "state"),
                           XDG_DATA_HOME=os.path.join(home, ".local", "share"))
        environment.pop("NO_AT_BRIDGE", None)
        os.makedirs(os.path.join(home, "Documents"), exist_ok=True)
        with open(log, "ab") as file:
            self.process = subprocess.Popen([self.program, *arguments], cwd=home, env=environment,
                                            stdin=subprocess.DEVNULL, stdout=file, stderr=file,
                                            preexec_fn=die_with_parent)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()

    # The tree

    def root(self):
        for app in children(Atspi.get_desktop(0)):
            if app.get_process_id() == self.process.pid:
                app.set_cache_mask(Atspi.Cache.NONE)  # what is read is what is there now
                return app
        return None

    def tops(self):
        root = self.root()
        return [] if root is None else [top for top in children(root)
                                        if has_state(top, Atspi.StateType.SHOWING)]

    def _is_main(self, top):
        return top.get_role() == Role.FRAME and top.get_name().startswith(APP_NAME + " ")

    def window(self):
        def look():
            if self.process.poll() is not None:
                raise AssertionError(f"the program ended with {self.process.returncode}")
            return next((top for top in self.tops() if self._is_main(top)), None)
        return wait_for(look, "the main window")

    def dialogs(self):
        """Every open dialog: a window of its own, or one that is listed below its owner."""
        found = []
        for top in self.tops():
            if top.get_role() in DIALOGS:
                found.append(top)
            found += [child for child in children(top)
                      if child.get_role() in DIALOGS and has_state(child, Atspi.StateType.SHOWING)]
        return found

    def boxes(self):
        """The open dialogs that ask or tell: the ones without a field to type into."""
        return [MessageBox(node) for node in self.dialogs()
                if find(node, Role.TEXT, required=False) is None]

    def box(self, limit=LIMIT):
        """The message box that is open, or opens within the limit."""
        return wait_for(lambda: next(iter(self.boxes()), None), "a message box", limit)

    def panel(self, title):
        return FilePanel(wait_for(lambda: next((node for node in self.dialogs()
                                                if node.get_name() == title), None),
                                  f"the panel {title!r}"))

    # The controls

    def button(self, key):
        """The button whose label has that key of the string table."""
        return find(self.window(), Role.PUSH_BUTTON, text(key))

    def table(self):
        return find(self.window(), (Role.TABLE, Role.TREE_TABLE))

    def output_folder(self):
        return content(find(self.window(), Role.TEXT, text("IDS_A11Y_OUTPUT_FOLDER")))

    def file_count(self):
        caption = text("IDS_TXT_FILELIST")
        return next(n.get_name() for n in descendants(self.window())
                    if n.get_role() == Role.LABEL and n.get_name().startswith(caption + "  ("))

    def row_count(self):
        return Atspi.Table.get_n_rows(self.table())

    def cell(self, row, column):
        index = COLUMNS.index(column) if isinstance(column, str) else column
        return Atspi.Table.get_accessible_at(self.table(), row, index)

    def cell_text(self, row, column):
        found = self.cell(row, column)
        return "" if found is None else found.get_name()

    def column(self, column):
        return [self.cell_text(row, column) for row in range(self.row_count())]

    # What a user does

    def add(self, *paths):
        """Picks movies in the panel of the Add button, without waiting for the list."""
        press(self.button("IDS_BTN_ADD_FILE"))
        self.panel(text("IDS_TXT_PANEL_ADD")).accept(*paths)

    def add_all(self, *paths):
        """Picks movies, those of one folder at once, and waits until every one is listed."""
        for _, group in itertools.groupby(paths, os.path.dirname):
            group = list(group)
            expected = self.row_count() + len(group)
            self.add(*group)
            wait_for(lambda n=expected: self.row_count() == n, f"{expected} rows", 60)
            wait_for(lambda n=expected: self.file_count().endswith(f"({n})"), "the count of movies")

    def convert(self):
        press(self.button("IDS_BTN_CONVERT"))

    def close(self):
        """Closes the window by the window manager's own key."""
        wait_for(lambda: has_state(self.window(), Atspi.StateType.ACTIVE), "the window to be active")
        key("F4", "Alt")

    def window_numbers(self):
        """The window manager's numbers of the main window, where it is on the screen."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name",
                                f"^{APP_NAME} [0-9]"], check=False, stdout=subprocess.PIPE,
                               stderr=subprocess.DEVNULL)  # windows go while it looks at them
        return found.stdout.decode().split()

    def wait_until_ended(self, limit=LIMIT):
        wait_for(lambda: self.process.poll() is not None, "the program to end", limit)
        return self.process.returncode

    def terminate(self):
        self.process.send_signal(signal.SIGTERM)

    # Beside the window

    def encoders(self):
        """The process numbers of the encoders that run for this program's user."""
        return self.processes("ffmpeg")

    def processes(self, name=None):
        """The process numbers of the programs of that name, or of all, that run for this program's
        user."""
        mark = b"HOME=" + os.fsencode(self.home)
        found = []
        for pid in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{pid}/environ", "rb") as file:
                    ours = mark in file.read().split(b"\0")
                with open(f"/proc/{pid}/stat", "rb") as file:
                    head, tail = file.read().rsplit(b")", 1)
            except OSError:
                continue
            named = name is None or head.endswith(b"(" + name.encode())
            if ours and named and tail.split()[0] != b"Z":
                found.append(int(pid))
        return found
