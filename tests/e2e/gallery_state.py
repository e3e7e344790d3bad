"""What the states of the gallery have in common."""
from desktop import wait_until

PATIENCE = 30


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
