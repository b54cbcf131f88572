"""A folder on a share whose server can go away, for the program and its encoders."""

import os
import threading

PRELOADED = os.environ.get("REELSHIFT_HANGING_SHARE", "")


class HangingShare:
    """Calls about paths in the folder hang while the file `mark` exists, in programs that are
    started with `environment` (hanging_share.cpp)."""

    def __init__(self, folder, mark):
        self.folder = folder
        self.environment = {"LD_PRELOAD": PRELOADED, "REELSHIFT_SHARE": folder,
                            "REELSHIFT_SHARE_HANGS": mark} if PRELOADED else {}
        self.times = 0
        self._mark = mark
        self._timer = None

    def hang(self, seconds=None):
        """From now on, for so long; without a time until answer()."""
        self.answer()
        if not PRELOADED:
            return
        self.times += 1
        open(self._mark, "w", encoding="ascii").close()
        if seconds is not None:
            self._timer = threading.Timer(seconds, self._unlink)
            self._timer.start()

    def hangs(self):
        return os.path.exists(self._mark)

    def answer(self):
        if self._timer:
            self._timer.cancel()
            self._timer.join()
            self._timer = None
        self._unlink()

    def _unlink(self):
        try:
            os.remove(self._mark)
        except FileNotFoundError:
            pass
