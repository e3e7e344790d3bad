#!/usr/bin/python3
"""What the program costs beyond the toolkit it is drawn with, seen from outside on a private desktop.

The program and toolkit_floor, a plain grid that parses nothing, take turns over the same made applications;
screen_probe times both by what stands on the screen. Medians and their ratios are printed with the limits that they
are meant to keep, once for the renderer that Qt takes by itself and once for its software renderer.

Absolute times say little on a busy machine: the load is printed with them. The processor time that a start takes
until it has settled, in the program itself, suffers least.
"""
import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import time

BENCH = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(BENCH.parent / "tests" / "e2e"))
sys.dont_write_bytecode = True
from desktop import Desktop, wait_until  # noqa: E402

REGION = "320,320,400,300"  # below the search field, inside either window
KEYS = ["z", "i", "BackSpace", "BackSpace"]  # each changes what the first rows show
START_LIMIT, USE_LIMIT, MEMORY_LIMIT = 1.25, 1.2, 60
MIDDLE = 1000  # how many applications everything but the start is measured with
CURSOR_RESTS = 15  # seconds without a key, after which no cursor blinks
IDLE = 5  # seconds


class Subject:
    """One of the two programs, and how its window is hidden and summoned."""

    def __init__(self, name, command, hide, summon):
        self.name, self.command, self.hide, self.summon = name, command, hide, summon
        self.results = {}

    def add(self, what, value):
        self.results.setdefault(what, []).append(value)

    def median(self, what):
        return statistics.median(self.results[what])


class Run:
    """The subject, started and measured; ends with the block."""

    def __init__(self, binaries, subject):
        self.subject = subject
        self.probe = subprocess.Popen([binaries / "screen_probe", REGION, *subject.command], stdin=subprocess.PIPE,
                                      stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.content, self.settled, pid = self._answer()
        self.pid = int(pid)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.probe.communicate()

    def _answer(self):
        words = self.probe.stdout.readline().split()
        if not words:
            raise SystemExit(f"{self.subject.name}: {self.probe.communicate()[1].strip()}")
        return [float(word) for word in words[1:]]

    def ask(self, command):
        self.probe.stdin.write(command + "\n")
        self.probe.stdin.flush()
        return self._answer()

    def pss(self):
        """Mebibytes of memory, what is shared counted in shares."""
        with open(f"/proc/{self.pid}/smaps_rollup", encoding="ascii") as rollup:
            return next(int(line.split()[1]) for line in rollup if line.startswith("Pss:")) / 1024

    def ticks(self):
        """User and system time of all threads, in clock ticks."""
        with open(f"/proc/{self.pid}/stat", encoding="utf-8") as stat:
            fields = stat.read().rsplit(")", 1)[1].split()
        return int(fields[11]) + int(fields[12])

    def settle(self):
        """Waits for two seconds without a tick, or for a minute."""
        state = {"ticks": -1, "since": 0.0}

        def rests():
            now = self.ticks()
            if now != state["ticks"]:
                state.update(ticks=now, since=time.monotonic())
            return time.monotonic() - state["since"] > 2
        try:
            wait_until(rests, 60, "it never rests")
        except AssertionError:
            print(f"{self.subject.name}: still busy after a minute")

    def idle_ticks(self):
        before = self.ticks()
        time.sleep(IDLE)
        return self.ticks() - before


def measure_starts(binaries, subjects, count, starts):
    for number in range(starts + 1):
        for subject in subjects:
            with Run(binaries, subject) as run:
                if number:  # the first warms the caches
                    subject.add(("start", count), run.content)
                    subject.add(("start, settled", count), run.settled)
                    subject.add(("start, processor", count), run.ticks() * 1000 / os.sysconf("SC_CLK_TCK"))


def measure_use(binaries, subject, rounds):
    """Keys and summonses of one start."""
    with Run(binaries, subject) as run:
        run.settle()
        for _ in range(rounds):
            for key in KEYS:
                first, settled = run.ask(f"key {key}")
                subject.add("key", first)
                subject.add("key, settled", settled)
        for number in range(rounds):
            run.ask(f"hide {subject.hide}")
            content, settled = run.ask(f"summon {subject.summon}")
            if number == 0:
                subject.add("first summons", content)
            else:
                subject.add("summons", content)
                subject.add("summons, settled", settled)


def measure_rest(binaries, subject):
    """Memory and processor time of a start that nobody touches."""
    with Run(binaries, subject) as run:
        time.sleep(CURSOR_RESTS)
        run.settle()
        subject.add("memory, visible", run.pss())
        subject.add("ticks, visible", run.idle_ticks())
        run.ask(f"hide {subject.hide}")
        run.settle()
        subject.add("memory, hidden", run.pss())
        subject.add("ticks, hidden", run.idle_ticks())


def print_row(title, floor, program, verdict):
    print(f"{title:32} floor {floor:8.1f}   program {program:8.1f}   {verdict}", flush=True)


def compare(floor, program, title, what, limit=None):
    ratio = program.median(what) / floor.median(what)
    print_row(f"{title}, ms", floor.median(what), program.median(what),
              f"ratio {ratio:.2f}" + (f" (limit {limit})" if limit else ""))


def print_starts(floor, program, count):
    compare(floor, program, f"start, {count}", ("start", count), START_LIMIT)
    compare(floor, program, f"start, settled, {count}", ("start, settled", count))
    compare(floor, program, f"start, processor, {count}", ("start, processor", count))


def print_flatness(floor, program, least, most):
    ratio, plain = (subject.median(("start", most)) / subject.median(("start", least)) for subject in (program, floor))
    print(f"start with {most} against {least}: {ratio:.2f} (limit {START_LIMIT}), the floor's {plain:.2f}", flush=True)


def print_use(floor, program):
    compare(floor, program, "key to first change", "key", USE_LIMIT)
    compare(floor, program, "key to settled picture", "key, settled")
    compare(floor, program, "first summons", "first summons")
    compare(floor, program, "later summonses", "summons", USE_LIMIT)
    compare(floor, program, "later summonses, settled", "summons, settled")


def print_rest(floor, program):
    for state in ("visible", "hidden"):
        own, plain = program.median(f"memory, {state}"), floor.median(f"memory, {state}")
        print_row(f"memory {state}, MiB", plain, own, f"{own - plain:.1f} more (limit {MEMORY_LIMIT})")
        print(f"ticks in {IDLE} s of rest, {state}: {program.median(f'ticks, {state}'):.0f} (limit 0)")


def make_corpus(desktop, count):
    folder = desktop.folder / f"corpus-{count}"
    subprocess.run([sys.executable, BENCH / "make_corpus.py", "entries", folder, "-n", str(count), "--icons"], check=True,
                   stdout=subprocess.DEVNULL)
    return folder


def measure(options, binaries, corpora):
    floor = Subject("floor", [], "signal", "signal")
    program = Subject("program", [str(binaries / "quillbay")], "close", "hotkey")
    for count in sorted(corpora, key=lambda count: count == MIDDLE):  # the middle one last: the rest goes on with it
        os.environ["XDG_DATA_DIRS"] = str(corpora[count])
        floor.command = [str(binaries / "toolkit_floor"), str(corpora[count])]
        measure_starts(binaries, (floor, program), count, options.starts)
        print_starts(floor, program, count)
    print_flatness(floor, program, min(corpora), max(corpora))
    if MIDDLE in corpora:
        for _ in range(options.uses):
            for subject in (floor, program):
                measure_use(binaries, subject, 6)
        print_use(floor, program)
        for subject in (floor, program):
            measure_rest(binaries, subject)
        print_rest(floor, program)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--binaries", type=pathlib.Path, default=pathlib.Path(sys.argv[0]).absolute().parent,
                        help="folder of quillbay, toolkit_floor and screen_probe; where this is called from unless given")
    parser.add_argument("--starts", type=int, default=9, help="of either program with each corpus")
    parser.add_argument("--uses", type=int, default=3, help="starts whose keys and summonses are timed")
    parser.add_argument("--sizes", default=f"100,{MIDDLE},5000", help=f"numbers of applications; {MIDDLE} for all but starts")
    parser.add_argument("--renderers", default="default,software")
    options = parser.parse_args()

    desktop = Desktop()
    try:
        os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")  # both as they usually run
        # It finds its theme where the system keeps its data, which the desktop hides from the programs.
        desktop.run("openbox", env={**os.environ, "XDG_DATA_DIRS": "/usr/local/share:/usr/share"})
        wait_until(lambda: "window id" in desktop.output("xprop", "-root", "_NET_CLIENT_LIST"), 20, "no window manager")
        corpora = {int(size): make_corpus(desktop, int(size)) for size in options.sizes.split(",")}
        for renderer in options.renderers.split(","):
            os.environ.pop("QT_QUICK_BACKEND", None)
            if renderer != "default":
                os.environ["QT_QUICK_BACKEND"] = renderer
            before = os.getloadavg()[0]
            print(f"Renderer: {renderer}", flush=True)
            measure(options, options.binaries.absolute(), corpora)
            print(f"Load: {before:.1f} before, {os.getloadavg()[0]:.1f} after\n", flush=True)
    finally:
        desktop.close()


if __name__ == "__main__":
    main()
