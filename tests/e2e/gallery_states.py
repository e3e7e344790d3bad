"""The states that the gallery shows, each by what a person would do to see it."""
import json
import os
import shutil
import signal
import uuid

from desktop import wait_until
from fingerprint_reader import FingerprintReader

PATIENCE = 30


def make(gallery, wanted):
    """Takes the pictures of the wanted states, or of all."""
    for kind in (Grid, Cards, Sidebar, Sheets, Hidden, Forgotten, Bare, Uninstaller, Tools, PickerTools, Loading):
        states = kind(gallery)
        names = [name[5:] for name in dir(states) if name.startswith("show_")]
        chosen = [name for name in names if not wanted or name.replace("_", "-") in wanted]
        if not chosen:
            continue
        states.begin()
        for name in chosen:
            getattr(states, "show_" + name)()
            gallery.take(name.replace("_", "-"), states.rests)
            states.back()


class States:
    rests = True  # comes to rest before its picture is taken

    def __init__(self, gallery):
        self.gallery = gallery
        self.program = gallery.program
        self.hands = gallery.hands

    def begin(self):
        self.gallery.arrange()

    def back(self):
        """To where every state begins."""
        self.gallery.desktop.xdotool("mouseup", "1")
        self.hands.keys("Escape", "Escape", "Escape")
        self.hands.point(2, 2)
        self.gallery.wait_until_still()
        self.hands.keys("ctrl+k", "ctrl+a", "BackSpace", "ctrl+1")
        self.gallery.wait_until_still()

    def find(self, role, name, of=None):
        return self.program.find(role, name)

    def row(self, name):
        return self.find("list item", name)

    def choose(self, *names):
        """One entry after the other, into submenus."""
        for name in names:
            self.gallery.wait_until_still()
            self.hands.click(self.find("menu item", name), across=0.3)

    def sort(self, name):
        self.hands.click(self.find("push button", "Sort"))
        self.choose(name)

    def card(self, name):
        return self.tile(name, "Folders and categories")

    def tile(self, name, grid="Applications"):
        return wait_until(lambda: self.program.tile(name, grid), PATIENCE, f"no {name} in {grid}")


class Grid(States):
    """Tiles."""

    def begin(self):
        self.gallery.arrange(AllAppsSortOption="A to Z")

    def first(self):
        return self.tile(self.program.tiles()[1])

    def show_all_apps(self):
        pass

    def show_tile_hover(self):
        self.hands.rest_on(self.first(), down=0.4)
        self.program.find("push button", self.first().get_name())

    def show_tile_keyboard(self):
        self.hands.keys("Tab", "Right", "Down")

    def show_tile_menu(self):
        self.hands.click(self.first(), button=3, down=0.4)
        self.hands.rest_on(self.find("menu item", "Add to Folder"), across=0.3)
        self.hands.keys("Right")

    def show_search(self):
        self.hands.type("vi")

    def show_search_nothing(self):
        self.hands.type("nothing at all")

    def show_sort_menu(self):
        self.hands.click(self.find("push button", "Sort"))

    def show_library_menu(self):
        self.hands.click(self.find("push button", "Library"))

    def show_newly_added(self):
        self.hands.keys("ctrl+2")

    def show_recents(self):
        self.hands.keys("ctrl+3")

    def show_favorites(self):
        self.hands.keys("ctrl+4")

    def show_folder(self):
        self.hands.click(self.row("Design"))

    def show_folder_menu_of_tile(self):
        self.hands.click(self.row("Design"))
        self.hands.click(self.tile("Shotwell"), button=3, down=0.4)

    def show_folder_empty(self):
        self.hands.click(self.row("Someday"))

    def show_folder_drag(self):
        self.hands.click(self.row("Design"))
        self.gallery.wait_until_still()
        self.hands.pick_up(self.tile(self.program.tiles()[0]))
        self.hands.carry_to(self.tile(self.program.tiles()[2]), down=0.4)

    def show_drag_to_sidebar(self):
        self.hands.pick_up(self.first())
        self.hands.carry_to(self.row("Development"))


class Cards(States):
    """The unified grid."""

    def go_to_internet(self):
        self.hands.keys("Tab", "Home", *["Right"] * 5)
        self.gallery.wait_until_still()

    def show_unified(self):
        pass

    def show_unified_scrolled(self):
        self.hands.rest_on(self.card("Design"), down=0.1)
        self.gallery.desktop.xdotool("click", "--repeat", "4", "--delay", "40", "5")

    def show_unified_keyboard(self):
        self.hands.keys("Tab", "Right")

    def show_card_hover(self):
        self.hands.rest_on(self.card("Design"), down=0.8)

    def show_card_menu_folder(self):
        self.hands.click(self.card("Design"), button=3)

    def show_card_menu_category(self):
        self.go_to_internet()
        self.hands.keys("Menu")
        self.find("menu item", "Add All to Existing Folder")
        self.hands.keys("Down", "Down", "Right")

    def show_card_rename(self):
        self.hands.double_click(self.card("Design"), across=0.2, down=0.19)

    def show_card_drag(self):
        self.hands.pick_up(self.card("Design"), down=0.15)
        self.hands.carry_to(self.card("Writing"))

    def show_modal_folder(self):
        self.hands.click(self.card("Design"))

    def show_modal_category(self):
        self.go_to_internet()
        self.hands.keys("Return")

    def show_modal_drag(self):
        self.hands.click(self.card("Design"))
        self.gallery.wait_until_still()
        first, *_, last = self.program.tiles()
        self.hands.pick_up(self.tile(first))
        self.hands.carry_to(self.tile(last), down=0.4)


class Sidebar(States):
    def begin(self):
        self.gallery.arrange(AllAppsSortOption="A to Z")

    def menu(self, name):
        self.hands.click(self.row(name), button=3)

    def show_sidebar_menu(self):
        self.menu("Development")

    def show_sidebar_keyboard(self):
        self.hands.keys("Tab", "Tab", "Tab", "Tab", "Tab", "Tab", "Down", "Down")

    def show_icon_popover(self):
        self.menu("Development")
        self.choose("Change Icon...")

    def show_color_popover(self):
        self.menu("Development")
        self.choose("Change Color...")

    def show_sidebar_reorder(self):
        x, y = self.hands.place(self.row("Design"), 0.4)
        self.hands.point(x, y)
        self.gallery.desktop.xdotool("mousedown", "1")
        for down in range(0, 84, 6):
            self.hands.point(x, y + down)

    def show_workspace_menu(self):
        self.hands.click(self.find("push button", "Home"))
        self.gallery.wait_until_still()
        self.hands.rest_on(self.find("menu item", "Manage"), across=0.3)
        self.hands.keys("Right", "Down", "Right")


class Sheets(States):
    def begin(self):
        self.gallery.arrange(AllAppsSortOption="A to Z")

    def show_sheet_create_folder(self):
        self.hands.click(self.find("push button", "New Folder"))

    def show_sheet_edit_folder(self):
        self.hands.click(self.row("Development"), button=3)
        self.choose("Rename")

    def show_alert_delete_folder(self):
        self.hands.click(self.row("Development"), button=3)
        self.choose("Delete")

    def show_sheet_create_workspace(self):
        self.hands.click(self.find("push button", "Home"))
        self.choose("Create Workspace...")

    def show_picker(self):
        self.hands.click(self.row("Someday"))
        self.hands.click(self.find("push button", "Add Apps"))

    def show_picker_selected(self):
        self.show_picker()
        self.gallery.wait_until_still()
        self.hands.keys("Down", "space", "Right", "Right", "space", "Down", "space")

    def show_picker_search(self):
        self.show_picker()
        self.gallery.wait_until_still()
        self.hands.type("li")


class Lock(States):
    """The hidden list and its lock, first on a machine without a fingerprint reader."""
    NO_MATCH = "verify-no-match"

    def read_fingers(self, **script):
        if self.gallery.reader is None:
            self.gallery.reader = FingerprintReader(self.gallery.desktop)
        self.gallery.reader.play(**script)

    def press(self, name):
        self.hands.click(self.find("push button", name))

    def show_list(self, button):
        self.hands.click(self.row("Hidden Apps"))
        self.find("push button", button)
        self.gallery.wait_until_still()

    def enter(self, password="sesame"):
        self.show_list("Unlock")
        self.hands.type(password)
        self.hands.keys("Return")

    def wait_for_question(self, what):
        self.find("alert", what + ". Touch the fingerprint reader")

    def back(self):
        super().back()
        if self.gallery.reader is not None:
            self.read_fingers(present=False)


class Hidden(Lock):
    def begin(self):
        self.gallery.arrange(quillbay_hidden_password="sesame", quillbay_hidden_use_touchid=True)

    def show_hidden(self):
        self.enter()
        self.find("push button", "Lock")

    def show_hidden_card_menu(self):
        self.enter()
        self.hands.click(self.find("push button", "Private"), button=3)

    def show_hidden_disable_prompt(self):
        self.enter()
        self.find("push button", "Disable Password Lock")
        self.read_fingers()
        self.press("Disable Password Lock")
        self.wait_for_question("Authenticate to disable password lock")

    def show_hidden_locked(self):
        self.show_list("Use Fingerprint")

    def show_hidden_locked_prompt(self):
        self.read_fingers()
        self.show_list("Use Fingerprint")
        self.wait_for_question("Unlock Hidden Items")

    def show_hidden_locked_wrong(self):
        self.enter("open")
        self.find("alert", "Incorrect Password")


class Forgotten(Lock):
    """Nothing is hidden, and no finger opens the list."""
    LINK = "Forgot Password? Reset with Fingerprint"

    def begin(self):
        self.gallery.arrange(quillbay_hidden_password="sesame", quillbay_hidden_use_touchid=False, quillbay_hidden_apps=[],
                             quillbay_hidden_folders=[])

    def reset(self, **script):
        self.read_fingers()
        self.show_list(self.LINK)
        self.read_fingers(**script)
        self.press(self.LINK)

    def show_hidden_nothing(self):
        self.enter()
        self.find("push button", "Lock")

    def show_hidden_reset_prompt(self):
        self.reset()
        self.wait_for_question("Authenticate to Reset Password")

    def show_hidden_reset_cancelled(self):
        self.show_hidden_reset_prompt()
        self.press("Cancel")
        self.find("alert", "Fingerprint Authentication failed")

    def show_hidden_reset_not_recognized(self):
        self.reset(result=self.NO_MATCH)
        self.find("alert", "The finger was not recognized")

    def show_hidden_reset_no_finger(self):
        self.reset(fingers=())
        self.find("alert", "No fingerprint is enrolled")

    def show_hidden_reset_no_reader(self):
        self.reset(present=False)
        self.find("alert", "Fingerprint is not available on this device")


class Bare(Lock):
    """A first start."""

    def begin(self):
        self.gallery.arrange(AllAppsSortOption="A to Z", quillbay_hidden_apps=[], quillbay_hidden_folders=[],
                             quillbay_hidden_password="")

    def set_up(self, password="sesame", again="sesame"):
        self.show_list("Set Password & Enable Lock")
        self.hands.type(password)
        self.hands.keys("Tab")
        self.hands.type(again)
        self.press("Set Password & Enable Lock")

    def show_hidden_setup(self):
        self.show_list("Set Password & Enable Lock")

    def show_hidden_setup_ticked(self):
        self.show_list("Set Password & Enable Lock")
        self.hands.type("sesame")
        self.hands.keys("Tab", "Tab", "space")

    def show_hidden_setup_empty(self):
        self.set_up("", "")
        self.find("alert", "Password cannot be empty")

    def show_hidden_setup_different(self):
        self.set_up(again="Sesame")
        self.find("alert", "Passwords do not match")

    def show_hidden_setup_prompt(self):
        self.read_fingers()
        self.set_up()
        self.wait_for_question("Authenticate with Fingerprint to register new security password")

    def show_hidden_setup_cancelled(self):
        self.show_hidden_setup_prompt()
        self.press("Cancel")
        self.find("alert", "Fingerprint setup failed")

    def show_hidden_setup_not_recognized(self):
        self.read_fingers(result=self.NO_MATCH)
        self.set_up()
        self.find("alert", "The finger was not recognized")


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
        self.ask(self.MACHINE)
        # The package manager is asked first; it takes a rest.
        self.held = int(wait_until(lambda: self.gallery.desktop.output("pgrep", "-P", str(self.program.process.pid), "dpkg-query"),
                                   PATIENCE, "nobody asks for the package").split()[0])
        os.kill(self.held, signal.SIGSTOP)
        self.find("progress bar", "Locating app bundle…")

    def show_uninstall_review(self):
        self.review()
        self.hands.rest_on(self.find("check box", "acme.plist"))

    def show_uninstall_review_none_selected(self):
        self.review()
        self.press("Deselect All")
        self.hands.keys("Tab", "Tab", "Down")

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


class Tools(States):
    """Notes and snippets; what they keep is the home's alone."""
    CODE = ("async function load(url, options = {}) {\n  const answer = await fetch(url, { credentials: 'same-origin', ...options });\n"
            "  if (!answer.ok)\n    throw new Error(`${answer.status} for ${url}`);\n  return answer.json();\n}\n\n"
            "export default load;")
    TITLES = (("Fetch API", "JavaScript"), ("Greet", "Swift"), ("A title that is a good deal longer than its row has room for", "C++"),
              ("No language", ""), ("Days of the week", "Python"), ("Find large files", "Shell"), ("Last commits", "Git"))

    def begin(self):
        self.gallery.arrange(AllAppsSortOption="A to Z")

    def record(self, **fields):
        return {"id": str(uuid.uuid4()).upper(), **fields}

    def keep(self, notes=None, snippets=None):
        home = str(uuid.uuid5(uuid.NAMESPACE_OID, "home")).upper()
        lists = {f"quillbay_sticky_notes_{home}": notes, f"quillbay_code_snippets_{home}": snippets}
        self.gallery.restart(**{key: json.dumps(value).encode() for key, value in lists.items() if value is not None})

    def open(self, name):
        self.hands.click(self.find("push button", name))
        self.gallery.wait_until_still()

    def open_snippets(self):
        self.keep(snippets=[self.record(title=title, code=self.CODE, language=language) for title, language in self.TITLES])
        self.open("Code Snippets")

    def show_notes(self):
        self.keep(notes=[self.record(text="Call the garage\nBread, milk, coffee", colorHex="#FFD60A"),
                         self.record(text="Blue", colorHex="#64D2FF")])
        self.open("Sticky Notes")

    def show_notes_long(self):
        text = "The harbour lights were already lit when the last ferry came in. " * 12
        self.keep(notes=[self.record(text="First", colorHex="#30D158"), self.record(text=text, colorHex="#BF5AF2")])
        self.open("Sticky Notes")
        self.hands.click(self.find("push button", "Next Note"))

    def show_notes_empty(self):
        self.keep(notes=[])
        self.open("Sticky Notes")

    def show_notes_keyboard(self):
        self.show_notes()
        self.hands.keys("Tab", "Right", "Right")

    def show_snippets(self):
        self.open_snippets()

    def show_snippets_expanded(self):
        self.open_snippets()
        self.hands.click(self.find("push button", "Fetch API"))

    def show_snippets_form(self):
        self.open_snippets()
        self.hands.click(self.find("push button", "New Snippet"))
        self.gallery.wait_until_still()
        self.hands.type("Hello")

    def show_snippets_search_nothing(self):
        self.open_snippets()
        self.hands.type("await")

    def show_snippets_keyboard(self):
        self.open_snippets()
        self.hands.keys("Down", "Down", "Tab")

    def show_snippets_copied(self):
        self.rests = False  # the message goes before
        self.open_snippets()
        self.hands.click(self.find("push button", "Copy Greet"))
        self.find("alert", "Snippet Copied!")

    def back(self):
        self.rests = True
        super().back()


class Loading(States):
    """So many applications that the first scan is still going on."""
    rests = False
    COUNT = 250000

    def begin(self):
        self.gallery.arrange()

    def show_loading(self):
        self.program.end()
        folder = self.gallery.desktop.data / "applications"
        folder.mkdir(parents=True, exist_ok=True)
        for i in range(self.COUNT):
            (folder / f"made{i}.desktop").write_text(f"[Desktop Entry]\nType=Application\nName=Made {i}\nExec=true\n")
        self.gallery.open()
        wait_until(lambda: self.find("progress bar", "Initializing app space..."), PATIENCE, "nothing is loading")

    def back(self):
        self.program.end()


class PickerTools(States):
    """Colour picker, ruler and QR code, each empty and full."""
    COLORS = ["#3A7BD5", "#FF7F00", "#FFFFFF", "#101014", "#30D158", "#BF5AF2", "#FFD60A", "#64D2FF", "#8E8E93", "#FF375F"]
    SIZES = ["640 × 480 px", "400 × 300 px", "1280 × 720 px", "320 × 200 px", "515 × 233 px", "200 × 160 px"]

    def begin(self):
        self.full = False
        self.gallery.arrange(AllAppsSortOption="A to Z")

    def remember(self, full):
        """What was picked and measured before: nothing, or all that is kept."""
        home = str(uuid.uuid5(uuid.NAMESPACE_OID, "home")).upper()
        if full != self.full:
            self.gallery.restart(**{f"quillbay_recent_colors_{home}": self.COLORS if full else [],
                                    f"quillbay_recent_measurements_{home}": self.SIZES if full else []})
        self.full = full

    def open(self, name, full=False):
        self.remember(full)
        self.hands.click(self.find("push button", name))
        self.gallery.wait_until_still()

    def press(self, name):
        self.hands.click(self.find("push button", name))

    def back(self):
        super().back()
        ruler = self.program.find_now("push button", "Close Ruler")
        if ruler:
            self.hands.click(ruler)
            super().back()

    def show_color_picker(self):
        self.open("Color Picker")

    def show_color_picker_full(self):
        self.open("Color Picker", full=True)
        self.hands.click(self.find("radio button", "#FF7F00"))

    def show_loupe(self):
        self.open("Color Picker")
        self.press("Pick Color")
        # The loupe follows the pointer; it is not in the accessibility tree.
        x, y = self.hands.place(self.find("push button", "Sort"))
        wait_until(lambda: "139x167" in self.gallery.desktop.output("xwininfo", "-root", "-children"), PATIENCE, "no loupe")
        self.hands.point(x - 4, y + 2)

    def show_measure(self):
        self.open("Screen Ruler")

    def show_measure_full(self):
        self.open("Screen Ruler", full=True)
        self.hands.rest_on(self.find("push button", self.SIZES[1]))

    def show_ruler(self, full=False):
        self.open("Screen Ruler", full)
        self.press("Open Screen Ruler")
        self.find("label", "Width 400 px")

    def show_ruler_smallest(self):
        self.show_ruler(full=True)
        self.press("200 × 160 px")
        self.find("label", "Width 200 px")

    def show_qr_generator(self):
        self.open("QR Generator")

    def show_qr_generator_full(self):
        self.open("QR Generator")
        self.hands.type("https://example.org/a/page?of=some&length=42")
        self.find("image", "QR Code")
