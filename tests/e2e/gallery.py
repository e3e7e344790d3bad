#!/usr/bin/python3
"""Pictures of the screens.   gallery.py BINARY FOLDER light|dark WIDTHxHEIGHT [STATE...]"""
import contextlib
import json
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import urllib.parse
import uuid

from desktop import Desktop, wait_until
from hands import Hands
from program import PATIENCE, Program
import gallery_states

MACHINE_DATA = "/usr/local/share:/usr/share"


def entries():
    """Desktop entries of the machine by their file name."""
    found = {}
    for folder in MACHINE_DATA.split(":"):
        for path in sorted(pathlib.Path(folder, "applications").glob("*.desktop")):
            found.setdefault(path.stem, path)
    return found


def url(path):
    return "file://" + urllib.parse.quote(str(path))


class Gallery:
    """The program on a made home, and the pictures of it."""

    def __init__(self, binary, folder, scheme, size):
        self.size = tuple(int(part) for part in size.split("x"))
        self.folder = pathlib.Path(folder)
        self.suffix = f"{scheme}-{size}"
        self.folder.mkdir(parents=True, exist_ok=True)
        os.environ.update(GSETTINGS_BACKEND="keyfile")
        self.desktop = Desktop(self.size[0] + 160, self.size[1] + 120)
        os.environ.update(XDG_DATA_DIRS=MACHINE_DATA, XDG_CURRENT_DESKTOP="GNOME")
        subprocess.run(("gsettings", "set", "org.gnome.desktop.interface", "color-scheme", f"prefer-{scheme}"), check=True)
        self.binary = str(pathlib.Path(binary).resolve())
        self.program = Program(self.desktop, self.binary)
        self.hands = Hands(self.desktop, self.program)
        self.reader = None  # of fingerprints, once a state has one

    def close(self):
        self.program.end()
        self.desktop.close()

    def start(self):
        self.open()
        self.program.wait_for_line("Showing")

    def open(self):
        """Starts, but does not wait until there is anything to be seen in the window."""
        self.program.start()
        window = wait_until(lambda: self.desktop.output("xdotool", "search", "--onlyvisible", "--name", "^Quillbay$").split(),
                            PATIENCE, "no window")[-1]
        self.desktop.xdotool("windowsize", "--sync", window, *map(str, self.size))
        self.desktop.xdotool("windowmove", "--sync", window, "80", "60")
        self.desktop.xdotool("mousemove", "2", "2")
        wait_until(lambda: self.program.frame_size() == self.size, PATIENCE, f"the window is {self.program.frame_size()}")

    @contextlib.contextmanager
    def in_root_with(self, files, read_only=""):
        """Meanwhile the program starts in a root folder with these files in it besides the machine's or over them, and cannot
        change what is in that one folder."""
        made, root = self.desktop.folder / "made", self.desktop.folder / "root"
        made.mkdir(exist_ok=True)
        root.mkdir(exist_ok=True)
        for path, content in files.items():
            (made / path).parent.mkdir(parents=True, exist_ok=True)
            (made / path).write_text(content)
            if content.startswith("#!"):
                (made / path).chmod(0o755)
        script = self.desktop.home / "bin" / "in-made-root"
        runner = pathlib.Path(__file__).with_name("in_made_root.sh")
        script.write_text(f'#!/bin/sh\nexport MADE_READ_ONLY="{read_only}"\nexec "{runner}" "{made}" "{root}" "{self.binary}" "$@"\n')
        script.chmod(0o755)
        self.program.binary = str(script)
        try:
            yield
        finally:
            self.program.binary = self.binary
            shutil.rmtree(made)

    def restart(self, **values):
        """Starts anew, with other preferences: a text, a list of texts, a truth value, or bytes each."""
        self.program.end()
        self.store(values)
        self.start()

    def store(self, values):
        path = self.desktop.home / "config" / "quillbay" / "preferences.sqlite"
        if not path.exists():
            self.program.start()
            self.program.wait_for_line("Showing")
            self.program.end()
        rows = []
        for key, value in values.items():
            if isinstance(value, bytes):
                rows.append((key, "data", value))
            elif isinstance(value, list):
                rows.append((key, "stringArray", json.dumps(value)))
            elif isinstance(value, bool):
                rows.append((key, "boolean", int(value)))
            else:
                rows.append((key, "string", value))
        with contextlib.closing(sqlite3.connect(path)) as store, store:
            store.executemany("INSERT OR REPLACE INTO preferences VALUES('standard', ?, ?, ?)", rows)

    def wait_until_still(self):
        """Until the program draws and computes nothing for a while."""
        ticks = [self.program.cpu_ticks(), 0]

        def still():
            now = self.program.cpu_ticks()
            ticks[1] = ticks[1] + 1 if now == ticks[0] else 0
            ticks[0] = now
            return ticks[1] >= 8
        wait_until(still, PATIENCE, "the program does not come to rest")

    def take(self, name, still=True):
        if still:
            self.wait_until_still()
        path = self.folder / f"{name}-{self.suffix}.png"
        width, height = self.size
        subprocess.run(("import", "-window", "root", "-crop", f"{width}x{height}+80+60", "+repage", str(path)), check=True)

    # The made home

    def arrange(self, **more):
        """Two workspaces; in the first, folders with what the machine has, favourites and recents."""
        have = entries()
        home, work = str(uuid.uuid5(uuid.NAMESPACE_OID, "home")).upper(), str(uuid.uuid5(uuid.NAMESPACE_OID, "work")).upper()
        folders = []

        def folder(name, icon, color, members, pinned=False, parent=None):
            identity = str(uuid.uuid5(uuid.NAMESPACE_OID, name)).upper()
            record = {"id": identity, "name": name, "appURLs": [url(have[m]) for m in members if m in have], "isPinned": pinned,
                      "icon": icon, "color": color}
            if parent:
                record["parentFolderID"] = parent
            folders.append({**record, "createdAt": 780000000.0 + len(folders), "sortOrder": len(folders)})
            return identity

        design = folder("Design", "paintbrush.fill", "#AF52DE",
                        ["gimp", "org.inkscape.Inkscape", "org.darktable.darktable", "shotwell", "libreoffice-draw"], pinned=True)
        folder("Development", "terminal.fill", "#34C759", ["geany", "vim", "org.gnome.Meld", "sqlitebrowser", "python3.11"])
        folder("Writing", "doc.fill", "#FF9500", ["libreoffice-writer", "org.xfce.mousepad"])
        folder("Photos", "camera.fill", "#FF2D55", ["shotwell", "org.darktable.darktable"], parent=design)
        folder("Someday", "bookmark.fill", "#8E8E93", [])
        secret = folder("Private", "key.fill", "#FF3B30", ["org.keepassxc.KeePassXC", "transmission-gtk"])
        path = {name: str(p) for name, p in have.items()}
        workspaces = [{"id": home, "name": "Home", "icon": "house.fill", "color": "#007AFF"},
                      {"id": work, "name": "Studio", "icon": "laptopcomputer", "color": "#FF9500"}]
        values = {
            "quillbay_workspaces": json.dumps(workspaces).encode(), "quillbay_active_workspace_id": home,
            f"AppFolders_{home}": json.dumps(folders).encode(), "AllAppsSortOption": "Category",
            f"favoriteApps_{home}": [url(have[n]) for n in ("firefox-esr", "gimp", "vlc", "thunderbird") if n in have],
            f"recentApps_{home}": [url(have[n]) for n in ("org.gnome.clocks", "geany", "vlc") if n in have],
            f"unifiedGridOrder_{home}": [f"folder:{f['id']}" for f in folders if "parentFolderID" not in f] + [
                f"category:{c}" for c in ("Internet", "Graphics", "Multimedia", "Office", "Development", "Games", "Utilities",
                                          "System", "Science", "Settings", "Other")],
            "quillbay_hidden_apps": [path[n] for n in ("org.gnome.Mines", "synaptic") if n in path],
            "quillbay_hidden_folders": [secret], **more}
        self.restart(**values)


def main():
    binary, folder, scheme, size, *wanted = sys.argv[1:]
    gallery = Gallery(binary, folder, scheme, size)
    try:
        gallery_states.make(gallery, wanted)
    finally:
        gallery.close()


if __name__ == "__main__":
    main()
