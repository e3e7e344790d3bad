#!/usr/bin/python3
"""What the user has arranged, over the ends of the program.   arrangement_test.py BINARY"""
import contextlib
import json
import sqlite3

from case import NAMES, LauncherCase, run


class Arrangement(LauncherCase):
    def test_what_was_arranged_is_there_after_a_kill(self):
        program, desktop = self.program, self.desktop
        program.start()
        program.wait_for_line("Showing")
        program.end()
        preferences = desktop.home / "config" / "quillbay" / "preferences.sqlite"
        hidden = str(desktop.data / "applications" / "beta-viewer.desktop")
        with contextlib.closing(sqlite3.connect(preferences)) as store, store:
            store.executemany("INSERT INTO preferences VALUES('standard', ?, ?, ?)", [
                ("AllAppsSortOption", "string", "Recently Used"),
                ("quillbay_hidden_apps", "stringArray", json.dumps([hidden]))])

        rest = [name for name in NAMES if name not in ("Beta Viewer", "Gamma Player")]
        program.start()
        self.assertIn(f"Showing {len(rest) + 1} applications", program.wait_for_line("Showing"))
        program.wait_for_tiles(sorted(rest + ["Gamma Player"]))
        program.click(program.find("push button", "Gamma Player"))
        self.launched_pid()
        program.wait_for_tiles(["Gamma Player"] + rest)
        program.end()  # by kill -9
        program.start()
        program.wait_for_line("Showing")
        program.wait_for_tiles(["Gamma Player"] + rest)


if __name__ == "__main__":
    run(Arrangement)
