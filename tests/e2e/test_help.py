#!/usr/bin/python3
"""The help, About, and the details of a movie that was not converted, by keyboard and through the
accessibility tree."""

import os
import subprocess

import test_language
from close_request import request_close
from harness import ProgramTest, main, window
from movies import make_hevc
from texts import text


class HelpTest(ProgramTest):
    def text_window(self, title):
        return window.wait_for(
            lambda: next((node for node in self.app.dialogs() if node.get_name() == title), None),
            f"the window {title!r}")

    def read(self, title):
        node = self.text_window(title)
        # As readers know a text that cannot be changed.
        field = window.wait_for(lambda: window.find(node, window.Role.LABEL, title, False),
                                "its text")
        return window.content(field)

    def close(self, title):
        window.Dialog(self.text_window(title)).press(text("IDS_BTN_CLOSE"))

    def focus(self, node):
        window.Atspi.Component.grab_focus(node)
        window.wait_for(lambda: window.has_state(node, window.Atspi.StateType.FOCUSED), "the focus")

    def activate(self):
        window.wait_for(lambda: window.has_state(self.app.window(), window.Atspi.StateType.ACTIVE),
                        "the window to be active")


class Help(HelpTest):
    def test_f1(self):
        self.activate()
        window.key("F1")
        shown = self.read(text("IDS_MENU_HELP"))
        for words in ("Ctrl+O", text("IDS_TIP_CONVERT"), "NAME", "reelshift [MOVIE...]"):
            self.assertIn(words, shown)
        window.screenshot(os.path.join(os.environ["REELSHIFT_E2E_ARTIFACTS"], "help.png"))
        window.key("Escape")
        window.wait_for(lambda: not self.app.dialogs(), "the help to go")

    def test_about_by_keyboard(self):
        self.activate()
        for press in (("F10", "Shift"), ("Menu",)):
            self.focus(self.app.button("IDS_BTN_ADD_FILE"))
            window.key(*press)
            window.key("Down")  # from Help
            window.key("Return")
            shown = self.read(text("IDS_MENU_ABOUT"))
            banner = subprocess.run(["ffmpeg", "-version"], check=True, stdout=subprocess.PIPE)
            for words in (window.APP_NAME + " 1.0.0.0", banner.stdout.decode().split()[2],
                          "/ffmpeg", "Qt 6", "libcurl"):
                self.assertIn(words, shown)
            window.screenshot(os.path.join(os.environ["REELSHIFT_E2E_ARTIFACTS"], "about.png"))
            self.close(text("IDS_MENU_ABOUT"))

    def test_the_help_goes_with_the_window(self):
        self.activate()
        window.key("F1")
        self.text_window(text("IDS_MENU_HELP"))
        window.press(self.app.button("IDS_BTN_OPEN_FOLDER"))  # the window stays in use
        [number] = self.app.window_numbers()
        request_close(int(number))
        self.assertEqual(0, self.app.wait_until_ended())

    def test_details_of_a_failure(self):
        movie = make_hevc(self.movie_path("broken.mp4"), "640x480", 4)
        with open(movie, "r+b") as file:
            file.seek(os.path.getsize(movie) // 3)
            file.write(b"\xff" * (os.path.getsize(movie) // 3))
        self.app.add_all(movie)
        window.click(self.app.cell(0, "name"))
        self.focus(self.app.table())
        self.app.convert()
        box = self.app.box(60)
        self.assertIn(text("IDS_TXT_POPUP_ERROR"), box.message)
        box.answer(text("IDS_BTN_POPUP_SKIP"))
        window.wait_for(lambda: self.app.boxes(), "the summary")
        self.close_summary()
        self.focus(self.app.table())
        window.key("F10", "Shift")
        window.key("Down")  # from the row's button
        window.key("Return")
        window.wait_for(lambda: window.find(self.app.window(), window.Role.LABEL,
                                            text("IDS_TXT_DETAILS_COPIED"), False),
                        "the quiet line")


class GermanHelp(test_language.InALanguage, HelpTest):
    desktop = shown = "de"

    def test_f1(self):
        self.activate()
        window.key("F1")
        shown = self.read(text("IDS_MENU_HELP"))
        for words in (text("IDS_TIP_CONVERT"), "BEZEICHNUNG", "Zeigt die Version."):
            self.assertIn(words, shown)


if __name__ == "__main__":
    main()
