"""The commands that are struck, each with the world it starts from, and those that follow."""
import gzip
import io
import tarfile
from dataclasses import dataclass

from world import route_entries, small_program, zip_bytes

A, B, C = "Alder Line", "Birch Valley", "Cedar Hill"
DONE, REFUSED = 0, 3


# Worlds. Each function goes on from the one that it names.

def nothing(world):
    """The program was set up; a game, and downloads."""
    world.make()
    for zip_name, name, covers in (("alder", A, ["forest.dat"]), ("birch", B, ["sigcfg.dat"]), ("cedar", C, [])):
        world.drop(zip_name + ".zip", zip_bytes(route_entries(name, covers)))


def played(world):
    """Three routes were taken in, the first is loaded and was driven."""
    world.must("--welcome", "ok", "start")
    world.must("add")
    world.must("clean")  # only the second one finds all that the first start has made
    world.must("load", A)
    world.play("a")


def plain(world):
    world.drop("dogwood.zip", zip_bytes(route_entries("Dogwood Dale")))


def nested(world):
    inner = zip_bytes(route_entries("Elm Edge", ["forest.dat"]))
    world.drop("elm.zip", zip_bytes({"inner.zip": inner, "read me.txt": b"outside"}))


def as_program(world):
    inner = zip_bytes(route_entries("Fir Forest") | {"install.txt": b"at the top"})
    world.drop("fir.zip", zip_bytes({"fir.exe": small_program() + inner, "notes.txt": b"outside"}))


def foreign(world):
    buffer = io.BytesIO()
    with tarfile.open(fileobj=buffer, mode="w") as archive:
        for name, data in route_entries("Gorse Gap", ["forest.dat"]).items():
            entry = tarfile.TarInfo(name)
            entry.size = len(data)
            archive.addfile(entry, io.BytesIO(data))
    world.drop("gorse.tar.gz", gzip.compress(buffer.getvalue(), mtime=0))


def odd(world):
    """An intake has ended at one of two downloads."""
    world.drop("hazel.zip", zip_bytes(route_entries("Hazel") | {"route/route.trk": b"no name"}))
    plain(world)
    world.run("add")


def newer(world):
    # Changed while the route was in the game, and put away since.
    world.own(world.app / "routes/activities/activities/cedar/morning.act", b"the user's own morning")
    world.drop("cedar.zip", zip_bytes(route_entries("Cedar Hill", ["sigcfg.dat"])))


def damaged(world):
    whole = zip_bytes(route_entries("Cedar Hill", ["ssource.dat"]))
    world.drop("cedar.zip", whole[:len(whole) // 2])


def second(world):
    world.must("load", B)
    world.play("b")
    world.must("load", A)
    world.play("a2")


def put_away(world):
    world.must("load", B)
    world.play("b")
    world.must("load", A)


def shelved(world):
    put_away(world)
    world.must("--answer", "yes", "remove", B)


def installed(world):
    folder = world.game / "ROUTES/MyRoute"
    for name, data in route_entries("My Route").items():
        if name.startswith("route/"):
            world.own(folder / name.removeprefix("route/").replace("route.trk", "MyRoute.trk"), data)
    # Left out of a pack, each for another reason.
    for name in ("forest.dat", "tool.exe", "world/w.bk"):
        world.own(folder / name, "own " + name)
    world.own(world.game / "SAVES/MyRoute/my.sav", "a save of MyRoute")
    world.put(folder / "tiles/t_e.raw", "terrain")


def with_shortcut(world):
    world.must("options", "--shortcut", "on")


def cut_load(world):
    world.cut(0.8, "load", B)


def cut_clean(world):
    world.cut(0.5, "clean")


def cut_permanent(world):
    world.cut(0.4, "--answer", "yes", "permanent", A)


def cut_remove(world):
    put_away(world)
    world.cut(0.6, "--answer", "yes", "remove", B)


def cut_add(world):
    newer(world)
    world.cut(0.6, "add")


@dataclass
class Act:
    """A command under test. `arguments` may name the game by {game}."""
    arguments: tuple
    makes: tuple  # the functions above that make its world
    other: str = C  # the route that a `load` afterwards takes
    open_places: tuple = ()  # below the game's folder, which it may change besides
    clean: tuple = ("clean",)
    follow_ups: tuple = ("again", "load", "clean")

    def of(self, follow_up):
        return {"again": self.arguments, "load": ("load", self.other), "clean": self.clean}[follow_up]


PLAYED = (nothing, played)
ACTS = {
    "load": Act(("load", B), PLAYED),
    "second": Act(("load", B), PLAYED + (second,)),
    "add": Act(("add",), PLAYED + (plain,)),
    "add-nested": Act(("add",), PLAYED + (nested,)),
    "add-program": Act(("add",), PLAYED + (as_program,)),
    "add-foreign": Act(("add",), PLAYED + (foreign,)),
    "add-odd": Act(("--answer", "yes", "add"), PLAYED + (odd,)),
    "add-newer": Act(("add",), PLAYED + (newer,)),
    "add-damaged": Act(("add",), PLAYED + (damaged,)),
    "pack": Act(("--answer", "yes", "pack", "{game}/ROUTES/MyRoute"), PLAYED + (installed,),
                open_places=("routes/myroute", "saves/myroute")),
    "clean": Act(("clean",), PLAYED, other=B),
    "remove": Act(("--answer", "yes", "remove", B), PLAYED + (put_away,)),
    "permanent": Act(("--answer", "yes", "permanent", A), PLAYED, open_places=("routes/alder",)),
    "checkup": Act(("checkup",), PLAYED, other=B),
    "options": Act(("options", "--game", "{game}", "--shortcut", "off"), PLAYED + (with_shortcut,), other=B),
    "setup": Act(("setup", "--game", "{game}"), PLAYED, other=B),
    "start": Act(("start",), PLAYED, other=B),
    "first-start": Act(("--welcome", "ok", "start"), (nothing,),
                       clean=("--welcome", "ok", "clean"), follow_ups=("again", "clean")),
    # What was cut short is mended under faults, too.
    "mending-load": Act(("load", B), PLAYED + (cut_load,)),
    "mending-clean": Act(("clean",), PLAYED + (cut_load,)),
    "mending-cut-clean": Act(("load", B), PLAYED + (cut_clean,)),
    "mending-permanent": Act(("start",), PLAYED + (cut_permanent,), open_places=("routes/alder",)),
    "mending-remove": Act(("start",), PLAYED + (cut_remove,)),
    "mending-add": Act(("add",), PLAYED + (cut_add,)),
    "shelf": Act(("shelf", "--put-back", "1"), PLAYED + (shelved,)),
}

# Where a second time may be refused, and why.
MAY_REFUSE = {
    ("remove", "again"): "the route is gone, also when the start has finished what was cut short",
    ("permanent", "again"): "the route is no longer in Quillon, also when the start has finished it",
    ("pack", "again"): "the folder is gone",
}
