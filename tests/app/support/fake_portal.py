#!/usr/bin/python3
"""Test helper: a stand-in for the XDG desktop portal's Settings and
Notification interfaces on the session bus named by DBUS_SESSION_BUS_ADDRESS.

    fake_portal.py [--delay SECONDS] [--old] [--switch SECONDS] [--silent] SCHEME [CONTRAST]

Settings answers Read/ReadOne of org.freedesktop.appearance color-scheme
(SCHEME) and contrast (CONTRAST, default 0), each answer SECONDS late. A value
that is not a number is sent as a string, as a broken portal might. --old: no
ReadOne, as portals before version 2 of the interface. --switch: that long
after the first colour-scheme answer, the scheme turns light.

Notification prints each AddNotification as one JSON line {"call":
"AddNotification", "id", "notification"}; --silent never answers it.

Prints "ready" once it owns the name; then each line on standard input is
"action ID NAME" (emits ActionInvoked) or "KEY VALUE" (changes a setting and
emits SettingChanged). Ends with its input.
"""
import argparse

import dbus
import dbus.service
from gi.repository import GLib

from fake_bus import plain, say, serve

NAMESPACE = "org.freedesktop.appearance"
INTERFACE = "org.freedesktop.portal.Settings"
NOTIFICATION = "org.freedesktop.portal.Notification"


class Portal(dbus.service.Object):
    def __init__(self, bus, options):
        super().__init__(bus, "/org/freedesktop/portal/desktop")
        self.options = options
        self.values = {"color-scheme": options.scheme, "contrast": options.contrast}

    def wrapped(self, key, level):
        value = self.values[key]
        if value.isdigit():
            return dbus.UInt32(int(value), variant_level=level)
        return dbus.String(value, variant_level=level)

    def answer(self, namespace, key, level, reply, error):
        def send():
            if namespace != NAMESPACE or key not in self.values:
                error(dbus.exceptions.DBusException(
                    "no such setting", name="org.freedesktop.portal.Error.NotFound"))
            else:
                reply(self.wrapped(key, level))
                if key == "color-scheme" and self.options.switch is not None:
                    GLib.timeout_add(int(self.options.switch * 1000), self.command, "color-scheme 2")
                    self.options.switch = None
            return False
        GLib.timeout_add(int(self.options.delay * 1000), send)

    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v",
                         async_callbacks=("reply", "error"))
    def Read(self, namespace, key, reply, error):
        # The old method puts the value in one more variant.
        self.answer(namespace, key, 2, reply, error)

    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v",
                         async_callbacks=("reply", "error"))
    def ReadOne(self, namespace, key, reply, error):
        if self.options.old:
            return error(dbus.exceptions.DBusException(
                "no ReadOne here", name="org.freedesktop.DBus.Error.UnknownMethod"))
        self.answer(namespace, key, 1, reply, error)

    @dbus.service.signal(INTERFACE, signature="ssv")
    def SettingChanged(self, namespace, key, value):
        pass

    @dbus.service.method(NOTIFICATION, in_signature="sa{sv}", out_signature="",
                         async_callbacks=("reply", "error"))
    def AddNotification(self, id, notification, reply, error):
        say(call="AddNotification", id=str(id), notification=plain(notification))
        if not self.options.silent:
            reply()

    @dbus.service.signal(NOTIFICATION, signature="ssav")
    def ActionInvoked(self, id, action, parameter):
        pass

    def command(self, line):
        words = line.split()
        if words[0] == "action":
            self.ActionInvoked(words[1], words[2], dbus.Array([], signature="v"))
            return False
        key, value = words
        self.values[key] = value
        self.SettingChanged(NAMESPACE, key, self.wrapped(key, 1))
        return False


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--delay", type=float, default=0)
    parser.add_argument("--old", action="store_true")
    parser.add_argument("--switch", type=float)
    parser.add_argument("--silent", action="store_true")
    parser.add_argument("scheme")
    parser.add_argument("contrast", nargs="?", default="0")
    options = parser.parse_args()
    serve("org.freedesktop.portal.Desktop", lambda bus: Portal(bus, options), Portal.command)


if __name__ == "__main__":
    main()
