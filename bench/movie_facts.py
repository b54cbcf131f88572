"""What a person would notice of a movie, as ffprobe, exiftool and a decoded picture tell it."""

import json
import subprocess
from fractions import Fraction
from functools import cached_property

THUMB = 32  # pixels each way; what pictures are compared by


def _output(*command):
    return subprocess.run(command, capture_output=True, check=False, stdin=subprocess.DEVNULL).stdout


def _probe(path, *arguments):
    return json.loads(_output("ffprobe", "-v", "quiet", "-of", "json", *arguments, "-i", path) or "{}")


def _fraction(text, otherwise=None):
    try:
        value = Fraction(text.replace(":", "/"))
        return value if value > 0 else otherwise
    except (AttributeError, ValueError, ZeroDivisionError):
        return otherwise


class Track:
    """One track; `begin` and `end` in seconds from the beginning of the file."""

    def __init__(self, facts, packets, file_start):
        self.facts = facts
        self.kind = facts.get("codec_type")
        times = [(float(p["pts_time"]), float(p.get("duration_time", 0))) for p in packets
                 if "pts_time" in p and "D" not in p.get("flags", "")]
        self.begin = min((t for t, _ in times), default=0) - file_start
        self.end = max((t + d for t, d in times), default=0) - file_start
        starts = sorted(t for t, _ in times)
        self.steps = [b - a for a, b in zip(starts, starts[1:])]
        self.pictures = len(times)
        self.is_cover = facts.get("disposition", {}).get("attached_pic") == 1
        self.is_readable = (facts.get("codec_name", "unknown") not in ("unknown", "none") and
                            (self.kind != "audio" or (facts.get("channels", 0) > 0 and
                                                      int(facts.get("sample_rate", 0)) > 0)))


class Movie:
    def __init__(self, path):
        self.path = path
        told = _probe(path, "-show_streams", "-show_format", "-show_chapters")
        self.format = told.get("format", {})
        packets = _probe(path, "-show_entries", "packet=stream_index,pts_time,duration_time,flags")
        by_track = {}
        for packet in packets.get("packets", []):
            by_track.setdefault(packet["stream_index"], []).append(packet)
        start = float(self.format.get("start_time", 0) or 0)
        self.tracks = [Track(each, by_track.get(each["index"], []), start)
                       for each in told.get("streams", [])]
        self.chapters = len(told.get("chapters", []))

    @cached_property
    def tags(self):
        """By their names for exiftool, which must be there."""
        return json.loads(_output("exiftool", "-j", "-n", self.path) or "[{}]")[0]

    @property
    def picture(self):
        return next((t for t in self.tracks if t.kind == "video" and not t.is_cover), None)

    @property
    def sounds(self):
        return [t for t in self.tracks if t.kind == "audio" and t.is_readable]

    def _side_data(self, key):
        for each in self.picture.facts.get("side_data_list", []):
            if key in each:
                return each[key]
        return None

    @property
    def rotation(self):
        """Degrees against the clock, 0 to 359."""
        return int(self._side_data("rotation") or 0) % 360

    @property
    def shape(self):
        """Width by height as it is seen."""
        facts = self.picture.facts
        shape = (Fraction(facts["width"], facts["height"]) *
                 (_fraction(facts.get("sample_aspect_ratio"), Fraction(1))))
        return 1 / shape if self.rotation % 180 else shape

    @property
    def rate(self):
        return float(_fraction(self.picture.facts.get("avg_frame_rate"), Fraction(25)))

    @property
    def colours(self):
        """Transfer, range, and what is told of a brighter screen."""
        facts = self.picture.facts
        hints = [each["side_data_type"] for each in self._hints()]
        return facts.get("color_transfer", "unknown"), facts.get("color_range", "unknown"), hints

    def _hints(self):
        known = ("Mastering", "Content light", "Ambient", "HDR", "Dolby", "DOVI")
        frames = _probe(self.path, "-select_streams", str(self.picture.facts["index"]),
                        "-read_intervals", "%+#1", "-show_frames").get("frames", [{}])
        told = self.picture.facts.get("side_data_list", [])
        told = told + (frames[0].get("side_data_list", []) if frames else [])
        return [each for each in told if any(k in each.get("side_data_type", "") for k in known)]

    def thumbnail(self, number):
        """A decoded picture as a player shows it: turned, its brightness in a small square."""
        track = self.picture.facts["index"]
        picture = _output("ffmpeg", "-v", "quiet", "-i", self.path, "-map", f"0:{track}", "-vf",
                          f"select=gte(n\\,{number}),scale={THUMB}:{THUMB}:flags=area,format=gray",
                          "-frames:v", "1", "-f", "rawvideo", "-")
        return picture if len(picture) == THUMB * THUMB else None


def likeness(one, other):
    """Correlation of two thumbnails: 1 for the same picture, whatever its contrast; None where
    there is nothing to be seen in one of them."""
    if not one or not other:
        return None
    mean_one, mean_other = sum(one) / len(one), sum(other) / len(other)
    product = sum((a - mean_one) * (b - mean_other) for a, b in zip(one, other))
    size = (sum((a - mean_one) ** 2 for a in one) * sum((b - mean_other) ** 2 for b in other)) ** .5
    return product / size if size > len(one) else None
