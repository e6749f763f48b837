"""What must hold of a world after a fault, and after the command that follows it."""
import io
import os
import zipfile

from world import DATA, WORKING

# The game's folders that the program may change.
OPEN_PLACES = ("routes/quillon-route", "saves/quillon-route", "quillon_extras", "trains/consists")


def contents(path):
    with open(path, "rb") as file:
        return file.read()


def is_below(name, places):
    lower = name.lower().rstrip("/")
    return any(lower == place or lower.startswith(place + "/") for place in places)


class Look:
    """A world as it stands, looked at once."""

    def __init__(self, world):
        self.world = world
        self.names = []  # below the world's folder; folders have a closing slash
        self.walk(str(world.folder) + "/", "app/")
        self.walk(str(world.folder) + "/", "game/")

    def walk(self, root, folder):
        try:
            with os.scandir(root + folder) as entries:
                for entry in entries:
                    if entry.is_dir(follow_symlinks=False):
                        self.names.append(folder + entry.name + "/")
                        self.walk(root, self.names[-1])
                    else:
                        self.names.append(folder + entry.name)
        except FileNotFoundError:
            pass  # the whole folder was lost: its files are missed

    def below(self, folder):
        """Names below a folder, in lower case, and the bytes of those that are files."""
        root, lower = str(self.world.folder) + "/", folder.lower() + "/"
        return {name.lower()[len(lower):]: None if name.endswith("/") else contents(root + name)
                for name in self.names if name.lower().startswith(lower) and len(name) > len(lower)}

    def lost(self):
        """The user's files whose bytes are nowhere, neither as a file nor inside an archive."""
        wanted, root = {}, str(self.world.folder) + "/"
        for what, data in self.world.users.items():
            wanted.setdefault(data, []).append(what)
        sizes = {len(data) for data in wanted}
        for name in self.names:
            # A route file may be a zip's twin, but is no original: the next intake replaces it.
            if not name.lower().endswith(("/", ".qnz")) and os.stat(root + name).st_size in sizes:
                wanted.pop(contents(root + name), None)
        for name in self.names if wanted else ():
            if name.lower().endswith((".qnz", ".zip")):
                for data in entries_of(contents(root + name)):
                    wanted.pop(data, None)
        return sorted(what for whats in wanted.values() for what in whats)

    def foreign(self, open_places):
        """What the program has no business with in the game's folder."""
        places = tuple("game/" + place for place in (*OPEN_PLACES, *open_places))
        root = str(self.world.folder) + "/"
        return {name: None if name.endswith("/") else contents(root + name) for name in self.names
                if name.startswith("game/") and not is_below(name, places)}

    def rests(self):
        """Names that only a work in progress may have."""
        found = set()
        for name in self.names:
            lower = name.lower()
            last = lower.rstrip("/").rsplit("/", 1)[-1]
            if (last.endswith(("~", ".tmp")) or last.startswith("quillon-removed-") or
                    lower.startswith("app/routes/") and lower.endswith(".zip")):
                found.add(name)
        return found


def entries_of(data):
    """Those that can be read: a damaged archive keeps nothing."""
    damage = (zipfile.BadZipFile, OSError, EOFError)
    try:
        archive = zipfile.ZipFile(io.BytesIO(data))
    except damage:
        return
    for name in archive.namelist():
        try:
            yield archive.read(name)
        except damage:
            pass


def sections(path):
    """A profile file; sections and keys in lower case."""
    found, current = {}, {}
    for line in contents(path).decode("utf-8", "replace").splitlines() if path.exists() else ():
        if line.startswith("["):
            current = found.setdefault(line.strip()[1:-1].lower(), {})
        elif "=" in line:
            key, value = line.split("=", 1)
            current[key.strip().lower()] = value.strip()
    return found


class End:
    """A world at its end, as far as two of them must be the same."""

    def __init__(self, look):
        data = look.world.app / DATA
        ini = sections(data / "routes.ini")
        current = ini.get("current", {})
        self.working = look.below("game/" + WORKING)
        self.saves = look.below("game/SAVES/Quillon-route")
        self.originals = {name: data for name, data in look.below("app/original_zips").items() if name.endswith((".zip", ".gz"))}
        self.loaded = current.get("loaded", "")
        self.routes = sorted((name, keys["zip"]) for name, keys in ini.items() if name != "current" and "zip" in keys)
        self.rests = look.rests()
        self.unfinished = [f"routes.ini has {key}" for key in ("putaway", "loading") if key in current]
        self.unfinished += [name for name in ("unfinished.ini", "intake.tsl") if (data / name).exists()]

    def left(self):
        return [f"{what} is left" for what in (*sorted(self.rests), *self.unfinished)]

    def differences(self, reference, is_again):
        """After the same command, what it is about must be the same, too."""
        found = compared(reference.working, self.working, "the working route's ")
        found += compared(reference.saves, self.saves, "of the game's saves ")
        if self.loaded != reference.loaded:
            found.append(f'loaded is "{self.loaded}", not "{reference.loaded}"')
        if is_again and self.routes != reference.routes:
            found.append(f"the routes are {self.routes}, not {reference.routes}")
        if is_again:
            found += compared(reference.originals, self.originals, "of the original zips ")
        return found


def compared(before, after, what):
    if before == after:
        return []
    found = []
    for name in sorted(before.keys() | after.keys()):
        if name not in after:
            found.append(f"{what}{name} is gone")
        elif name not in before:
            found.append(f"{what}{name} is new")
        elif before[name] != after[name]:
            found.append(f"{what}{name} has changed")
    return found
