"""What the end-to-end tests of the recording of use have in common: the program's event database, read."""
import contextlib
import json
import sqlite3
import subprocess

from case import LauncherCase, NAMES
from desktop import wait_until
from program import PATIENCE

TOKEN = "7c1e9a40d2b86f35e0a4c71b93de6f08"


class RecordingCase(LauncherCase):
    def rows(self):
        path = self.desktop.home / "cache" / "quillbay" / f"{TOKEN}_MPDB.sqlite"
        if not path.exists():
            return []
        with contextlib.closing(sqlite3.connect(path, timeout=PATIENCE)) as store:
            try:
                found = store.execute(f"SELECT data FROM marlpost_{TOKEN}_events ORDER BY id").fetchall()
            except sqlite3.OperationalError as error:
                if "no such table" in str(error):
                    return []
                raise
        return [json.loads(data) for (data,) in found]

    def expect(self, *events):
        """Waits until so many more events than seen before are stored, and tells their properties."""
        wait_until(lambda: len(self.rows()) >= self.seen + len(events), PATIENCE,
                   lambda: f"stored are {[row['event'] for row in self.rows()]}")
        rows = self.rows()[self.seen:]
        self.assertEqual([row["event"] for row in rows], list(events))
        self.seen += len(rows)
        return [row["properties"] for row in rows]

    def setUp(self):
        super().setUp()
        self.seen = 0

    def stored_preference(self, key):
        with contextlib.closing(sqlite3.connect(self.desktop.home / "config" / "quillbay" / "preferences.sqlite")) as store:
            return store.execute("SELECT value FROM preferences WHERE domain = 'standard' AND key = ?", (key,)).fetchone()[0]

    def open_url(self, url):
        done = subprocess.run([self.binary, url], stdin=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        self.assertEqual(done.returncode, 0)
        self.program.wait_for_line(f"Handling incoming URL: {url}")

    def start(self, *arguments):
        self.program.start(*arguments)
        self.program.wait_for_line("Showing")

    def quit(self):
        self.desktop.output("gdbus", "call", "--session", "--dest", "org.quillbay.Quillbay", "--object-path",
                            "/org/quillbay/Quillbay", "--method", "org.freedesktop.Application.ActivateAction", "quit",
                            "[]", "{}")
        self.assertEqual(self.program.process.wait(PATIENCE), 0, "\n".join(self.program.lines))

    def launch_and_search(self):
        self.program.wait_for_tiles(NAMES)
        self.program.click(self.program.tile("Beta Viewer"))
        self.launched_pid()
        wait_until(self.program.search_focused, PATIENCE, "the search field does not have the keyboard")
        self.desktop.xdotool("type", "--delay", "20", "fire")
        self.program.wait_for_line("Search Used")
