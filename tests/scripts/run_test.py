"""scripts/run.sh with a stand-in for the program: with a display, without one, and when the program fails."""

import os
import pathlib
import shutil
import unittest

from script_tree import ScriptTest

# Shows a grid and takes the call for a picture, as the program does.
PROGRAM = """#!/usr/bin/python3
import os, sys
import gi
from gi.repository import Gio, GLib

XML = '''<node><interface name="org.freedesktop.Application"><method name="ActivateAction">
<arg type="s" direction="in"/><arg type="av" direction="in"/><arg type="a{sv}" direction="in"/>
</method></interface></node>'''

def say(line):
    print(line, flush=True)

def called(connection, sender, path, interface, method, parameters, invocation):
    action, arguments, _ = parameters.unpack()
    invocation.return_value(None)
    if os.environ.get("REFUSE"):
        say("⚠️ Failed to save %s: no space" % arguments[0])
    elif action == "save-picture":
        open(arguments[0], "w").write("picture")
        say("🖼️ Saved %s" % arguments[0])

def named(connection, name):
    say("other words")
    say("🗂️ Showing 42 applications")

def acquired(connection, name):
    node = Gio.DBusNodeInfo.new_for_xml(XML)
    connection.register_object("/org/quillbay/Quillbay", node.interfaces[0], called, None, None)

names = ("DISPLAY", "HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME")
open(os.environ["SEEN"], "w").write("".join("%s=%s\\\\n" % (name, os.environ.get(name)) for name in names))
Gio.bus_own_name(Gio.BusType.SESSION, "org.quillbay.Quillbay", 0, acquired, named, None)
GLib.MainLoop().run()
""".replace("\\\\n", "\\n")


def processes_below(folder):
    """The ids of living programs that were started with `folder` as their folder for temporary files."""
    found = []
    for environ in pathlib.Path("/proc").glob("[0-9]*/environ"):
        try:
            if f"TMPDIR={folder}\0".encode() in environ.read_bytes():
                found.append(environ.parent.name)
        except OSError:
            pass
    return found


class RunTest(ScriptTest):
    def setUp(self):
        super().setUp()
        for tool in ("Xvfb", "dbus-daemon", "gdbus"):
            self.allow(tool)
        for script in ("setup.sh", "build.sh"):
            self.fake(script, path=self.root / "scripts" / script)
        self.picture = self.root / "build/quillbay.png"
        self.environment.update(
            QUILLBAY_START_TIMEOUT="30", SEEN=str(self.root.parent / "seen"), XDG_DATA_HOME="/the/real/data"
        )

    def set_program(self, text):
        program = self.root / "build/release/bin/quillbay"
        program.parent.mkdir(parents=True)
        program.write_text(text)
        program.chmod(0o755)

    def assertNothingLeft(self):
        self.assertEqual(processes_below(self.environment["TMPDIR"]), [])
        self.assertEqual(list(self.root.parent.glob("quillbay-run.*")), [])

    def test_without_a_display_saves_a_picture(self):
        self.set_program(PROGRAM)
        for _ in range(2):
            result = self.run_script("run.sh")
            self.assertEqual(result.returncode, 0, result.stderr)
            first, last = result.stdout.splitlines()
            self.assertIn("No display", first)
            self.assertEqual(last, f"Picture: {self.picture} (42 applications found)")
            self.assertEqual(self.picture.read_text(), "picture")
            self.assertNothingLeft()
        self.assertIn("setup.sh --headless", self.calls())
        self.assertIn("build.sh release quillbay", self.calls())

        seen = dict(line.split("=", 1) for line in pathlib.Path(self.environment["SEEN"]).read_text().splitlines())
        self.assertEqual(seen["HOME"], self.environment["HOME"])
        self.assertEqual(seen["XDG_DATA_HOME"], "/the/real/data")
        self.assertRegex(seen["DISPLAY"], r"^:\d+$")
        for name in ("CONFIG_HOME", "STATE_HOME", "CACHE_HOME", "RUNTIME_DIR"):
            self.assertIn("/quillbay-run.", seen[f"XDG_{name}"])

    def test_failures_without_a_display_are_one_line_and_leave_nothing(self):
        bash = shutil.which("bash")
        for program, environment, part in (
            (f"#!{bash}\nexit 3\n", {}, "ended before its grid stood"),
            (f"#!{bash}\nexec sleep 300\n", {"QUILLBAY_START_TIMEOUT": "3"}, "longer than 3 seconds"),
            (f"#!{bash}\necho '🗂️ Showing 3 applications'\nexec sleep 300\n", {}, "did not take the call"),
            (PROGRAM, {"REFUSE": "1"}, "no space"),
        ):
            with self.subTest(part):
                shutil.rmtree(self.root / "build", ignore_errors=True)
                self.set_program(program)
                self.assertFailsWith(self.run_script("run.sh", **environment), "run.sh", part)
                self.assertFalse(self.picture.exists() and self.picture.stat().st_size)
                self.assertNothingLeft()

    def test_a_display_that_cannot_be_started(self):
        self.set_program(PROGRAM)
        self.fake("Xvfb", "exit 1")
        self.assertFailsWith(self.run_script("run.sh"), "run.sh", "private display", "ended")
        self.assertNothingLeft()

    def test_with_a_display_becomes_the_program(self):
        self.set_program(f'#!{shutil.which("bash")}\necho "at $DISPLAY$WAYLAND_DISPLAY with $*"\nexit 7\n')
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            result = self.run_script("run.sh", "quillbay://a b", **{name: "some-display"})
            self.assertEqual((result.returncode, result.stdout), (7, "at some-display with quillbay://a b\n"))
        self.assertFalse(self.picture.exists())

    def test_a_failed_build_starts_nothing(self):
        self.set_program(PROGRAM)
        self.fake("build.sh", "exit 1", path=self.root / "scripts/build.sh")
        for display in ("", "some-display"):
            self.assertNotEqual(self.run_script("run.sh", DISPLAY=display).returncode, 0)
        self.assertFalse(os.path.exists(self.environment["SEEN"]))


if __name__ == "__main__":
    unittest.main()
