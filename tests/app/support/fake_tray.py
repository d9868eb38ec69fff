#!/usr/bin/python3
"""Test helper: a stand-in for a desktop's tray (org.kde.StatusNotifierWatcher
with a host) on the session bus named by DBUS_SESSION_BUS_ADDRESS.

Prints "ready" once it owns the name, "registered SERVICE" when an item
registers, and "launcher COUNT VISIBLE" for each com.canonical.Unity.LauncherEntry
Update signal. Each line on standard input is a command:
  probe    prints the last item's {"title", "tooltip", "status", "sizes", "menu"}
           as one JSON line ("menu": the labels of its menu, "-" for a
           separator, a disabled item's label in brackets)
  activate calls the item's Activate
  owned    prints "owned N": how many of the registrations so far are of an
           item whose name still has an owner on the bus (a removed icon's
           name has none)
Ends with its input.
"""
import json

import dbus
import dbus.service

from fake_bus import serve

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
PROPERTIES = "org.freedesktop.DBus.Properties"


class Watcher(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, "/StatusNotifierWatcher")
        self.bus = bus
        self.items = []

    @dbus.service.method(WATCHER, in_signature="s", out_signature="", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender=None):
        # A service name or an object path on the sender's connection.
        name, path = (service, "/StatusNotifierItem") if not service.startswith("/") else (sender, service)
        self.items.append((name, path))
        print("registered", name, flush=True)
        self.StatusNotifierItemRegistered(name)

    @dbus.service.method(WATCHER, in_signature="s", out_signature="")
    def RegisterStatusNotifierHost(self, service):
        pass

    @dbus.service.signal(WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, service):
        pass

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"RegisteredStatusNotifierItems": dbus.Array([n for n, _ in self.items], signature="s"),
                "IsStatusNotifierHostRegistered": True,
                "ProtocolVersion": dbus.Int32(0)}

    # Qt reads the properties through an interface built from introspection,
    # which dbus-python would give without them.
    @dbus.service.method("org.freedesktop.DBus.Introspectable", in_signature="", out_signature="s")
    def Introspect(self):
        return """<node>
 <interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg name="service" type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
 </interface>
 <interface name="org.freedesktop.DBus.Properties">
  <method name="Get"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <method name="GetAll"><arg type="s" direction="in"/><arg type="a{sv}" direction="out"/></method>
 </interface>
</node>"""

    def item(self):
        name, path = self.items[-1]
        return self.bus.get_object(name, path)

    def probe(self):
        item = self.item()
        props = item.GetAll(ITEM, dbus_interface=PROPERTIES)
        tooltip = props.get("ToolTip")
        menu = []
        if props.get("Menu"):
            layout = self.bus.get_object(self.items[-1][0], props["Menu"]).GetLayout(
                0, -1, dbus.Array([], signature="s"), dbus_interface="com.canonical.dbusmenu")
            for child in layout[1][2]:
                p = child[1]
                if p.get("type") == "separator":
                    menu.append("-")
                elif p.get("visible", True):
                    label = str(p.get("label", "")).replace("&", "")
                    menu.append(label if p.get("enabled", True) else "[%s]" % label)
        print(json.dumps({"title": str(props.get("Title", "")),
                          "tooltip": str(tooltip[2]) + "|" + str(tooltip[3]) if tooltip else "",
                          "status": str(props.get("Status", "")),
                          "sizes": sorted(int(p[0]) for p in props.get("IconPixmap", [])),
                          "menu": menu}), flush=True)

    def owned(self):
        print("owned", sum(1 for name, _ in self.items if self.bus.name_has_owner(name)), flush=True)

    def activate(self):
        self.item().Activate(0, 0, dbus_interface=ITEM)


def main():
    def make(bus):
        bus.add_signal_receiver(
            lambda uri, props: print("launcher", int(props.get("count", -1)),
                                     int(bool(props.get("count-visible", False))), flush=True),
            signal_name="Update", dbus_interface="com.canonical.Unity.LauncherEntry")
        return Watcher(bus)

    def command(watcher, line):
        if line == "probe":
            watcher.probe()
        elif line == "activate":
            watcher.activate()
        elif line == "owned":
            watcher.owned()

    serve(WATCHER, make, command)


if __name__ == "__main__":
    main()
