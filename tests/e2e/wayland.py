"""The pointer, the keys and the windows of the Wayland desktop that desktop_session.py starts.

Nothing but sway itself knows where a window is, and a program without the compositor's own devices
has no pointer at all: both devices of `Devices` are there as long as the desktop is used, moves and
presses come from them, and keys come from wtype.
"""

import contextlib
import json
import os
import socket
import struct
import subprocess
import tempfile
import time

LEFT = 0x110  # the kernel's code of the left button

# The keyboard's layout, in the words of libxkbcommon, which knows these files.
KEYMAP = b"""xkb_keymap {
xkb_keycodes { include "evdev+aliases(qwerty)" };
xkb_types { include "complete" };
xkb_compat { include "complete" };
xkb_symbols { include "pc+us+inet(evdev)" };
};\0"""


class Devices:
    """A pointer and a keyboard, in the compositor's own words; a context manager."""

    DISPLAY, REGISTRY, FIRST_OWN = 1, 2, 3

    def __init__(self, size):
        self.size = size
        self._socket = socket.socket(socket.AF_UNIX)
        self._last = self.FIRST_OWN - 1
        self._offered = {}
        self._at = (0, 0)

    def __enter__(self):
        self._socket.connect(os.environ["WAYLAND_DISPLAY"])
        self._send(self.DISPLAY, 1, struct.pack("=I", self.REGISTRY))
        self._last = self.REGISTRY
        self._wait()
        seat = self._bind("wl_seat")
        pointers = self._bind("zwlr_virtual_pointer_manager_v1")
        self._pointer = self._new()
        self._send(pointers, 0, struct.pack("=II", seat, self._pointer))
        keyboards = self._bind("zwp_virtual_keyboard_manager_v1")
        keyboard = self._new()
        self._send(keyboards, 0, struct.pack("=II", seat, keyboard))
        with tempfile.TemporaryFile() as file:
            file.write(KEYMAP)
            file.flush()
            self._send(keyboard, 0, struct.pack("=II", 1, len(KEYMAP)), file.fileno())
        self._wait()
        return self

    def __exit__(self, *_):
        self._socket.close()

    def move(self, x, y):
        self._at = (x, y)
        self._send(self._pointer, 1, struct.pack("=IIIII", self._now(), x, y, *self.size))
        self._send(self._pointer, 4)
        self._wait()

    def glide(self, goal, steps=20):
        """Goes on to a place as a hand does."""
        start = self._at
        for step in range(1, steps + 1):
            self.move(*(here + (there - here) * step // steps for here, there in zip(start, goal)))

    @contextlib.contextmanager
    def held(self):
        """With the left button down."""
        self._press(True)
        yield
        self._press(False)

    def _press(self, down):
        self._send(self._pointer, 2, struct.pack("=III", self._now(), LEFT, down))
        self._send(self._pointer, 4)
        self._wait()

    def click(self, x, y):
        self.move(x, y)
        with self.held():
            pass

    @staticmethod
    def _now():
        return time.monotonic_ns() // 1_000_000 & 0xffffffff

    # The protocol: object, size and number of a message, then its arguments.

    def _new(self):
        self._last += 1
        return self._last

    def _send(self, target, opcode, arguments=b"", descriptor=None):
        message = struct.pack("=II", target, len(arguments) + 8 << 16 | opcode) + arguments
        socket.send_fds(self._socket, [message], [] if descriptor is None else [descriptor])

    def _bind(self, interface):
        number, version = self._offered[interface]
        new = self._new()
        name = interface.encode() + b"\0"
        name += b"\0" * (-len(name) % 4)
        self._send(self.REGISTRY, 0, struct.pack("=II", number, len(interface) + 1) + name
                   + struct.pack("=II", version, new))
        return new

    def _wait(self):
        """Until the compositor has done all that it was asked for."""
        callback = self._new()
        self._send(self.DISPLAY, 0, struct.pack("=I", callback))
        while True:
            source, head = struct.unpack("=II", self._read(8))
            body = self._read((head >> 16) - 8)
            if source == callback:
                return
            if source == self.DISPLAY and head & 0xffff == 0:
                raise RuntimeError(f"the compositor refuses: {body[12:].decode(errors='replace')}")
            if source == self.REGISTRY and head & 0xffff == 0:
                number, length = struct.unpack("=II", body[:8])
                version, = struct.unpack("=I", body[-4:])
                self._offered[body[8:7 + length].decode()] = number, min(version, 1)

    def _read(self, size):
        data = b""
        while len(data) < size:
            piece = self._socket.recv(size - len(data))
            if not piece:
                raise RuntimeError("the compositor has ended")
            data += piece
        return data


def keys(*names):
    """Presses keys one after the other, each with its modifiers: keys("ctrl+o", "Return")."""
    command = ["wtype"]
    for name in names:
        *modifiers, last = name.split("+")
        for modifier in modifiers:
            command += ["-M", modifier]
        command += ["-k", last]
        for modifier in reversed(modifiers):
            command += ["-m", modifier]
    subprocess.run(command, check=True)


def write(words):
    subprocess.run(["wtype", "--", words], check=True)


def sway(*command):
    """Has sway do something; gives its answer."""
    answer = subprocess.run(["swaymsg", "--raw", *command], check=True, stdout=subprocess.PIPE)
    return json.loads(answer.stdout)


def windows(pid):
    """Every window of a program, as sway describes it."""
    found, left = [], [sway("--type", "get_tree")]
    while left:
        node = left.pop()
        if node.get("pid") == pid:
            found.append(node)
        left += node.get("nodes", []) + node.get("floating_nodes", [])
    return found


def place(node):
    """Where the content of a window is: x and y on the screen, width and height."""
    outer, inner = node["rect"], node["window_rect"]
    return outer["x"] + inner["x"], outer["y"] + inner["y"], inner["width"], inner["height"]
