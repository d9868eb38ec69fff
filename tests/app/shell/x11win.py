#!/usr/bin/env python3
"""Test helper, X11 without a window manager: `geometry TITLE` prints "x y width height", `move TITLE X Y`,
`class TITLE` prints "instance class", `pids TITLE` the process ids of the mapped windows so titled,
`focus` the process id of the window that has the input focus, `icons TITLE` the widths of its icons,
`keys KEY...` presses each key (an X keysym name, modifiers joined by "+": ctrl+comma) through XTEST,
as a keyboard would, into whatever holds the input focus."""
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
x.XGetInputFocus.argtypes = [D, P(W), P(I)]
x.XInternAtom.argtypes, x.XInternAtom.restype = [D, C.c_char_p, I], W
x.XGetWindowProperty.argtypes = [D, W, W, C.c_long, C.c_long, I, W, P(W), P(I), P(C.c_ulong),
                                 P(C.c_ulong), P(P(C.c_ubyte))]


class Attributes(C.Structure):  # XWindowAttributes, up to map_state
    _fields_ = [("geometry", I * 6), ("visual", D), ("root", W), ("gravity", I * 4),
                ("planes", C.c_ulong * 2), ("save_under", I), ("colormap", W),
                ("map_installed", I), ("map_state", I), ("rest", C.c_char * 64)]


x.XGetWindowAttributes.argtypes = [D, W, P(Attributes)]
x.XGetClassHint.argtypes = [D, W, P(C.c_char_p * 2)]
x.XStringToKeysym.argtypes, x.XStringToKeysym.restype = [C.c_char_p], W
x.XKeysymToKeycode.argtypes, x.XKeysymToKeycode.restype = [D, W], C.c_ubyte


def press(display, keys):
    xtest = C.CDLL(ctypes.util.find_library("Xtst") or "libXtst.so.6")
    xtest.XTestFakeKeyEvent.argtypes = [D, U, I, C.c_ulong]
    for key in keys:
        names = [{"ctrl": "Control_L", "shift": "Shift_L", "alt": "Alt_L"}.get(n, n) for n in key.split("+")]
        codes = [x.XKeysymToKeycode(display, x.XStringToKeysym(n.encode())) for n in names]
        # Modifiers down first and up last, each event a moment apart, as fingers would.
        for code, down in [(c, 1) for c in codes] + [(c, 0) for c in reversed(codes)]:
            xtest.XTestFakeKeyEvent(display, code, down, 20)
    x.XSync(display, 0)


def top_levels(display):
    tree = [W(), W(), P(W)(), U()]
    x.XQueryTree(display, x.XDefaultRootWindow(display), *map(C.byref, tree))
    return tree[2][:tree[3].value]


def title(display, window):
    name = C.c_char_p()
    return name.value.decode() if x.XFetchName(display, window, C.byref(name)) and name.value else ""


def cardinals(display, window, name, most):
    kind, size, count, rest, data = W(), I(), C.c_ulong(), C.c_ulong(), P(C.c_ubyte)()
    x.XGetWindowProperty(display, window, x.XInternAtom(display, name, 0), 0, most, 0, 0,
                         C.byref(kind), C.byref(size), C.byref(count), C.byref(rest), C.byref(data))
    return C.cast(data, P(C.c_long))[:count.value] if count.value else []


def pid(display, window):
    return (cardinals(display, window, b"_NET_WM_PID", 1) or [0])[0]


def icon_widths(display, window):
    # _NET_WM_ICON: width, height and width * height pixels, for each size.
    data, at, widths = cardinals(display, window, b"_NET_WM_ICON", 1 << 20), 0, []
    while at + 1 < len(data):
        widths.append(data[at])
        at += 2 + data[at] * data[at + 1]
    return widths


def mapped(display, window):
    attributes = Attributes()
    x.XGetWindowAttributes(display, window, C.byref(attributes))
    return attributes.map_state == 2  # IsViewable


def titled(display, wanted, shown=True):
    windows = [w for w in top_levels(display) if title(display, w) == wanted and (not shown or mapped(display, w))]
    return windows or sys.exit("x11win: no window titled %r" % wanted)


def main(command, wanted=None, *corner):
    display = x.XOpenDisplay(None) or sys.exit("x11win: no display")
    if command == "focus":
        focus, revert = W(), I()
        x.XGetInputFocus(display, C.byref(focus), C.byref(revert))
        # Qt gives the focus to its top-level window or to a child of it.
        tops = {w: pid(display, w) for w in top_levels(display)}
        window = focus.value
        while window and window not in tops:
            tree = [W(), W(), P(W)(), U()]
            x.XQueryTree(display, window, *map(C.byref, tree))
            window = tree[1].value
        print(tops.get(window, 0))
    elif command == "keys":
        press(display, (wanted,) + corner)
    elif command == "pids":
        for window in top_levels(display):
            if title(display, window) == wanted and mapped(display, window):
                print(pid(display, window))
    elif command == "icons":
        print(*icon_widths(display, titled(display, wanted)[0]))
    elif command == "class":
        hint = (C.c_char_p * 2)()
        x.XGetClassHint(display, titled(display, wanted)[0], C.byref(hint))
        print((hint[0] or b"").decode(), (hint[1] or b"").decode())
    elif command == "move":
        x.XMoveWindow(display, titled(display, wanted, False)[0], int(corner[0]), int(corner[1]))
        x.XSync(display, 0)
    else:
        geometry = [W(), I(), I(), U(), U(), U(), U()]
        x.XGetGeometry(display, titled(display, wanted, False)[0], *map(C.byref, geometry))
        print(*(v.value for v in geometry[1:5]))


if __name__ == "__main__":
    main(*sys.argv[1:])
