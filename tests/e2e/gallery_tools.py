"""The states of the workspace's tools."""
import json
import uuid

from desktop import wait_until
from gallery_state import PATIENCE, States


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

    def show_snippets_empty(self):
        self.keep(snippets=[])
        self.open("Code Snippets")

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
        # Not by the pointer: the ruler may lie above.
        row = self.find("push button", "200 × 160 px")
        row.do_action([row.get_action_name(i) for i in range(row.get_n_actions())].index("Press"))
        self.find("label", "Width 200 px")

    def show_qr_generator(self):
        self.open("QR Generator")

    def show_qr_generator_full(self):
        self.open("QR Generator")
        self.hands.type("https://example.org/a/page?of=some&length=42")
        self.find("image", "QR Code")

    def show_qr_generator_dense(self):
        self.open("QR Generator")
        self.hands.type("https://example.org/?q=" + "harbour-lights-" * 25)
        self.find("image", "QR Code")
