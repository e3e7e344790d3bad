#!/usr/bin/python3
"""Removes a package by its manager, in a package root of its own.   uninstall_package_test.py BINARY

The system's own dpkg and apt-get work on a copy of the machine's package database, in a mount namespace of the test.
"""
import os
import pathlib
import shutil
import subprocess
import sys

from case import run
from desktop import wait_until
from program import PATIENCE
from uninstalling import UninstallerCase

TOOLS = ["dpkg", "dpkg-deb", "dpkg-query", "apt-get", "pkexec"]
MADE = pathlib.Path("/opt/acme")
ENTRY = MADE / "share/applications/org.acme.Paint.desktop"
PAINT = "acme-paint, Debian package"
# Answers as the file ANSWER says, and writes down what it was asked and what was there then.
PKEXEC = """#!/bin/sh
printf '%s\\n' "$*" >>'{asked}'
test -e '{entry}' && printf 'there\\n' >>'{asked}'
read -r answer <'{answer}'
[ "$answer" = 0 ] || exit "$answer"
shift
exec "$@"
"""


def command(*words):
    return subprocess.run(words, check=True, capture_output=True, text=True, timeout=120).stdout


def enter_namespace():
    """Goes on in mounts of its own, where it may mount; or says why the test cannot be made, and ends."""
    missing = [name for name in TOOLS if not shutil.which(name)]
    unshare = ["unshare", "--mount", "--map-root-user"]
    if missing or subprocess.run([*unshare, "true"], capture_output=True, check=False).returncode != 0:
        print(f"SKIPPED: {'no ' + ', '.join(missing) if missing else 'no mount namespace'} here: NO package was removed")
        sys.exit(0)
    os.environ["IN_NAMESPACE"] = "1"
    os.execvp("unshare", [*unshare, sys.executable, *sys.argv])


class UninstallPackage(UninstallerCase):
    def setUp(self):
        super().setUp()
        # A package service would speak of the machine's packages.
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = f"unix:path={self.home / 'none'}"
        os.environ["PATH"] += ":/usr/sbin:/sbin"
        os.environ["XDG_DATA_DIRS"] = str(MADE / "share")
        self.asked, self.answer = self.home / "asked", self.home / "answer"
        self.mount()
        paint = {ENTRY: "[Desktop Entry]\nType=Application\nName=Acme Paint\nExec=/opt/acme/bin/acme-paint\n",
                 MADE / "bin/acme-paint": "#!/bin/sh\n" + "#" * 400_000}
        self.install("acme-paint", paint)
        self.install("acme-paint-brushes", {MADE / "brushes/round": "round"}, "Depends: acme-paint\n")
        base = {MADE / "share/applications/acme-base.desktop": "[Desktop Entry]\nType=Application\nName=Acme Base\nExec=true\n"}
        self.install("acme-base", base, "Essential: yes\n")
        self.make(".config/acme-paint/settings", ".cache/org.acme.Paint", "Documents/acme-paint/picture")

    def mount(self):
        for folder in ("/opt", "/var/log"):
            command("mount", "-t", "tmpfs", "made", folder)
        command("cp", "-R", "/var/lib/dpkg", "/opt/dpkg")
        command("mount", "--bind", "/opt/dpkg", "/var/lib/dpkg")
        script = self.desktop.folder / "pkexec"
        script.write_text(PKEXEC.format(asked=self.asked, answer=self.answer, entry=ENTRY))
        script.chmod(0o755)
        command("mount", "--bind", script, shutil.which("pkexec"))
        self.addCleanup(command, "umount", shutil.which("pkexec"))

    def install(self, name, files, fields=""):
        tree = self.desktop.folder / name
        control = tree / "DEBIAN/control"
        size = sum(map(len, files.values())) // 1024 + 1
        for path, text in {**files, "/DEBIAN/control": f"Package: {name}\nVersion: 1.0\nArchitecture: all\nInstalled-Size: {size}\n"
                           f"Maintainer: Test <test@example.org>\n{fields}Description: made for a test\n"}.items():
            target = tree / str(path).lstrip("/")
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(text)
        control.chmod(0o644)
        command("dpkg-deb", "--root-owner-group", "--build", tree, f"{tree}.deb")
        command("dpkg", "--install", f"{tree}.deb")

    def state(self, name):
        """Empty for a package that the database has nothing of."""
        return self.desktop.output("dpkg-query", "--show", "--showformat=${db:Status-Status}", name)

    def questions(self):
        return self.asked.read_text().splitlines() if self.asked.exists() else []

    def check_installed(self):
        self.assertEqual([self.state(name) for name in ("acme-paint", "acme-paint-brushes")], ["installed"] * 2)
        self.assertTrue(ENTRY.exists() and (MADE / "brushes/round").exists())

    def answer_with(self, code):
        self.answer.write_text(f"{code}\n")

    def ask_for_package(self):
        """Up to the question about the package, which names all that would go."""
        self.press("Move to Trash")
        self.wait_for_text(PAINT + "\nA package does not go to the Trash.")
        names = wait_until(lambda: [n.get_name() for n in self.program.nodes("list item") if n.get_name().startswith("acme")],
                           PATIENCE, "the question names nothing")
        self.assertEqual(names, ["acme-paint", "acme-paint-brushes"])

    def test_a_package_goes_by_its_manager_alone(self):
        self.start()
        self.program.wait_for_tiles(["Acme Base", "Acme Paint"])
        self.uninstall("Acme Base")
        self.wait_for_text("System apps are protected by ")
        self.press("Move to Trash")
        self.press("Delete Permanently")
        self.press("Cancel")  # that of a question, if one had come
        wait_until(lambda: not self.program.find_now("list", "Found items"), PATIENCE, "the sheet stays")

        # The row stands for the package; none is one of its files.
        self.uninstall("Acme Paint")
        self.assertEqual(self.figure("Items found"), "4")
        rows, _ = self.walk_list(lambda rows, _: len(rows) == 3)
        self.assertEqual(set(rows.values()), {PAINT, "acme-paint", "org.acme.Paint"})
        self.assertTrue(self.is_checked(self.row(PAINT)))
        self.wait_for_text("Application (1 item), 400 KB")  # 391 KiB, as the package says

        # Kept, it stays; what else was chosen goes.
        self.ask_for_package()
        self.press("Keep")
        self.wait_for_text("Removed 2 items · Freed ")
        self.wait_for_text(f"• {PAINT}: Its removal was declined.")
        self.assertEqual(self.questions(), [])
        self.check_installed()
        self.assertEqual(len(self.trashed()), 2)
        self.close_sheet()

        # No authority: nothing goes, and the review stays.
        self.answer_with(126)
        self.uninstall("Acme Paint")
        self.assertEqual(self.figure("Items found"), "1")
        self.ask_for_package()
        self.press("Remove")
        self.wait_for_text(f"{PAINT}: Administrator access was denied or cancelled.")
        self.check_installed()
        self.press("OK")

        self.answer_with(0)
        self.press("Delete Permanently")
        self.press("Permanently Delete")
        self.press("Remove")
        self.wait_for_text("Removed 1 items · Freed ")
        self.assertIsNone(self.program.find_now("push button", "Put Back"))
        self.assertEqual((self.state("acme-paint"), self.state("acme-paint-brushes")), ("", ""))
        self.assertFalse(ENTRY.exists() or (MADE / "bin").exists() or (MADE / "brushes").exists())
        self.assertTrue((self.home / "Documents/acme-paint/picture").exists())
        self.assertEqual(self.state("acme-base"), "installed")
        dpkg = f"--disable-internal-agent {shutil.which('dpkg')} --remove -- "
        asked = self.questions()
        self.assertEqual(len(asked), 4, asked)
        for question, there in (asked[:2], asked[2:]):
            self.assertEqual(there, "there", "a file of the package was gone before its manager was asked")
            self.assertTrue(question.startswith(dpkg), question)
            self.assertEqual(sorted(question[len(dpkg):].split()), ["acme-paint", "acme-paint-brushes"])
        self.close_sheet()
        self.program.wait_for_tiles(["Acme Base"])


if __name__ == "__main__":
    if "IN_NAMESPACE" not in os.environ:
        enter_namespace()
    run(UninstallPackage)
