"""A desktop of a test's own: X server, window manager, session bus and home, gone when the test ends.

Make one before anything speaks to a bus: the accessibility library reads the environment when it is first used.
"""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time


def wait_until(question, seconds, what):
    """Asks until the answer is true and returns it; fails after that many seconds."""
    end = time.monotonic() + seconds
    while True:
        answer = question()
        if answer:
            return answer
        if time.monotonic() > end:
            raise AssertionError(f"after {seconds} s: {what() if callable(what) else what}")
        time.sleep(0.02)


class Desktop:
    def __init__(self, width=1440, height=900):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbay-e2e-"))
        self.home = self.folder / "home"
        self.data = self.home / "data"
        self.processes = []
        for name in ("home/data/applications", "home/empty", "home/bin", "run"):
            (self.folder / name).mkdir(parents=True)
        (self.folder / "run").chmod(0o700)
        for name in ("LANGUAGE", "LC_ALL", "LC_MESSAGES", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DISPLAY",
                     "DBUS_SESSION_BUS_ADDRESS", "AT_SPI_BUS_ADDRESS", "XDG_DATA_DIRS"):
            os.environ.pop(name, None)
        os.environ.update(
            HOME=str(self.home), XDG_DATA_HOME=str(self.data), XDG_CONFIG_HOME=str(self.home / "config"),
            XDG_CACHE_HOME=str(self.home / "cache"), XDG_STATE_HOME=str(self.home / "state"),
            XDG_RUNTIME_DIR=str(self.folder / "run"), LANG="C.UTF-8",
            PATH=f"{self.home / 'bin'}:{os.environ['PATH']}", QT_QPA_PLATFORM="xcb",
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        try:
            self._start_servers(width, height)
        except BaseException:
            self.close()
            raise

    def _start_servers(self, width, height):
        read, write = os.pipe()
        self.run("Xvfb", "-displayfd", str(write), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp",
                 "-noreset", pass_fds=(write,))
        os.close(write)
        with os.fdopen(read) as pipe:
            number = pipe.readline().strip()
        assert number, "the X server did not start"
        os.environ["DISPLAY"] = f":{number}"
        # The bus's daemons inherit its environment: the display must be known before.
        bus = self.run("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address",
                       stdout=subprocess.PIPE, text=True)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        assert os.environ["DBUS_SESSION_BUS_ADDRESS"], "the session bus did not start"
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        # The bus's daemons need the machine's own data; what is listed is the test's alone.
        os.environ["XDG_DATA_DIRS"] = str(self.home / "empty")
        machine = {**os.environ, "XDG_DATA_DIRS": "/usr/local/share:/usr/share"}
        self.run("openbox", env=machine)  # it ends without its theme
        # The last thing it sets once it manages windows.
        wait_until(lambda: "_NET_CLIENT_LIST(WINDOW)" in self.output("xprop", "-root", "_NET_CLIENT_LIST"), 20,
                   "no window manager")

    def run(self, *command, **options):
        """Starts a program that ends with the desktop at the latest."""
        options.setdefault("stdout", subprocess.DEVNULL)
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        self.processes.append(process)
        return process

    @staticmethod
    def output(*command):
        return subprocess.run(command, capture_output=True, text=True, timeout=20, check=False).stdout

    @staticmethod
    def xdotool(*arguments):
        subprocess.run(("xdotool",) + arguments, check=True, timeout=20, stdout=subprocess.DEVNULL)

    def add_program(self, name, script):
        path = self.home / "bin" / name
        path.write_text("#!/bin/sh\n" + script)
        path.chmod(0o755)

    def add_entry(self, file_id, name, command, extra=""):
        """Writes a desktop entry the way installers do: complete before it has its name."""
        entry = f"[Desktop Entry]\nType=Application\nName={name}\nExec={command}\n{extra}"
        path = self.data / "applications" / f"{file_id}.desktop"
        part = path.with_suffix(".part")
        part.write_text(entry)
        part.rename(path)

    def close(self):
        for process in reversed(self.processes):
            if process.poll() is None:
                process.terminate()
        for process in self.processes:
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            if process.stdout:
                process.stdout.close()
        shutil.rmtree(self.folder, ignore_errors=True)
