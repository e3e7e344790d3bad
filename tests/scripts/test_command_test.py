"""scripts/test.sh with stand-ins for its steps: which of them run, and the counts on its last line."""

import unittest

from script_tree import ScriptTest

SUMMARY_GOOD = """printf '1/2 Test #1: a ...   Passed    0.01 sec\\n100%% tests passed, 0 tests failed out of 2\\n'"""
SUMMARY_BAD = """
printf '50%% tests passed, 2 tests failed out of 6\\n\\nThe following tests did not run:\\n'
printf '\\t  3 - third (Skipped)\\n\\t  7 - seventh (Disabled)\\n\\nThe following tests FAILED:\\n'
printf '\\t  1 - first (Failed)\\n\\t  2 - second (SEGFAULT)\\n'
exit 8"""


class TestCommandTest(ScriptTest):
    def setUp(self):
        super().setUp()
        for script in ("setup.sh", "lint.sh", "build.sh"):
            self.fake(script, path=self.root / "scripts" / script)
        self.fake("ctest", SUMMARY_GOOD)

    def run_tests(self):
        result = self.run_script("test.sh")
        lines = result.stdout.splitlines()
        return result.returncode, lines[-1], [line for line in lines if line.startswith("Failed: ")]

    def test_counts_every_step_and_every_run(self):
        # Setup, three kinds of lint, three builds, and two tests in each of three runs.
        self.assertEqual(self.run_tests(), (0, "13 passed, 0 failed", []))
        self.assertEqual(
            [call for call in self.calls() if call.startswith(("setup.sh", "build.sh", "ctest"))],
            ["setup.sh --tests", "build.sh release"]
            + [call for call in self.calls() if call.startswith("ctest --preset release")]
            + ["build.sh asan"]
            + [call for call in self.calls() if call.startswith("ctest --preset asan")]
            + ["build.sh tsan analytics_tests"]
            + [call for call in self.calls() if call.startswith("ctest --preset tsan")],
        )

    def test_names_what_failed_and_counts_what_was_skipped(self):
        self.fake("ctest", f"[[ $2 != asan ]] && {{ {SUMMARY_GOOD}; exit; }}\n{SUMMARY_BAD}")
        code, last, failures = self.run_tests()
        self.assertNotEqual(code, 0)
        self.assertEqual(last, "14 passed, 2 failed, 2 skipped")
        self.assertEqual(failures, ["Failed: tests asan: first", "Failed: tests asan: second"])

    def test_a_run_without_a_result_fails(self):
        for body in ("exit 0", "echo 'No tests were found!!!'", "exit 1"):
            self.fake("ctest", body)
            code, last, failures = self.run_tests()
            self.assertNotEqual(code, 0, body)
            self.assertEqual(last, "7 passed, 3 failed", body)
            self.assertEqual(len(failures), 3, body)

    def test_a_crash_of_ctest_itself_fails(self):
        self.fake("ctest", f"{SUMMARY_GOOD}\nexit 1")
        code, last, _ = self.run_tests()
        self.assertNotEqual(code, 0)
        self.assertEqual(last, "13 passed, 3 failed")

    def test_a_failed_build_runs_no_tests_of_it(self):
        self.fake("build.sh", "[[ $1 != asan ]]", path=self.root / "scripts/build.sh")
        code, last, failures = self.run_tests()
        self.assertNotEqual(code, 0)
        self.assertEqual((last, failures), ("10 passed, 1 failed", ["Failed: build asan"]))
        self.assertFalse([call for call in self.calls() if call.startswith("ctest --preset asan")])

    def test_lint_findings_fail_but_stop_nothing(self):
        self.fake("lint.sh", "echo found; exit 1", path=self.root / "scripts/lint.sh")
        code, last, failures = self.run_tests()
        self.assertNotEqual(code, 0)
        self.assertEqual(last, "10 passed, 3 failed")
        self.assertEqual(failures, [f"Failed: lint {kind}" for kind in ("format", "shell", "qml")])

    def test_without_setup_nothing_else_runs(self):
        self.fake("setup.sh", "exit 1", path=self.root / "scripts/setup.sh")
        code, last, _ = self.run_tests()
        self.assertNotEqual(code, 0)
        self.assertEqual(last, "0 passed, 1 failed")
        self.assertEqual(self.calls(), ["setup.sh --tests"])


if __name__ == "__main__":
    unittest.main()
