#!/usr/bin/python3
"""The program is killed while it removes: nothing is left unclear.   uninstall_killed_test.py BINARY"""
import json
import os
import urllib.parse

from case import run
from desktop import wait_until
from program import PATIENCE
from uninstalling import UninstallerCase, picture_of

COUNT = 6000


class KilledUninstall(UninstallerCase):
    def setUp(self):
        super().setUp()
        self.config = self.home / ".config"
        self.make("Documents/letter", ".config/other")
        self.desktop.add_program("stand-in", "exec true\n")
        self.desktop.add_entry("wide", "Wide Spread", str(self.home / "bin/stand-in"))
        for i in range(COUNT):
            (self.config / f"wide spread {i}").write_text(str(i))
        self.others = [self.home / "Documents", self.config / "other", self.home / "bin"]
        self.pictures = [picture_of(path) for path in self.others]

    def left(self):
        return {name for name in os.listdir(self.config) if name.startswith("wide spread ")}

    def kill_amid(self, *buttons):
        """Removes, and kills once a part is gone."""
        self.start()
        self.uninstall("Wide Spread")
        before = self.left()
        # The entry and the program would go first; they are wanted again.
        self.hands.click(self.row("Wide Spread.app"))
        self.hands.click(self.row("stand-in"))
        wait_until(lambda: self.figure("Selected") == str(len(before)), PATIENCE, "the rows stay selected")
        for button in buttons:
            self.press(button)
        wait_until(lambda: len(self.left()) < len(before) - 20, PATIENCE, "nothing goes")
        self.program.end()
        after = self.left()
        self.assertTrue(after, "it was killed too late: all was gone")
        for name in after:
            self.assertEqual((self.config / name).read_text(), name.rpartition(" ")[2])
        self.assertEqual([picture_of(path) for path in self.others], self.pictures)
        return before - after

    def recorded(self):
        """Names that the receipts tell of."""
        names = []
        for file in (self.home / ".local/state/quillbay/removals").glob("*.jsonl"):
            for line in file.read_text().splitlines():
                names.append(os.path.basename(urllib.parse.unquote(json.loads(line)["from"])))
        return names

    def check_scan(self):
        self.start()
        self.uninstall("Wide Spread")
        self.assertEqual(self.figure("Items found"), str(len(self.left()) + 2))
        self.program.end()

    def test_what_was_removed_is_removed_and_the_rest_untouched(self):
        gone = self.kill_amid("Move to Trash")
        trashed = self.trashed()
        for name in gone:
            self.assertEqual(trashed[os.fsencode(self.config / name)].read_text(), name.rpartition(" ")[2])
        # At most the one at hand has a record without having gone, or has gone without a receipt.
        self.assertLessEqual(len(trashed) - len(gone), 1)
        self.assertEqual(len(list((self.trash / "files").iterdir())), len(gone))
        names = self.recorded()
        self.assertEqual(len(set(names)), len(names))
        self.assertLessEqual(set(names), gone)
        self.assertLessEqual(len(gone) - len(names), 1)
        self.check_scan()

        gone_for_good = self.kill_amid("Delete Permanently", "Permanently Delete")
        self.assertEqual(set(self.trashed()), set(trashed), "what is deleted for good does not go to the Trash")
        self.assertLessEqual(len(gone | gone_for_good) - len(self.recorded()), 2)
        self.check_scan()


if __name__ == "__main__":
    run(KilledUninstall)
