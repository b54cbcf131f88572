"""Folders of thousands of small movies, each a true one, made once and kept."""

import os

from movies import make_hevc

# Really different ones: sizes, lengths, with what they are drawn.
KINDS = (("320x240", 1, "testsrc2"), ("320x240", 2, "smptebars"), ("640x480", 1, "testsrc"),
         ("480x360", 1, "testsrc2"), ("1280x720", 1, "testsrc2"), ("1920x1080", 1, "smptebars"),
         ("240x426", 1, "testsrc2"), ("400x300", 2, "testsrc"))


def folder_of(kept, count):
    """A folder below `kept` with so many movies, all kinds by turns, each a file of its own name."""
    kinds = os.path.join(kept, "kinds")
    folder = os.path.join(kept, f"folder of {count}")
    if os.path.isdir(folder) and len(os.listdir(folder)) == count:
        return folder
    made = []
    for number, (size, seconds, source) in enumerate(KINDS):
        path = os.path.join(kinds, f"kind {number}.mp4")
        made.append(path if os.path.exists(path) else make_hevc(path, size, seconds, source=source))
    os.makedirs(folder, exist_ok=True)
    for number in range(count):
        path = os.path.join(folder, f"movie {number:05}.mp4")
        if not os.path.exists(path):
            os.link(made[number % len(made)], path)
    return folder
