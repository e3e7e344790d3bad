#!/usr/bin/python3
"""The colour picker, the ruler and the QR code in the real program.   sampler_test.py BINARY DROP_TARGET"""
import contextlib
import os
import pathlib
import re
import sqlite3
import subprocess
import sys

from case import LauncherCase, run
from desktop import wait_until
from hands import Hands
from program import PATIENCE

SECRET = "https://example.org/kites?color=blue"


class Sampler(LauncherCase):
    drop_target = ""

    def setUp(self):
        super().setUp()
        os.environ["TMPDIR"] = str(self.desktop.folder)
        self.addCleanup(os.environ.pop, "TMPDIR")
        self.hands = Hands(self.desktop, self.program)
        self.program.start()
        self.program.wait_for_line("Showing")

    def press(self, name, role="push button"):
        self.hands.click(self.program.find(role, name))

    def windows(self, name):
        return self.desktop.output("xdotool", "search", "--onlyvisible", "--name", name).split()

    def corner(self, name):
        """Where the inside of that window begins, once it is there."""
        window = wait_until(lambda: self.windows(name), PATIENCE, f"no window {name}")[-1]
        told = self.desktop.output("xwininfo", "-id", window)
        return (int(number) for number in re.findall(r"Absolute upper-left [XY]:\s+(-?\d+)", told))

    def stored(self, key):
        path = self.desktop.home / "config" / "quillbay" / "preferences.sqlite"
        with contextlib.closing(sqlite3.connect(f"file:{path}?mode=ro", uri=True)) as store:
            row = store.execute("SELECT value FROM preferences WHERE key LIKE ?", (key + "%",)).fetchone()
        return row[0] if row else ""

    def loupe_shows(self):
        """It is a window without a name that no window manager manages."""
        return "139x167" in self.desktop.output("xwininfo", "-root", "-children")

    def test_the_tools_that_look_at_the_screen(self):
        for part in (self.pick_a_known_pixel, self.measure, self.drag_a_code_out):
            with self.subTest(part.__name__):
                part()
            self.hands.keys("Escape")

    def pick_a_known_pixel(self):
        self.desktop.run("display", "-title", "Swatch", "-size", "100x100", "-geometry", "+20+700", "xc:#3A7BD5")
        x, y = self.corner("Swatch")
        self.press("Color Picker")
        self.press("Pick Color")
        wait_until(self.loupe_shows, PATIENCE, "no loupe")
        self.hands.point(x + 40, y + 40)
        self.desktop.xdotool("key", "Right", "Return")
        self.program.find("label", "#3A7BD5")
        self.assertIn("#3A7BD5", self.stored("quillbay_recent_colors"))
        wait_until(lambda: not self.loupe_shows(), PATIENCE, "the loupe stays")

    def measure(self):
        self.press("Screen Ruler")
        self.press("Open Screen Ruler")
        self.program.find("label", "Width 400 px")
        wait_until(lambda: "400 × 300 px" in self.stored("quillbay_recent_measurements"), PATIENCE, "not recorded")
        window = wait_until(lambda: self.windows("Screen Ruler"), PATIENCE, "no ruler")[-1]
        wait_until(lambda: "ABOVE" in self.desktop.output("xprop", "-id", window, "_NET_WM_STATE")
                   and "not found" not in self.desktop.output("xprop", "-id", window, "_NET_FRAME_EXTENTS"),
                   PATIENCE, "it is not kept above the others")
        # It has its place now.
        x, y = self.corner("Screen Ruler")

        for step in (1, 0):
            self.hands.point(x + 400 - 2 - step, y + 300 - 2 - step)
        self.desktop.xdotool("mousedown", "1")
        for step in range(1, 6):
            self.hands.point(x + 398 + 12 * step, y + 298 + 8 * step)

        def is_there():
            # A window manager that waits for the window takes what it missed from the next movement.
            for off in (1, 0):
                self.hands.point(x + 458 + off, y + 338)
            return self.program.find_now("label", "Width 460 px")

        wait_until(is_there, PATIENCE, "it does not get wider")
        self.assertNotIn("460", self.stored("quillbay_recent_measurements"), "it is not over")
        self.desktop.xdotool("mouseup", "1")
        wait_until(lambda: '"460 × 340 px"' in self.stored("quillbay_recent_measurements"), PATIENCE,
                   lambda: self.stored("quillbay_recent_measurements"))

        self.hands.point(x + 25, y + 200)
        self.desktop.xdotool("mousedown", "1")
        for step in range(1, 6):
            self.hands.point(x + 25 + 10 * step, y + 200)
        wait_until(lambda: next(self.corner("Screen Ruler")) > x + 20, PATIENCE, "its surface does not move it")
        self.desktop.xdotool("mouseup", "1")

        self.press("Screen Ruler")
        wait_until(lambda: not self.program.find_now("dialog", "Measure Ruler"), PATIENCE, "the popover stays")
        again = subprocess.run((self.program.binary,), stdin=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        self.assertEqual(again.returncode, 0)
        self.program.find("dialog", "Measure Ruler")
        # The popover's wide button of that name lies behind the ruler.
        buttons = [node for node in self.program.nodes("push button") if node.get_name() == "Close Ruler"]
        self.hands.click(min(buttons, key=lambda node: node.get_extents(self.program.atspi.CoordType.SCREEN).width))
        wait_until(lambda: not self.windows("Screen Ruler"), PATIENCE, "the ruler stays")
        self.assertEqual(self.stored("quillbay_recent_measurements").count("px"), 2, "a move measures nothing")

    def drag_a_code_out(self):
        target = subprocess.Popen((self.drop_target,), stdout=subprocess.PIPE, text=True)
        self.addCleanup(target.wait)
        self.addCleanup(target.terminate)
        self.addCleanup(target.stdout.close)
        wait_until(lambda: self.windows("Drop target"), PATIENCE, "no drop target")
        self.press("QR Generator")
        self.program.find("label", "Enter text above to preview QR")
        # The drop target had the keyboard.
        wait_until(lambda: self.desktop.output("xdotool", "getactivewindow", "getwindowname").strip() == "Quillbay",
                   PATIENCE, "the window is not active")
        self.press("Type URL or text...", "text")
        wait_until(lambda: self.program.is_focused(self.program.find("text", "Type URL or text...")), PATIENCE, "no focus")
        self.hands.type(SECRET)
        self.hands.pick_up(self.program.find("image", "QR Code"))
        for step in (0, 1, 2, 3):
            self.hands.point(100 + step, 690 + step)
        self.hands.drop()
        file = target.stdout.readline().removeprefix("dropped ").strip()
        self.assertEqual(file, str(self.desktop.folder / "quillbay_qrcode.png"))
        self.assertEqual(self.desktop.output("zbarimg", "--quiet", "--raw", file).strip(), SECRET)


if __name__ == "__main__":
    Sampler.drop_target = str(pathlib.Path(sys.argv.pop(2)).resolve())
    run(Sampler)
