"""A copy of the project's scripts in a folder of its own, with a PATH on which every other program is a stand-in."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SCRIPTS = pathlib.Path(__file__).resolve().parents[2] / "scripts"
# What the scripts may use as it is: tools that change nothing outside the copy.
PLAIN_TOOLS = (
    "awk bash cat comm cut dirname env grep head ls mkdir mkfifo mktemp nproc printf rm sed sleep sort tail timeout touch"
).split()


class ScriptTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillbay-scripts.")
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve() / "a project"
        self.bin = pathlib.Path(folder.name) / "bin"
        self.calls_file = pathlib.Path(folder.name) / "calls"
        self.bin.mkdir()
        shutil.copytree(SCRIPTS, self.root / "scripts")
        for tool in PLAIN_TOOLS:
            self.allow(tool)
        self.environment = {"PATH": str(self.bin), "HOME": folder.name, "TMPDIR": folder.name}

    def allow(self, tool):
        found = shutil.which(tool)
        self.assertIsNotNone(found, f"{tool} is not installed")
        (self.bin / tool).symlink_to(found)

    def fake(self, name, body="", path=None):
        """Makes `name` a bash script that notes its call in `calls_file` and then does `body`."""
        script = path or self.bin / name
        script.parent.mkdir(parents=True, exist_ok=True)
        script.unlink(missing_ok=True)
        script.write_text(f'#!{shutil.which("bash")}\nprintf "%s\\n" "{name} $*" >>"{self.calls_file}"\n{body}\n')
        script.chmod(0o755)

    def calls(self):
        return self.calls_file.read_text().splitlines() if self.calls_file.exists() else []

    def run_script(self, name, *arguments, seconds=60, **environment):
        """Runs a script of the copy, from another folder, without a terminal."""
        return subprocess.run(
            [self.root / "scripts" / name, *arguments],
            cwd="/",
            env={**self.environment, **environment},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            text=True,
            timeout=seconds,
        )

    def assertFailsWith(self, result, script, *parts):
        """The script failed and said so in one line of its own that has all of `parts`."""
        self.assertNotEqual(result.returncode, 0)
        lines = [line for line in result.stderr.splitlines() if line]
        self.assertEqual(len(lines), 1, result.stderr)
        self.assertTrue(lines[0].startswith(f"{script}: "), lines[0])
        for part in parts:
            self.assertIn(part, lines[0])
