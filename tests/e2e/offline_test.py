#!/usr/bin/python3
"""A program built without a service to send to speaks to nobody beyond the desktop's own sockets.
offline_test.py BINARY"""
import os
import re
import shlex
import subprocess
import sys

from case import run
from desktop import wait_until
from program import PATIENCE
from recording import RecordingCase


class Offline(RecordingCase):
    def traced(self, log, *command):
        """A program of the test's that runs a command and writes down what it does with sockets."""
        quoted = " ".join(shlex.quote(str(word)) for word in command)
        self.desktop.add_program("traced", f"exec strace -D -f -qq -e signal=none -o {log} "
                                           f"-e trace=socket,connect,sendto,sendmsg,sendmmsg -- {quoted} \"$@\"\n")
        return str(self.desktop.home / "bin" / "traced")

    @staticmethod
    def ways_out(log):
        """The calls that name an address of a network, or make a socket for one."""
        return [line for line in log.read_text(errors="replace").splitlines() if re.search(r"\b(AF|PF)_(INET6?|PACKET)\b", line)]

    def test_without_a_service_nothing_leaves_the_machine(self):
        log = self.desktop.home / "control"
        subprocess.run([self.traced(log, sys.executable, "-c", "import socket; socket.create_connection(('127.0.0.1', 1), 1)")],
                       stderr=subprocess.DEVNULL, timeout=PATIENCE, check=False)
        wait_until(lambda: log.exists() and any("connect" in line for line in self.ways_out(log)), PATIENCE,
                   "what shall be seen is not seen")

        # The sanitizer's search for leaks would need to trace the program itself.
        os.environ["ASAN_OPTIONS"] = "detect_leaks=0"
        self.addCleanup(os.environ.pop, "ASAN_OPTIONS")
        log = self.desktop.home / "calls"
        self.program.binary = self.traced(log, self.binary)
        self.start("quillbay://open?uid=ada")
        self.expect("$identify", "First App Open", "App Opened", "$identify", "Attribution Link Captured")
        self.launch_and_search()
        self.expect("App Launched", "Search Used")
        self.desktop.xdotool("key", "--clearmodifiers", "alt+F4")  # away: what is unsent would go now
        wait_until(lambda: not self.program.is_on_screen(), PATIENCE, "the window is still there")
        self.quit()
        self.assertIn("AF_UNIX", log.read_text(errors="replace"), "the desktop's own sockets were seen")
        self.assertEqual(self.ways_out(log), [])


if __name__ == "__main__":
    run(Offline)
