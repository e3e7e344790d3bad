"""scripts/setup.sh against stand-ins for the package tools: what it asks them for, and what it says when it cannot."""

import os
import time
import unittest

from script_tree import ScriptTest

DPKG_QUERY = """
for package in "${@:4}"; do
    grep -qx -- "$package" "$ABSENT" || echo "installed $package"
done"""
APT_CACHE = """
for package in "${@:2}"; do
    grep -qx -- "$package" "$UNKNOWN" && continue
    version=1.0
    [[ $package != qt6-base-dev ]] || version=$QT
    printf '%s:\\n  Installed: (none)\\n  Candidate: %s\\n' "$package" "$version"
done"""


class SetupTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.allow("dpkg")
        self.allow("true")
        self.fake("dpkg-query", DPKG_QUERY)
        self.fake("apt-cache", APT_CACHE)
        self.fake("apt-get")
        self.fake("id", "echo ${USER_ID:-0}")
        release = self.root.parent / "os-release"
        release.write_text("ID=debian\n")
        self.environment.update(QUILLBAY_OS_RELEASE=str(release), QT="6.4.2")
        self.set_packages(absent=[], unknown=[])

    def set_packages(self, absent, unknown=()):
        for name, packages in (("ABSENT", absent), ("UNKNOWN", unknown)):
            file = self.root.parent / name
            file.write_text("".join(f"{package}\n" for package in packages))
            self.environment[name] = str(file)

    def add_fonts(self, installed):
        lock = self.root / "package-lock.json"
        lock.write_text("{}")
        if installed:
            hidden = self.root / "node_modules/.package-lock.json"
            hidden.parent.mkdir()
            hidden.write_text("{}")
            os.utime(lock, (time.time() - 60, time.time() - 60))

    def installed_by_apt(self):
        calls = [call for call in self.calls() if call.startswith("apt-get install ")]
        return [call.split("--no-install-recommends ")[1].split() for call in calls]

    def test_touches_nothing_when_all_is_there(self):
        self.fake("npm")
        self.add_fonts(installed=True)
        for arguments in ([], ["--headless"], ["--tests"]):
            result = self.run_script("setup.sh", *arguments)
            self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual({call.split()[0] for call in self.calls()}, {"dpkg-query"})
        self.assertFalse((self.root / "build").exists())

    def test_installs_exactly_what_is_missing(self):
        self.set_packages(absent=["cmake", "fonts-inter", "xvfb", "weston"])
        for arguments, expected in (
            ([], ["cmake", "fonts-inter"]),
            (["--headless"], ["cmake", "fonts-inter", "xvfb"]),
            (["--tests"], ["cmake", "fonts-inter", "weston", "xvfb"]),
        ):
            self.calls_file.unlink(missing_ok=True)
            result = self.run_script("setup.sh", *arguments)
            self.assertEqual(result.returncode, 0, result.stderr)
            self.assertEqual(self.installed_by_apt(), [expected])
            self.assertTrue([call for call in self.calls() if call.startswith("apt-get update ")])

    def test_other_systems_are_told_the_packages(self):
        (self.root.parent / "os-release").write_text("ID=fedora\n")
        result = self.run_script("setup.sh")
        self.assertFailsWith(result, "setup.sh", "only Debian 12", "qt6-declarative-dev", "fonts-inter")
        self.assertEqual(self.run_script("setup.sh", QUILLBAY_SKIP_SETUP="1").returncode, 0)

    def test_relatives_of_debian_are_supported(self):
        for text in ("ID=ubuntu\n", 'ID=mint\nID_LIKE="ubuntu debian"\n'):
            (self.root.parent / "os-release").write_text(text)
            self.assertEqual(self.run_script("setup.sh").returncode, 0, text)

    def test_without_root_and_sudo(self):
        self.set_packages(absent=["cmake"])
        self.assertFailsWith(self.run_script("setup.sh", USER_ID="1000"), "setup.sh", "no sudo", "cmake")
        self.fake("sudo", "exit 1")
        self.assertFailsWith(self.run_script("setup.sh", USER_ID="1000"), "setup.sh", "password", "cmake")
        self.assertEqual(self.installed_by_apt(), [])

    def test_sudo_is_used_only_by_others_than_root(self):
        self.set_packages(absent=["cmake"])
        self.fake("sudo", '[[ $1 == -n ]] || exit 1\nshift\nexec "$@"')
        self.assertEqual(self.run_script("setup.sh").returncode, 0)
        self.assertFalse([call for call in self.calls() if call.startswith("sudo")])
        self.assertEqual(self.run_script("setup.sh", USER_ID="1000").returncode, 0)
        self.assertEqual(self.installed_by_apt(), [["cmake"], ["cmake"]])
        self.assertTrue([call for call in self.calls() if call.startswith("sudo -n ") and " install " in call])

    def test_without_a_network(self):
        # A machine that has never read the archive's lists, and one whose lists are there but whose downloads fail.
        self.fake("apt-get", 'echo "E: Could not resolve a host"; exit 100')
        self.set_packages(absent=["cmake"], unknown=["cmake"])
        self.assertFailsWith(self.run_script("setup.sh"), "setup.sh", "no network", "cmake")
        self.fake("apt-get", 'echo "E: Failed to fetch cmake.deb"; exit 100')
        self.set_packages(absent=["cmake"])
        self.assertFailsWith(self.run_script("setup.sh"), "setup.sh", "no network")

    def test_what_the_archive_lacks(self):
        self.set_packages(absent=["cmake", "fonts-inter"], unknown=["fonts-inter"])
        self.assertFailsWith(self.run_script("setup.sh"), "setup.sh", "does not have: fonts-inter")
        self.set_packages(absent=["qt6-base-dev"])
        self.assertFailsWith(self.run_script("setup.sh", QT="6.2.4+dfsg-2"), "setup.sh", "Qt 6.2.4", "Qt 6.4")
        self.assertEqual(self.installed_by_apt(), [])

    def test_a_failed_installation_is_not_taken_for_a_missing_network(self):
        self.set_packages(absent=["cmake"])
        self.fake("apt-get", '[[ $1 == update ]] || { echo "E: dpkg was interrupted"; exit 100; }')
        result = self.run_script("setup.sh")
        self.assertFailsWith(result, "setup.sh", "could not install", "setup.log")
        self.assertNotIn("network", result.stderr)
        self.assertIn("dpkg was interrupted", (self.root / "build/logs/setup.log").read_text())

    def test_fonts_are_fetched_once(self):
        self.fake("npm", "mkdir -p node_modules && echo '{}' >node_modules/.package-lock.json")
        self.add_fonts(installed=False)
        for _ in range(2):
            self.assertEqual(self.run_script("setup.sh").returncode, 0)
        self.assertEqual(len([call for call in self.calls() if call.startswith("npm ci")]), 1)
        later = time.time() + 60
        os.utime(self.root / "package-lock.json", (later, later))
        self.run_script("setup.sh")
        self.assertEqual(len([call for call in self.calls() if call.startswith("npm ci")]), 2)

    def test_fonts_that_cannot_be_fetched(self):
        self.fake("npm", "echo npm ERR! code ENOTFOUND; exit 1")
        self.add_fonts(installed=False)
        self.assertFailsWith(self.run_script("setup.sh"), "setup.sh", "symbol fonts", "no network")

    def test_npm_is_installed_only_where_it_is_needed(self):
        self.set_packages(absent=["npm"])
        self.add_fonts(installed=True)
        self.assertEqual(self.run_script("setup.sh").returncode, 0)
        self.assertEqual(self.installed_by_apt(), [])
        (self.root / "node_modules/.package-lock.json").unlink()
        # apt brings a working command.
        npm = self.bin / "npm"
        self.fake("apt-get", f'[[ $1 == update ]] || {{ printf "#!%s\\nexit 0\\n" {self.bin}/bash >"{npm}"; chmod +x "{npm}"; }}')
        self.allow("chmod")
        self.assertEqual(self.run_script("setup.sh").returncode, 0)
        self.assertEqual(self.installed_by_apt(), [["npm"]])


if __name__ == "__main__":
    unittest.main()
