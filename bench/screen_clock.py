"""Times a program from its start to its window on the screen: the program has drawn most of a
window that the X server shows, as told by its damage extension. Seen from outside, the same for
every program."""

import select
import subprocess
import time

from Xlib import X, display
from Xlib.ext import damage

LEAST = 200  # pixels each way; what is smaller is a helper window


class ScreenClock:
    def __init__(self):
        self._display = display.Display()
        self._display.set_error_handler(lambda *_: None)  # helper windows that have gone again
        self._display.damage_query_version()
        self._root = self._display.screen().root
        self._root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._painted = {}
        # The window manager puts frames of its own around windows, and paints them.
        check = self._display.intern_atom("_NET_SUPPORTING_WM_CHECK")
        self._manager = self._client(self._property(check))
        self._display.sync()

    def close(self):
        self._display.close()

    def start(self, command, environment, limit=30.0, **options):
        """Starts a program; the process and the seconds until most of its window was painted."""
        self._drop_events()
        begin = time.monotonic()
        process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, **options)
        while True:
            left = begin + limit - time.monotonic()
            if left <= 0 or process.poll() is not None:
                process.kill()
                process.wait()
                raise RuntimeError(f"{command[0]} has shown no window")
            if not self._display.pending_events():
                select.select([self._display.fileno()], [], [], min(left, 0.5))
            while self._display.pending_events():
                if self._is_painted(self._display.next_event()):
                    return process, time.monotonic() - begin

    def _property(self, atom, limit=10.0):
        end = time.monotonic() + limit
        while time.monotonic() < end:
            found = self._root.get_full_property(atom, X.AnyPropertyType)
            if found:
                return found.value[0]
            time.sleep(0.05)
        raise RuntimeError("there is no window manager")

    def _client(self, identifier):
        """Whose window it is: the upper part of its identifier."""
        return identifier & ~self._display.display.info.resource_id_mask

    def _is_painted(self, event):
        if event.type == X.CreateNotify and not event.override \
                and self._client(event.window.id) != self._manager:
            event.window.damage_create(damage.DamageReportRawRectangles)
            self._display.flush()
        elif event.type == self._display.extension_event.DamageNotify:
            whole, area = event.drawable_geometry, event.area
            window = event.drawable.id
            self._painted[window] = self._painted.get(window, 0) + area.width * area.height
            return whole.width >= LEAST and whole.height >= LEAST \
                and self._painted[window] * 2 >= whole.width * whole.height
        return False

    def _drop_events(self):
        self._painted.clear()
        self._display.sync()
        while self._display.pending_events():
            self._display.next_event()
