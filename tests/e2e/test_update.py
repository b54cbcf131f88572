#!/usr/bin/python3
"""The offer of a new version in the real window, with an update server on this machine."""

import hashlib
import http.server
import os
import random
import shutil
import subprocess
import threading
import unittest

from harness import ProgramTest, main, window
from loopback import PORT, PROGRAM, URL
from movies import make_hevc
from texts import text

SCREENS = os.environ.get("REELSHIFT_E2E_ARTIFACTS", "")
DOCUMENT_PATH = "/xmlcontainer/customer/data/reelshift/mac/server_version.xml"
INSTALLER_NAME = "Quorvex Reelshift 9.9.9.9.deb"
INSTALLER_PATH = "/files/Quorvex%20Reelshift%209.9.9.9.deb"
PROGRAM_PATH = "/files/setup.run"
INSTALLER = random.Random(9999).randbytes(20 * 1024 * 1024)
PIECE = 64 * 1024
FOLDER_FILES = ["add_hevc_file_path.txt", "default_hevc_path.txt"]
CHECK_THREAD = "version check"


def document(version, path=INSTALLER_PATH):
    return (f'<?xml version="1.0" encoding="UTF-8"?>\n<product>\n'
            f"  <version>{version}</version>\n"
            f"  <setupFile><url>{URL}{path}</url></setupFile>\n"
            f"</product>\n").encode()


class UpdateServer(http.server.ThreadingHTTPServer):
    """Serves one document and one installer, the latter only as far as the test allows."""

    def __init__(self, body):
        super().__init__(("127.0.0.1", PORT), UpdateHandler)
        self.body = body
        self.says_length = True
        self.asked = threading.Event()      # somebody wants the document
        self.may_answer = threading.Event()
        self.may_answer.set()
        self.answered = threading.Event()   # all of the document is on its way
        self._progress = threading.Condition()
        self._allowed = 0
        self._closed = False
        threading.Thread(target=self.serve_forever, args=(0.05,), daemon=True).start()

    def handle_error(self, request, client_address):
        pass  # a program that has ended does not wait for the rest

    def allow(self, share):
        with self._progress:
            self._allowed = int(len(INSTALLER) * share)
            self._progress.notify_all()

    def wait_for_more(self, sent):
        """How far the installer may be sent, once that is further than `sent`."""
        with self._progress:
            self._progress.wait_for(lambda: self._allowed > sent or self._closed)
            return 0 if self._closed else self._allowed

    def end(self):
        with self._progress:
            self._closed = True
            self._progress.notify_all()
        self.may_answer.set()
        self.shutdown()
        self.server_close()


class UpdateHandler(http.server.BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def do_GET(self):
        if self.path == DOCUMENT_PATH:
            self.server.asked.set()
            self.server.may_answer.wait()
            self._begin(len(self.server.body))
            self.wfile.write(self.server.body)
            self.server.answered.set()
        elif self.path in (INSTALLER_PATH, PROGRAM_PATH):
            self._begin(len(INSTALLER) if self.server.says_length else None)
            self._send_installer()
        else:
            self.send_error(404)

    def _begin(self, length):
        self.send_response(200)
        self.send_header("Content-Type", "application/octet-stream")
        if length is not None:
            self.send_header("Content-Length", str(length))
        self.end_headers()

    def _send_installer(self):
        sent = 0
        while sent < len(INSTALLER):
            allowed = self.server.wait_for_more(sent)
            if allowed == 0:
                return
            while sent < allowed:
                end = min(sent + PIECE, allowed)
                self.wfile.write(INSTALLER[sent:end])
                sent = end


@unittest.skipUnless(PROGRAM, "no program that looks for versions on this machine")
class UpdateTest(ProgramTest):
    program = PROGRAM

    def setUp(self):
        self.server = None
        super().setUp()

    def start(self):
        """Nothing is started here: every test has a server of its own first."""

    def serve(self, body):
        self.server = UpdateServer(body)
        self.addCleanup(self.server.end)
        return self.server

    def begin(self, with_handler=True):
        """Starts the program; the system's handler for files, if any, is one that takes notes."""
        self.downloads = os.path.join(self.home, "Downloads")
        self.notes = os.path.join(self.home, "opened")
        handlers = os.path.join(self.home, "bin")
        os.mkdir(handlers)
        path = os.environ["PATH"]
        os.environ["PATH"] = handlers
        if with_handler:
            self.write_handler(os.path.join(handlers, "xdg-open"))
            os.environ["PATH"] += os.pathsep + path
        try:
            self.app = super().start()
        finally:
            os.environ["PATH"] = path

    def write_handler(self, path):
        with open(path, "w", encoding="utf-8") as file:
            file.write(f'#!/bin/sh\nprintf "%s\\n" "$@" >>"{self.notes}.new"\n'
                       f'mv "{self.notes}.new" "{self.notes}"\n')
        os.chmod(path, 0o755)

    def offered(self, with_handler=True, path=INSTALLER_PATH):
        """Serves a newer version, starts the program and gives the window that asks."""
        self.serve(document("9.9.9.9", path))
        self.begin(with_handler)
        return self.question()

    def question(self):
        box = self.app.box()
        self.assertEqual(text("IDS_TXT_UPDATE_TITLE"), box.node.get_name())
        return box

    def accept(self, box):
        """Presses OK and gives the bar that appears in the same window."""
        window.press(window.find(box.node, window.Role.PUSH_BUTTON, text("IDS_BTN_POPUP_OK")))
        return window.wait_for(
            lambda: window.find(box.node, window.Role.PROGRESS_BAR,
                                text("IDS_A11Y_DOWNLOAD_PROGRESS"), required=False),
            "the progress bar")

    @staticmethod
    def bar_share(bar):
        """From 0.0 to 1.0; -1.0 while the bar is only busy."""
        low = window.Atspi.Value.get_minimum_value(bar)
        high = window.Atspi.Value.get_maximum_value(bar)
        now = window.Atspi.Value.get_current_value(bar)
        return (now - low) / (high - low) if high > low else -1.0

    def send_until(self, bar, share):
        self.server.allow(share)
        window.wait_for(lambda: abs(self.bar_share(bar) - share) < 0.002,
                        f"the bar to stand at {share}")

    def screen(self, name):
        if SCREENS:
            window.screenshot(os.path.join(SCREENS, self.id(), name + ".png"))

    def partial_files(self):
        return [name for name in os.listdir(self.downloads) if name.endswith(".part")]

    def check_ended_with_folders(self):
        self.assertEqual(0, self.app.wait_until_ended())
        self.assertEqual(FOLDER_FILES, sorted(os.listdir(self.documents)))

    def check_installer(self):
        self.check_file()
        self.check_opened(f"file://{self.downloads}/{os.path.basename(INSTALLER_PATH)}")

    def check_opened(self, address):
        window.wait_for(lambda: os.path.exists(self.notes), "the handler to be called")
        with open(self.notes, encoding="utf-8") as file:
            self.assertEqual([address], file.read().splitlines())

    def check_file(self, name=INSTALLER_NAME, others=()):
        self.assertEqual(sorted([name, *others]), sorted(os.listdir(self.downloads)))
        path = os.path.join(self.downloads, name)
        with open(path, "rb") as file:
            self.assertEqual(hashlib.sha256(INSTALLER).hexdigest(),
                             hashlib.sha256(file.read()).hexdigest())
        self.assertEqual(0, os.stat(path).st_mode & 0o111)

    def close_main_window(self):
        main_window = self.app.window()
        # To the front by its title bar, which the small window does not cover.
        box = window.Atspi.Component.get_extents(main_window, window.Atspi.CoordType.SCREEN)
        window.Atspi.generate_mouse_event(box.x + box.width // 2, box.y - 8, "b1c")
        self.app.close()
        window.wait_for(window.Dialog(main_window).is_gone, "the main window to go")

    def check_icon(self, title):
        """The window manager was given the program's icon for the window."""
        if shutil.which("xprop") is None or shutil.which("xdotool") is None:
            return
        number = subprocess.run(["xdotool", "search", "--name", f"^{title}$"], check=True,
                                stdout=subprocess.PIPE).stdout.split()[-1].decode()
        shown = subprocess.run(["xprop", "-id", number, "_NET_WM_ICON"], check=True,
                               stdout=subprocess.PIPE).stdout
        self.assertIn(b"Icon (", shown)

    def check_told_where_it_is(self):
        """The box about an installer that nothing opens; ends the program with it."""
        alert = window.wait_for(
            lambda: next((box for box in self.app.boxes()
                          if text("IDS_TXT_UPDATE_NOT_OPENED") in box.message), None), "the box")
        self.assertIn(os.path.join(self.downloads, INSTALLER_NAME), alert.message)
        self.assertIsNone(self.app.process.poll())
        window.press(window.find(alert.node, window.Role.PUSH_BUTTON, text("IDS_BTN_POPUP_OK")))
        self.check_ended_with_folders()
        self.check_file()


class Download(UpdateTest):
    def test_to_the_very_end(self):
        server = self.serve(document("9.9.9.9"))
        server.may_answer.clear()
        self.begin()
        self.assertTrue(server.asked.wait(window.LIMIT), "nobody asks for the document")
        # The window is there and answers while the server does not.
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        self.assertEqual([], self.app.dialogs())
        server.may_answer.set()

        box = self.question()
        window.find(box.node, window.Role.LABEL, text("IDS_TXT_NEWVERSION"))
        self.assertEqual([text("IDS_BTN_POPUP_OK"), text("IDS_BTN_POPUP_CANCEL")],
                         [name for name in box.buttons if name])
        self.assertFalse(os.path.exists(self.downloads))
        self.check_icon(text("IDS_TXT_UPDATE_TITLE"))
        self.screen("question")
        bar = self.accept(box)
        for share in (0.1, 0.25, 0.5):
            self.send_until(bar, share)
        self.assertEqual(1, len(self.partial_files()))
        self.assertEqual(self.partial_files(), os.listdir(self.downloads))
        self.screen("half_way")
        self.send_until(bar, 0.75)
        server.allow(1)
        self.check_ended_with_folders()
        self.check_installer()

    def test_of_unknown_size(self):
        box = self.offered()
        self.server.says_length = False
        bar = self.accept(box)
        self.server.allow(0.5)
        window.wait_for(lambda: os.path.isdir(self.downloads) and any(
            os.path.getsize(os.path.join(self.downloads, name)) == len(INSTALLER) // 2
            for name in self.partial_files()), "half of the file")
        self.assertEqual(-1.0, self.bar_share(bar))
        self.screen("unknown_size")
        self.server.allow(1)
        self.check_ended_with_folders()
        self.check_installer()

    def test_beside_an_older_file(self):
        box = self.offered()
        os.mkdir(self.downloads)
        older = os.path.join(self.downloads, INSTALLER_NAME)
        with open(older, "w", encoding="utf-8") as file:
            file.write("older")
        self.send_until(self.accept(box), 0.5)
        self.server.allow(1)
        self.check_ended_with_folders()
        newer = INSTALLER_NAME.replace(".deb", " (1).deb")
        self.check_file(newer, [INSTALLER_NAME])
        with open(older, encoding="utf-8") as file:
            self.assertEqual("older", file.read())
        self.check_opened(f"file://{self.downloads}/{newer.replace(' ', '%20')}")

    def test_of_a_program_shows_its_folder(self):
        self.send_until(self.accept(self.offered(path=PROGRAM_PATH)), 0.5)
        self.server.allow(1)
        self.check_ended_with_folders()
        self.check_file("setup.run")
        self.check_opened(f"file://{self.downloads}")

    def test_that_nothing_opens(self):
        bar = self.accept(self.offered(with_handler=False))
        self.send_until(bar, 0.5)
        self.server.allow(1)
        self.check_told_where_it_is()

    def test_cancel_in_the_middle(self):
        box = self.offered()
        self.send_until(self.accept(box), 0.5)
        box.press(text("IDS_BTN_POPUP_CANCEL"))
        window.wait_for(lambda: not os.listdir(self.downloads), "the partial file to go")
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        self.app.close()
        self.check_ended_with_folders()
        self.assertEqual([], os.listdir(self.downloads))
        self.assertFalse(os.path.exists(self.notes))

    def test_sigterm_in_the_middle(self):
        self.send_until(self.accept(self.offered()), 0.5)
        self.assertEqual(1, len(self.partial_files()))
        self.app.terminate()
        self.check_ended_with_folders()
        self.assertEqual([], os.listdir(self.downloads))
        self.assertFalse(os.path.exists(self.notes))


class Question(UpdateTest):
    def test_cancel_goes_on_without(self):
        self.offered().press(text("IDS_BTN_POPUP_CANCEL"))
        self.assertEqual([], self.app.dialogs())
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        self.app.close()
        self.check_ended_with_folders()
        self.assertFalse(os.path.exists(self.downloads))

    def test_outlives_the_main_window(self):
        box = self.offered()
        self.close_main_window()
        window.find(box.node, window.Role.LABEL, text("IDS_TXT_NEWVERSION"))
        self.assertIsNone(self.app.process.poll())
        window.wait_for(lambda: FOLDER_FILES == sorted(os.listdir(self.documents)),
                        "the folders to be remembered")
        window.press(window.find(box.node, window.Role.PUSH_BUTTON, text("IDS_BTN_POPUP_CANCEL")))
        self.check_ended_with_folders()

    def test_no_encoder_outlives_the_main_window(self):
        box = self.offered()
        long = make_hevc(self.movie_path("Videos", "long.mp4"), "1280x720", 2, repeat=60)
        self.app.add_all(long)
        self.app.convert()
        window.wait_for(lambda: any(name.startswith("long_HQ") for name in self.outputs()),
                        "the partial output", 60)
        self.close_main_window()
        window.wait_for(lambda: not self.app.encoders(), "the encoder to end", 10)
        window.wait_for(lambda: not self.outputs(), "the partial output to go", 10)
        self.assertIsNone(self.app.process.poll())
        self.assertEqual([box.node.get_name()], [node.get_name() for node in self.app.dialogs()])
        window.press(window.find(box.node, window.Role.PUSH_BUTTON, text("IDS_BTN_POPUP_CANCEL")))
        self.check_ended_with_folders()

    def test_downloads_without_the_main_window(self):
        box = self.offered()
        self.close_main_window()
        self.send_until(self.accept(box), 0.5)
        self.assertIsNone(self.app.process.poll())
        self.server.allow(1)
        self.check_ended_with_folders()
        self.check_installer()

    def test_tells_without_the_main_window(self):
        box = self.offered(with_handler=False)
        self.close_main_window()
        self.send_until(self.accept(box), 0.5)
        self.server.allow(1)
        self.check_told_where_it_is()


class Nothing(UpdateTest):
    """What is no newer version is not shown at all."""

    def check_nothing_is_shown(self):
        window.wait_for(lambda: CHECK_THREAD not in self.threads(), "the check to end")
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        self.assertEqual([], self.app.dialogs())
        self.assertEqual(1, len(self.app.tops()))
        self.app.close()
        self.check_ended_with_folders()

    def threads(self):
        tasks = f"/proc/{self.app.process.pid}/task"
        names = []
        for task in os.listdir(tasks):
            try:
                with open(f"{tasks}/{task}/comm", encoding="utf-8") as file:
                    names.append(file.read().strip())
            except OSError:
                pass  # it has just ended
        return names

    def check_document(self, body):
        server = self.serve(body)
        server.may_answer.clear()
        self.begin()
        self.assertTrue(server.asked.wait(window.LIMIT), "nobody asks for the document")
        self.assertIn(CHECK_THREAD, self.threads())
        server.may_answer.set()
        self.assertTrue(server.answered.wait(window.LIMIT), "nobody takes the document")
        self.check_nothing_is_shown()

    def test_for_the_same_version(self):
        self.check_document(document("1.0.0.0"))

    def test_for_three_parts(self):
        self.check_document(document("9.9.9"))

    def test_for_rubbish(self):
        self.check_document(b"\0\xff<html><p>9.9.9.9" * 1000)

    def test_without_a_server(self):
        self.serve(b"").end()
        self.begin()
        window.wait_for(lambda: "document was not read" in self.logged(), "the check to fail")
        self.check_nothing_is_shown()

    def logged(self):
        with open(self.log, encoding="utf-8") as file:
            return file.read()


if __name__ == "__main__":
    main()
