#!/usr/bin/python3
"""A self-installed program goes to the Trash, comes back, and goes for good.   uninstall_test.py BINARY"""
import os

from case import run
from desktop import wait_until
from program import PATIENCE
from uninstalling import UninstallerCase, picture_of

ENTRY = ".local/share/applications/org.acme.Studio.desktop"
# What is to be found, by the category's heading; folders by their own path.
FOUND = {
    "Application": [ENTRY, "opt/acme-studio"],
    "Preferences": [".config/Acme Studio", ".config/org.acme.Studio.conf"],
    "Application Support": [".local/share/acme-studio", ".local/share/Bob's \"Acme Studio\" $(touch evil)\n;&%41",
                            ".local/share/acme studio \udcff"],
    "Caches": [".cache/acme-studio", ".cache/org.acme.Studio"],
    "Logs": [".local/state/org.acme.Studio.log", ".local/state/org.acme.Studio"],
    "Containers": [".var/app/org.acme.Studio", "snap/acme-studio"],
    "Launch Agents & Daemons": [".config/autostart/org.acme.Studio.desktop", ".config/systemd/user/org.acme.Studio.service"],
    "Saved State": [".local/state/org.acme.Studio"],
    "Extensions": [".local/share/gnome-shell/extensions/panel@org.acme.Studio"],
}
# A plain file, or link, among the caches and the logs is found by both looks.
TWICE = [".cache/org.acme.Studio", ".local/state/org.acme.Studio.log"]
FILES = ["opt/acme-studio/lib/engine.so", ".config/Acme Studio/settings.json", ".config/org.acme.Studio.conf",
         ".local/share/acme-studio/projects/one.db", ".local/share/Bob's \"Acme Studio\" $(touch evil)\n;&%41",
         ".local/share/acme studio \udcff/a", ".cache/acme-studio/pictures/1", ".local/state/org.acme.Studio.log",
         ".local/state/org.acme.Studio/session", ".var/app/org.acme.Studio/data/x", "snap/acme-studio/1/y",
         ".config/autostart/org.acme.Studio.desktop", ".config/systemd/user/org.acme.Studio.service",
         ".local/share/gnome-shell/extensions/panel@org.acme.Studio/extension.js"]
OTHERS = ["opt/acme-tools/tool", ".config/studious/settings", ".local/share/acme/letters", "Documents/kept/letter",
          ".cache/other/x", ".local/state/other.log", ".config/autostart/other.desktop"]


class Uninstall(UninstallerCase):
    def setUp(self):
        super().setUp()
        self.make(*FILES, *OTHERS)
        program = self.home / "opt/acme-studio/bin/acme-studio"
        program.parent.mkdir()
        program.write_text("#!/bin/sh\n")
        program.chmod(0o755)
        # What only leads into what goes, or out of it, is no part of it.
        (self.home / ".cache/org.acme.Studio").symlink_to(self.home / "Documents/kept")
        (self.home / ".local/share/acme-studio/kept").symlink_to(self.home / "Documents/kept")
        os.link(self.home / ".local/share/acme-studio/projects/one.db", self.home / "Documents/one.db")
        self.add_entry()
        self.desktop.add_entry("other", "Other Tool", "true")
        self.paths = sorted({self.home / name for names in FOUND.values() for name in names})
        self.program_files = {path: picture_of(path) for path in self.paths}
        self.others = {self.home / name: picture_of(self.home / name) for name in
                       [*OTHERS, "Documents", ".local/share/applications/other.desktop"]}

    def add_entry(self):
        self.desktop.add_entry("org.acme.Studio", "Acme Studio", str(self.home / "opt/acme-studio/bin/acme-studio"))

    def check_others(self):
        for path, picture in self.others.items():
            self.assertEqual(picture_of(path), picture, path)
        self.assertEqual([path for path in self.home.rglob("evil") if path.name == "evil"], [])

    def check_review(self):
        items = sum(map(len, FOUND.values())) + len(TWICE)
        self.assertEqual((self.figure("Items found"), self.figure("Selected")), (str(items), str(items)))
        rows, headings = self.walk_list(lambda rows, headings: len(rows) >= len(self.paths) and len(headings) >= len(FOUND))
        self.assertEqual(headings, set(FOUND))
        shown = {"~/" + os.fsencode(path.relative_to(self.home)).decode(errors="replace") for path in self.paths}
        self.assertEqual(set(rows), shown)
        self.assertEqual(rows["~/" + ENTRY], "Acme Studio.app")

    def test_goes_to_the_trash_comes_back_and_goes_for_good(self):
        self.start()
        self.uninstall("Acme Studio")
        self.check_review()
        self.press("Move to Trash")
        self.wait_for_text(f"Removed {len(self.paths)} items · Freed ")
        self.assertEqual([path for path in self.paths if os.path.lexists(path)], [])
        trashed = self.trashed()
        self.assertEqual(set(trashed), {os.fsencode(path) for path in self.paths})
        for path in self.paths:
            self.assertEqual(picture_of(trashed[os.fsencode(path)]), self.program_files[path], path)
        self.check_others()
        self.program.wait_for_tiles(["Other Tool"])

        self.press("Put Back")
        self.wait_for_text(f"{len(self.paths)} items were put back.")
        for path in self.paths:
            self.assertEqual(picture_of(path), self.program_files[path], path)
        self.assertEqual([*(self.trash / "files").iterdir(), *(self.trash / "info").iterdir()], [])
        self.check_others()
        self.close_sheet()
        self.program.wait_for_tiles(["Acme Studio", "Other Tool"])

        # One row is left out by hand; the question is refused once.
        self.uninstall("Acme Studio")
        self.hands.click(self.row("Acme Studio.app"))
        self.press("Delete Permanently")
        self.wait_for_text("This will permanently delete ")
        self.press("Cancel")
        wait_until(lambda: not self.program.find_now("push button", "Permanently Delete"), PATIENCE, "the question stays")
        self.assertEqual(picture_of(self.paths[0]), self.program_files[self.paths[0]])
        self.press("Delete Permanently")
        self.press("Permanently Delete")
        self.wait_for_text(f"Removed {len(self.paths) - 1} items · Freed ")
        self.assertEqual([path for path in self.paths if os.path.lexists(path)], [self.home / ENTRY])
        self.assertEqual(self.trashed(), {})
        self.check_others()
        self.assertIsNone(self.program.find_now("push button", "Put Back"))
        self.close_sheet()

        # What a new scan finds is what is there.
        self.make(".config/acme-studio/new")
        self.uninstall("Acme Studio")
        self.assertEqual(self.figure("Items found"), "2")
        self.walk_list(lambda rows, headings: rows == {"~/" + ENTRY: "Acme Studio.app", "~/.config/acme-studio": "acme-studio"})


if __name__ == "__main__":
    run(Uninstall)
