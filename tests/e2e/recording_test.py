#!/usr/bin/python3
"""What the real program records of its use: exactly that, in that order.   recording_test.py BINARY"""
import contextlib
import json

from case import run
from recording import RecordingCase

NO_LINKS = ["quillbay://open?name=x", "quillbay://open", "quillbay://open?uid="]


class Recording(RecordingCase):
    def test_exactly_what_happened_is_recorded(self):
        program = self.program
        self.start()
        opened = self.expect("$identify", "First App Open", "App Opened")
        own = self.stored_preference("mp_distinct_id")
        self.assertRegex(own, "^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$")
        machine = opened[0]["$device_id"]
        self.assertEqual(opened[0]["$anon_distinct_id"], f"$device:{machine}")
        self.assertEqual({event["distinct_id"] for event in opened}, {own})
        self.assertEqual({event["$os"] + event["mp_lib"] for event in opened}, {"macOSswift"})
        self.assertEqual((opened[0]["$screen_width"], opened[0]["$screen_height"]), (1440, 900))
        for event in opened[1:]:
            self.assertEqual((event["platform"], event["app_version"]), ("mac", event["$app_version_string"]))
        with contextlib.suppress(FileNotFoundError), open("/etc/machine-id", encoding="ascii") as file:
            raw = file.read().strip().lower()
            self.assertTrue(raw == "" or raw not in json.dumps(self.rows()).lower().replace("-", ""))
        texts = "\n".join(program.lines)
        self.assertIn("🔍 Initializing Marlpost...", texts)
        self.assertIn(f"👤 Generated new anonymous ID: {own}", texts)
        self.assertIn("📊 Tracking Event: App Opened with props: {}", texts)

        self.launch_and_search()
        launched, searched = self.expect("App Launched", "Search Used")
        self.assertEqual((launched["app_name"], launched["platform"]), ("Beta Viewer", "mac"))
        self.assertEqual((searched["query"], searched["platform"]), ("fire", "mac"))
        self.quit()

        self.start()
        self.assertEqual(self.expect("App Opened")[0]["distinct_id"], own)
        self.assertIn(f"👤 Identified user with saved ID: {own}", "\n".join(program.lines))
        for url in NO_LINKS:
            self.open_url(url)
        self.open_url("quillbay://open?name=x&uid=ada&uid=eve")
        identified, captured = self.expect("$identify", "Attribution Link Captured")
        self.assertEqual(identified["$anon_distinct_id"], own)
        self.assertEqual((captured["distinct_id"], captured["source"]), ("ada", "url_scheme"))
        program.end()  # at once, and hard: what is stored stays

        self.start("quillbay://open?uid=grace")
        opened, identified, captured = self.expect("App Opened", "$identify", "Attribution Link Captured")
        self.assertEqual((opened["distinct_id"], opened["$device_id"]), ("ada", machine))
        self.assertEqual(captured["distinct_id"], "grace")
        self.quit()
        self.assertEqual(self.stored_preference("mp_distinct_id"), "grace")


if __name__ == "__main__":
    run(Recording)
