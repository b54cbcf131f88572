"""What the soak knows of the files: the movies, which nothing may change, and the outputs."""

import os

from scripted_movies import is_whole


NOTES_ABOUT_FOLDERS = ("default_hevc_path.txt", "add_hevc_file_path.txt")


def look(path):
    """A file as it is now: its bytes and what tells whether anybody has written it."""
    with open(path, "rb") as file:
        facts = os.fstat(file.fileno())
        return file.read(), facts.st_ino, facts.st_mtime_ns


def look_if_there(path):
    try:
        return look(path)
    except FileNotFoundError:
        return None


class Sources:
    """The movies. One of them may be away for a while, as somebody's disk."""

    def __init__(self, paths):
        self._known = {path: look(path) for path in paths}

    def faults(self):
        return [f"the movie {path} was changed" for path, known in self._known.items()
                if (look_if_there(path) or look_if_there(self.aside(path))) != known]

    @staticmethod
    def aside(path):
        return path + ".aside"

    def take_or_give_back(self, path):
        if os.path.exists(path):
            os.rename(path, self.aside(path))
        else:
            os.rename(self.aside(path), path)

    def give_all_back(self):
        for path in self._known:
            if not os.path.exists(path):
                self.take_or_give_back(path)


class Outputs:
    """The output folders. Every file there is whole and stays what it is, but for what the program
    was told to replace, and for what its sudden end has left."""

    def __init__(self, folders, starts):
        self.folders = folders
        self.starts = starts      # the encoders' own log of their starts
        self.jobs = 0
        self.finished = 0
        self.told_to_replace = 0  # answers of this session
        self.told_for_all = False
        self.told_to_trash = False
        self._whole = {}
        self._halves = {}         # which may be moved to the trash, if anybody says so
        self._read = 0            # of the log
        self._replaced = set()    # since the folders were last judged

    def begin_session(self):
        self.told_to_replace = 0
        self.told_for_all = self.told_to_trash = False

    def read_starts(self):
        """Faults of what was started since the last time."""
        try:
            with open(self.starts, "rb") as file:
                file.seek(self._read)
                new = file.read()
        except FileNotFoundError:
            return []
        new = new[:new.rfind(b"\n") + 1]  # the rest is still being written
        self._read += len(new)
        faults = []
        for line in new.decode(errors="surrogateescape").splitlines():
            self.jobs += 1
            arguments = line.split("\t")[1:]
            if "-y" not in arguments[:-1]:
                continue
            self._replaced.add(arguments[-1])
            self.told_to_replace -= 1
            if self.told_to_replace < 0 and not self.told_for_all:
                faults.append(f"nobody said to replace {arguments[-1]}")
        return faults

    def faults_while_running(self):
        """What was changed that may not be, whatever runs now."""
        changed = [path for path, known in self._whole.items()
                   if path not in self._replaced and look_if_there(path) != known]
        # Of a replacement that began after the log was read the log says so by now.
        faults = self.read_starts()
        return faults + [f"the older output {path} was changed" for path in changed
                         if path not in self._replaced]

    def judge(self, killed=False, gone_share=None):
        """Looks at everything once no encoder runs. With `killed` a half may be left, and in the
        folder of a share that did not answer until the end."""
        faults = self.read_starts()
        for path in sorted({*self._files()} | self._whole.keys() | self._halves.keys()):
            faults += self._judge(path, killed, gone_share)
        self._replaced.clear()
        return faults

    def _judge(self, path, killed, gone_share):
        before = self._whole.pop(path, None)
        half = self._halves.pop(path, None)
        now = look_if_there(path)
        faults = []
        if before and now != before and path not in self._replaced:
            faults.append(f"the older output {path} was " + ("changed" if now else "removed"))
        if half and not now and not self.told_to_trash and path not in self._replaced:
            faults.append(f"nobody said to remove {path}")
        if now and is_whole(now[0]):
            self.finished += now not in (before, half)
        if now and now != before and (killed or now == half):
            self._halves[path] = now  # a whole one, too: only its bytes say so, it is no movie
        elif now and is_whole(now[0]):
            self._whole[path] = now
        elif now and gone_share and path.startswith(gone_share):
            os.remove(path)
        elif now:
            faults.append(f"a partial output is left: {path}, {len(now[0])} bytes")
        return faults

    def partial(self):
        """Files that are neither whole nor known halves."""
        return [path for path in self._files() if (now := look_if_there(path))
                and not is_whole(now[0]) and self._halves.get(path) != now]

    def take_note(self):
        """Everything that is there now is somebody's older output."""
        self._whole = {path: look(path) for path in self._files()}

    def tidy(self, keep, random):
        """What a user does whose folder is full, while the program does not run."""
        known = sorted([*self._whole, *self._halves])
        random.shuffle(known)
        for path in known[keep:]:
            self._whole.pop(path, None)
            self._halves.pop(path, None)
            os.remove(path)

    def _files(self):
        return [os.path.join(folder, name) for folder in self.folders
                for name in os.listdir(folder) if name not in NOTES_ABOUT_FOLDERS]
