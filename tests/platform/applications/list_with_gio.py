"""Prints what GIO lists as the desktop's applications, as one JSON object of desktop file id to name."""
import json

from gi.repository import Gio

print(json.dumps({info.get_id(): info.get_name() for info in Gio.AppInfo.get_all() if info.should_show()}))
