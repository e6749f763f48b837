"""A small world for fault injection: a game, an application folder and a home, played with as a user would."""
import io
import os
import shutil
import subprocess
import time
import zipfile
from pathlib import Path

DATA = "resources/Do_Not_Delete!"
WORKING = "ROUTES/Quillon-route"
# Delivered files that no command reads.
SPARED = ("resources/files/help/pictures", DATA + "/misc_info/custom_scripts")
TICK = 0.005  # seconds; the disk's clock goes on between the user's work and the system's


def game_text(text):
    return b"\xff\xfe" + text.encode("utf-16-le")


def track(name):
    return game_text('SIMISA@@@@@@@@@@JINX0r1t______\r\n\r\nTr_RouteFile (\r\n\tRouteID ( route )\r\n'
                     f'\tName ( "{name}" )\r\n\tDescription ( "A line for tests." )\r\n)\r\n')


def consist(name, items):
    return game_text(f'Train (\r\n\tTrainCfg ( "{name}"\r\n{items}\r\n)\r\n')


def service(name, train):
    return game_text(f'Service_Definition (\r\n\tName ( "{name}" )\r\n\tTrain_Config ( {train} )\r\n)\r\n')


def zip_bytes(entries):
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in entries.items():
            archive.writestr(zipfile.ZipInfo(name, (2001, 6, 1, 12, 0, 0)), data)
    return buffer.getvalue()


def route_entries(name, covers=()):
    """A route; `covers` names default files that it brings, too."""
    entries = {"route/route.trk": track(name)}
    for path in ("route/world/w.w", "route/tiles/a.t", "route/shapes/house.s", "route/activities/morning.act",
                 "route/services/morning.srv", "route/paths/morning.pat", "route/traffic/morning.trf",
                 f"trains/consists/{name.split()[0]}.con", "readme.txt", *(f"route/{path}" for path in covers)):
        entries[path] = f"{path} of {name}".encode()
    return entries


# A program of Windows that only ends, as a self-extracting archive has it in front.
def small_program():
    program = b"MZ" + bytes(58) + b"\x40\0\0\0" + b"PE\0\0\x4c\1\1\0" + bytes(12) + b"\xe0\0\2\1"
    program += b"\x0b\1\0\0\0\2\0\0" + bytes(8) + b"\0\x10\0\0" + b"\0\x10\0\0\0\x10\0\0\0\0\x40\0\0\x10\0\0\0\2\0\0"
    program += b"\4\0\0\0\0\0\0\0\4\0\0\0\0\0\0\0\0\x20\0\0\0\2\0\0\0\0\0\0"
    program += b"\3\0\0\0\0\0\x10\0\0\x10\0\0\0\0\x10\0\0\x10\0\0\0\0\0\0\x10\0\0\0" + bytes(128)
    program += b".text\0\0\0\3\0\0\0\0\x10\0\0\0\2\0\0\0\2\0\0" + bytes(12) + b"\x20\0\0\x60"
    return (program.ljust(0x200, b"\0") + b"\x31\xc0\xc3").ljust(0x400, b"\0")


class World:
    """A folder with `app`, `game` and `home`. Its path is part of its files: it is only restored in its place."""

    def __init__(self, folder, program, shim):
        self.folder = Path(folder)
        self.program, self.shim = program, shim
        self.app, self.game, self.home = (self.folder / name for name in ("app", "game", "home"))
        self.users = {}  # what must never be lost: what it is, and its bytes
        self.played = []  # files of the game that the user changed last
        self.env = {"HOME": str(self.home), "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8"}

    # Commands.

    def run(self, *arguments, **fault):
        """The exit status and what was said. `fault` has the settings of fault.c, such as at=3; {game} in an argument
        is the game's folder."""
        env = dict(self.env)
        if fault:
            env |= {"LD_PRELOAD": str(self.shim), "FAULT_ROOTS": f"{self.app}:{self.game}:{self.home}"}
            env |= {"FAULT_" + key.upper(): str(value) for key, value in fault.items()}
        command = [self.program, "--app", self.app, "--seed", "1", *(a.format(game=self.game) for a in arguments)]
        done = subprocess.run(command, cwd=self.home, env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return done.returncode, done.stdout.decode(errors="replace")

    def calls(self, *arguments):
        """Runs a command; each of its calls as kinds, name and path."""
        found = self.folder.with_name("calls")
        found.unlink(missing_ok=True)
        status, said = self.run(*arguments, list=found)
        if status != 0:
            raise RuntimeError(f"{arguments} ended with {status} without a fault:\n{said}")
        return [line.split(" ", 3)[1:] for line in found.read_text().splitlines()]

    def cut(self, part, *arguments):
        """A command that is killed when this part of its calls is done."""
        uncut = self.folder.with_name("uncut")
        kept = self.save(uncut)
        at = int(len(self.calls(*arguments)) * part)
        self.restore(uncut, kept)
        self.run(*arguments, at=at, kind="kill")

    def must(self, *arguments):
        status, said = self.run(*arguments)
        if status != 0:
            raise RuntimeError(f"the world can't be made: {arguments} ended with {status}\n{said}")

    # Files.

    def put(self, path, data):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data if isinstance(data, bytes) else data.encode())

    def own(self, path, data, played=False):
        """A file of the user's."""
        path = self.place(path)
        self.put(path, data)
        self.users[f"{path.relative_to(self.folder)}, version {len(self.users)}"] = path.read_bytes()
        if played:
            self.played.append(path)

    def place(self, path):
        """As the host spells what is there."""
        place = self.folder
        for name in path.relative_to(self.folder).parts:
            same = [n for n in os.listdir(place) if n.lower() == name.lower()] if place.is_dir() else []
            place /= name if name in same or not same else sorted(same)[0]
        return place

    def drop(self, name, data):
        self.own(self.app / "downloaded_routes" / name, data)

    # Making.

    def make(self):
        for place in (self.app, self.game, self.home):
            place.mkdir(parents=True)
        self.make_game()
        self.must("setup", "--game", str(self.game))

    def make_game(self):
        files = {"train.exe": "program", "TEMPLATE/forest.dat": "template forest",
                 "TEMPLATE/sigcfg.dat": "template signals", "GLOBAL/SHAPES/signal.s": "global shape",
                 "GLOBAL/TEXTURES/signal.ace": "global texture",
                 "TRAINS/TRAINSET/Dash9/dash9.eng": "engine",
                 "TRAINS/CONSISTS/good.con": consist("Good", "EngineData ( dash9 dash9 )"),
                 "TRAINS/CONSISTS/bad.con": consist("Bad", "EngineData ( ghost dash9 )"),
                 "ROUTES/USA1/SERVICES/good.srv": service("good", "good"),
                 "ROUTES/USA1/SERVICES/bad.srv": service("bad", "bad")}
        for route in ("Europe1", "Europe2", "Japan1", "Japan2", "USA1", "USA2"):
            folder = f"ROUTES/{route}/"
            files[folder + route + ".trk"] = track(route)
            files[folder + "ssource.dat"] = "sounds of " + route
            files[folder + f"SHAPES/{route}.s"] = "shape of " + route
        for name, data in files.items():
            self.put(self.game / name, data)
        (self.game / "SAVES").mkdir()
        for name in ("good", "bad"):
            self.own(self.game / f"TRAINS/CONSISTS/{name}.con", files[f"TRAINS/CONSISTS/{name}.con"])

    def play(self, mark):
        """What a user does with the loaded route; `mark` tells one time from another."""
        time.sleep(6 * TICK)
        for path in ("SAVES/Quillon-route/mine-{}.sav", "SAVES/Quillon-route/notes-{}.txt",
                     WORKING + "/ACTIVITIES/own-{}.act", WORKING + "/ACTIVITIES/pack/own-{}.act",
                     WORKING + "/PATHS/own-{}.pat", WORKING + "/SERVICES/own-{}.srv", WORKING + "/TRAFFIC/own-{}.trf",
                     WORKING + "/WORLD/w.w", "TRAINS/CONSISTS/own-{}.con"):
            name = path.format(mark)
            self.own(self.game / name, f"{name}, own work of {mark}", played=True)
        tiles = self.place(self.game / WORKING / "TILES")
        for tile in range(4):
            for end in ("_e.raw", "_n.raw"):
                self.put(tiles / f"{mark}{tile}{end}", f"terrain {mark}{tile}{end}")

    # Keeping.

    def save(self, place):
        """Copies the world to a folder, for `restore`."""
        shutil.rmtree(place, ignore_errors=True)
        subprocess.run(["cp", "-a", self.folder, place], check=True)
        return dict(self.users), list(self.played)

    def restore(self, place, kept):
        subprocess.run(["sh", "-c", 'rm -rf "$1" && cp -a "$0" "$1"', place, self.folder], check=True, close_fds=False)
        self.users, self.played = dict(kept[0]), list(kept[1])
        self.make_as_old()

    def clear(self):
        shutil.rmtree(self.folder, ignore_errors=True)

    def make_as_old(self):
        """A copy's times of change are new. What the system had placed must look so again, and what the user has
        changed afterwards, too."""
        record = self.app / DATA / "placed.tsl"
        if not record.exists():
            return
        lines = record.read_text().splitlines()
        spans = [i for i, line in enumerate(lines) if not line.startswith("own ")]
        began, ended = lines[spans[-1]].split()  # raises when the record is no longer of this form
        if int(ended) == 0:
            return  # in the middle of a load: what it has placed counts as the user's in any case
        os.utime(record)
        now = record.stat().st_ctime_ns
        lines[spans[-1]] = f"{began} {now}"
        record.write_bytes("".join(line + "\r\n" for line in lines).encode())
        for path in filter(Path.exists, self.played):
            while True:
                state = path.stat()
                os.utime(path, ns=(state.st_atime_ns, state.st_mtime_ns))
                if path.stat().st_ctime_ns > now:
                    break
        time.sleep(TICK)
