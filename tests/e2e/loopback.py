"""The update server's place on this machine, and the program that looks for versions there."""

import os
import socket

PROGRAM = os.environ.get("REELSHIFT_LOOPBACK", "")


def reserve():
    """A port that nobody else gets as long as the socket is held; a server may listen beside it."""
    holder = socket.socket()
    holder.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    holder.bind(("127.0.0.1", 0))
    return holder


_HOLDER = reserve()
PORT = _HOLDER.getsockname()[1]
URL = f"http://127.0.0.1:{PORT}"
# For every program that this test starts.
os.environ["REELSHIFT_LOOPBACK_URL"] = URL
