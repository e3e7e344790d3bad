"""What a hand does with the pointer, on things found in the accessibility tree."""
import re

from desktop import wait_until

PATIENCE = 30


class Hands:
    def __init__(self, desktop, program):
        self.desktop = desktop
        self.program = program

    def place(self, node, across=0.5, down=0.5):
        """A point on a node, in the screen's coordinates."""
        box = node.get_extents(self.program.atspi.CoordType.SCREEN)
        return int(box.x + box.width * across), int(box.y + box.height * down)

    def point(self, x, y):
        self.desktop.xdotool("mousemove", str(x), str(y))

    def rest_on(self, node, across=0.5, down=0.5):
        x, y = self.place(node, across, down)
        self.point(x - 2, y - 1)
        self.point(x, y)

    def click(self, node, button=1, across=0.5, down=0.5):
        self.rest_on(node, across, down)
        self.desktop.xdotool("click", str(button))

    def double_click(self, node, across=0.5, down=0.5):
        self.rest_on(node, across, down)
        self.desktop.xdotool("click", "--repeat", "2", "--delay", "60", "1")

    def keys(self, *names):
        self.desktop.xdotool("key", *names)

    def type(self, text):
        self.desktop.xdotool("type", text)

    def _windows(self):
        """How many of the program's windows stand on the screen that no window manager manages."""
        listed = re.findall(r'(0x[0-9a-f]+) "Quillbay".* (\d+)x\d+\+', self.desktop.output("xwininfo", "-root", "-children"))
        return sum("IsViewable" in self.desktop.output("xwininfo", "-id", window) for window, width in listed if int(width) > 20)

    def pick_up(self, node, down=0.4):
        """Presses on a node and moves until the desktop's drag has begun: its picture is a window of its own."""
        windows = self._windows()
        x, y = self.place(node, 0.5, down)
        self.point(x, y)
        self.desktop.xdotool("mousedown", "1")
        moved = [0]

        def begun():
            moved[0] += 1
            self.point(x + 4 + 8 * min(moved[0], 3) + moved[0] % 2, y + 4)
            return self._windows() > windows
        wait_until(begun, PATIENCE, "no drag began")

    def carry_to(self, node, across=0.5, down=0.5):
        x, y = self.place(node, across, down)
        for step in (-12, -6, -3, 0):
            self.point(x + step, y)

    def drop(self):
        windows = self._windows()
        self.desktop.xdotool("mouseup", "1")
        wait_until(lambda: self._windows() < windows, PATIENCE, "the drag did not end")

    def drag(self, node, target, grip=0.4):
        self.pick_up(node, grip)
        self.carry_to(target)
        self.drop()
