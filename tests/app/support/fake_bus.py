"""What the tests' fake desktop services share: a GLib main loop on the session
bus named by DBUS_SESSION_BUS_ADDRESS, a well-known name owned there, "ready"
printed once it is, and one command per line of standard input until that
ends. A command that fails on the bus prints "error MESSAGE" and the service
goes on.
"""
import json
import os
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib


def plain(value):
    """A D-Bus value as plain JSON, keeping a byte's type visible."""
    if isinstance(value, dbus.Byte):
        return {"byte": int(value)}
    if isinstance(value, (dbus.Dictionary, dict)):
        return {str(k): plain(v) for k, v in value.items()}
    if isinstance(value, (dbus.Array, dbus.Struct, list, tuple)):
        return [plain(v) for v in value]
    if isinstance(value, (dbus.Int32, dbus.UInt32, dbus.Int64, dbus.UInt64, int)):
        return int(value)
    return str(value)


def say(**fields):
    """One JSON line on standard output, keys sorted, flushed at once."""
    print(json.dumps(fields, sort_keys=True), flush=True)


def serve(name, make, command):
    """Owns `name` with what `make(bus)` puts on the bus, then hands each
    non-blank input line, stripped, to `command(service, line)`."""
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    service = make(bus)
    owned = dbus.service.BusName(name, bus)
    loop = GLib.MainLoop()
    pending = [b""]

    def on_input(channel, condition):
        # Raw reads: several commands may come in one chunk, and a buffered
        # readline would keep the later ones from the next wakeup.
        chunk = os.read(sys.stdin.fileno(), 4096)
        if not chunk:
            loop.quit()
            return False
        *lines, pending[0] = (pending[0] + chunk).split(b"\n")
        for line in lines:
            line = line.decode("utf-8").strip()
            if not line:
                continue
            try:
                command(service, line)
            except (dbus.exceptions.DBusException, IndexError) as error:
                text = str(error).splitlines()[0] if str(error) else type(error).__name__
                print("error", text, flush=True)
        return True

    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, on_input)
    print("ready", flush=True)
    loop.run()
    del owned
