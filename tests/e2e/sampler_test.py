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

    def window_names(self):
        """Names of the windows on the screen."""
        listed = self.desktop.output("xwininfo", "-root", "-tree")
        return re.findall(r'0x[0-9a-f]+ "([^"]*)"', listed)

    def stored(self, key):
        path = self.desktop.home / "config" / "quillbay" / "preferences.sqlite"
        with contextlib.closing(sqlite3.connect(f"file:{path}?mode=ro", uri=True)) as store:
            row = store.execute("SELECT value FROM preferences WHERE key LIKE ?", (key + "%",)).fetchone()
        return row[0] if row else ""

    def loupes(self):
        """The loupe is a window without a name that no window manager manages."""
        listed = self.desktop.output("xwininfo", "-root", "-children")
        return [line for line in re.findall(r"0x[0-9a-f]+ \(has no name\): \(\)\s+(\d+x\d+)\+", listed)
                if line == "139x167"]

    def test_picks_a_known_pixel(self):
        self.desktop.run("display", "-size", "100x100", "-geometry", "+20+700", "xc:#3A7BD5")
        wait_until(lambda: any("3A7BD5" in name for name in self.window_names()), PATIENCE, "no coloured window")
        corner = self.desktop.output("xwininfo", "-name", "ImageMagick: 3A7BD5")
        self.press("Color Picker")
        self.press("Pick Color")
        wait_until(self.loupes, PATIENCE, lambda: "no loupe: " + self.desktop.output("xwininfo", "-root", "-children"))
        place = re.findall(r"Absolute upper-left [XY]:\s+(\d+)", corner)
        x, y = (int(number) + 40 for number in place) if place else (70, 760)
        self.hands.point(x, y)
        self.desktop.xdotool("key", "Right", "Return")
        self.program.find("label", "#3A7BD5")
        self.assertIn("#3A7BD5", self.stored("quillbay_recent_colors"))
        wait_until(lambda: not self.loupes(), PATIENCE, "the loupe stays")

    def test_measures(self):
        self.press("Screen Ruler")
        self.press("Open Screen Ruler")
        self.program.find("label", "Width 400 px")
        wait_until(lambda: "400 × 300 px" in self.stored("quillbay_recent_measurements"), PATIENCE, "not recorded")
        box = self.desktop.output("xwininfo", "-name", "Screen Ruler")
        x, y = (int(number) for number in re.findall(r"Absolute upper-left [XY]:\s+(\d+)", box))
        self.assertIn("ABOVE", self.desktop.output("xprop", "-name", "Screen Ruler", "_NET_WM_STATE"))

        for step in (1, 0):
            self.hands.point(x + 400 - 2 - step, y + 300 - 2 - step)
        self.desktop.xdotool("mousedown", "1")
        for step in range(1, 6):
            self.hands.point(x + 398 + 12 * step, y + 298 + 8 * step)
        self.program.find("label", "Width 460 px")
        self.assertNotIn("460", self.stored("quillbay_recent_measurements"), "it is not over")
        self.desktop.xdotool("mouseup", "1")
        wait_until(lambda: '"460 × 340 px"' in self.stored("quillbay_recent_measurements"), PATIENCE,
                   lambda: self.stored("quillbay_recent_measurements"))

        self.hands.point(x + 60, y + 200)
        self.desktop.xdotool("mousedown", "1")
        for step in range(1, 6):
            self.hands.point(x + 60 + 10 * step, y + 200)

        def moved():
            return re.findall(r"Absolute upper-left X:\s+(\d+)", self.desktop.output("xwininfo", "-name", "Screen Ruler"))
        wait_until(lambda: int(moved()[0]) > x + 20, PATIENCE, "its surface does not move it")
        self.desktop.xdotool("mouseup", "1")
        self.press("Close Ruler")
        wait_until(lambda: "Screen Ruler" not in self.window_names(), PATIENCE, "the ruler stays")
        self.assertEqual(self.stored("quillbay_recent_measurements").count("px"), 2, "a move measures nothing")

    def test_drags_a_code_out(self):
        target = subprocess.Popen((self.drop_target,), stdout=subprocess.PIPE, text=True)
        self.addCleanup(target.wait)
        self.addCleanup(target.terminate)
        self.addCleanup(target.stdout.close)
        wait_until(lambda: "Drop target" in self.window_names(), PATIENCE, "no drop target")
        self.press("QR Generator")
        self.program.find("label", "Enter text above to preview QR")
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
