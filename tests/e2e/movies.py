"""Makes HEVC movies with ffmpeg and looks into finished ones with ffprobe."""

import atexit
import functools
import json
import os
import shutil
import subprocess
import tempfile


def _run(command):
    result = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.PIPE, check=False)
    if result.returncode != 0:
        raise RuntimeError(f"{command[0]} ended with {result.returncode}:\n"
                           + result.stderr.decode(errors="replace")[-2000:])
    return result.stdout.decode()


@functools.lru_cache
def _store():
    """Where the movies are that everything is made of: with ctest they outlive the tests, because
    to encode one takes longer than much of what a test does with it."""
    kept = os.environ.get("REELSHIFT_E2E_MOVIES")
    if kept:
        os.makedirs(kept, exist_ok=True)
        return kept
    folder = tempfile.mkdtemp(prefix="pieces-")
    atexit.register(shutil.rmtree, folder, ignore_errors=True)
    return folder


def _piece(size, seconds, source):
    path = os.path.join(_store(), f"{source}-{size}-{seconds}.mp4")
    if os.path.exists(path):
        return path
    part = f"{path}.{os.getpid()}.mp4"  # another test may be making it, too
    _run(["ffmpeg", "-y", "-v", "error",
          "-f", "lavfi", "-i", f"{source}=size={size}:rate=25",
          "-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000",
          "-t", str(seconds), "-c:v", "libx265", "-preset", "ultrafast",
          "-x265-params", "log-level=error", "-tag:v", "hvc1", "-pix_fmt", "yuv420p",
          "-c:a", "aac", part])
    os.replace(part, path)
    return path


def make_hevc(path, size="640x480", seconds=1, repeat=1, title=None, source="testsrc2"):
    """An HEVC movie with AAC sound; `repeat` strings that many copies together, which is quick."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    piece = _piece(size, seconds, source)
    if repeat == 1 and title is None and path.endswith(".mp4"):
        return shutil.copyfile(piece, path)
    named = [] if title is None else ["-metadata", "title=" + title]
    _run(["ffmpeg", "-y", "-v", "error", "-stream_loop", str(repeat - 1), "-i", piece,
          "-c", "copy", "-tag:v", "hvc1", *named, path])
    return path


class Facts:
    """What ffprobe says about a movie."""

    def __init__(self, path):
        report = json.loads(_run(["ffprobe", "-v", "error", "-show_streams", "-show_format",
                                  "-of", "json", path]))
        self.path = path
        self.video = self._first(report, "video")
        self.audio = self._first(report, "audio")
        self.seconds = float(report["format"]["duration"])

    @staticmethod
    def _first(report, kind):
        return next((s for s in report["streams"] if s["codec_type"] == kind), None)

    @property
    def size(self):
        return f"{self.video['width']}x{self.video['height']}"

    def audio_hash(self):
        """The same for two movies exactly when one has the other's sound packets."""
        return _run(["ffmpeg", "-v", "error", "-i", self.path, "-map", "0:a:0", "-c", "copy",
                     "-f", "hash", "-hash", "md5", "-"]).strip()
