#!/usr/bin/python3
"""A fingerprint service on the test's bus, with one reader whose user is the test.   fingerprint_reader.py SCRIPT"""
import json
import pathlib
import subprocess
import sys

SERVICE = "net.reactivated.Fprint"
READER = "/net/reactivated/Fprint/Device/0"


class FingerprintReader:
    """The service in a process of its own, which ends with the desktop."""

    def __init__(self, desktop):
        self.script = desktop.folder / "fingerprint-reader.json"
        self.play()
        process = desktop.run("/usr/bin/python3", __file__, str(self.script), stdout=subprocess.PIPE, text=True)
        assert process.stdout.readline(), "the fingerprint service did not start"

    def play(self, present=True, fingers=("right-index-finger",), result=None):
        """From the next call on. Without a result a verification waits for its end."""
        part = self.script.with_suffix(".part")
        part.write_text(json.dumps({"present": present, "fingers": fingers, "result": result}))
        part.rename(self.script)


def serve(script):
    import dbus
    import dbus.mainloop.glib
    import dbus.service
    from gi.repository import GLib

    def error(name):
        return dbus.DBusException(name, name=f"{SERVICE}.Error.{name}")

    def now(key):
        return json.loads(script.read_text())[key]

    class Manager(dbus.service.Object):
        @dbus.service.method(SERVICE + ".Manager", out_signature="o")
        def GetDefaultDevice(self):
            if not now("present"):
                raise error("NoSuchDevice")
            return READER

    class Device(dbus.service.Object):
        @dbus.service.method(SERVICE + ".Device", in_signature="s", out_signature="as")
        def ListEnrolledFingers(self, user):
            if not now("fingers"):
                raise error("NoEnrolledPrints")
            return now("fingers")

        @dbus.service.method(SERVICE + ".Device", in_signature="s")
        def Claim(self, user):
            pass

        @dbus.service.method(SERVICE + ".Device", in_signature="s")
        def VerifyStart(self, finger):
            if now("result"):
                GLib.idle_add(self.VerifyStatus, now("result"), True)

        @dbus.service.method(SERVICE + ".Device")
        def VerifyStop(self):
            pass

        @dbus.service.method(SERVICE + ".Device")
        def Release(self):
            pass

        @dbus.service.signal(SERVICE + ".Device", signature="sb")
        def VerifyStatus(self, result, done):
            pass

    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    name = dbus.service.BusName(SERVICE, dbus.SystemBus())
    objects = Manager(name, "/net/reactivated/Fprint/Manager"), Device(name, READER)
    print("ready", len(objects), flush=True)
    GLib.MainLoop().run()


if __name__ == "__main__":
    serve(pathlib.Path(sys.argv[1]))
