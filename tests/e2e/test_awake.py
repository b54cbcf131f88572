#!/usr/bin/python3
"""A run on a desktop whose services are played by the test (python3-dbusmock): the login manager
with its locks, the portal, the notifications and a dock that listens."""

import os
import subprocess
import sys
import unittest.mock

try:
    import dbus
    import dbusmock
    from dbus.mainloop.glib import DBusGMainLoop
except ImportError as error:
    print(f"SKIPPED: the desktop's services cannot be played: {error}")
    sys.exit(77)

from gi.repository import GLib

from harness import ProgramTest, main, window
from movies import make_hevc
from texts import text

LAUNCHER = "com.canonical.Unity.LauncherEntry"
PORTAL = "org.freedesktop.portal.Desktop"
REQUEST = "/org/freedesktop/portal/desktop/request/1_1/t"


class Desktop:
    """The services, on the test's own session bus, which is the program's system bus too."""

    def __init__(self, test):
        DBusGMainLoop(set_as_default=True)
        self.bus = dbus.SessionBus(private=True)
        self.updates = []
        self.bus.add_signal_receiver(lambda _, facts: self.updates.append(dict(facts)), "Update",
                                     LAUNCHER)
        self.login = self._start(test, "--template", "logind")
        self.notifications = self._start(test, "--template", "notification_daemon")
        self.portal = self._start(test, PORTAL, "/org/freedesktop/portal/desktop",
                                  "org.freedesktop.portal.Inhibit")
        self.portal.AddMethod("org.freedesktop.portal.Inhibit", "Inhibit", "sua{sv}", "o",
                              f"ret = dbus.ObjectPath('{REQUEST}')",
                              dbus_interface=dbusmock.MOCK_IFACE)
        self.portal.AddObject(REQUEST, "org.freedesktop.portal.Request", {},
                              [("Close", "", "", "")], dbus_interface=dbusmock.MOCK_IFACE)

    def _start(self, test, *arguments):
        process = subprocess.Popen([sys.executable, "-m", "dbusmock", "--session", *arguments],
                                   stdout=subprocess.DEVNULL)
        test.addCleanup(process.wait)
        test.addCleanup(process.terminate)
        name, path = {"logind": ("org.freedesktop.login1", "/org/freedesktop/login1"),
                      "notification_daemon": ("org.freedesktop.Notifications",
                                              "/org/freedesktop/Notifications"),
                      }.get(arguments[-1], arguments[:2])
        window.wait_for(lambda: self.bus.name_has_owner(name), f"{name} to be there")
        return self.bus.get_object(name, path)

    def locks(self):
        """What the login manager would list: what is locked, by whom, why and how."""
        return [tuple(map(str, lock[:4])) for lock in self.login.ListInhibitors(
            dbus_interface="org.freedesktop.login1.Manager")]

    def calls(self, service, method):
        return [arguments for _, arguments in service.GetMethodCalls(
            method, dbus_interface=dbusmock.MOCK_IFACE)]

    def request_closings(self):
        request = self.bus.get_object(PORTAL, REQUEST)
        return len(self.calls(request, "Close"))

    def listen(self):
        """Takes what has come over the bus."""
        context = GLib.MainContext.default()
        while context.iteration(False):
            pass
        return self.updates


class Awake(ProgramTest):
    def setUp(self):
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        self.addCleanup(os.environ.pop, "DBUS_SYSTEM_BUS_ADDRESS")
        self.desktop = Desktop(self)
        super().setUp()
        self.lock = [("sleep:idle", window.APP_NAME, text("IDS_TXT_KEEP_AWAKE_REASON"), "block")]

    def wait_for_locks(self, locks, what):
        window.wait_for(lambda: self.desktop.locks() == locks, what)

    def begin(self, *movies):
        self.app.add_all(*movies)
        self.assertEqual([], self.desktop.locks())
        self.app.convert()
        self.wait_for_locks(self.lock, "the lock of the run")

    def press_row_button(self, row):
        window.do_action(self.app.cell(row, "im"), "Press")

    def test_a_run_and_its_end(self):
        movie = make_hevc(self.movie_path("a.mp4"), "1280x720", 2, repeat=10)
        self.begin(movie)
        # The session is asked after the login manager.
        inhibitions = window.wait_for(lambda: self.desktop.calls(self.desktop.portal, "Inhibit"),
                                      "the session to be asked")
        self.assertEqual([13], [int(arguments[1]) for arguments in inhibitions])
        # The user looks at something else: another window of the kind.
        # Called so, the display is that of another session.
        with unittest.mock.patch.dict(os.environ,
                                      DISPLAY=os.environ["DISPLAY"].replace(":", ":0", 1)):
            other = self.start()
        window.wait_for(lambda: window.has_state(other.window(), window.Atspi.StateType.ACTIVE),
                        "the other window to be active")
        self.app.box(limit=60)
        # Under the box of the summary nothing is held any more.
        self.wait_for_locks([], "the lock to be given back")
        window.wait_for(lambda: self.desktop.request_closings() == 1, "the request to be closed")
        updates = self.desktop.listen()
        self.assertTrue(updates[0]["progress-visible"], updates)
        self.assertFalse(updates[-1]["progress-visible"], updates)
        shares = [float(each["progress"]) for each in updates[:-1]]
        self.assertEqual(sorted(shares), shares)
        notes = window.wait_for(lambda: self.desktop.calls(self.desktop.notifications, "Notify"),
                                "a notification")
        self.assertEqual(1, len(notes))
        self.assertEqual((window.APP_NAME, "reelshift",
                          text("IDS_TXT_POPUP_OPERATION_SUCCESSFUL").split("\n")[0],
                          text("IDS_TXT_RUN_CONVERTED").replace("%1", "1") + "\n"
                          + text("IDS_TXT_RUN_NOT_CONVERTED").replace("%1", "0")),
                         tuple(str(notes[0][place]) for place in (0, 2, 3, 4)))
        self.close_summary()

    def test_a_pause_lets_the_machine_sleep(self):
        movie = make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=60)
        self.begin(movie)
        window.wait_for(lambda: self.app.cell_text(0, "progress").endswith("%"), "a percentage")
        self.press_row_button(0)
        # The encoder lives on: the lock's descriptor was never its.
        self.wait_for_locks([], "no lock while it is paused")
        self.assertEqual(1, len(self.app.encoders()))
        self.press_row_button(0)
        self.wait_for_locks(self.lock, "the lock again")
        window.wait_for(lambda: len(self.desktop.calls(self.desktop.portal, "Inhibit")) == 2,
                        "the session to be asked again")
        self.app.terminate()
        self.app.wait_until_ended()
        self.wait_for_locks([], "no lock after the end")
        window.wait_for(lambda: self.desktop.request_closings() == 2, "the request to be closed")
        self.assertEqual([], self.desktop.calls(self.desktop.notifications, "Notify"))

    def test_an_end_by_force_leaves_no_lock(self):
        movie = make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=60)
        self.begin(movie)
        self.app.process.kill()
        self.app.wait_until_ended()
        self.wait_for_locks([], "no lock after the end")


class NotAwake(ProgramTest):
    def test_nobody_to_ask(self):
        self.app.add_all(make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=60))
        line = text("IDS_TXT_NOT_KEPT_AWAKE")

        def shown():
            return window.find(self.app.window(), window.Role.LABEL, line, required=False)
        self.assertIsNone(shown())
        self.app.convert()
        window.wait_for(shown, "the quiet line")
        self.assertEqual([], self.app.boxes())
        window.press(self.app.button("IDS_BTN_STOP"))
        self.app.box().answer(text("IDS_BTN_POPUP_OK"))
        window.wait_for(lambda: not shown(), "the line to go")


if __name__ == "__main__":
    main()
