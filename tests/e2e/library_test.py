#!/usr/bin/python3
"""The user puts the library in order, by pointer and keys, and finds it so again.   library_test.py BINARY"""
import contextlib
import json
import sqlite3
from xml.etree import ElementTree

from case import LauncherCase, run
from desktop import wait_until
from hands import Hands
from program import PATIENCE


def objects_on_bus(service):
    """Descriptions and properties of all objects of a service on the session bus."""
    from gi.repository import Gio, GLib
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    texts = []

    def ask(path, interface, method, arguments=None):
        return bus.call_sync(service, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None).unpack()[0]

    def walk(path):
        texts.append(ask(path, "org.freedesktop.DBus.Introspectable", "Introspect"))
        described = ElementTree.fromstring(texts[-1])
        for interface in described.findall("interface"):
            if interface.find("property") is not None:
                texts.append(str(ask(path, "org.freedesktop.DBus.Properties", "GetAll",
                                     GLib.Variant("(s)", (interface.get("name"),)))))
        for child in described.findall("node"):
            walk(f"{path.rstrip('/')}/{child.get('name')}")

    walk("/")
    return texts


class Library(LauncherCase):
    def setUp(self):
        super().setUp()
        self.hands = Hands(self.desktop, self.program)

    def entry(self, *names):
        for name in names:
            self.hands.click(self.program.find("menu item", name), across=0.3)

    def row(self, name):
        return self.program.find("list item", name)

    def inside(self, grid, name):
        return wait_until(lambda: self.program.tile(name, grid), PATIENCE, lambda: f"no {name} in {grid}")

    def tile(self, name):
        return self.inside("Applications", name)

    def card(self, name):
        return self.inside("Folders and categories", name)

    def cards(self):
        return self.program.tiles("Folders and categories")

    def wait_for_cards(self, names):
        wait_until(lambda: self.cards() == names, PATIENCE, lambda: f"cards are {self.cards()}")

    def stored_folder(self, name):
        path = self.desktop.home / "config" / "quillbay" / "preferences.sqlite"
        with contextlib.closing(sqlite3.connect(path)) as store:
            lists = store.execute("SELECT value FROM preferences WHERE key LIKE 'AppFolders~_%' ESCAPE '~'").fetchall()
        return next(folder for (value,) in lists for folder in json.loads(value) if folder["name"] == name)

    def wait_for_focus(self, name, role="text"):
        wait_until(lambda: self.program.is_focused(self.program.find(role, name)), PATIENCE, f"{name} has no focus")

    def make_folder(self, name):
        self.hands.click(self.program.find("push button", "New Folder"))
        self.wait_for_focus("Folder Name")
        self.hands.keys("Return")  # an empty name makes none
        self.hands.type(name)
        self.hands.keys("Return")
        self.row(name)

    def open_hidden_list(self):
        self.hands.click(self.row("Hidden Apps"))
        self.wait_for_focus("Enter Password")
        self.hands.type("sesame")
        self.hands.keys("Return")

    def told(self, part):
        """All texts with that in them that the program tells others: its accessible nodes, what can be read of it on the bus,
        and the titles of the windows."""
        atspi, texts = self.program.atspi, []
        for node in self.program.nodes(showing=False):
            texts += [node.get_name(), node.get_description()]
            if "Text" in node.get_interfaces():
                texts.append(atspi.Text.get_text(node, 0, -1))
        texts += objects_on_bus("org.quillbay.Quillbay")
        texts += self.desktop.output("xwininfo", "-root", "-tree").splitlines()
        return [text for text in texts if text and part in text]

    def test_what_is_put_in_order_stays_so(self):
        program, hands = self.program, self.hands
        program.start()
        program.wait_for_line("Showing")
        self.make_folder("Tools")
        self.make_folder("Later")

        # A colour, from the row's menu; it shows in what is stored.
        hands.click(self.row("Tools"), button=3)
        self.entry("Change Color...")
        hands.click(program.find("radio button", "Green"))
        hands.keys("Escape")

        # Cards: an application is put on one by hand, then their order is changed.
        hands.click(program.find("push button", "Sort"))
        self.entry("Category")
        self.wait_for_cards(["Add Folder", "Tools", "Later", "Other"])
        hands.drag(self.card("Tools"), self.card("Later"), grip=0.15)
        self.wait_for_cards(["Add Folder", "Later", "Tools", "Other"])
        hands.click(program.find("push button", "Sort"))
        self.entry("A to Z")
        for name in ("Alpha Editor", "Beta Viewer", "Gamma Player"):
            hands.drag(self.tile(name), self.row("Tools"))
        hands.drag(self.tile("Zeta Fireworks"), self.row("Later"))
        hands.click(self.row("Later"))
        program.wait_for_tiles(["Zeta Fireworks"])

        # In the folder: resting on a tile makes room, dropping puts it behind.
        hands.click(self.row("Tools"))
        program.wait_for_tiles(["Alpha Editor", "Beta Viewer", "Gamma Player"])
        hands.pick_up(self.tile("Alpha Editor"))
        hands.carry_to(self.tile("Gamma Player"), down=0.4)
        program.wait_for_tiles(["Beta Viewer", "Alpha Editor", "Gamma Player"])
        hands.drop()
        program.wait_for_tiles(["Beta Viewer", "Gamma Player", "Alpha Editor"])

        # On a folder's card.
        hands.keys("ctrl+1")
        hands.click(program.find("push button", "Sort"))
        self.entry("Category")
        hands.click(self.card("Other"))
        hands.keys("Escape")
        wait_until(lambda: not program.find_now("dialog", "Other"), PATIENCE, "the panel stays")

        # Hiding takes it out of every list.
        hands.click(self.row("Tools"))
        hands.click(self.tile("Gamma Player"), button=3, down=0.4)
        self.entry("Hide App Globally")
        for field in ("Enter Password", "Confirm Password"):
            self.wait_for_focus(field)
            hands.type("sesame")
            hands.keys("Tab")
        hands.click(program.find("push button", "Set Password & Enable Lock"))
        program.wait_for_tiles(["Gamma Player"])
        for place, left in (("Tools", ["Beta Viewer", "Alpha Editor"]), ("Recent Apps", []), ("Favorites", [])):
            hands.click(self.row(place))
            program.wait_for_tiles(left)

        # Another workspace has nothing of it.
        hands.click(program.find("push button", "Default"))
        self.entry("Create Workspace...")
        field = program.find("text", "Workspace Name")
        wait_until(lambda: program.is_focused(field), PATIENCE, "the name has no focus")
        hands.type("Second")
        hands.keys("Return")
        program.find("push button", "Second")
        wait_until(lambda: not program.find_now("list item", "Tools"), PATIENCE, "the folders stay")
        hands.click(program.find("push button", "Second"))
        self.entry("Default")
        self.row("Tools")

        program.end()  # by kill -9
        program.start()
        program.wait_for_line("Showing 4 applications")
        self.wait_for_cards(["Add Folder", "Later", "Tools", "Other"])
        hands.click(self.row("Tools"))
        program.wait_for_tiles(["Beta Viewer", "Alpha Editor"])
        hands.click(self.row("Later"))
        program.wait_for_tiles(["Zeta Fireworks"])

        # What is hidden is nowhere to be found until the password opens it.
        hands.click(self.row("Hidden Apps"))
        self.wait_for_focus("Enter Password")
        hands.type("Sesame")
        hands.keys("Return")
        program.find("alert", "Incorrect Password")
        self.assertEqual(self.told("Gamma") + self.told("esame"), [])
        hands.click(self.row("All Apps"))
        hands.keys("ctrl+k")
        hands.type("Gamma")
        program.wait_for_tiles([])
        self.assertEqual([told for told in self.told("Gamma") if told != "Gamma"], [], "besides what was typed")
        hands.keys("ctrl+a", "BackSpace")
        self.open_hidden_list()
        place = hands.place(self.tile("Gamma Player"), down=0.4)
        self.assertIn("Gamma Player", self.told("Gamma"))

        # Locked again, it cannot be dragged from where it was either.
        hands.click(program.find("push button", "Lock"))
        self.wait_for_focus("Enter Password")
        wait_until(lambda: not self.told("Gamma"), PATIENCE, lambda: f"still there: {self.told('Gamma')}")
        hands.point(*place)
        self.desktop.xdotool("mousedown", "1")
        hands.carry_to(self.row("Later"))
        self.desktop.xdotool("mouseup", "1")
        hands.click(self.row("Later"))
        program.wait_for_tiles(["Zeta Fireworks"])

        self.open_hidden_list()
        hands.click(self.tile("Gamma Player"), button=3, down=0.4)
        self.entry("Unhide App Globally")
        program.wait_for_tiles([])
        hands.click(self.row("Tools"))
        program.wait_for_tiles(["Beta Viewer", "Gamma Player", "Alpha Editor"])
        self.assertEqual(self.stored_folder("Tools")["color"], "#34C759")


if __name__ == "__main__":
    run(Library)
