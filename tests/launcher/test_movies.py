"""Small movies of known content go through the launcher and the real ffmpeg, with the arguments that
the window gives, and what comes out is looked at: in decoded pictures, packets and tags."""

import math
import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "../../bench"))

from movie_facts import Movie, likeness  # noqa: E402

LAUNCHER = os.environ["REELSHIFT_LAUNCHER"]
WIDTH, HEIGHT = 320, 192
PICTURE = f"testsrc2=s={WIDTH}x{HEIGHT}:r=25:d=0.4"
SOUND = "sine=frequency=500:sample_rate=48000:duration=0.4"


def run(*command, **more):
    return subprocess.run(command, capture_output=True, check=False,
                          **{"stdin": subprocess.DEVNULL, **more})


def pq(nits):
    y = (nits / 10000) ** (2610 / 16384)
    return ((3424 / 4096 + 2413 / 128 * y) / (1 + 2392 / 128 * y)) ** (2523 / 32)


def hlg(light):
    if light <= 1 / 12:
        return math.sqrt(3 * light)
    return 0.17883277 * math.log(12 * light - 0.28466892) + 0.55991073


class MadeMovies(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def make(self, name, *arguments, picture=PICTURE, x265="", before=(), **more):
        """An HEVC movie; `arguments` come behind the picture, inputs first."""
        inputs = ["-f", "lavfi", "-i", picture] if picture else []
        done = run("ffmpeg", "-v", "error", "-y", *before, *inputs, *arguments, "-c:v:0", "libx265",
                   "-preset", "ultrafast", "-tag:v:0", "hvc1", "-x265-params",
                   "log-level=error:pools=1:frame-threads=1" + x265, self.path(name), **more)
        self.assertEqual(done.stderr, b"")
        return self.path(name)

    def convert(self, source, width=WIDTH, height=HEIGHT, name="out.mp4", rate_factor="7"):
        """The movie that comes out; what was said is in `said`."""
        output = self.path(name)
        if os.path.exists(output):
            os.remove(output)
        done = run(LAUNCHER, "-psnr", "-i", source, "-codec:v", "libx264", "-preset", "veryfast",
                   "-level:v", "5.1", "-vf", f"scale={width}:{height}", "-crf", rate_factor, "-g",
                   "15", "-pix_fmt", "yuv420p", "-acodec", "copy", "-avoid_negative_ts", "1", output)
        self.said = done.stderr.decode(errors="replace")
        self.assertEqual(done.returncode, 0, self.said)
        self.assertRegex(self.said, r"[\r\n]frame=[^\r\n]* LPSNR=")
        movie = Movie(output)
        self.assertEqual((movie.picture.facts["width"], movie.picture.facts["height"]),
                         (width, height))
        return movie

    def assert_same_picture(self, source, result):
        self.assertGreater(likeness(Movie(source).thumbnail(0), result.thumbnail(0)), 0.97)

    def samples(self, movie, length=WIDTH * HEIGHT):
        """Y of the first picture, and the largest distance of its U and V from grey."""
        raw = run("ffmpeg", "-v", "error", "-noautorotate", "-i", movie.path, "-frames:v", "1", "-f",
                  "rawvideo", "-pix_fmt", "yuv420p", "-").stdout
        return raw[:length], max(abs(each - 128) for each in raw[length:])


class Shape(MadeMovies):
    def turn(self, path, matrix):
        """Writes the turn into the header of the picture's track."""
        with open(path, "r+b") as file:
            data = file.read()
            at = data.index(b"tkhd") + 4
            self.assertEqual(data[at], 0)
            numbers = [round(each * 65536) for each in matrix]
            file.seek(at + 40)
            file.write(struct.pack(">9i", numbers[0], numbers[1], 0, numbers[2], numbers[3], 0, 0,
                                   0, 1 << 30))

    def test_turned(self):
        source = self.make("a.mp4")
        upright = Movie(source).thumbnail(0)
        for name, matrix in {"90": (0, 1, -1, 0), "180": (-1, 0, 0, -1), "270": (0, -1, 1, 0),
                             "mirrored": (-1, 0, 0, 1), "upside down": (1, 0, 0, -1),
                             "turned and mirrored": (0, 1, 1, 0)}.items():
            with self.subTest(name):
                self.turn(source, matrix)
                self.assertLess(likeness(upright, Movie(source).thumbnail(0)), 0.9)
                result = self.convert(source, name=name + ".mp4")
                self.assertEqual(result.shape, Movie(source).shape)
                self.assert_same_picture(source, result)

    def test_pixels(self):
        rows = [("1", WIDTH, HEIGHT, "1:1"), ("0", WIDTH, HEIGHT, "1:1"), ("0", 160, 96, "1:1"),
                ("0", 160, 160, "5:3"), ("4/3", WIDTH, HEIGHT, "4:3"), ("0", 160, 98, "49:48"),
                ("0", 322, 192, "1:1")]
        for pixel, width, height, expected in rows:
            with self.subTest(f"{pixel} {width}x{height}"):
                source = self.make("a.mp4", picture=f"{PICTURE},setsar={pixel}")
                result = self.convert(source, width, height)
                self.assertEqual(result.picture.facts["sample_aspect_ratio"], expected)


class Tracks(MadeMovies):
    def test_the_first_picture_and_no_cover(self):
        cover = self.path("cover.png")
        run("ffmpeg", "-v", "error", "-f", "lavfi", "-i", "color=red:s=640x640", "-frames:v", "1",
            cover)
        source = self.make("a.mp4", "-f", "lavfi", "-i", "mandelbrot=s=640x480:r=25", "-i", cover,
                           "-map", "0", "-map", "1", "-map", "2", "-c:v:2", "copy", "-t", "0.4",
                           "-disposition:v:2", "attached_pic")
        result = self.convert(source)
        self.assertEqual(len(result.tracks), 1)
        self.assert_same_picture(source, result)

    def sounds(self, *arguments, name="a.mov", count=1):
        inputs = [part for _ in range(count) for part in ("-f", "lavfi", "-i", SOUND)]
        maps = [part for i in range(count + 1) for part in ("-map", str(i))]
        return self.convert(self.make(name, *inputs, *maps, *arguments)).sounds

    def kinds(self, sounds):
        return [(t.facts["codec_name"], t.facts["channels"]) for t in sounds]

    def test_sound(self):
        rows = {
            "AAC": (["-c:a", "aac"], "a.mov", ("aac", 1)),
            "PCM": (["-c:a", "pcm_s24be", "-ac", "2"], "a.mov", ("aac", 2)),
            "5.1 as PCM": (["-c:a", "pcm_s16le", "-ac", "6"], "a.mov", ("aac", 6)),
            "5.1 as AC-3": (["-c:a", "ac3", "-ac", "6"], "a.mp4", ("ac3", 6)),
            "7.1": (["-c:a", "pcm_s16le", "-ac", "8"], "a.mov", ("aac", 8)),
            "FLAC": (["-c:a", "flac", "-ar", "96000"], "a.mkv", ("aac", 1)),
            "Opus": (["-c:a", "libopus"], "a.mkv", ("aac", 1)),
            "MP3": (["-c:a", "libmp3lame"], "a.mp4", ("mp3", 1)),
            "AAC in a stream": (["-c:a", "aac"], "a.ts", ("aac", 1)),
            "AAC in LATM": (["-c:a", "aac", "-mpegts_flags", "latm"], "a.ts", ("aac", 1)),
        }
        for what, (arguments, name, expected) in rows.items():
            with self.subTest(what):
                self.assertEqual(self.kinds(self.sounds(*arguments, name=name)), [expected])

    def test_every_number_of_channels(self):
        for count in (*range(1, 9), 12, 16):
            with self.subTest(count):
                raw = ("-f", "s16le", "-ar", "48000", "-ac", str(count), "-i", "-")
                source = self.make("a.mov", *raw, "-c:a", "pcm_s16le", stdin=None,
                                   input=bytes(2 * count * 20000))
                sounds = self.convert(source).sounds
                self.assertEqual(self.kinds(sounds), [("aac", min(count, 8))])

    def test_two_tracks_with_their_languages(self):
        sounds = self.sounds("-c:a:0", "pcm_s16le", "-c:a:1", "aac", "-metadata:s:a:0",
                             "language=ger", "-metadata:s:a:1", "language=fre", name="a.mkv", count=2)
        self.assertEqual(self.kinds(sounds), [("aac", 1), ("aac", 1)])
        self.assertEqual([t.facts["tags"]["language"] for t in sounds], ["ger", "fre"])

    def test_subtitles_and_chapters(self):
        text, marks = self.path("a.srt"), self.path("marks.txt")
        with open(text, "w", encoding="utf-8") as file:
            file.write("1\n00:00:00,000 --> 00:00:00,300\nHello\n")
        with open(marks, "w", encoding="utf-8") as file:
            file.write(";FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/10\nSTART=0\nEND=2\ntitle=One\n")
        source = self.make("a.mkv", "-i", text, "-i", marks, "-map", "0", "-map", "1", "-c:s",
                           "srt")
        result = self.convert(source)
        self.assertEqual([t.facts["codec_name"] for t in result.tracks if t.kind == "subtitle"],
                         ["mov_text"])
        self.assertEqual(result.chapters, 1)

    def test_subtitles_in_an_old_encoding(self):
        text, old = self.path("a.srt"), self.path("old.mkv")
        with open(text, "w", encoding="utf-8") as file:
            file.write("1\n00:00:00,000 --> 00:00:00,300\nCafX\n")
        # Written into the movie afterwards: ffmpeg itself refuses to.
        with open(self.make("a.mkv", "-i", text, "-map", "0", "-map", "1", "-c:s", "srt"),
                  "rb") as source, open(old, "wb") as file:
            file.write(source.read().replace(b"CafX", b"Caf\xe9"))
        result = self.convert(old)
        self.assertEqual([t.facts["codec_name"] for t in result.tracks if t.kind == "subtitle"],
                         ["mov_text"])
        with open(result.path, "rb") as file:
            self.assertIn(b"Caf\xe9", file.read())
        converting = self.said.split("Stream mapping:")[1]
        self.assertNotIn("Invalid", converting)
        self.assertNotIn("error", converting)


@unittest.skipUnless(shutil.which("exiftool"), "there is no exiftool")
class Tags(MadeMovies):
    def test_a_phone(self):
        source = self.make("a.mov", "-movflags", "use_metadata_tags",
                           "-metadata", "creation_time=2022-03-04T05:06:07Z",
                           "-metadata", "com.apple.quicktime.location.ISO6709=+48.1234+011.5678/",
                           "-metadata", "com.apple.quicktime.make=Apple",
                           "-metadata", "com.apple.quicktime.model=iPhone 14 Pro")
        tags = self.convert(source).tags
        self.assertEqual(tags["CreateDate"], "2022:03:04 05:06:07")
        self.assertEqual((tags["Make"], tags["Model"]), ("Apple", "iPhone 14 Pro"))
        place = [float(each) for each in tags["GPSPosition"].split()]
        self.assertAlmostEqual(place[0], 48.1234, delta=0.001)
        self.assertAlmostEqual(place[1], 11.5678, delta=0.001)

    def test_a_camera(self):
        tags = self.convert(self.make("a.mov", "-metadata", "location=-33.8568+151.2153/",
                                      "-metadata", "make=Panasonic", "-metadata",
                                      "model=DC-GH6")).tags
        self.assertEqual((tags["Make"], tags["Model"]), ("Panasonic", "DC-GH6"))
        self.assertAlmostEqual(float(tags["GPSPosition"].split()[1]), 151.2153, delta=0.001)

    def test_an_ordinary_movie(self):
        result = self.convert(self.make("a.mp4", "-metadata", "title=Holiday", "-metadata",
                                        "creation_time=2022-03-04T05:06:07Z"))
        self.assertEqual(result.tags["CreateDate"], "2022:03:04 05:06:07")
        named = run("exiftool", "-s3", "-ItemList:Title", result.path).stdout
        self.assertEqual(named, b"Holiday\n")

    def test_what_a_movie_says_goes_nowhere(self):
        trap = self.path("trap")
        text = f"x',movie={trap};$(touch {trap})`touch {trap}`\nerror time=00:00:09.99\nLPSNR="
        source = self.make("a.mov", "-metadata", f"title={text}", "-metadata",
                           f"com.apple.{text}={text}", "-movflags", "use_metadata_tags",
                           "-metadata:s:v", f"handler_name={text}")
        hostile = self.path("-vf 'a:%d,b\\;[c].mov")
        os.rename(source, hostile)
        result = self.convert(hostile, name="-out %d:'.mp4")
        self.assert_same_picture(hostile, result)
        self.assertFalse(os.path.exists(trap))
        remarks = [each for each in self.said.split("\n") if each.startswith("reelshift: ")]
        self.assertEqual(len(remarks), 1)
        self.assertNotIn("touch", remarks[0])


class Colours(MadeMovies):
    GREY, WHITE = range(2)

    def bright(self, name, transfer, patches, x265=""):
        """Patches of these values (0 to 1) above, a ramp below, without any loss."""
        def code(value):
            return round(64 + 876 * value)
        above = [code(patches[x * len(patches) // WIDTH]) for x in range(WIDTH)]
        below = [code(x / (WIDTH - 1)) for x in range(WIDTH)]
        rows = above * (HEIGHT // 2) + below * (HEIGHT // 2)
        frame = struct.pack(f"<{len(rows)}H", *rows) + struct.pack("<H", 512) * (len(rows) // 2)
        before = ("-f", "rawvideo", "-pix_fmt", "yuv420p10le", "-s", f"{WIDTH}x{HEIGHT}", "-r",
                  "25", "-i", "-")
        colours = (":lossless=1:colorprim=bt2020:colormatrix=bt2020nc:range=limited:transfer=" +
                   transfer + x265)
        return self.make(name, picture=None, x265=colours, before=before, input=frame * 3,
                         stdin=None)

    def assert_ordinary(self, source, patches):
        result = self.convert(source)
        luma, colour = self.samples(result)
        found = [luma[WIDTH * HEIGHT // 4 + int((i + .5) * WIDTH / patches)] for i in range(patches)]
        self.assertTrue(96 <= found[self.GREY] <= 116, found)
        self.assertTrue(210 <= found[self.WHITE] <= 235, found)
        self.assertLessEqual(colour, 1)
        ramp = luma[WIDTH * HEIGHT * 3 // 4:][:WIDTH]
        self.assertEqual(list(ramp), sorted(ramp))
        self.assertLessEqual(ramp[0], 17)
        self.assertGreaterEqual(ramp[-1], 233)
        facts = result.picture.facts
        self.assertEqual([facts.get("color_" + each) for each in ("space", "transfer", "primaries")],
                         ["bt709"] * 3)
        self.assertEqual(result.colours, ("bt709", "tv", []))

    def test_hlg(self):
        grey = hlg(0.18 * 0.265)
        self.assert_ordinary(self.bright("a.mp4", "arib-std-b67", [grey, 0.75, 0, 1]), 4)

    def test_hlg_under_the_name_of_another_light(self):
        grey = hlg(0.18 * 0.265)
        source = self.bright("a.mp4", "bt2020-10", [grey, 0.75, 0, 1], ":atc-sei=18")
        self.assertEqual(Movie(source).colours[0], "bt2020-10")
        self.assert_ordinary(source, 4)

    def test_pq(self):
        screen = (":hdr10=1:max-cll=1000,400:master-display="
                  "G(13250,34500)B(7500,3000)R(34000,16000)WP(15635,16450)L(10000000,50)")
        for nits in (26, 0.18 * 203):
            source = self.bright("a.mp4", "smpte2084", [pq(nits), pq(203), 0, 1], screen)
            self.assertTrue(Movie(source).colours[2])
            self.assert_ordinary(source, 4)

    def test_full_range(self):
        picture = f"color=white:s={WIDTH}x{HEIGHT}:r=25:d=0.2,scale=out_range=pc"
        source = self.make("a.mp4", "-pix_fmt", "yuvj420p", picture=picture,
                           x265=":range=full:colormatrix=bt709:colorprim=bt709:transfer=bt709")
        result = self.convert(source)
        for path, white in ((source, 255), (result.path, 235)):
            raw = run("ffmpeg", "-v", "error", "-i", path, "-frames:v", "1", "-f", "rawvideo",
                      "-").stdout
            self.assertAlmostEqual(raw[0], white, delta=1)
        self.assertEqual(result.colours, ("bt709", "tv", []))

    def test_red_green_and_blue(self):
        source = self.make("a.mp4", "-pix_fmt", "gbrp",
                           picture=f"color=red:s={WIDTH}x{HEIGHT}:r=25:d=0.2")
        result = self.convert(source)
        self.assertEqual(result.picture.facts["color_space"], "bt709")
        self.assertAlmostEqual(self.samples(result)[0][0], 63, delta=1)  # BT.709's red

    def test_what_is_not_said_is_not_made_up(self):
        result = self.convert(self.make("a.mp4"))
        self.assertEqual(result.colours[0], "unknown")


class Pace(MadeMovies):
    def test_uneven(self):
        uneven = "testsrc2=s=320x192:r=30:d=2,select='not(n)+mod(n\\,7)+mod(n\\,3)'"
        result = self.convert(self.make("a.mp4", "-fps_mode", "passthrough", picture=uneven))
        steps = result.picture.steps
        self.assertLess(max(steps) - min(steps), 0.001)
        self.assertAlmostEqual(result.picture.end, 2, delta=0.04)
        self.assertEqual(result.picture.pictures, 60)

    def test_in_step(self):
        for late in ("0.24", "-0.24"):
            with self.subTest(late):
                source = self.make("a.mov", "-itsoffset", late, "-f", "lavfi", "-i",
                                   "sine=duration=2", "-c:a", "pcm_s16le",
                                   picture="testsrc2=s=320x192:r=25:d=2")
                result = self.convert(source)
                before, after = Movie(source), result
                self.assertAlmostEqual(before.picture.end - before.sounds[0].end,
                                       after.picture.end - after.sounds[0].end, delta=0.045)


class Lists(MadeMovies):
    def test_a_list_is_no_movie(self):
        pipe = self.path("neighbour.mp4")
        os.mkfifo(pipe)
        hls = "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\nneighbour.mp4\n#EXT-X-ENDLIST\n"
        for what, text in {"concat": "ffconcat version 1.0\nfile neighbour.mp4\n",
                           "HLS": hls}.items():
            with self.subTest(what):
                movie = self.path("a.mp4")
                with open(movie, "w", encoding="utf-8") as file:
                    file.write(text)
                output = self.path("out.mp4")
                # Whoever opened the neighbour would wait for ever.
                for arguments in (["-i", movie], ["-psnr", "-i", movie, "-vf", "scale=2:2", output]):
                    done = run(LAUNCHER, *arguments, timeout=60)
                    self.assertEqual(done.returncode, 1)
                    self.assertEqual(done.stderr, b"reelshift: this is no movie but a list of files\n")
                self.assertFalse(os.path.exists(output))


if __name__ == "__main__":
    unittest.main()
