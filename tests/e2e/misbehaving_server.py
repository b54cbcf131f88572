"""A web server that does what no web server should: its answers have no end, or come a byte at a
time."""

import socket
import threading
import time

OK = b"HTTP/1.1 200 OK\r\n"
CHUNKED = OK + b"Transfer-Encoding: chunked\r\n\r\n"
# What is sent once, and then what is sent again and again.
ENDLESS = {
    "header": (OK, b"X-More: " + b"x" * 1000 + b"\r\n"),
    "header_line": (OK + b"X-More: ", b"x" * 65536),
    "reason_phrase": (b"HTTP/1.1 200 ", b"x" * 65536),
    "chunk_extension": (CHUNKED + b"5\r\n<a/>\n\r\n5;more=", b"x" * 65536),
    "chunk_size": (CHUNKED, b"0" * 65536),
    "trailer": (CHUNKED + b"0\r\n", b"X-More: " + b"x" * 1000 + b"\r\n"),
    "provisional_answers": (b"", b"HTTP/1.1 103 Early Hints\r\n\r\n" * 1000),
    "body": (OK + b"\r\n", b" " * 65536),
    "body_of_a_stated_length": (OK + b"Content-Length: 2000000000\r\n\r\n", b" " * 65536),
    "body_of_tiny_chunks": (CHUNKED, b"1;" + b"x" * 60 + b"\r\n \r\n"),
}


class MisbehavingServer:
    """Answers every request with `once` and then, once it may, with `again` without end."""

    def __init__(self, port, once, again, pause=0.0):
        self.once = once
        self.again = again
        self.pause = pause                   # seconds between two pieces
        self.asked = threading.Event()       # somebody has asked
        self.may_flood = threading.Event()
        self.gone = threading.Event()        # whoever asked has closed the connection
        self.sent = 0                        # bytes that went out, to all of them
        self._ended = False
        self._socket = socket.create_server(("127.0.0.1", port))
        threading.Thread(target=self._serve, daemon=True).start()

    def end(self):
        self._ended = True
        self.may_flood.set()
        self._socket.shutdown(socket.SHUT_RDWR)  # ends accept(), too
        self._socket.close()

    def _serve(self):
        while True:
            try:
                connection = self._socket.accept()[0]
            except OSError:
                return
            threading.Thread(target=self._answer, args=(connection,), daemon=True).start()

    def _answer(self, connection):
        with connection:
            connection.recv(65536)
            self.asked.set()
            self.may_flood.wait()
            try:
                connection.sendall(self.once)
                while not self._ended:
                    self.sent += connection.send(self.again)
                    time.sleep(self.pause)
            except OSError:
                self.gone.set()
