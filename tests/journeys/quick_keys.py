"""Presses keys without waiting for the program, like a quick typist.

The keys go to the X server directly, because the accessibility bus adds pauses.
"""

import ctypes
import functools
import time

from .screen import KEYS, Gdk, place_on_keyboard


@functools.cache
def libraries():
    """Returns the two libraries and a connection to the display."""
    x11, xtest = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXtst.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XFlush.argtypes = [ctypes.c_void_p]
    x11.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
    xtest.XTestFakeKeyEvent.argtypes = [
        ctypes.c_void_p,
        ctypes.c_uint,
        ctypes.c_int,
        ctypes.c_ulong,
    ]
    return x11, xtest, x11.XOpenDisplay(None)


def type_quickly(keys, pause):
    """Presses keys, each a character or one of KEYS, `pause` seconds apart.

    No key needs Shift. The keys reach the X server in this order before the call returns.
    """
    codes = [code_of_key(key) for key in keys]
    x11, xtest, display = libraries()
    for code in codes:
        for is_press in (1, 0):
            xtest.XTestFakeKeyEvent(display, code, is_press, 0)
        x11.XFlush(display)
        time.sleep(pause)
    x11.XSync(display, 0)


def code_of_key(key):
    symbol = KEYS.get(key) or Gdk.unicode_to_keyval(ord(key))
    code, level = place_on_keyboard(symbol)
    assert level == 0, f"{key!r} needs Shift"
    return code
