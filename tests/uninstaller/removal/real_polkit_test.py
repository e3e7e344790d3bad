"""The whole road through a real polkit: bus, daemon, pkexec, agent and the installed helper, in a mount namespace in
which nothing outside changes. Needs to be root; without what it needs it is skipped, and says so.

    real_polkit_test.py DRIVER HELPER POLICY PLACE

PLACE is where the policy says that the helper will be.
"""

import os
import shutil
import subprocess
import sys
import tempfile
import time

SKIPPED = 77
ACTION = "org.quillbay.Quillbay.elevate"
USER, UID = "quillbay-test", 47114
POLKITD = ["/usr/lib/polkit-1/polkitd", "/usr/libexec/polkitd"]
PATIENCE = 20


def skip(reason):
    print(f"SKIPPED, so elevation was NOT tested with a real polkit: {reason}")
    sys.exit(SKIPPED)


def enter_namespace():
    """Starts this program again inside."""
    if os.geteuid() != 0:
        skip("not root")
    for program in ("pkexec", "dbus-daemon", "unshare", "setpriv", "dbus-send"):
        if not shutil.which(program):
            skip(f"{program} is not installed")
    if not any(os.path.exists(path) for path in POLKITD):
        skip("polkitd is not installed")
    if subprocess.run(["unshare", "-m", "true"], capture_output=True).returncode != 0:
        skip("no mount namespace on this machine")
    ended = subprocess.run(["unshare", "-m", "--propagation", "private", sys.executable, "-B", *sys.argv, "--inside"])
    sys.exit(ended.returncode)


def mount_copy(folder, scratch):
    copy = os.path.join(scratch, folder.strip("/").replace("/", "-"))
    # With owners: the daemon reads its folders as a user of its own.
    subprocess.run(["cp", "-a", folder, copy], check=True)
    subprocess.run(["mount", "--bind", copy, folder], check=True)


def wait_until(holds, what):
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            sys.exit(f"not in time: {what}")
        time.sleep(0.02)


class System:
    """A system bus with polkit and one user, who is no administrator's friend."""

    def __init__(self, scratch, helper, policy, place):
        self.scratch = scratch
        self.home = os.path.join(scratch, "home")
        self.children = []
        os.chmod(scratch, 0o755)
        mount_copy("/etc", scratch)
        mount_copy("/usr/share/polkit-1/actions", scratch)
        subprocess.run(["mount", "-t", "tmpfs", "tmpfs", "/run"], check=True)
        for folder in ("/run/dbus", "/run/lock", self.home, "/etc/polkit-1/rules.d"):
            os.makedirs(folder, exist_ok=True)
        # For what the daemon's own rules would say.
        for name in os.listdir("/etc/polkit-1/rules.d"):
            os.unlink(os.path.join("/etc/polkit-1/rules.d", name))
        # Where it will be installed need not exist here.
        self.installed = os.path.join(scratch, "quillbay-elevate")
        with open(policy, encoding="utf-8") as file:
            text = file.read()
        if place not in text:
            sys.exit("the policy does not name the helper's place")
        with open("/usr/share/polkit-1/actions/org.quillbay.Quillbay.policy", "w", encoding="utf-8") as file:
            file.write(text.replace(place, self.installed))
        shutil.copy(helper, self.installed)
        os.chown(self.installed, 0, 0)
        os.chmod(self.installed, 0o755)
        for file, line in (("/etc/passwd", f"{USER}:x:{UID}:{UID}::{self.home}:/bin/sh"),
                           ("/etc/group", f"{USER}:x:{UID}:"), ("/etc/shadow", f"{USER}:!:19000:0:99999:7:::")):
            with open(file, "a", encoding="utf-8") as accounts:
                accounts.write(line + "\n")
        os.chown(self.home, UID, UID)
        os.environ.pop("DBUS_SYSTEM_BUS_ADDRESS", None)

    def start(self):
        self.spawn(["dbus-daemon", "--system", "--nofork", "--nopidfile"])
        wait_until(lambda: os.path.exists("/run/dbus/system_bus_socket"), "the bus")
        self.start_polkit()

    def start_polkit(self):
        self.spawn([next(path for path in POLKITD if os.path.exists(path)), "--no-debug"])
        wait_until(self.has_polkit, "polkit")

    def spawn(self, command):
        self.children.append(
            subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))

    def stop(self):
        for child in reversed(self.children):
            child.kill()
            child.wait()

    def rule(self, answer):
        """What polkit answers to the action; None: what the policy says."""
        path = "/etc/polkit-1/rules.d/10-test.rules"
        if answer is None:
            text = "// nothing\n"
        else:
            text = ('polkit.addRule(function(action, subject) { if (action.id == "%s" && subject.user == "%s") '
                    "return polkit.Result.%s; });\n" % (ACTION, USER, answer))
        with open(path + ".new", "w", encoding="utf-8") as file:
            file.write(text)
        os.rename(path + ".new", path)
        # The daemon reads its rules when the folder changes, some time later: it is started anew instead.
        daemon = self.children.pop()
        daemon.kill()
        daemon.wait()
        wait_until(lambda: not self.has_polkit(), "polkit's end")
        self.start_polkit()

    def has_polkit(self):
        call = ["dbus-send", "--system", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                "org.freedesktop.DBus.NameHasOwner", "string:org.freedesktop.PolicyKit1"]
        return b"true" in subprocess.run(call, capture_output=True).stdout

    def run(self, command):
        as_user = ["setpriv", f"--reuid={UID}", f"--regid={UID}", "--init-groups", "env", "-i",
                   "PATH=/usr/sbin:/usr/bin:/sbin:/bin", f"HOME={self.home}", "LANG=C.UTF-8"]
        return subprocess.run([*as_user, *command], stdin=subprocess.DEVNULL, capture_output=True, timeout=60,
                              start_new_session=True, check=False, cwd="/")


class Test:
    def __init__(self, system, driver):
        self.system, self.installed = system, system.installed
        self.driver = os.path.join(system.scratch, "driver")
        shutil.copy(driver, self.driver)
        self.place = "/etc/quillbay-test"
        self.failed = 0

    def make(self, name, content="x"):
        os.makedirs(self.place, exist_ok=True)
        path = os.path.join(os.fsencode(self.place), os.fsencode(name))
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        return path

    def remove(self, method, *paths, agent=None):
        command = [self.driver, method, self.installed, *paths]
        if agent:
            command = ["/usr/bin/python3", "-B", agent, *command]
        ended = self.system.run(command)
        text = ended.stdout + ended.stderr
        if b"over\n" not in ended.stdout:
            print("the driver ended early:", text)
            self.failed += 1
        return text

    def check(self, what, holds, text=b""):
        print("ok    " if holds else "FAILED", what)
        if not holds:
            self.failed += 1
            print(text.decode(errors="replace"))


AGENT = '''
import os, subprocess, sys
import dbus, dbus.mainloop.glib, dbus.service
from gi.repository import GLib

class Cancelled(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.PolicyKit1.Error.Cancelled"

class Agent(dbus.service.Object):
    @dbus.service.method("org.freedesktop.PolicyKit1.AuthenticationAgent", in_signature="sssa{ss}saa{sv}")
    def BeginAuthentication(self, action, message, icon, details, cookie, identities):
        print("asked", action, "|", message, flush=True)
        raise Cancelled("closed")

    @dbus.service.method("org.freedesktop.PolicyKit1.AuthenticationAgent", in_signature="s")
    def CancelAuthentication(self, cookie):
        pass

dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
agent = Agent(bus, "/org/quillbay/test/Agent")
authority = dbus.Interface(bus.get_object("org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority"),
                           "org.freedesktop.PolicyKit1.Authority")
loop = GLib.MainLoop()
# The one that asks is a child of the one that the agent speaks for, or that one itself.
child = subprocess.Popen(["/bin/sh", "-c", 'read go; exec "$@"', "sh", *sys.argv[1:]], stdin=subprocess.PIPE)
stat = open(f"/proc/{child.pid}/stat").read().rsplit(")", 1)[1].split()
subject = ("unix-process", dbus.Dictionary({"pid": dbus.UInt32(child.pid), "start-time": dbus.UInt64(int(stat[19]))},
                                           signature="sv"))
authority.RegisterAuthenticationAgent(subject, "C", "/org/quillbay/test/Agent")
child.stdin.write(b"go\\n")
child.stdin.close()
GLib.child_watch_add(GLib.PRIORITY_DEFAULT, child.pid, lambda *_: loop.quit())
GLib.timeout_add_seconds(40, loop.quit)
loop.run()
'''


def run_tests(test):
    system = test.system
    hostile = os.fsencode("it's $(touch pwned) \"a\"\n") + b"\xff"

    path = test.make("nobody to ask")
    text = test.remove("permanent", b"!" + path)
    test.check("without an agent nothing happens, and it says so", os.path.exists(path)
               and b"no authentication agent" in text and b"Administrator access was denied" in text, text)

    agent = os.path.join(system.scratch, "agent.py")
    with open(agent, "w", encoding="utf-8") as file:
        file.write(AGENT)
    bindings = ["/usr/bin/python3", "-c", "import dbus, gi"]
    if subprocess.run(bindings, capture_output=True).returncode != 0:
        print("SKIPPED, so a closed question was NOT tested: python3-dbus or python3-gi is not installed")
    else:
        path = test.make("closed")
        text = test.remove("permanent", b"!" + path, agent=agent)
        test.check("a closed question is a refusal", os.path.exists(path) and b"refused by the user" in text
                   and b"Administrator access was denied" in text, text)
        test.check("the question is the program's own and shows the command",
                   f"asked {ACTION} | Authentication is required to remove or move".encode() in text
                   and b"rm -rf '" + path + b"'" in text, text)
        path = test.make(hostile)
        text = test.remove("permanent", b"!" + path, agent=agent)
        test.check("bytes that are no text are shown escaped",
                   os.path.exists(path) and b"refused by the user" in text and b"%0A%FF'" in text, text)

    system.rule("NO")
    path = test.make("denied")
    text = test.remove("permanent", b"!" + path)
    test.check("a no of the system's is no refusal", os.path.exists(path) and b"no permission" in text, text)

    system.rule("YES")
    for name in ("plain", "it's", hostile, "-rf", "%41"):
        path = test.make(name)
        text = test.remove("permanent", path)
        test.check(f"root removes {name!r}", not os.path.exists(path) and b"removed " in text, text)
    text = test.remove("permanent", b"!/etc", b"!/usr/share", b"!/home", b"!/usr/lib", b"!/proc")
    test.check("the system's folders stay", text.count(b"This folder is protected") == 2
               and text.count(b"That folder is protected") == 2 and text.count(b"mounted there") == 1, text)
    path = test.make("row", "content")
    text = test.remove("trash-and-back", path)
    test.check("the Trash and back again", b"removed " in text and b"restored " in text and b"left " not in text
               and open(path, encoding="utf-8").read() == "content" and os.stat(path).st_uid == 0, text)
    trash = os.path.join(system.home, ".local/share/Trash")
    test.check("nothing is left in the Trash",
               not os.listdir(os.path.join(trash, "files")) and not os.listdir(os.path.join(trash, "info")))
    text = test.remove("trash", path)
    record = open(os.path.join(trash, "info/row.trashinfo"), encoding="utf-8").read()
    test.check("into the user's own Trash, with a record",
               os.path.exists(os.path.join(trash, "files/row")) and f"Path={test.place}/row\n" in record, text)

    path = test.make("mistrusted")
    os.chown(test.installed, UID, UID)
    text = test.remove("permanent", b"!" + path)
    test.check("a helper that is not root's is not used", os.path.exists(path) and b"not available" in text, text)
    os.unlink(test.installed)
    text = test.remove("permanent", b"!" + path)
    test.check("nor one that is missing", os.path.exists(path) and b"not available" in text, text)


def main():
    if sys.argv[-1] != "--inside":
        enter_namespace()
    driver, helper, policy, place = sys.argv[1:5]
    with tempfile.TemporaryDirectory() as scratch:
        system = System(scratch, helper, policy, place)
        try:
            system.start()
            test = Test(system, driver)
            run_tests(test)
        finally:
            system.stop()
            for folder in ("/run", "/usr/share/polkit-1/actions", "/etc"):
                subprocess.run(["umount", "-l", folder], check=False)
    sys.exit(1 if test.failed else 0)


main()
