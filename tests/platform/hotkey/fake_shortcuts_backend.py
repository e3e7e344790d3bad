#!/usr/bin/env python3
"""A portal backend for global shortcuts that a test steers; the real portal frontend sits in front of it.

With the argument "refuse" the user is taken to cancel the binding, with "none" to agree to no key.
"""

import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

SHORTCUTS = "org.freedesktop.impl.portal.GlobalShortcuts"
SESSION = "org.freedesktop.impl.portal.Session"
CONTROL = "org.quillbay.Test"
behaviour = sys.argv[1] if len(sys.argv) > 1 else ""


def table(**values):
    return dbus.Dictionary(values, signature="sv")


class Session(dbus.service.Object):
    @dbus.service.method(SESSION)
    def Close(self):
        backend.closed_by_client += 1

    @dbus.service.signal(SESSION)
    def Closed(self):
        pass

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return table(version=dbus.UInt32(1))


class Backend(dbus.service.Object):
    session = None
    closed_by_client = 0
    triggers = []

    @dbus.service.method(SHORTCUTS, in_signature="oosa{sv}", out_signature="ua{sv}")
    def CreateSession(self, _handle, session, _app, _options):
        self.session = Session(bus, session)
        return 0, table()

    @dbus.service.method(SHORTCUTS, in_signature="ooa(sa{sv})sa{sv}", out_signature="ua{sv}")
    def BindShortcuts(self, _handle, _session, shortcuts, _parent, _options):
        if behaviour == "refuse":
            return 1, table()
        self.triggers = [f"{name}={properties['preferred_trigger']}" for name, properties in shortcuts]
        bound = [] if behaviour == "none" else [
            (name, table(description=properties["description"], trigger_description="Press Ctrl+Alt+N"))
            for name, properties in shortcuts
        ]
        return 0, table(shortcuts=dbus.Array(bound, signature="(sa{sv})"))

    @dbus.service.signal(SHORTCUTS, signature="osta{sv}")
    def Activated(self, session, name, time, options):
        pass

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return table(version=dbus.UInt32(1))

    @dbus.service.method(CONTROL, in_signature="ss")
    def Activate(self, name, token):
        self.Activated(self.session.__dbus_object_path__, name, dbus.UInt64(1), table(activation_token=token))

    @dbus.service.method(CONTROL)
    def CloseSession(self):
        self.session.Closed()

    @dbus.service.method(CONTROL, out_signature="as")
    def Triggers(self):
        return self.triggers

    @dbus.service.method(CONTROL, out_signature="i")
    def ClosedByClient(self):
        return self.closed_by_client


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
name = dbus.service.BusName("org.freedesktop.impl.portal.desktop.test", bus)
backend = Backend(bus, "/org/freedesktop/portal/desktop")
print("ready", flush=True)
GLib.MainLoop().run()
