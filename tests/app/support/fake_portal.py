#!/usr/bin/python3
"""Test helper: a stand-in for the XDG desktop portal's Settings interface on
the session bus named by DBUS_SESSION_BUS_ADDRESS.

    fake_portal.py [--delay SECONDS] [--old] [--switch SECONDS] SCHEME [CONTRAST]

answers Read/ReadOne of org.freedesktop.appearance color-scheme (SCHEME) and
contrast (CONTRAST, default 0), each answer SECONDS late. A value that is not
a number is sent as a string, as a broken portal might. --old: no ReadOne, as
portals before version 2 of the interface. --switch: that long after the first
colour-scheme answer, the scheme turns light. Prints "ready" once it owns the
name; then each line "KEY VALUE" on standard input changes a value and emits
SettingChanged. Ends with its input.
"""
import argparse
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAMESPACE = "org.freedesktop.appearance"
INTERFACE = "org.freedesktop.portal.Settings"


class Settings(dbus.service.Object):
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

    def command(self, line):
        key, value = line.split()
        self.values[key] = value
        self.SettingChanged(NAMESPACE, key, self.wrapped(key, 1))
        return False


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--delay", type=float, default=0)
    parser.add_argument("--old", action="store_true")
    parser.add_argument("--switch", type=float)
    parser.add_argument("scheme")
    parser.add_argument("contrast", nargs="?", default="0")
    options = parser.parse_args()

    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    settings = Settings(bus, options)
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus)
    loop = GLib.MainLoop()

    def on_input(channel, condition):
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        if line.strip():
            settings.command(line)
        return True

    GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, on_input)
    print("ready", flush=True)
    loop.run()
    del name


if __name__ == "__main__":
    main()
