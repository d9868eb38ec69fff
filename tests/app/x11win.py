#!/usr/bin/env python3
"""Test helper: finds a top-level X11 window by its title and reports or moves it.

  x11win.py geometry TITLE      prints "x y width height" of the window on the root
  x11win.py move TITLE X Y      moves the window's top-left corner to X, Y

Talks to libX11 through ctypes, so it needs nothing beyond the X client library.
"""
import ctypes
import ctypes.util
import sys

x = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
Window = ctypes.c_ulong
x.XOpenDisplay.restype = ctypes.c_void_p
x.XOpenDisplay.argtypes = [ctypes.c_char_p]
x.XDefaultRootWindow.restype = Window
x.XDefaultRootWindow.argtypes = [ctypes.c_void_p]
x.XQueryTree.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(Window), ctypes.POINTER(Window),
                         ctypes.POINTER(ctypes.POINTER(Window)), ctypes.POINTER(ctypes.c_uint)]
x.XFetchName.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(ctypes.c_char_p)]
x.XGetGeometry.argtypes = [ctypes.c_void_p, Window, ctypes.POINTER(Window),
                           ctypes.POINTER(ctypes.c_int), ctypes.POINTER(ctypes.c_int),
                           ctypes.POINTER(ctypes.c_uint), ctypes.POINTER(ctypes.c_uint),
                           ctypes.POINTER(ctypes.c_uint), ctypes.POINTER(ctypes.c_uint)]
x.XTranslateCoordinates.argtypes = [ctypes.c_void_p, Window, Window, ctypes.c_int, ctypes.c_int,
                                    ctypes.POINTER(ctypes.c_int), ctypes.POINTER(ctypes.c_int),
                                    ctypes.POINTER(Window)]
x.XMoveWindow.argtypes = [ctypes.c_void_p, Window, ctypes.c_int, ctypes.c_int]
x.XFlush.argtypes = [ctypes.c_void_p]
x.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
x.XFree.argtypes = [ctypes.c_void_p]


def find(display, window, title):
    name = ctypes.c_char_p()
    if x.XFetchName(display, window, ctypes.byref(name)) and name.value is not None:
        found = name.value.decode("utf-8", "replace") == title
        x.XFree(name)
        if found:
            return window
    root, parent = Window(), Window()
    children = ctypes.POINTER(Window)()
    count = ctypes.c_uint()
    if not x.XQueryTree(display, window, ctypes.byref(root), ctypes.byref(parent),
                        ctypes.byref(children), ctypes.byref(count)):
        return None
    try:
        for i in range(count.value):
            hit = find(display, children[i], title)
            if hit:
                return hit
    finally:
        if children:
            x.XFree(children)
    return None


def main(argv):
    display = x.XOpenDisplay(None)
    if not display:
        print("x11win: no display", file=sys.stderr)
        return 2
    root = x.XDefaultRootWindow(display)
    window = find(display, root, argv[2])
    if not window:
        print("x11win: no window titled %r" % argv[2], file=sys.stderr)
        return 1
    if argv[1] == "geometry":
        r = Window()
        gx, gy = ctypes.c_int(), ctypes.c_int()
        w, h, border, depth = ctypes.c_uint(), ctypes.c_uint(), ctypes.c_uint(), ctypes.c_uint()
        x.XGetGeometry(display, window, ctypes.byref(r), ctypes.byref(gx), ctypes.byref(gy),
                       ctypes.byref(w), ctypes.byref(h), ctypes.byref(border), ctypes.byref(depth))
        rx, ry, child = ctypes.c_int(), ctypes.c_int(), Window()
        x.XTranslateCoordinates(display, window, root, 0, 0, ctypes.byref(rx), ctypes.byref(ry),
                                ctypes.byref(child))
        print(rx.value, ry.value, w.value, h.value)
    elif argv[1] == "move":
        x.XMoveWindow(display, window, int(argv[3]), int(argv[4]))
        x.XSync(display, 0)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
