#!/usr/bin/python3
"""The real window with an update server whose answers never end: they cost nothing, and the program
can be closed in the middle of them."""

import os
import sys
import time

from harness import main, window
from loopback import PORT
from misbehaving_server import CHUNKED, ENDLESS, MisbehavingServer
from test_update import UpdateTest

TICKS = os.sysconf("SC_CLK_TCK")
# Seconds. It takes 300 ms at the most, which a busy machine makes longer; the figure is printed.
CLOSE_LIMIT = 5.0


class Flood(UpdateTest):
    def flood(self, name, pause=0.0):
        """Starts the program beside a server of this kind, which waits with its answer."""
        self.server = MisbehavingServer(PORT, *ENDLESS[name], pause)
        self.addCleanup(self.server.end)
        self.begin()
        self.assertTrue(self.server.asked.wait(window.LIMIT), "nobody asks for the document")
        self.wait_until_idle()

    def used(self):
        """Seconds of processor time so far."""
        with open(f"/proc/{self.app.process.pid}/stat", encoding="ascii", errors="replace") as file:
            fields = file.read().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / TICKS

    def memory(self):
        """Bytes that are in use."""
        with open(f"/proc/{self.app.process.pid}/statm", encoding="ascii") as file:
            return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

    def wait_until_idle(self):
        before = [-1.0]

        def idle():
            before.append(self.used())
            return before[-10:] == before[-1:] * 10
        window.wait_for(idle, "the program to have nothing to do")

    def tell(self, figures):
        print(f"{self.id()}: {figures}", file=sys.stderr)

    def check_closes(self, limit=CLOSE_LIMIT):
        begun = time.monotonic()
        self.app.terminate()
        self.check_ended_with_folders()
        took = time.monotonic() - begun
        self.tell(f"closed in {took * 1000:.0f} ms")
        self.assertLess(took, limit)

    def check_is_refused(self, name):
        self.flood(name)
        used, memory = self.used(), self.memory()
        self.server.may_flood.set()
        self.assertTrue(self.server.gone.wait(window.LIMIT), "the program takes it without end")
        window.wait_for(lambda: "document was not read" in self.logged(), "the log to say so")
        self.wait_until_idle()
        used, memory = self.used() - used, self.memory() - memory
        self.tell(f"{self.server.sent / 1e6:.1f} MB sent, {used * 1000:.0f} ms of processor time, "
                  f"{memory / 1e6:+.1f} MB of memory")
        self.assertLess(used, 0.5)
        self.assertLess(memory, 8e6)
        self.assertTrue(window.is_enabled(self.app.button("IDS_BTN_ADD_FILE")))
        self.assertEqual([], self.app.dialogs())
        self.check_closes()

    def logged(self):
        with open(self.log, encoding="utf-8", errors="replace") as file:
            return file.read()


class Refused(Flood):
    """What has no end is given up at once."""


def refusal(name):
    return lambda self: self.check_is_refused(name)


for kind in ENDLESS:
    setattr(Refused, f"test_endless_{kind}", refusal(kind))


class Closing(Flood):
    """The end of the program does not wait for the server."""

    def check_closes_in(self, name, pause):
        self.flood(name, pause)
        self.server.may_flood.set()
        window.wait_for(lambda: self.server.sent > 0, "the server to begin")
        self.check_closes()

    def test_slow_header(self):
        self.check_closes_in("header", 0.3)

    def test_slow_chunk_extension(self):
        ENDLESS["slow_chunk_extension"] = (CHUNKED + b"5;more=", b"x" * 100)
        self.check_closes_in("slow_chunk_extension", 0.05)

    def test_silent_server(self):
        self.flood("header")
        self.check_closes()


class DownloadFlood(Flood):
    """An installer without end."""

    SECONDS = 5.0

    def check_costs_little_and_closes_at_once(self, name, limit):
        box = self.offered()
        self.server.end()
        self.server = MisbehavingServer(PORT, *ENDLESS[name])
        self.addCleanup(self.server.end)
        self.accept(box)
        self.server.may_flood.set()
        window.wait_for(lambda: self.server.sent > 10e6, "the flood to begin")
        used, memory, begun, sent = self.used(), self.memory(), time.monotonic(), self.server.sent
        window.wait_for(lambda: time.monotonic() - begun > self.SECONDS, "some seconds of it")
        took = time.monotonic() - begun
        share = (self.used() - used) / took
        memory = self.memory() - memory
        self.tell(f"{(self.server.sent - sent) / took / 1e6:.1f} MB/s, "
                  f"{share * 100:.1f} % of a processor, {memory / 1e6:+.1f} MB of memory")
        self.assertLess(memory, 8e6)
        self.assertLess(share, limit)
        self.check_closes()
        self.assertEqual([], os.listdir(self.downloads))

    # The limits are for a busy machine with a debug build.
    def test_of_a_stated_length(self):
        self.check_costs_little_and_closes_at_once("body_of_a_stated_length", 0.1)

    # Most of it goes to the bar, which runs to and fro.
    def test_of_no_length(self):
        self.check_costs_little_and_closes_at_once("body", 0.25)


if __name__ == "__main__":
    main()
