"""What the end-to-end tests have in common: a desktop with some applications, and the program on it.

One such test to a process: the accessibility library stays with the first bus that it has seen.
"""
import os
import pathlib
import signal
import sys
import unittest

from desktop import Desktop, wait_until
from program import PATIENCE, Program, is_running

NAMES = ["Alpha Editor", "Beta Viewer", "Fire Alarm", "Gamma Player", "Zeta Fireworks"]


class LauncherCase(unittest.TestCase):
    binary = ""

    def setUp(self):
        self.desktop = Desktop()
        self.addCleanup(self.desktop.close)
        self.marker = self.desktop.home / "started"
        self.desktop.add_program("stand-in", f'echo "$$ $(ps -o sid= -p $$) $*" > {self.marker}.part\n'
                                             f'mv {self.marker}.part {self.marker}\nexec sleep 300\n')
        for name in NAMES:
            self.desktop.add_entry(name.lower().replace(" ", "-"), name, f'stand-in "{name}"')
        self.desktop.add_entry("hidden", "Not To Be Seen", "stand-in", "NoDisplay=true\n")
        (self.desktop.data / "applications" / "broken.desktop").write_bytes(b"[Desktop Entry\n\xff\xfe")
        self.program = Program(self.desktop, self.binary)
        self.addCleanup(self.program.end)

    def launched_pid(self):
        wait_until(self.marker.exists, PATIENCE, "the program was not started")
        pid, session, name = self.marker.read_text().split(maxsplit=2)
        self.addCleanup(lambda: is_running(int(pid)) and os.kill(int(pid), signal.SIGTERM))
        return int(pid), int(session), name.strip()


def run(case):
    """The test program: its first argument is the program under test."""
    case.binary = str(pathlib.Path(sys.argv.pop(1)).resolve())
    unittest.main(module=sys.modules["__main__"], verbosity=2)
