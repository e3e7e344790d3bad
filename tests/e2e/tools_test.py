#!/usr/bin/python3
"""Notes and snippets, from the toolbar.   tools_test.py BINARY"""
import contextlib
import json
import sqlite3

from case import LauncherCase, run
from desktop import wait_until
from hands import Hands
from program import PATIENCE


class Tools(LauncherCase):
    def setUp(self):
        super().setUp()
        self.hands = Hands(self.desktop, self.program)

    def open(self, name):
        self.program.start()
        self.program.wait_for_line("Showing")
        self.hands.click(self.program.find("push button", name))
        self.program.find("dialog", name)

    def close(self, name):
        self.hands.keys("Escape")
        wait_until(lambda: not self.program.find_now("dialog", name), PATIENCE, "the popover stays")
        wait_until(self.program.search_focused, PATIENCE, "the search field has not got the keyboard back")

    def note(self):
        """What the note on show says."""
        node = self.program.find_now("text", "Note")
        return self.program.atspi.Text.get_text(node, 0, -1).replace("\u2029", "\n") if node else None

    def pasted(self, *target):
        """What another program gets from the clipboard."""
        return self.desktop.output("xclip", "-o", "-selection", "clipboard", *target)

    def stored(self, base):
        path = self.desktop.home / "config" / "quillbay" / "preferences.sqlite"
        with contextlib.closing(sqlite3.connect(path)) as store:
            rows = store.execute("SELECT value FROM preferences WHERE key LIKE ? AND type = 'data'", (base + "_%",)).fetchall()
        self.assertEqual(len(rows), 1)
        return json.loads(rows[0][0])

    def test_what_is_kept_and_copied(self):
        self.a_note_is_there_after_a_kill()
        self.a_snippet_comes_to_another_program()

    def a_note_is_there_after_a_kill(self):
        program, hands = self.program, self.hands
        self.open("Sticky Notes")
        program.find("label", "1 / 2")
        hands.click(program.find("push button", "New Note"))
        program.find("label", "3 / 3")
        field = program.find("text", "Note")
        wait_until(lambda: program.is_focused(field), PATIENCE, "the new note has no focus")
        hands.type("Water the plants")
        hands.keys("Return")
        hands.type("call Ana")
        wait_until(lambda: self.note() == "Water the plants\ncall Ana", PATIENCE, lambda: f"the note says {self.note()!r}")
        hands.click(program.find("radio button", "Pink"))
        wait_until(lambda: self.stored("quillbay_sticky_notes")[2]["colorHex"] == "#FF6482", PATIENCE, "the note is not pink")
        program.end()  # by kill -9

        self.open("Sticky Notes")
        program.find("label", "1 / 3")
        hands.click(program.find("push button", "Next Note"))
        hands.click(program.find("push button", "Next Note"))
        wait_until(lambda: self.note() == "Water the plants\ncall Ana", PATIENCE, lambda: f"the note says {self.note()!r}")
        record = self.stored("quillbay_sticky_notes")[2]
        self.assertEqual(list(record), ["id", "text", "colorHex"])
        self.close("Sticky Notes")

    def a_snippet_comes_to_another_program(self):
        program, hands = self.program, self.hands
        hands.click(program.find("push button", "Code Snippets"))
        program.find("dialog", "Code Snippets")
        hands.click(program.find("push button", "New Snippet"))
        title = program.find("text", "Snippet Title (e.g. Fetch API)")
        wait_until(lambda: program.is_focused(title), PATIENCE, "the title has no focus")
        hands.type("Greet")
        hands.keys("Tab", "Tab")
        code = program.find("text", "Code")
        wait_until(lambda: program.is_focused(code), PATIENCE, "the code has no focus")
        hands.type('say("hi") ')
        hands.keys("Return")
        hands.type("  # <b>twice</b>")
        hands.click(program.find("push button", "Save Snippet"))
        wait_until(lambda: not program.find_now("push button", "Save Snippet"), PATIENCE, "the form stays open")

        search = program.find("text", "Search snippets...")
        wait_until(lambda: program.is_focused(search), PATIENCE, "the search has no focus")
        hands.type("GREE")
        wait_until(lambda: not program.find_now("push button", "Swift Print"), PATIENCE, "the search finds too much")
        hands.click(program.find("push button", "Copy Greet"))
        program.find("alert", "Snippet Copied!")
        wait_until(lambda: not program.find_now("alert", "Snippet Copied!"), PATIENCE, "the message stays")
        self.close("Code Snippets")
        self.assertEqual(self.pasted(), 'say("hi") \n  # <b>twice</b>')
        self.assertNotIn("text/html", self.pasted("-t", "TARGETS"))


if __name__ == "__main__":
    run(Tools)
