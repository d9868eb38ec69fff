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

import dbus
import dbus.service
from gi.repository import GLib

from fake_bus import plain, say, serve

INTERFACE = "org.freedesktop.Notifications"


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
        say(call="Notify", app=str(app), replaces=int(replaces), icon=str(icon),
            summary=str(summary), body=str(body), actions=plain(actions), hints=plain(hints),
            timeout=int(timeout))
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
    serve(INTERFACE, lambda bus: Server(bus, options), Server.command)


if __name__ == "__main__":
    main()
