#!/usr/bin/python3
"""Runs a command on a desktop of its own: an X server nobody sees and a window manager, or a Wayland
compositor nobody sees, a session bus and an accessibility bus. Everything that was started ends with
the command, however it ends.

    desktop_session.py [--wayland] [--size 1280x800] COMMAND [ARGUMENT ...]

Ends with the command's status, or with 77 ("skipped") when a program that it needs is missing.
"""

import argparse
import ctypes
import os
import select
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
BUS_LAUNCHERS = ("/usr/libexec/at-spi-bus-launcher", "/usr/lib/at-spi2-core/at-spi-bus-launcher")
KEPT = ("PATH", "LANG", "LC_ALL", "TMPDIR", "CI")
KEPT_PREFIXES = ("REELSHIFT_", "ASAN_", "UBSAN_", "LSAN_", "QT_LOGGING_")
libc = ctypes.CDLL(None, use_errno=True)


def die_with_parent():
    libc.prctl(PR_SET_PDEATHSIG, signal.SIGKILL)


def missing_programs(desktop):
    """What that kind of desktop needs and this machine lacks."""
    missing = [name for name in (*desktop.PROGRAMS, "dbus-daemon") if shutil.which(name) is None]
    if not any(os.path.exists(path) for path in BUS_LAUNCHERS):
        missing.append("at-spi-bus-launcher")
    return missing


def children_of(pid):
    try:
        with open(f"/proc/{pid}/task/{pid}/children", encoding="ascii") as file:
            return [int(child) for child in file.read().split()]
    except OSError:
        return []


class Desktop:
    """The processes of one desktop; a context manager. `environment` is what its programs need."""

    PROGRAMS = ()

    def __init__(self, size):
        self.size = size
        self.environment = {}
        self._folder = None
        self._logs = None

    def __enter__(self):
        libc.prctl(PR_SET_CHILD_SUBREAPER, 1)
        self._folder = tempfile.mkdtemp(prefix="desktop-")
        self._logs = open(os.path.join(self._folder, "log"), "w+b")
        runtime = os.path.join(self._folder, "run")
        os.mkdir(runtime, 0o700)
        self.environment = {name: value for name, value in os.environ.items()
                            if name in KEPT or name.startswith(KEPT_PREFIXES)}
        self.environment.setdefault("LC_ALL", "C.UTF-8")
        self.environment.update(
            HOME=self._folder,
            XDG_RUNTIME_DIR=runtime,
            XDG_DATA_DIRS="/usr/local/share:/usr/share",
            XDG_CONFIG_DIRS="/etc/xdg",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            NO_AT_BRIDGE="1",  # the window manager and helpers stay out of the tree
        )
        try:
            self._start_display()
            self._start_bus()
            self._start([next(path for path in BUS_LAUNCHERS if os.path.exists(path)),
                         "--launch-immediately"])
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for kill in (signal.SIGTERM, signal.SIGKILL):
            self._end_children(kill)
        self._logs.close()
        shutil.rmtree(self._folder, ignore_errors=True)

    def _start(self, command, settings=None, **options):
        return subprocess.Popen(command, env={**self.environment, **(settings or {})},
                                stdin=subprocess.DEVNULL, stdout=options.pop("stdout", self._logs),
                                stderr=self._logs, preexec_fn=die_with_parent, **options)

    def _start_display(self):
        raise NotImplementedError

    def _start_bus(self):
        answer, number = os.pipe()
        self._start(["dbus-daemon", "--session", "--nofork", "--nopidfile",
                     f"--print-address={number}"], pass_fds=[number])
        os.close(number)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._line(answer, "dbus-daemon")

    def _line(self, descriptor, name):
        """The line that a server prints once it is ready."""
        text = b""
        while not text.endswith(b"\n"):
            ready, _, _ = select.select([descriptor], [], [], 30)
            piece = os.read(descriptor, 4096) if ready else b""
            if not piece:
                self._logs.seek(0)
                raise RuntimeError(f"{name} did not start:\n{self._logs.read().decode()}")
            text += piece
        os.close(descriptor)
        return text.decode().strip()

    @staticmethod
    def _end_children(number):
        """Ends all descendants (orphans come to this process) and takes their statuses."""
        end = time.monotonic() + 3
        while time.monotonic() < end:
            children = children_of(os.getpid())
            if not children:
                return
            for child in children:
                try:
                    os.kill(child, number)
                except ProcessLookupError:
                    pass
            pause = time.monotonic() + 0.2
            while time.monotonic() < pause:
                try:
                    if os.waitpid(-1, os.WNOHANG)[0] == 0:
                        time.sleep(0.01)
                except ChildProcessError:
                    return


class X11Desktop(Desktop):
    PROGRAMS = ("Xvfb", "openbox")

    def _start_display(self):
        self.environment["QT_QPA_PLATFORM"] = "xcb"
        answer, number = os.pipe()
        self._start(["Xvfb", "-displayfd", str(number), "-screen", "0", self.size + "x24",
                     "-nolisten", "tcp", "-noreset"], pass_fds=[number])
        os.close(number)
        self.environment["DISPLAY"] = ":" + self._line(answer, "Xvfb")
        self._start(["openbox"])


class WaylandDesktop(Desktop):
    """Without an X server. Which window system a program takes there is left to the program."""

    PROGRAMS = ("sway", "wtype", "grim")
    NOBODY = 65534

    def _start_display(self):
        self._place = tempfile.mkdtemp(prefix="sway-")
        user = {}
        if os.geteuid() == 0:  # as root sway refuses to start
            os.chown(self._place, self.NOBODY, self.NOBODY)
            user = {"user": self.NOBODY, "group": self.NOBODY, "extra_groups": []}
        answer, number = os.pipe()
        config = os.path.join(self._place, "config")
        with open(config, "w", encoding="ascii") as file:
            file.write("xwayland disable\n"
                       f"output HEADLESS-1 resolution {self.size} position 0 0\n"
                       "output * background #3b4252 solid_color\n"
                       "for_window [title=\".*\"] floating enable, border normal\n"
                       "exec echo $SWAYSOCK $WAYLAND_DISPLAY\n")
        self._start(["sway", "--config", config], stdout=number, cwd=self._place, **user,
                    settings={"HOME": self._place, "XDG_RUNTIME_DIR": self._place,
                              "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                              "WLR_LIBINPUT_NO_DEVICES": "1"})
        os.close(number)
        control, display = self._line(answer, "sway").split()
        self.environment.update(SWAYSOCK=control, XDG_SESSION_TYPE="wayland",
                                WAYLAND_DISPLAY=os.path.join(self._place, display))

    def __exit__(self, *details):
        super().__exit__(*details)
        shutil.rmtree(self._place, ignore_errors=True)


def main():
    parser = argparse.ArgumentParser(description="Runs a command on a desktop of its own.")
    parser.add_argument("--wayland", action="store_true", help="sway in place of an X server")
    parser.add_argument("--size", default="1280x800")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    options = parser.parse_args()
    kind = WaylandDesktop if options.wayland else X11Desktop
    missing = missing_programs(kind)
    if missing:
        print("SKIPPED: no desktop can be started, missing: " + ", ".join(missing))
        return SKIPPED
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda received, _: sys.exit(128 + received))
    with kind(options.size) as desktop:
        process = subprocess.Popen(options.command, env=desktop.environment,
                                   preexec_fn=die_with_parent)
        while True:
            pid, status = os.wait()
            if pid == process.pid:
                code = os.waitstatus_to_exitcode(status)
                return code if code >= 0 else 128 - code


if __name__ == "__main__":
    sys.exit(main())
