"""A click on a window's close button, as the window manager has it from a panel: whatever has the
keyboard and the mouse at that moment."""

import ctypes

CLIENT_MESSAGE = 33
FROM_WINDOW_MANAGERS = (1 << 19) | (1 << 20)  # SubstructureNotifyMask, SubstructureRedirectMask
FROM_A_USER = 2


class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong),
                ("message_type", ctypes.c_ulong), ("format", ctypes.c_int),
                ("data", ctypes.c_long * 5), ("padding", ctypes.c_long * 24)]


def request_close(number):
    """Asks the window manager to close the window of that number."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XDefaultRootWindow.restype = x11.XInternAtom.restype = ctypes.c_ulong
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    event = ClientMessage(type=CLIENT_MESSAGE, window=number, format=32,
                          message_type=x11.XInternAtom(display, b"_NET_CLOSE_WINDOW", 0))
    event.data[1] = FROM_A_USER
    x11.XSendEvent(display, ctypes.c_ulong(x11.XDefaultRootWindow(display)), 0,
                   ctypes.c_long(FROM_WINDOW_MANAGERS), ctypes.byref(event))
    x11.XCloseDisplay(display)
