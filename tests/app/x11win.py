#!/usr/bin/env python3
"""Test helper, X11 without a window manager: `geometry TITLE` prints "x y width height", `move TITLE X Y`."""
import ctypes as C
import ctypes.util
import sys

x = C.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
D, W, I, U, P = C.c_void_p, C.c_ulong, C.c_int, C.c_uint, C.POINTER
x.XOpenDisplay.restype = D
x.XDefaultRootWindow.argtypes, x.XDefaultRootWindow.restype = [D], W
x.XQueryTree.argtypes = [D, W, P(W), P(W), P(P(W)), P(U)]
x.XFetchName.argtypes = [D, W, P(C.c_char_p)]
x.XGetGeometry.argtypes = [D, W, P(W), P(I), P(I), P(U), P(U), P(U), P(U)]
x.XMoveWindow.argtypes = [D, W, I, I]
x.XSync.argtypes = [D, I]


def main(command, title, *corner):
    display = x.XOpenDisplay(None) or sys.exit("x11win: no display")
    tree = [W(), W(), P(W)(), U()]
    x.XQueryTree(display, x.XDefaultRootWindow(display), *map(C.byref, tree))
    for window in tree[2][:tree[3].value]:
        name = C.c_char_p()
        if x.XFetchName(display, window, C.byref(name)) and name.value == title.encode():
            break
    else:
        sys.exit("x11win: no window titled %r" % title)
    if command == "move":
        x.XMoveWindow(display, window, int(corner[0]), int(corner[1]))
        x.XSync(display, 0)
    else:
        geometry = [W(), I(), I(), U(), U(), U(), U()]
        x.XGetGeometry(display, window, *map(C.byref, geometry))
        print(*(v.value for v in geometry[1:5]))


if __name__ == "__main__":
    main(*sys.argv[1:])
