#!/usr/bin/python3
"""Pictures of the window before and during a run, and of the box that asks whether to stop it, in
every language or some, in a palette, a style and at a scale, to be looked at.

    tests/e2e/desktop_session.py --size 1024x600 \\
        scripts/screenshots.py build/release/bin/reelshift FOLDER --language de ar --palette dark

Leaves LANGUAGE-PALETTE-SCALE-empty.png, -window.png and -box.png in the folder; the texts need
fonts (fonts-noto-core, fonts-noto-cjk).
"""

import argparse
import glob
import os
import re
import shutil
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "tests", "e2e"))
import texts  # noqa: E402
import window  # noqa: E402
from movies import make_hevc  # noqa: E402
from texts import text  # noqa: E402

# Window, view, button and selection, each with its text. Qt reads them where KDE has them.
PALETTES = {
    "light": None,
    "dark": ("49,54,59", "239,240,241", "35,38,41", "239,240,241", "49,54,59", "239,240,241",
             "61,174,233", "252,252,252"),
    "high-contrast": ("0,0,0", "255,255,255", "0,0,0", "255,255,255", "0,0,0", "255,255,255",
                      "255,255,0", "0,0,0"),
}
NAMES = ("Morning Walk.mp4", "2024-05-01 Evening (2).mp4",
         "A week in the mountains, with all of the family.mp4")


def languages():
    tables = glob.glob(os.path.join(HERE, "..", "resources", "LocalizedStrings_*.ts"))
    return sorted(os.path.basename(table)[len("LocalizedStrings_"):-3] for table in tables)


def use_palette(name, home):
    """Has Qt's own platform theme take the colours from a settings file in the home folder."""
    colours = PALETTES[name]
    if colours is None:
        return
    groups = zip(("Window", "View", "Button", "Selection"), colours[::2], colours[1::2])
    with open(os.path.join(home, ".config", "kdeglobals"), "w", encoding="ascii") as file:
        for group, ground, text_colour in groups:
            file.write(f"[Colors:{group}]\nBackgroundNormal={ground}\n"
                       f"BackgroundAlternate={ground}\nForegroundNormal={text_colour}\n")
    os.environ.update(XDG_CURRENT_DESKTOP="KDE", KDE_FULL_SESSION="true", KDE_SESSION_VERSION="5")


def add(program, path):
    """The panel's buttons are in the desktop's language, so the path is typed and entered."""
    rows = program.row_count()
    window.press(program.button("IDS_BTN_ADD_FILE"))
    panel = program.panel(text("IDS_TXT_PANEL_ADD"))
    field = window.find(panel.node, window.Role.TEXT)
    window.type_into(field, path)
    window.wait_for(lambda: window.content(field) in (path, os.path.basename(path)), "the path")
    window.wait_for(lambda: window.has_state(panel.node, window.Atspi.StateType.ACTIVE),
                    "the panel to be active")
    window.key("Return")
    window.wait_for(lambda: program.row_count() == rows + 1, f"{path} in the list", 60)


def percentage(program):
    found = re.search(r"(\d+)\s*%", program.cell_text(0, "progress"))
    return int(found.group(1)) if found else -1


def pictures(program, movies, prefix):
    window.wait_for(lambda: program.window() and program.row_count() == 0, "the empty list")
    yield window.screenshot(prefix + "empty.png")
    for path in movies:
        add(program, path)
    window.do_action(program.cell(2, "check"), "Toggle")
    program.convert()
    window.wait_for(lambda: percentage(program) > 9, "a percentage", 120)
    yield window.screenshot(prefix + "window.png")
    window.do_action(program.cell(0, "im"), "Press")
    paused = text("IDS_TXT_STATUS_PAUSED")
    window.wait_for(lambda: program.cell_text(0, "progress") == paused, "the pause", 60)
    window.press(program.button("IDS_BTN_STOP"))
    box = program.box()
    yield window.screenshot(prefix + "box.png")
    box.answer(text("IDS_BTN_POPUP_OK"))
    window.wait_for(lambda: not program.encoders(), "the encoders to end", 60)
    program.terminate()
    program.wait_until_ended()


def main():
    parser = argparse.ArgumentParser(description="Pictures of the window, to be looked at.")
    parser.add_argument("program")
    parser.add_argument("folder")
    parser.add_argument("--language", nargs="+", default=languages(), choices=languages())
    parser.add_argument("--palette", default="light", choices=PALETTES)
    parser.add_argument("--scale", default="1")
    parser.add_argument("--style", help="Fusion, or Breeze (kde-style-breeze)")
    options = parser.parse_args()
    folder = os.path.abspath(options.folder)
    os.environ["QT_SCALE_FACTOR"] = options.scale
    if options.style:
        os.environ["QT_STYLE_OVERRIDE"] = options.style
    with tempfile.TemporaryDirectory(prefix="screenshots-") as store:
        movie = make_hevc(os.path.join(store, "movie.mp4"), "1280x720", 4, repeat=20)
        for language in options.language:
            texts.speak(language)
            home = os.path.join(store, language)
            os.makedirs(os.path.join(home, ".config"))
            use_palette(options.palette, home)
            paths = [os.path.join(home, name) for name in NAMES]
            for path in paths:
                shutil.copy(movie, path)
            prefix = f"{folder}/{language}-{options.palette}-{options.scale}-"
            with window.Application(options.program, home, os.path.join(store, "log")) as program:
                for picture in pictures(program, paths, prefix):
                    print(picture, flush=True)


if __name__ == "__main__":
    main()
