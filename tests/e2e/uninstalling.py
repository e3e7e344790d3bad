"""What the uninstaller's tests have in common: a home with the standard folders, and the way to the review and on."""
import hashlib
import os
import stat
import unittest
import urllib.parse

from desktop import Desktop, wait_until
from hands import Hands
from program import PATIENCE, Program


def picture_of(path):
    """What a path has, and everything below it: by name, what must not change."""
    def one(name):
        status = os.lstat(name)
        if stat.S_ISLNK(status.st_mode):
            return "link", os.readlink(name)
        if stat.S_ISDIR(status.st_mode):
            return "folder", stat.S_IMODE(status.st_mode)
        with open(name, "rb") as file:
            return "file", stat.S_IMODE(status.st_mode), status.st_mtime_ns, hashlib.sha256(file.read()).hexdigest()

    top = os.fsencode(path)
    found = {b"": one(top)} if os.path.lexists(top) else {}
    if os.path.isdir(top) and not os.path.islink(top):
        for folder, folders, files in os.walk(top):
            for name in folders + files:
                whole = os.path.join(folder, name)
                found[whole[len(top):]] = one(whole)
    return found


class UninstallerCase(unittest.TestCase):
    binary = ""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        # The folders as they are where nobody says otherwise.
        for name in ("XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"):
            os.environ.pop(name)
        self.home = self.desktop.home
        self.desktop.data = self.home / ".local/share"
        (self.desktop.data / "applications").mkdir(parents=True)
        self.trash = self.desktop.data / "Trash"
        self.program = Program(self.desktop, self.binary)
        self.addCleanup(self.program.end)
        self.hands = Hands(self.desktop, self.program)

    def make(self, *names, content="made"):
        """Files below the home, with the folders that they lie in."""
        for name in names:
            path = self.home / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(f"{content} {name!r}\n" * 40)

    def start(self):
        self.program.start()
        self.program.wait_for_line("Showing")

    # The sheet

    def press(self, name):
        """Presses a button once it stands still: the last of that name, which is in front."""
        places = []

        def still():
            button = next((n for n in reversed(self.program.nodes("push button")) if n.get_name() == name), None)
            places.append(self.hands.place(button) if button else None)
            return button if places[-5:].count(places[-1]) == 5 and places[-1] else None
        self.hands.click(wait_until(still, PATIENCE, f"no {name} to press"))

    def uninstall(self, name):
        """From the application's tile to the review."""
        tile = wait_until(lambda: self.program.tile(name), PATIENCE, f"no tile {name}")
        self.hands.click(tile, button=3, down=0.4)
        self.hands.click(self.program.find("menu item", "Uninstall App…"), across=0.3)
        self.program.find("list", "Found items")
        wait_until(lambda: not self.program.find_now("progress bar", "Scan complete"), PATIENCE, "the scan stays")

    def figure(self, label):
        """One of the figures above the list."""
        start = label + ": "

        def shown():
            return next((n.get_name()[len(start):] for n in self.program.nodes() if n.get_name().startswith(start)), None)
        return wait_until(shown, PATIENCE, f"no figure {label}")

    def wait_for_text(self, text):
        """Anything that bears exactly this text, or begins with it."""
        def shown():
            return next((n.get_name() for n in self.program.nodes() if n.get_name().startswith(text)), None)
        return wait_until(shown, PATIENCE, lambda: f"no {text!r} in {[n.get_name() for n in self.program.nodes()]}")

    def row(self, name):
        return self.program.find("check box", name)

    def is_checked(self, row):
        return row.get_state_set().contains(self.program.atspi.StateType.CHECKED)

    def walk_list(self, enough):
        """Goes down the list by keys; all rows, by path, and the headings, until those are enough."""
        rows, headings = {}, set()
        self.hands.rest_on(self.program.find("list", "Found items"), down=0.95)

        def read():
            for node in self.program.nodes():
                if node.get_role_name() == "check box":
                    rows[node.get_description().rpartition(", ")[0]] = node.get_name()
                elif node.get_role_name() == "heading" and " item" in node.get_name():
                    headings.add(node.get_name().partition(" (")[0])
            self.desktop.xdotool("click", "5")
            return enough(rows, headings)
        wait_until(read, PATIENCE, lambda: f"the list has {rows} under {headings}")
        return rows, headings

    def close_sheet(self, button="Done"):
        self.press(button)
        wait_until(lambda: not self.program.find_now("push button", button), PATIENCE, "the sheet stays")

    # The disk

    def trashed(self):
        """Where each path went that is in the Trash: by its record, the file beside it."""
        found = {}
        for info in sorted((self.trash / "info").glob("*.trashinfo")) if self.trash.exists() else []:
            lines = info.read_text().splitlines()
            if not lines:  # a kill came between the making of the record and its writing, before anything moved
                self.assertFalse((self.trash / "files" / info.name.removesuffix(".trashinfo")).exists(), info)
                continue
            self.assertEqual(lines[0], "[Trash Info]", info)
            fields = dict(line.split("=", 1) for line in lines[1:])
            self.assertIn("DeletionDate", fields, info)
            origin = urllib.parse.unquote_to_bytes(fields["Path"])
            self.assertNotIn(origin, found, "two records of one path")
            found[origin] = self.trash / "files" / info.name.removesuffix(".trashinfo")
        return found
