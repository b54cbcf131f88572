#!/usr/bin/python3
"""Uses the real window as a person would, through its accessibility tree: makes two HEVC movies,
adds and converts them, closes the summary. Leaves pictures of the window and the two MP4 files.

    demo.py PROGRAM FOLDER      (on a desktop, see tests/e2e/desktop_session.py)
"""

import glob
import os
import re
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "tests", "e2e"))
import window  # noqa: E402
from movies import Facts, make_hevc  # noqa: E402
from texts import text  # noqa: E402


def converting(app):
    """A row's bar is well on its way, or the run is already over."""
    return app.boxes() or any(re.fullmatch(r"[2-9]\d %", cell) for cell in app.column("progress"))


def show(app, folder, home):
    def picture(name):
        print("   ", window.screenshot(os.path.join(folder, name)))

    print("Making two HEVC movies")
    movies = [make_hevc(os.path.join(home, "Videos", "Morning Walk.mp4"), "1280x720", 2, repeat=4),
              make_hevc(os.path.join(home, "Videos", "Evening.mp4"), "854x480", 2, repeat=4,
                        source="testsrc")]
    with app(home) as program:
        program.window()
        window.wait_for(lambda: program.row_count() == 0, "the empty list")
        picture("1-empty.png")
        print("Adding them")
        program.add_all(*movies)
        picture("2-list.png")
        print("Converting them")
        program.convert()
        window.wait_for(lambda: converting(program), "a percentage", 60)
        picture("3-converting.png")
        box = program.box(limit=300)
        print("The window says:", box.message.replace("\n", " "))
        picture("4-summary.png")
        box.answer(text("IDS_BTN_POPUP_OK"))
        window.wait_for(lambda: program.row_count() == 0, "the converted movies to leave the list")
        program.terminate()
        program.wait_until_ended()
    for path in sorted(glob.glob(os.path.join(home, "Documents", "*.mp4"))):
        facts = Facts(path)
        kept = shutil.copy(path, folder)
        print("   ", f"{kept}: {facts.video['codec_name']} {facts.size}, {facts.seconds:.1f} s, "
              f"{facts.audio['codec_name']} sound")
        yield kept


def main():
    program, folder = (os.path.abspath(argument) for argument in sys.argv[1:3])
    shutil.rmtree(folder, ignore_errors=True)
    os.makedirs(folder)
    with tempfile.TemporaryDirectory(prefix="demo-home-") as home:
        log = os.path.join(folder, "program.log")
        made = list(show(lambda place: window.Application(program, place, log), folder, home))
    if len(made) != 2:
        sys.exit(f"expected two converted movies, found {made}")
    print(f"Pictures of the window and the two converted movies are in {folder}")


if __name__ == "__main__":
    main()
