"""An update server that does something else every time it is asked."""

import time

from misbehaving_server import CHUNKED, ENDLESS, OK, MisbehavingServer

DOCUMENT = ('<?xml version="1.0" encoding="UTF-8"?>\n<product>\n  <version>{version}</version>\n'
            "  <setupFile><url>http://127.0.0.1:{port}/files/new.deb</url></setupFile>\n"
            "</product>\n")
SLOW = {"header": 0.3, "chunk_extension": 0.05, "body": 0.05}
# Those of an installer alone: it never comes to its end.
INSTALLERS = ("body_of_a_stated_length", "chunk_extension", "trailer", "header", "reason_phrase")


class SoakServer(MisbehavingServer):
    def __init__(self, port, random):
        self.answers = 0
        self._port = port
        self._random = random
        super().__init__(port, b"", b"")

    def _answer(self, connection):
        with connection:
            try:
                request = connection.recv(65536)
                self.answers += 1
                if b"/files/" in request.split(b"\n")[0]:
                    self._flood(connection, *ENDLESS[self._random.choice(INSTALLERS)], 0.02)
                else:
                    self._answer_about_versions(connection)
            except OSError:
                self.gone.set()

    def _answer_about_versions(self, connection):
        kind = self._random.choice(["new", "new", "new", "old", "cut", "mute", "slow", "endless"])
        if kind == "mute":
            self._flood(connection, b"", b"", 0.1)
        elif kind == "slow":
            name = self._random.choice(list(SLOW))
            once, again = ENDLESS[name]
            self._flood(connection, once, again[:10], SLOW[name])
        elif kind == "endless":
            self._flood(connection, *ENDLESS[self._random.choice(list(ENDLESS))], 0.01)
        elif kind == "cut":
            connection.sendall(CHUNKED + b"5\r\n<a/>")
        else:
            version = "9.9.9.9" if kind == "new" else "0.0.0.1"
            body = DOCUMENT.format(version=version, port=self._port).encode()
            connection.sendall(OK + b"Content-Length: %d\r\n\r\n" % len(body) + body)

    def _flood(self, connection, once, again, pause):
        connection.settimeout(10)
        connection.sendall(once)
        while not self._ended:
            self.sent += connection.send(again)
            time.sleep(pause)
