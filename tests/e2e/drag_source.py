"""The program that stands in for a file manager."""

import os
import subprocess

from desktop_session import die_with_parent
import window

SOURCE = os.environ.get("REELSHIFT_DRAG_SOURCE", "")


class DragSource:
    """drag_source.cpp, with its window at that place."""

    def __init__(self, x, y, *files):
        self.process = subprocess.Popen([SOURCE, str(x), str(y), *files],
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        preexec_fn=die_with_parent)
        os.set_blocking(self.process.stdout.fileno(), False)
        self.lines = []
        self.wait_for("ready")

    def wait_for(self, beginning):
        """The line that begins so."""
        def look():
            self.lines += (self.process.stdout.read() or b"").decode().splitlines()
            return next((line for line in self.lines if line.startswith(beginning)), None)
        return window.wait_for(look, f"the drag source to say {beginning!r}")

    def end(self):
        self.process.stdin.close()
        self.process.wait(10)
        self.process.stdout.close()
