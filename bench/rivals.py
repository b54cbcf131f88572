"""What users would take instead, measured like the program and in turns with it: HandBrake (ghb) and
QWinFF, as Debian has them. Where one is not installed it is left out, and said so."""

import os
import shutil
import statistics
import subprocess
import time

from bench import memory_of, note
from desktop_session import die_with_parent
from figures import Row, spread
from movies import make_hevc
from screen_clock import ScreenClock

median = statistics.median
QUIET = 3.0  # seconds after which a window has come to rest


class Rival:
    """A program, how it is told what to list, and where it lists."""

    def __init__(self, name, program):
        self.name = name
        self.program = program

    def listing(self, folder, movies):
        return [self.program, folder]

    def begin(self, root):
        """What is to be pressed before it lists."""

    def listed(self, root):
        """How many movies it lists; a program without a window lists them all by its end."""
        raise NotImplementedError


class Ours(Rival):
    def listed(self, root):
        import window
        table = window.find(root, (window.Role.TABLE, window.Role.TREE_TABLE), required=False)
        return 0 if table is None else window.Atspi.Table.get_n_rows(table)


class HandBrake(Rival):
    """While it looks at movies its window does not answer for seconds: its command line, which does
    the same with the same library, lists in its place."""

    COMMAND = "HandBrakeCLI"

    def listing(self, folder, movies):
        return [self.COMMAND, "-i", folder, "--scan", "-t", "0"]


class QWinFF(Rival):
    COLUMNS = 13

    def listing(self, folder, movies):
        return [self.program, *movies]

    def begin(self, root):
        import window
        window.wait_for(lambda: self._next(root), "the tasks to be taken")

    def _next(self, root):
        import window
        dialog = next((node for node in window.children(root) if node.get_name() == "Add Tasks"
                       and window.has_state(node, window.Atspi.StateType.SHOWING)), None)
        for name in ("Finish", "Next >"):
            button = dialog and window.find(dialog, window.Role.PUSH_BUTTON, name, required=False)
            try:
                if button and window.is_enabled(button):
                    window.do_action(button, "Press")
                    return name == "Finish"
            except LookupError:
                pass  # the page before it has just gone
        return False

    def listed(self, root):
        import window
        tree = window.find(root, (window.Role.TREE, window.Role.TREE_TABLE), required=False)
        return 0 if tree is None else tree.get_child_count() // self.COLUMNS - 1


def found(bench):
    rivals = [Ours("the program", bench.program())]
    for kind, name, program in ((HandBrake, "HandBrake", "ghb"), (QWinFF, "QWinFF", "qwinff")):
        path = shutil.which(program)
        if path:
            rivals.append(kind(name, path))
        else:
            note(f"{name} is not installed, so it is not measured")
    if not shutil.which(HandBrake.COMMAND):
        note(f"{HandBrake.COMMAND} is not installed, so what HandBrake lists is not measured")
    return rivals


def compare(bench):
    rounds = 3 if bench.quick else 5
    rivals = found(bench)
    bare = [bench.tool("bare_window")]
    starts = {rival.name: [] for rival in rivals} | {"bare": []}
    memory = {rival.name: [] for rival in rivals}
    clock = ScreenClock()
    for number in range(rounds + 1):
        for name, command in [("bare", bare)] + [(r.name, [r.program]) for r in rivals]:
            process, seconds = clock.start(command, bench.environment(),
                                           preexec_fn=die_with_parent, stdout=subprocess.DEVNULL,
                                           stderr=subprocess.DEVNULL)
            if number > 0:
                starts[name].append(seconds * 1000)
                if name != "bare":
                    time.sleep(QUIET)
                    memory[name].append(memory_of(process.pid))
            bench.end(process)
    clock.close()
    for rival in rivals:
        own, window = starts[rival.name], starts["bare"]
        yield Row(f"{rival.name}: start to window on screen", f"{median(own):.0f} ms "
                  f"({median(own) / median(window):.1f} times the bare window)", "(told)", None,
                  spread(own, "{:.0f} ms"), own, "{:.0f} ms")
        own = [each[0] / 1024 for each in memory[rival.name]]
        pss = median(each[1] for each in memory[rival.name]) / 1024
        yield Row(f"{rival.name}: resident memory, empty list",
                  f"{median(own):.1f} MiB (PSS {pss:.1f} MiB)", "(told)", None, spread(own), own)
    yield from listings(bench, rivals)


def listings(bench, rivals):
    count, rounds = (50, 2) if bench.quick else (200, 2)
    folder = os.path.join(bench.home, "Videos", "beside")
    first = make_hevc(os.path.join(folder, "movie 000.mp4"), "640x480", 2)
    movies = [first]
    for number in range(1, count):
        movies.append(os.path.join(folder, f"movie {number:03}.mp4"))
        os.link(first, movies[-1])
    times = {rival.name: [] for rival in rivals}
    for _ in range(rounds):
        for rival in rivals:
            if isinstance(rival, HandBrake) and not shutil.which(HandBrake.COMMAND):
                continue
            times[rival.name].append(seconds_to_list(bench, rival, folder, movies))
            note(f"{rival.name}: {count} movies in {times[rival.name][-1]:.1f} s")
    for rival in rivals:
        own = times[rival.name]
        if not own:
            continue
        yield Row(f"{rival.name}: from its start until {count} movies are listed",
                  f"{median(own):.1f} s", "(told)", None, spread(own, "{:.1f} s"), own, "{:.1f} s")


def seconds_to_list(bench, rival, folder, movies, limit=900):
    """As assistive technology sees it, which is looked at four times a second."""
    if isinstance(rival, HandBrake):
        return seconds_of_scan(bench, rival, folder, movies)
    import window
    environment = dict(bench.environment(), QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
    environment.pop("NO_AT_BRIDGE", None)
    begin = time.monotonic()
    process = subprocess.Popen(rival.listing(folder, movies), env=environment, cwd=bench.home,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, preexec_fn=die_with_parent)
    try:
        root = window.wait_for(lambda: root_of(process), f"{rival.name} in the tree", 60)
        rival.begin(root)
        end = begin + limit
        while time.monotonic() < end:
            try:
                if rival.listed(root) >= len(movies):
                    return time.monotonic() - begin
            except window.GLib.Error:
                pass  # while it is busy it does not answer
            time.sleep(0.25)
        raise RuntimeError(f"{rival.name} has not listed {len(movies)} movies")
    finally:
        bench.end(process)


def seconds_of_scan(bench, rival, folder, movies):
    begin = time.monotonic()
    answer = subprocess.run(rival.listing(folder, movies), env=bench.environment(), check=False,
                            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, preexec_fn=die_with_parent)
    found = answer.stdout.decode(errors="replace").count("\n+ title ")
    if found < len(movies):
        raise RuntimeError(f"{rival.name} has listed {found} of {len(movies)} movies")
    return time.monotonic() - begin


def root_of(process):
    import window
    if process.poll() is not None:
        raise AssertionError(f"the program ended with {process.returncode}")
    for app in window.children(window.Atspi.get_desktop(0)):
        if app.get_process_id() == process.pid and app.get_child_count() > 0:
            app.set_cache_mask(window.Atspi.Cache.NONE)
            return app
    return None
