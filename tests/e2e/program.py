"""The program under test as a person meets it: read through the accessibility tree, driven by keys and clicks."""
import os
import signal
import subprocess
import threading

from desktop import wait_until

# Generous: the sanitizers' build runs these tests on slow machines too.
PATIENCE = 30


class Program:
    def __init__(self, desktop, binary):
        self.desktop = desktop
        self.binary = binary
        self.lines = []
        self.process = None
        self.atspi = None

    def start(self, *arguments):
        self.lines = []
        self.process = subprocess.Popen((self.binary,) + arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.STDOUT, text=True)
        threading.Thread(target=self._read, args=(self.process.stdout, self.lines), daemon=True).start()

    @staticmethod
    def _read(pipe, lines):
        with pipe:
            for line in pipe:
                lines.append(line.rstrip("\n"))

    def wait_for_line(self, part):
        def seen():
            assert self.process.poll() is None or any(part in line for line in self.lines), \
                "the program ended:\n" + "\n".join(self.lines)
            return next((line for line in self.lines if part in line), None)
        return wait_until(seen, PATIENCE, lambda: f"no line with {part!r} in\n" + "\n".join(self.lines))

    def end(self):
        if self.process and self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()

    # The accessibility tree

    def _root(self):
        if self.atspi is None:
            import gi
            gi.require_version("Atspi", "2.0")
            from gi.repository import Atspi
            Atspi.init()
            self.atspi = Atspi
        desktop = self.atspi.get_desktop(0)  # asked anew: a kept one never hears of later programs
        for i in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(i)
            if child:
                child.clear_cache()  # or nodes that are gone are answered from memory
            if child and child.get_name() in ("quillbay", "Quillbay") and child.get_process_id() == self.process.pid:
                return child
        return None

    def nodes(self, role=None, showing=True):
        """All nodes with that role, in tree order. Nodes that go away while they are read are left out."""
        found = []

        def walk(node):
            try:
                states = node.get_state_set()
                if showing and not states.contains(self.atspi.StateType.SHOWING) and node.get_role_name() != "application":
                    return
                if role is None or node.get_role_name() == role:
                    found.append(node)
                for i in range(node.get_child_count()):
                    child = node.get_child_at_index(i)
                    if child:
                        walk(child)
            except Exception:  # the bus's error type needs the library loaded
                return

        root = self._root()
        if root:
            walk(root)
        return found

    def grid(self, name="Applications"):
        return next((node for node in self.nodes("list") if node.get_name() == name), None)

    def _tiles(self, grid):
        """The shown tiles of a grid, each with its place, as they stand."""
        found = []
        node = self.grid(grid)
        for i in range(node.get_child_count() if node else 0):
            try:
                tile = node.get_child_at_index(i)
                if tile and tile.get_role_name() == "push button" and \
                        tile.get_state_set().contains(self.atspi.StateType.SHOWING):
                    box = tile.get_extents(self.atspi.CoordType.SCREEN)
                    # By its middle: the one under the pointer is larger.
                    found.append(((box.y + box.height // 2) // 8, box.x, tile.get_name(), tile))
            except Exception:
                continue
        return sorted(found, key=lambda entry: entry[:3])

    def tiles(self, grid="Applications"):
        """Names of the tiles, or cards, that the grid shows now, sorted as they stand."""
        return [entry[2] for entry in self._tiles(grid)]

    def tile(self, name, grid="Applications"):
        return next((entry[3] for entry in self._tiles(grid) if entry[2] == name), None)

    def wait_for_tiles(self, names, seconds=PATIENCE):
        wait_until(lambda: self.tiles() == names, seconds, lambda: f"tiles are {self.tiles()}, not {names}")

    def find_now(self, role, name):
        return next((n for n in self.nodes(role) if n.get_name() == name), None)

    def find(self, role, name):
        return wait_until(lambda: self.find_now(role, name), PATIENCE,
                          lambda: f"no {role} called {name} among {[n.get_name() for n in self.nodes(role)]}")

    def is_focused(self, node):
        return node.get_state_set().contains(self.atspi.StateType.FOCUSED)

    def search_text(self):
        field = next((n for n in self.nodes() if n.get_name() == "Search Apps..."), None)
        return self.atspi.Text.get_text(field, 0, -1) if field else None

    def search_focused(self):
        field = next((n for n in self.nodes() if n.get_name() == "Search Apps..."), None)
        return bool(field) and field.get_state_set().contains(self.atspi.StateType.FOCUSED)

    def frame_size(self):
        frame = next(iter(self.nodes("frame")), None)
        box = frame.get_extents(self.atspi.CoordType.SCREEN) if frame else None
        return (box.width, box.height) if box else None

    # Hands

    def click(self, node, button="1"):
        box = node.get_extents(self.atspi.CoordType.SCREEN)
        self.desktop.xdotool("mousemove", str(box.x + box.width // 2), str(box.y + box.height // 2), "click", button)

    def is_on_screen(self):
        return bool(self.desktop.output("xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid),
                                        "--name", "Quillbay").strip())

    def cpu_ticks(self):
        """User and system time of all threads, in clock ticks."""
        with open(f"/proc/{self.process.pid}/stat", encoding="utf-8") as stat:
            fields = stat.read().rsplit(")", 1)[1].split()
        return int(fields[11]) + int(fields[12])


def is_running(pid):
    try:
        os.kill(pid, 0)
    except ProcessLookupError:
        return False
    with open(f"/proc/{pid}/stat", encoding="utf-8") as stat:
        return stat.read().rsplit(")", 1)[1].split()[0] != "Z"
