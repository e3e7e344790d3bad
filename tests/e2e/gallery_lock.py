"""The states of the hidden list and of its lock."""
from fingerprint_reader import FingerprintReader
from gallery_state import States


class Lock(States):
    """The hidden list and its lock, first on a machine without a fingerprint reader."""
    NO_MATCH = "verify-no-match"

    def read_fingers(self, **script):
        if self.gallery.reader is None:
            self.gallery.reader = FingerprintReader(self.gallery.desktop)
        self.gallery.reader.play(**script)

    def press(self, name):
        self.hands.click(self.find("push button", name))

    def open_list(self, button):
        self.hands.click(self.row("Hidden Apps"))
        self.find("push button", button)
        self.gallery.wait_until_still()

    def enter(self, password="sesame"):
        self.open_list("Unlock")
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
        self.open_list("Use Fingerprint")

    def show_hidden_locked_prompt(self):
        self.read_fingers()
        self.open_list("Use Fingerprint")
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
        self.open_list(self.LINK)
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
        self.open_list("Set Password & Enable Lock")
        self.hands.type(password)
        self.hands.keys("Tab")
        self.hands.type(again)
        self.press("Set Password & Enable Lock")

    def show_hidden_setup(self):
        self.open_list("Set Password & Enable Lock")

    def show_hidden_setup_ticked(self):
        self.open_list("Set Password & Enable Lock")
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
