"""Reads what trace.cpp and TraceNotes.cpp have noted: who ran and who was held, and what came between
one row's outcome and the next one's."""

import collections

MS = 1e6  # nanoseconds
LONG = 900 * MS  # a wait that lasts so long is a deliberate one

Phase = collections.namedtuple("Phase", "what who begin end milliseconds")
Event = collections.namedtuple("Event", "at process thread kind detail")
Block = collections.namedtuple("Block", "begin end what")
Lane = collections.namedtuple("Lane", "name blocks")


def read(path):
    events = []
    with open(path, encoding="utf-8", errors="replace") as file:
        for line in file:
            at, process, thread, kind, *detail = line.rstrip("\n").split(" ", 4)
            events.append(Event(int(at), int(process), int(thread), kind,
                                detail[0] if detail else ""))
    return sorted(events)


class Trace:
    def __init__(self, path):
        self.events = read(path)
        self.pressed = self._first(self.events, "presses").at
        self.program = self._first(self.events, "presses").process
        self.main = self._first(self.events, "presses").thread

    @staticmethod
    def _first(events, kind, contains=""):
        for event in events:
            if event.kind == kind and contains in event.detail:
                return event
        raise LookupError(f"the trace has no event {kind!r} with {contains!r}")

    def jobs(self):
        """In their order."""
        threads = [event for event in self.events if event.process == self.program
                   and event.kind == "says" and "Executable path" in event.detail]
        outcomes = [event for event in self.events if event.kind == "shows"
                    and event.detail.endswith("Converted")]
        if len(threads) != len(outcomes) or not threads:
            raise LookupError(f"{len(threads)} jobs began, {len(outcomes)} were converted")
        begins = [self.pressed] + [outcome.at for outcome in outcomes]
        return [Job(self, begin, thread.thread, outcome.at)
                for begin, thread, outcome in zip(begins, threads, outcomes)]


def held(events):
    """The blocks in which a thread was held by a call."""
    blocks = []
    for event in events:
        if event.kind == "held":
            lasted, call = event.detail.split(" ", 1)
            blocks.append(Block(event.at - int(lasted), event.at, call))
    return blocks


def merged(blocks, gap=MS):
    """Waits that were only looked after in between count as one."""
    result = []
    for block in blocks:
        if result and block.begin - result[-1].end < gap:
            result[-1] = Block(result[-1].begin, block.end, block.what)
        else:
            result.append(block)
    return result


class Job:
    """From the outcome of the job before it (or the press) to its own."""

    def __init__(self, trace, begin, thread, end):
        self.begin, self.end = begin, end
        self.trace, self.thread = trace, thread
        self.events = [event for event in trace.events if begin <= event.at <= end]
        own = [event for event in self.events if event.thread == thread]
        waits = merged([wait for wait in held(own) if wait.what == "timed wait"])
        first = Trace._first

        launch = first(self.events, "becomes", "/share/reelshift/ffmpeg")
        self.process = launch.process
        encoder = [event for event in self.events if event.process == self.process]
        launcher = first(encoder, "begins", "/libexec/reelshift/ffmpeg")
        becomes = [event for event in encoder if event.kind == "becomes"][-1]
        loaded = [event for event in encoder if event.kind == "begins"][-1]
        ended = first(encoder, "ends")
        asked = [event for event in self.events if event.kind == "becomes"
                 and event.detail.endswith("/ffprobe")]
        self.probes = {event.process for event in asked}
        answered = [event for event in encoder if event.kind == "reaped"]
        note = next(wait for wait in waits if wait.end <= launch.at)
        self.seconds = [wait for wait in waits if wait.end - wait.begin >= LONG]
        last = max(self.seconds[-1].end, ended.at)
        started = min([own[0].at] + [wait.begin for wait in held(own) if wait.end <= launch.at])

        marks = [
            ("the job's thread begins", "main thread", started),
            ("the source, the output's name", "job's thread", note.begin),
            ("the note of the run is flushed", "disk", note.end),
            ("the launcher is started", "main thread, children", launch.at),
            ("the launcher is loaded", "launcher", launcher.at),
            ("it starts ffprobe", "launcher", asked[0].at if asked else launcher.at),
            ("ffprobe is loaded, reads the movie", "ffprobe",
             answered[-1].at if answered else launcher.at),
            ("the additions; it becomes ffmpeg", "launcher", becomes.at),
            ("ffmpeg is loaded", "ffmpeg", loaded.at),
            ("ffmpeg encodes", "ffmpeg", ended.at),
            ("what is left of the seconds", "nobody", last),
            ("the outcome is in the row", "main thread, job's thread", end),
        ]
        self.phases = []
        at = begin
        for what, who, until in marks:
            self.phases.append(Phase(what, who, at, until, (until - at) / MS))
            at = until
        self.total = (end - begin) / MS
        self.encoder = (ended.at - becomes.at) / MS
        self.launcher = (becomes.at - launch.at) / MS
        self.demanded = sum(max(0, wait.end - max(wait.begin, ended.at))
                            for wait in self.seconds) / MS
        self.besides = self.total - self.encoder - self.demanded

    def lanes(self):
        """Who was at work when, for the picture."""
        program = [event for event in self.events if event.process == self.trace.program]
        lanes = [self._lane("main thread", program, self.trace.main),
                 self._lane("the job's thread", program, self.thread)]
        flushes = [Block(*block) for block in held(program) if block.what == "fsync"]
        lanes.append(Lane("the note, flushed", flushes))
        encoder = [event for event in self.events if event.process == self.process]
        images = [event for event in encoder if event.kind in ("becomes", "begins", "ends")]
        blocks = [Block(one.at, other.at,
                        "loads" if one.kind == "becomes" else one.detail.rsplit("/", 1)[-1])
                  for one, other in zip(images, images[1:])]
        waits = [block for block in held(encoder) if block.what in ("poll", "waitpid")]
        lanes.append(Lane("launcher, then ffmpeg", without(blocks, waits)))
        asked = [event for event in self.events if event.process in self.probes]
        lanes.append(Lane("ffprobe", [Block(one.at, other.at, "loads" if one.kind == "becomes" else
                                            "ffprobe") for one, other in zip(asked, asked[1:])
                                      if one.kind != "ends" and one.process == other.process]))
        return [lane for lane in lanes if lane.blocks]

    def _lane(self, name, events, thread):
        own = [event for event in events if event.thread == thread]
        begin = self.begin if thread == self.trace.main else \
            min([own[0].at] + [block.begin for block in held(own[:1])])
        whole = [Block(begin, self.end, "works")]
        return Lane(name, without(whole, held(own)))


def without(blocks, holes):
    """What is left of blocks outside of holes, which may overlap."""
    left = []
    for block in blocks:
        begin = block.begin
        for hole in sorted(holes):
            if hole.end <= begin or hole.begin >= block.end:
                continue
            if hole.begin > begin:
                left.append(Block(begin, hole.begin, block.what))
            begin = max(begin, hole.end)
        if begin < block.end:
            left.append(Block(begin, block.end, block.what))
    return left
