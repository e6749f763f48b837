"""What a download that means harm must not do, from the intake of it to the clean-up after it."""
import hashlib
import json
import os
import re
import stat
import subprocess
import time
from pathlib import Path

PAGE_FILE = Path(__file__).resolve().parents[2] / "docs/hostile.md"
OTHER, WORKING = "Other Line", "ROUTES/Quillon-route"
CPU, HANGS, MEMORY = 5, 120, 200  # seconds of processors, of the clock, and MB, for each command
SHOWN = 1 << 20  # bytes
# Where what a download says may leave files, below the application folder and the game.
ROOM = re.compile(r"app/(original_zips|downloaded_routes|routes|rescued)/|app/intake\.log$|app/resources/|"
                  r"game/ROUTES/Quillon-route/|game/(TRAINS/CONSISTS|SAVES)/|home/", re.I)


def short(data):
    """Of much only a mark is kept."""
    return data if len(data) < SHOWN else hashlib.md5(data).digest()


def census(folder):
    """All below a folder: a file's bytes, or the kind of anything else. Links are not followed."""
    found = {}
    for place, folders, names in os.walk(folder):
        for path in (os.path.join(place, name) for name in (*folders, *names)):
            state, key = os.lstat(path), os.path.relpath(path, folder)
            if stat.S_ISREG(state.st_mode):
                with open(path, "rb") as file:
                    found[key] = short(file.read()) + b" setuid" * bool(state.st_mode & 0o7000) + b" linked" * (state.st_nlink > 1)
            elif not stat.S_ISDIR(state.st_mode):
                found[key] = "no file"
    return found


def peak(process):
    """The most memory that a running process ever had, in MB. What wait tells begins with this program's own."""
    try:
        return int(re.search(r"VmHWM:\s*(\d+)", Path(f"/proc/{process}/status").read_text())[1]) / 1024
    except (OSError, TypeError):
        return 0  # it has ended


class Survival:
    def __init__(self, trial, measured):
        self.t, self.measured, self.world = trial, measured, trial.world.folder
        self.outside = self.world.parent / "outside"
        self.outside.mkdir(exist_ok=True)
        (self.outside / "canary").write_bytes(b"canary")
        self.before, self.events, self.errors = self.kept(), [], []

    def kept(self):
        """What nothing may touch."""
        found = {path: data for path, data in census(self.world).items() if not ROOM.match(path)}
        return found | {f"outside/{path}": data for path, data in census(self.outside).items()}

    def run(self, *arguments):
        """Runs a command, which must come to an end of its own, in time and in bounds, and tells its status."""
        with open(self.world.parent / "said", "w+b") as said:
            began = time.monotonic()
            process = subprocess.Popen([*self.t.command, "--json", *arguments], cwd=self.t.world.home, env=self.t.env,
                                       stdout=said, stderr=subprocess.STDOUT)
            memory = 0
            while (ended := os.wait4(process.pid, os.WNOHANG))[0] == 0 and time.monotonic() - began < HANGS:
                memory = max(memory, peak(process.pid))
                time.sleep(0.002)
            if ended[0] == 0:
                process.kill()
                ended = os.wait4(process.pid, 0)
            process.returncode = status = os.waitstatus_to_exitcode(ended[1])
            said.seek(0)
            text = said.read()
        self.events = [json.loads(line) for line in text.split(b"\n") if line.startswith(b"{")]
        self.errors = [event for event in self.events if event["event"] == "error"]
        used = ended[2].ru_utime + ended[2].ru_stime, memory
        command = " ".join(arguments)
        if status not in (0, 1, 3) or (status == 1 and not self.errors) or b"Sanitizer" in text:
            self.t.fail(f"{command} ended with {status}: {text[-300:]!r}")
        if self.measured and (used[0] > CPU or used[1] > MEMORY):
            self.t.fail(f"{command} took {used[0]:.1f} s and {used[1]:.0f} MB")
        self.t.used = max(self.t.used[0], used[0]), max(self.t.used[1], used[1])
        self.look(command)
        return status

    def look(self, command):
        now = self.kept()
        if changed := sorted(path for path in self.before.keys() | now if self.before.get(path) != now.get(path)):
            self.t.fail(f"after {command}: {changed[:4]}")
        odd = [path for path, data in census(self.world).items()
               if data == "no file" or (isinstance(data, bytes) and data.endswith((b" setuid", b" linked")))]
        if odd:
            self.t.fail(f"after {command} these are no plain files: {odd[:4]}")
        if evil := [name for place in ("/", "/tmp") for name in os.listdir(place) if "evil" in name]:
            self.t.fail(f"after {command} outside: {evil}")

    def plain(self, text):
        """Without what is another one in each run."""
        text = text.replace(str(self.outside), "OUTSIDE").replace(str(self.world), "")
        return " ".join("".join(c if c.isprintable() else "?" for c in text).split())

    def outcome(self):
        verdicts = [event for event in self.events if event["event"] == "verdict"]
        if self.errors:
            return "stopped", f"{self.errors[0]['number']} {self.errors[0]['text']}"
        if not verdicts:
            return "left alone", ""
        reason = self.plain(verdicts[0]["reason"]).removesuffix("; 1 of 1 activity playable")
        return ("taken in", reason.removeprefix("taken in ")) if verdicts[0]["class"] == "ADD" else ("set aside", reason)


def survive(t, measured, kind):
    """An intake; loads of what it took in; then the same again, another load and a clean-up."""
    t.used = 0, 0
    life = Survival(t, measured)
    file, data = kind(str(life.outside))
    t.put({file: data})
    life.run("add")
    told = life.outcome()
    if told[0] == "stopped":
        life.run("--answer", "yes", "add")
        told = (f"stops, then {life.outcome()[0]}", told[1])
    t.verdict, t.reason, t.whole = told[0], told[1], "-"
    if short(data) not in census(life.world).values():
        t.fail("its bytes are lost")
    row = next((text for text in load_rows(life) if not text.startswith(OTHER)), None)
    if row is not None:
        status = life.run("load", row)
        t.whole = "yes" if status == 0 else f"error {life.errors[0]['number']}" if life.errors else "refused"
        life.run("load", OTHER)
    t.put({file: data})
    life.run("--answer", "yes", "add")
    if told[0] in ("taken in", "set aside") and life.outcome()[0] != told[0]:
        t.fail(f"the second time it is {life.outcome()}")
    if row is not None:
        life.run("load", row)
    if life.run("load", OTHER) != 0:
        t.fail(f"the other route does not load any more: {life.errors}")
    now = t.tree(t.working)
    if strays := sorted(path for path in t.loaded.keys() | now if t.loaded.get(path) != now.get(path)):
        t.fail(f"after the next load {len(strays)} files differ: {strays[:5]}")
    rows = load_rows(life)
    if life.run("clean") != 0 or load_rows(life) != rows:
        t.fail("the clean-up did not pass, or changed the list")


def load_rows(life):
    """The routes as the list shows them."""
    life.run("routes")
    return [event["text"].removesuffix(" (Loaded)") for event in life.events
            if event["event"] == "row" and event.get("zip")]


PAGE = """# Downloads that mean harm

Each of these {count} kinds of downloads comes into a small world in which another route is loaded. It is added; a route
that came of it is loaded, and the other one after it; then the same once more, and a clean-up. At no time may anything
be written outside of the places for routes, a command crash, hang, take more than {cpu} seconds of a processor or more
than {memory} MB, or the download's bytes be lost; and the other route must be as it was.

This page is made by `tests/corpus/run --hostile --page docs/hostile.md`; without `--page` the same run compares it.
{sums}

| kind | becomes | why, in the program's words | loads |
| --- | --- | --- | --- |
"""


def row_of(name, verdict, reason, whole, *_):
    reason = re.sub(r"([|<>*_`\\[\]])", r"\\\1", reason)
    return f"| {name} | {verdict} | {reason if len(reason) < 100 else reason[:100] + '...'} | {whole} |"


def tell(results, path):
    """Writes the page, or compares its rows; the exit status."""
    rows, sums = [row_of(*result) for result in results], {}
    for _, verdict, *_ in results:
        sums[verdict] = sums.get(verdict, 0) + 1
    told = ", ".join(f"{count} {verdict}" for verdict, count in sorted(sums.items(), key=lambda item: -item[1]))
    text = PAGE.format(count=len(results), cpu=CPU, memory=MEMORY, sums=f"Of all, {told}.") + "\n".join(rows) + "\n"
    if path:
        path.write_text(text)
    known = PAGE_FILE.read_text().splitlines() if PAGE_FILE.exists() else []
    news = [] if path else [row for row, result in zip(rows, results) if row not in known and result[1] != "skipped"]
    print(*(f"not as {PAGE_FILE.name} has it: {row}" for row in news), sep="\n")
    failed = [result for result in results if result[-1]]
    print(*(f"{result[0]}: {'; '.join(result[-1])}" for result in failed), sep="\n")
    seconds, memory = (max(results, key=lambda result: result[4][i]) for i in (0, 1))
    print(f"{len(results)} kinds: {told}; at most {seconds[4][0]:.1f} s ({seconds[0]}) and {memory[4][1]:.0f} MB ({memory[0]}) "
          f"for a command; {len(failed)} did harm, {len(news)} are not as told")
    return int(bool(failed or news))
