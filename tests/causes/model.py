"""Judges a game as the Checkup should, by nothing but what lies there."""
import os
import re

NAME = r'("[^"\r\n]*"|[^\s"]+)'
MISPLACED, LOST, FILE, CONSIST, SERVICE = ("misplaced folder", "missing folder", "missing file", "missing consist",
                                           "missing service")
TRAINS, CONSISTS, AWAY = "TRAINS/TRAINSET", "TRAINS/CONSISTS", "TRAINS/CONSISTS/QN-Backed-up-consists"


def files(folder, ending):
    """The files of a folder, by their names without ending, in capitals."""
    paths = folder.iterdir() if folder.is_dir() else []
    return {path.stem.upper(): path for path in paths if path.suffix.lower() == ending}


def text_of(path):
    data = path.read_bytes()
    return data[2:].decode("utf-16-le") if data.startswith(b"\xff\xfe") else data.decode("cp1252")


def names(pattern, text):
    """What is named there, in capitals."""
    return [name.strip('"').upper() for name in re.findall(pattern.replace("NAME", NAME), text)]


def items(text):
    """The trains that are asked for, each as folder and file."""
    return {(folder.strip('"').upper(), f"{name}.{kind[:3]}".replace('"', "").upper()) for kind, name, folder in
            re.findall(rf"\b(Engine|Wagon)Data \( {NAME} {NAME} \)", text, re.I)}


def union(sets):
    return frozenset().union(*sets)


def inside(path, other):
    return f"{path}\\".startswith(f"{other}\\")


def rename(name, before, after):
    return after + name[len(before):] if inside(name, before) else name


class Model:
    """All names are in capitals. A cause is known by its kind, place and name. The roots of a thing are the causes of
    which each one alone would keep it from working."""

    def __init__(self, game):
        self.folders, self.blanks = {}, {}  # the trains in each folder at any depth, those with a blank too much
        for place, _, found in os.walk(game / TRAINS):
            path = os.path.relpath(place, game / TRAINS).replace("/", "\\").upper()
            trains = {name.upper() for name in found if name.lower().endswith((".eng", ".wag"))} - {"DEFAULT.WAG"}
            if path != ".":
                self.folders[path] = trains
                self.blanks |= {(path, name.strip().replace(" .", ".")): name for name in trains}
        consists = files(game / AWAY, ".con") | files(game / CONSISTS, ".con")
        texts = {name: text_of(path) for name, path in consists.items()}
        self.titles = {name: names(r'TrainCfg \( NAME', text)[-1:] for name, text in texts.items()}
        self.items = {("", name): items(text) for name, text in texts.items()}
        services, activities = ({
            (route.name.upper(), name): text_of(path) for route in (game / "ROUTES").iterdir()
            for name, path in files(route / kind, ending).items()}
            for kind, ending in (("SERVICES", ".srv"), ("ACTIVITIES", ".act")))
        self.items |= {act: items(text) for act, text in activities.items()}
        self.judge_trains()
        self.consists, self.activities = {("", name): self.roots_of_items(("", name)) for name in texts}, {}
        self.whole = {name for (_, name), roots in self.consists.items() if not roots}
        self.services = {one: self.roots_of_service(text) for one, text in services.items()}
        for (route, name), text in activities.items():
            called = names(r"(?:Player_|\t)Service_Definition \( NAME", text)
            self.activities[route, name] = self.roots_of_items((route, name)) | union(
                self.services.get((route, service), {(SERVICE, route, service)}) for service in called)
        self.playable = {act for act, roots in self.activities.items() if not roots}
        self.list_causes()

    def good(self, item):
        return item[1] in self.folders.get(item[0], ())

    def judge_trains(self):
        # The trains that work as they are: those of whole consists, and the good ones of activities.
        self.used = union(some for (route, _), some in self.items.items() if not route and all(map(self.good, some)))
        self.used |= {item for (route, _), some in self.items.items() if route for item in some if self.good(item)}
        self.bad = {item for some in self.items.values() for item in some if not self.good(item)}
        self.wanted, self.places, self.roots = {}, {}, {}  # the bad trains of folders, where these lie, roots of items
        for folder, name in self.bad:
            self.wanted.setdefault(folder, set()).add(name)
        for folder, wanted in self.wanted.items():
            lacking, roots = wanted, set()
            if folder not in self.folders:
                lacking = self.find(folder, wanted)
                roots = {(MISPLACED if folder in self.places else LOST, "", folder)}
            for name in wanted:
                self.roots[folder, name] = roots | {(FILE, folder, name)} if name in lacking else roots

    def find(self, folder, wanted):
        """Where a folder lies that is not in its place, and which of the wanted trains it lacks there."""
        same = [path for path, held in self.folders.items()
                if path.split("\\")[-1].strip() == folder and held & wanted]
        if same:
            place = min(same, key=lambda path: (-len(self.folders[path] & wanted), path.count("\\"), path))
        else:
            holding = [path for path, held in self.folders.items() if wanted <= held]
            place = min(holding, key=lambda path: (self.in_use(path), path.count("\\"), path), default=None)
        if not place:
            return set()
        self.places[folder] = place
        return wanted - self.folders[place]

    def in_use(self, path):
        """Whether trains that work are asked for in this folder; those in deeper ones are not found."""
        return any(folder == path for folder, _ in self.used)

    def roots_of_items(self, thing):
        return union(self.roots.get(item, ()) for item in self.items[thing])

    def roots_of_service(self, text):
        asked = names(r"Train_Config \( NAME \)", text)
        fitting = [name for name in sorted(self.titles) if asked and asked[-1] in (name, *self.titles[name])]
        if not fitting:
            return frozenset({(CONSIST, "", asked[-1])} if asked else ())
        return self.consists["", min(fitting, key=lambda name: (name not in self.whole, name != asked[-1]))]

    def list_causes(self):
        kinds = [("consists", "", self.consists), ("services", ".SRV", self.services),
                 ("activities", ".ACT", self.activities)]
        self.causes = {cause: {"moves": []} for _, _, things in kinds for roots in things.values() for cause in roots}
        for cause, facts in self.causes.items():
            for kind, ending, things in kinds:
                facts[kind] = sorted("\\".join(thing).strip("\\") + ending
                                     for thing, roots in things.items() if cause in roots)
                facts[kind + "Healed"] = sum(roots == {cause} for roots in things.values())
            del facts["servicesHealed"]
            if cause[0] in (MISPLACED, LOST):
                facts["files"] = sorted(name for name in self.wanted[cause[2]]
                                        if (FILE, cause[2], name) not in self.causes)
        self.moves = []
        for cause in sorted(self.causes, key=self.rank):
            before, after = self.move(cause)
            if before and not any(inside(before, taken) or inside(taken, before) for taken, _ in self.moves):
                self.moves.append((before, after))
                self.causes[cause]["moves"] = [(before, after)]

    def rank(self, cause):
        return -self.causes[cause]["activitiesHealed"], -self.causes[cause]["consistsHealed"], cause[2]

    def move(self, cause):
        kind, place, name = cause
        if kind == MISPLACED and not self.in_use(self.places[name]):
            return self.places[name], name
        there = self.blanks.get((place, name))
        if kind == FILE and there and there != name and (place, there) not in self.used:
            return f"{place}\\{there}", f"{place}\\{name}"
        return None, None
