"""The states of the uninstaller, each by what a person would do to see it."""
import os
import shutil
import signal

from desktop import wait_until
from gallery_state import PATIENCE, States


class Uninstaller(States):
    """A program that is installed in the home alone, with what it left behind."""
    MACHINE = "Geany"
    held = None

    def begin(self):
        pass

    def made(self):
        """All files, with their sizes."""
        home = self.gallery.desktop.home
        return {home / name: size for name, size in {
            "opt/acme/acme": 1 << 20, "opt/acme/lib/engine.so": 40 << 20, "config/acme/settings.json": 2100,
            "config/acme.plist": 640, "config/acme/profiles/default.json": 5200, "data/acme/projects.db": 7 << 20,
            "data/acme/templates/blank.json": 900, "cache/acme/pictures/1": 23 << 20, "cache/acme-updates/next.bin": 61 << 20,
            "state/acme.log": 48000, "config/autostart/acme.desktop": 210}.items()}

    def install(self):
        desktop = self.gallery.desktop
        self.program.end()
        for name in ("opt", "config/acme", "config/acme.plist", "config/autostart", "data/acme", "data/Trash", "cache", "state"):
            path = desktop.home / name
            if path.is_dir():
                shutil.rmtree(path)
            else:
                path.unlink(missing_ok=True)
        for path, size in self.made().items():
            path.parent.mkdir(parents=True, exist_ok=True)
            with path.open("wb") as file:
                file.truncate(size)
        (desktop.home / "opt/acme/acme").chmod(0o755)
        desktop.add_entry("acme", "Acme", str(desktop.home / "opt/acme/acme"), "Icon=applications-graphics\n")

    def ask(self, name="Acme", **preferences):
        self.install()
        self.gallery.arrange(AllAppsSortOption="A to Z", **preferences)
        self.hands.type(name)
        self.gallery.wait_until_still()
        self.hands.click(self.tile(name), button=3, down=0.4)
        self.choose("Uninstall App…")

    def review(self, name="Acme"):
        self.ask(name)
        self.find("list", "Found items")
        self.gallery.wait_until_still()

    def replace(self, *names):
        """Other files of the same names: those that were found are gone."""
        for name in names:
            path = self.gallery.desktop.home / name
            path.rename(path.with_name("old"))
            path.mkdir()

    def press(self, name):
        self.hands.click(self.find("push button", name))

    def show_uninstall_gate(self):
        with self.gallery.in_root_with({".flatpak-info": "[Application]\nname=org.quillbay.Quillbay\n[Context]\n"}):
            self.ask()
            self.find("push button", "Open Settings")

    def show_uninstall_scanning(self):
        self.rests = False
        # The package manager is asked first; this one takes a rest.
        with self.gallery.in_root_with({"usr/bin/dpkg-query": "#!/bin/sh\nkill -STOP $$\n"}):
            self.ask(self.MACHINE)
            self.find("progress bar", "Locating app bundle…")
        self.held = int(self.gallery.desktop.output("pgrep", "-P", str(self.program.process.pid), "dpkg-query"))

    def show_uninstall_review(self):
        self.review()
        self.hands.rest_on(self.find("check box", "acme.plist"))

    def show_uninstall_review_none_selected(self):
        self.review()
        self.press("Deselect All")
        self.hands.keys("Tab", "Tab", "Tab", "Tab", "Down")

    def show_uninstall_review_scrolled(self):
        self.review()
        self.hands.rest_on(self.find("list", "Found items"), down=0.95)
        self.gallery.desktop.xdotool("click", "--repeat", "4", "--delay", "40", "5")

    def review_locked(self):
        """Of what was found, one thing is not the user's to delete."""
        with self.gallery.in_root_with({}, self.gallery.desktop.home / "config/autostart"):
            self.review()
        self.hands.rest_on(self.find("list", "Found items"), down=0.95)
        self.gallery.desktop.xdotool("click", "--repeat", "20", "5")
        self.gallery.wait_until_still()

    def show_uninstall_review_locked(self):
        self.review_locked()
        self.hands.rest_on(self.find("check box", "acme.desktop"), across=0.045)
        wait_until(lambda: any("Requires administrator" in n.get_name() for n in self.program.nodes("tool tip")),
                   PATIENCE, "no help")

    def show_uninstall_review_system(self):
        entry = "[Desktop Entry]\nType=Application\nName=Acme System\nExec=/System/acme\n"
        places = os.environ["XDG_DATA_DIRS"]
        os.environ["XDG_DATA_DIRS"] = f"/System/share:{places}"
        try:
            with self.gallery.in_root_with({"System/share/applications/acme-system.desktop": entry}):
                self.review("Acme System")
        finally:
            os.environ["XDG_DATA_DIRS"] = places

    def show_uninstall_alert_permanent(self):
        self.review()
        self.press("Delete Permanently")
        self.find("push button", "Permanently Delete")

    def show_uninstall_alert_package(self):
        self.review(self.MACHINE)
        self.press("Move to Trash")
        self.find("push button", "Keep")

    def show_uninstall_alert_package_kept(self):
        self.show_uninstall_alert_package()
        self.gallery.wait_until_still()
        self.press("Keep")
        self.find("push button", "OK")

    def choose_locked(self):
        """That alone, by the button of its category."""
        self.review_locked()
        self.press("Deselect All")
        self.gallery.wait_until_still()
        self.hands.click(next(n for n in self.program.nodes("push button") if n.get_description() == "Launch Agents & Daemons"))

    def show_uninstall_alert_trash_failed(self):
        self.choose_locked()
        self.press("Move to Trash")
        self.find("push button", "OK")

    def show_uninstall_alert_denied(self):
        self.choose_locked()
        self.press("Delete Permanently")
        self.gallery.wait_until_still()
        self.press("Permanently Delete")
        self.find("push button", "OK")

    def show_uninstall_alert_vanished(self):
        self.review()
        self.press("Deselect All")
        self.gallery.wait_until_still()
        self.hands.click(self.find("check box", "acme.plist"))
        (self.gallery.desktop.home / "config/acme.plist").unlink()
        self.press("Move to Trash")
        self.find("push button", "OK")

    def show_uninstall_alert_nothing(self):
        self.review()
        self.press("Deselect All")
        self.gallery.wait_until_still()
        self.hands.click(self.find("check box", "acme.plist"))
        self.replace("config/acme.plist")
        self.press("Move to Trash")
        self.find("push button", "OK")

    def show_uninstall_done(self):
        self.review()
        self.press("Move to Trash")
        self.find("push button", "Put Back")

    def show_uninstall_done_put_back(self):
        self.show_uninstall_done()
        self.gallery.wait_until_still()
        self.press("Put Back")

    def show_uninstall_done_put_back_errors(self):
        self.review()
        self.replace("config/acme.plist", "state/acme.log", "config/autostart/acme.desktop", "cache/acme")
        self.press("Move to Trash")
        self.find("push button", "Put Back")
        for name in ("opt/acme", "data/acme"):
            (self.gallery.desktop.home / name).mkdir()
        self.gallery.wait_until_still()
        self.press("Put Back")

    def show_uninstall_done_errors(self):
        self.review()
        self.replace("config/acme.plist", "state/acme.log", "config/autostart/acme.desktop", "cache/acme")
        self.press("Move to Trash")
        self.find("push button", "Done")

    def back(self):
        self.rests = True
        self.program.end()
        if self.held:
            os.kill(self.held, signal.SIGKILL)
            self.held = None
