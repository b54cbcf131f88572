#!/usr/bin/python3
"""What a screen reader hears and finds: the tree of the window, and what it is told of a run."""

import os
import shutil
import subprocess

from harness import ARTIFACTS, ProgramTest, main, window
from movies import make_hevc
from texts import mnemonic, text
from window import Atspi, GLib, Role

EVENTS = ("object:state-changed:showing", "object:property-change:accessible-name",
          "object:property-change:accessible-value", "window:activate",
          "object:state-changed:focused")


class Ear:
    """Notes what the program tells assistive technology, as (kind, role, name)."""

    def __init__(self, case, app):
        self.heard = []
        self._pid = app.process.pid
        self._listener = Atspi.EventListener.new(self._note)
        for event in EVENTS:
            self._listener.register(event)
            case.addCleanup(self._listener.deregister, event)

    def _note(self, event):
        try:
            if event.source.get_process_id() == self._pid:
                self.heard.append((event.type, event.detail1, event.source.get_role(),
                                   event.source.get_name()))
        except GLib.Error:
            pass  # what told is gone

    def listen(self):
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass
        return self.heard

    def said(self):
        """The announcements, line by line."""
        return [line for kind, shown, role, name in self.listen()
                if kind == "object:state-changed:showing" and shown and role == Role.NOTIFICATION
                for line in name.split("\n")]


class Walk(ProgramTest):
    def status(self, movie, key):
        return text("IDS_A11Y_ROW_STATUS").replace("%1", movie).replace("%2", text(key))

    def keep(self, name, content):
        folder = os.path.join(ARTIFACTS, self.id())
        os.makedirs(folder, exist_ok=True)
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write(content)

    def test_the_list_is_read_by_rows(self):
        """Headers, descriptions and keys that a reader asks for."""
        table = self.app.table()
        self.assertEqual(text("IDS_TXT_EMPTY_LIST"), table.get_description())
        self.app.add_all(make_hevc(self.movie_path("a.mp4")))
        self.assertEqual(text("IDS_TIP_TABLE"), table.get_description())
        for column, key in enumerate(("IDS_A11Y_COLUMN_CHECK", "IDS_TXT_FILENAME",
                                      "IDS_TXT_DURATION", "IDS_TXT_AUDIO", "IDS_TXTFLD_RESOLUTION",
                                      "IDS_TXTFLD_QUALITY", "IDS_TXT_STATUS",
                                      "IDS_A11Y_COLUMN_BUTTON")):
            header = Atspi.Table.get_column_header(table, column)
            self.assertEqual(text(key), header.get_name())
        self.assertEqual("a.mp4", Atspi.Table.get_row_header(table, 0).get_name())
        add = self.app.button("IDS_BTN_ADD_FILE")
        self.assertIn("Ctrl+O", add.get_description())
        for node in window.descendants(self.app.window()):
            if window.has_state(node, Atspi.StateType.FOCUSABLE) \
                    and node.get_role() not in (Role.LIST, Role.LIST_ITEM):
                self.assertNotEqual("", node.get_name(), node.get_role())

    def test_the_focus_is_a_cell(self):
        self.app.add_all(make_hevc(self.movie_path("a.mp4")))
        ear = Ear(self, self.app)
        letter = mnemonic("IDS_TXT_FILELIST")
        subprocess.run(["xdotool", "key", "alt+" + letter], check=True)

        def focused():
            return [(role, name) for kind, gained, role, name in ear.listen()
                    if kind == "object:state-changed:focused" and gained]
        window.wait_for(lambda: focused()[-1:] == [(Role.TABLE_CELL, "a.mp4")], "a focused cell")

    def test_what_is_said_of_a_run(self):
        ear = Ear(self, self.app)
        first = make_hevc(self.movie_path("a.mp4"), "1280x720", 2, repeat=4)
        second = shutil.copy(first, self.movie_path("b.mp4"))
        self.app.add_all(first, second)
        self.keep("list.txt", window.describe(self.app.window()))
        self.app.convert()
        window.wait_for(lambda: "Value" in self.app.cell(0, "progress").get_interfaces(), "the bar")
        value = self.app.cell(0, "progress").get_value_iface()
        window.wait_for(lambda: 0 < Atspi.Value.get_current_value(value) <= 100, "a percentage")
        self.assertEqual(100, Atspi.Value.get_maximum_value(value))
        box = self.app.box(limit=60)
        wanted = [self.status(movie, key) for movie in ("a.mp4", "b.mp4")
                  for key in ("IDS_A11Y_ROW_PROGRESS", "IDS_TXT_STATUS_CONVERTED")]
        # On a busy machine the add takes its time, and is told as well.
        adding = text("IDS_TXT_ADDING").split("%1")[0]

        def said():
            return [line for line in ear.said() if not line.startswith(adding)]
        window.wait_for(lambda: len(said()) >= len(wanted), f"{wanted} to be said")
        self.keep("heard.txt", "\n".join(map(str, ear.listen())))
        self.keep("box.txt", window.describe(self.app.root()))
        # Nothing of each percentage.
        self.assertEqual(wanted, said())
        message = box.message.split("\n")[0]
        window.wait_for(lambda: any(kind == "window:activate" and name.startswith(message)
                                    for kind, _, _, name in ear.listen()), "the end to be told")


if __name__ == "__main__":
    main()
