#!/usr/bin/python3
"""Test helper: a stand-in for a desktop's notification server on the session
bus named by DBUS_SESSION_BUS_ADDRESS.

    fake_notifications.py [--caps actions,body-markup] [--delay SECONDS] [--garbage] [--silent]

GetCapabilities answers the listed capabilities. Every Notify call is printed
as one JSON line {"call": "Notify", "app", "replaces", "icon", "summary",
"body", "actions", "hints", "timeout"} and answered with a new id (or the one
it replaces), SECONDS late. --garbage answers Notify with a string, --silent
never answers it. Prints "ready" once it owns the name; then each line on
standard input is "action ID NAME" (emits ActionInvoked) or "close ID"
(emits NotificationClosed). Ends with its input.
"""
import argparse
import json
import os
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

INTERFACE = "org.freedesktop.Notifications"


def plain(value):
    """A D-Bus value as plain JSON, keeping a byte's type visible."""
    if isinstance(value, dbus.Byte):
        return {"byte": int(value)}
    if isinstance(value, (dbus.Dictionary, dict)):
        return {str(k): plain(v) for k, v in value.items()}
    if isinstance(value, (dbus.Array, list)):
        return [plain(v) for v in value]
    if isinstance(value, (dbus.Int32, dbus.UInt32, dbus.Int64, dbus.UInt64, int)):
        return int(value)
    return str(value)


class Server(dbus.service.Object):
    def __init__(self, bus, options):
        super().__init__(bus, "/org/freedesktop/Notifications")
        self.options = options
        self.next_id = 1

    @dbus.service.method(INTERFACE, in_signature="", out_signature="as")
    def GetCapabilities(self):
        return [c for c in self.options.caps.split(",") if c]

    @dbus.service.method(INTERFACE, in_signature="", out_signature="ssss")
    def GetServerInformation(self):
        return ("fake", "velmar tests", "1", "1.2")

    # No fixed reply signature: --garbage answers with a string.
    @dbus.service.method(INTERFACE, in_signature="susssasa{sv}i",
                         async_callbacks=("reply", "error"))
    def Notify(self, app, replaces, icon, summary, body, actions, hints, timeout, reply, error):
        print(json.dumps({"call": "Notify", "app": str(app), "replaces": int(replaces),
                          "icon": str(icon), "summary": str(summary), "body": str(body),
                          "actions": plain(actions), "hints": plain(hints),
                          "timeout": int(timeout)}, sort_keys=True), flush=True)
        if self.options.silent:
            return
        if replaces:
            given = int(replaces)
        else:
            given = self.next_id
            self.next_id += 1

        def send():
            if self.options.garbage:
                reply(dbus.String("not an id"))
            else:
                reply(dbus.UInt32(given))
            return False
        GLib.timeout_add(int(self.options.delay * 1000), send)

    @dbus.service.method(INTERFACE, in_signature="u", out_signature="")
    def CloseNotification(self, id):
        self.NotificationClosed(id, 3)

    @dbus.service.signal(INTERFACE, signature="us")
    def ActionInvoked(self, id, action):
        pass

    @dbus.service.signal(INTERFACE, signature="uu")
    def NotificationClosed(self, id, reason):
        pass

    def command(self, line):
        words = line.split()
        if words[0] == "action":
            self.ActionInvoked(dbus.UInt32(int(words[1])), words[2])
        elif words[0] == "close":
            self.NotificationClosed(dbus.UInt32(int(words[1])), dbus.UInt32(2))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--caps", default="actions,body,body-markup")
    parser.add_argument("--delay", type=float, default=0)
    parser.add_argument("--garbage", action="store_true")
    parser.add_argument("--silent", action="store_true")
    options = parser.parse_args()

    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    server = Server(bus, options)
    name = dbus.service.BusName(INTERFACE, bus)
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
        lines = [l.decode("utf-8") for l in lines]
        for line in lines:
            if line.strip():
                server.command(line)
        return True

    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, on_input)
    print("ready", flush=True)
    loop.run()
    del name


if __name__ == "__main__":
    main()
