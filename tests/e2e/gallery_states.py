"""The states that the gallery shows, each by what a person would do to see it."""
from desktop import wait_until
from gallery_lock import Bare, Forgotten, Hidden
from gallery_state import PATIENCE, States
from gallery_tools import PickerTools, Tools
from gallery_uninstaller import Uninstaller


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

    def back(self):
        super().back()
        self.hands.keys("Tab", "Home")
        self.gallery.wait_until_still()
        self.hands.keys("ctrl+k")

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
        # Past the tools and the sort menu.
        self.hands.keys(*["Tab"] * 11, "Down", "Down")

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
