#!/usr/bin/env python3
"""What a desktop offers for picking colours: "portal" is a backend, which the real portal sits in front of, "kwin" the
compositor's own picker. The second argument is the answer: "pick", "cancel", "broken" or, for the portal, "wait".
"""

import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

SCREENSHOT = "org.freedesktop.impl.portal.Screenshot"
KWIN = "org.kde.kwin.ColorPicker"
kind, answer = sys.argv[1:3]


class Portal(dbus.service.Object):
    @dbus.service.method(SCREENSHOT, in_signature="ossa{sv}", out_signature="ua{sv}",
                         async_callbacks=("reply", "error"))
    def PickColor(self, _handle, _app, _parent, _options, reply, error):
        color = dbus.Struct((1.0, 0.5, 0.999), signature="ddd")
        if answer == "pick":
            reply(0, dbus.Dictionary({"color": color}, signature="sv"))
        elif answer == "broken":
            reply(0, dbus.Dictionary({"color": "red"}, signature="sv"))
        elif answer == "cancel":
            reply(1, dbus.Dictionary({}, signature="sv"))
        else:
            print("asked", flush=True)

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, _interface, _name):
        return dbus.UInt32(2)

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return dbus.Dictionary({"version": dbus.UInt32(2)}, signature="sv")


class Cancelled(dbus.DBusException):
    _dbus_error_name = KWIN + ".Error.Cancelled"


class Compositor(dbus.service.Object):
    @dbus.service.method(KWIN, out_signature="(u)" if answer != "broken" else "s")
    def pick(self):
        if answer == "cancel":
            raise Cancelled("Color picking got cancelled")
        return "red" if answer == "broken" else (dbus.UInt32(0xff123456),)


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
if kind == "portal":
    name = dbus.service.BusName("org.freedesktop.impl.portal.desktop.test", bus)
    service = Portal(bus, "/org/freedesktop/portal/desktop")
else:
    name = dbus.service.BusName("org.kde.KWin", bus)
    service = Compositor(bus, "/ColorPicker")
print("ready", flush=True)
GLib.MainLoop().run()
