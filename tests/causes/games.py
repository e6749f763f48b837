"""Random small games with the mistakes that people's games have, and random changes to them."""
import os
import shutil
import time

FOLDERS = ["Dash9", "Köf II", "Ore & Coal", "Kestrel's", "O'Brien", "SD40-2", "Übersee", "Big Boy", "V200"]
STEMS = ["lok", "köf 2", "wagen", "a&b", "äöü"]
CONSISTS = ["local", "Express 7", "Güterzug", "ore & coal", "R & D", "O'Train", "way freight", "shunter", "Nord-Süd"]
SERVICES = ["early", "Spät", "way freight", "a&b", "o'srv", "player"]
ROUTES = ["USA1", "Europe1", "Grünwald & Co", "Talbahn", "o'hill", "Quillon-route"]
GHOSTS = ["<ghost>", "no & where", "gone", "'t"]  # with signs, too, that no file's name can have
# Where a train folder lies, and how often: in its place, too deep, under other names, nowhere, in more than one place.
PLACES = {"{}": 8, "Pack/{}": 2, "Pack/in/{}": 1, "{} neu": 1, "Pack/in/{} neu": 1, "{} ": 1, " {}": 1, "{}/{}": 1,
          "": 4, "Pack": 4, "Pack/{}|Pack/in/{}": 3, "{}|Other/{}": 1, "Other/{}|A/{}|V 36": 1, "A/in/{} neu|{} alt": 2}
ODD_ITEMS = ["EngineData (lok Dash9)", "EngineData( no where )", "WagonData ( lok Dash9 )\tand a comment",
             "EngineData ( lok Dash9 ) WagonData ( wagen V200 )", "EngineData ( EngineData ( a f ) )",
             "EngineData ( lok Dash9 )\nWagonData ( no where )", 'EngineData ( ü"lok" Dash9 )']
FATAL = b"Train (\r\n\tTrainCfg ( \"Fatal\"\r\n\tEngineData ( alone )\r\n)\r\n"


class Maker:
    """Makes a game. An odd one has things, too, that only the Checkup knows how to take."""

    def __init__(self, rng, game, odd):
        self.rng, self.game, self.odd = rng, game, odd
        self.trainset, self.consists = game / "TRAINS/TRAINSET", game / "TRAINS/CONSISTS"
        self.asked = []  # trains that there should be, as folder and file
        self.routes, self.clock = rng.sample(ROUTES, rng.randint(1, 3)), time.time() - 10**7
        self.make_trains()
        for name in rng.sample(CONSISTS, rng.randint(3, 9)):
            self.make_consist(name)
        for route in self.routes:
            for name in rng.sample(SERVICES, rng.randint(0, 5)):
                self.make_service(route, name)
            for number in range(rng.randint(0, 5)):
                self.make_activity(route, number)

    def one_in(self, number):
        return self.rng.randrange(number) == 0

    def write(self, path, lines):
        path.parent.mkdir(parents=True, exist_ok=True)
        text = "\n".join([*lines, ")", ""]).replace("\n", "\r\n")
        wide, ansi = b"\xff\xfe" + text.encode("utf-16-le"), text.encode("cp1252")
        path.write_bytes(self.rng.choices([wide, ansi, b""], [16, 8, 1])[0])
        self.age(path)

    def age(self, path):
        """Each file has a time of its own, some of them only a little later."""
        self.clock += self.rng.choice([0.001, 1, 5000])
        os.utime(path, (self.clock, self.clock))

    def spell(self, name):
        return self.rng.choice([name, name, name, name.upper(), name.lower()])

    def quote(self, name):
        return f'"{name}"' if " " in name or self.one_in(4) else name

    def make_trains(self):
        rng = self.rng
        for folder in rng.sample(FOLDERS, rng.randint(3, 7)):
            trains = rng.sample([stem + end for stem in STEMS for end in (".eng", ".wag")], rng.randint(1, 4))
            self.asked += [(folder, train) for train in trains]
            for place in filter(None, rng.choices(list(PLACES), list(PLACES.values()))[0].split("|")):
                path = self.trainset / place.replace("{}", rng.choice([folder] * 3 + [folder.upper()]))
                path.mkdir(parents=True, exist_ok=True)
                for train in trains if rng.random() < 0.6 else rng.sample(trains, rng.randint(0, len(trains))):
                    self.make_train(path, train)
        if self.one_in(3):
            self.make_train(self.trainset, "lok.eng")

    def make_train(self, folder, train):
        stem, end = os.path.splitext(train)
        kinds = {train: 20, stem + " " + end: 2, " " + train: 0.5, stem + (".wag" if end == ".eng" else ".eng"): 2,
                 train.upper(): 3, "default.wag": 0.5}
        name = self.rng.choices(list(kinds), list(kinds.values()))[0]
        if not any(path.name.upper().replace(" ", "") == name.upper().replace(" ", "") for path in folder.iterdir()):
            (folder / name).write_bytes(b"" if self.one_in(2) else train.encode())
            self.age(folder / name)

    def items(self, count):
        """Lines that ask for trains: for those of the game, for those that should be there, or for any."""
        rng, part = self.rng, self.rng.choice([0, 0, 0.5, 0.9])
        there = [(path.parent.name, path.name) for path in sorted(self.trainset.glob("*/*.*"))
                 if path.parent.name == path.parent.name.strip() and (path.parent.name != "Pack" or self.one_in(4))
                 and (path.stem == path.stem.strip() or self.one_in(6))]
        for _ in range(count):
            folder, train = rng.choice(self.asked if rng.random() < part or not there else there)
            stem, end = os.path.splitext(rng.choice(STEMS + GHOSTS) + ".eng" if rng.random() < part / 10 else train)
            end = rng.choices([end.lower(), ".wag", ".eng"], [20, part, part])[0]
            word = self.spell("EngineData" if end == ".eng" else "WagonData")
            item = f"{word} ( {self.quote(self.spell(stem))} {self.quote(self.spell(folder))} )"
            yield "\t\t\t" + (rng.choice(ODD_ITEMS) if self.odd and self.one_in(12) else item)

    def make_consist(self, name):
        rng, away = self.rng, "QN-Backed-up-consists"
        for place in rng.choices([[""], [away], ["", away]], [16, 3, 1])[0]:
            title = rng.choice([name, self.spell(name), "The " + name, rng.choice(CONSISTS)])
            titles = rng.choices([[title], ["Before", title], []], [10, 1, 1])[0]
            self.write(self.consists / place / f"{name}.con", [
                "SIMISA@@@@@@@@@@JINX0D0t______", "", "Train (", *(f'\tTrainCfg ( "{one}"' for one in titles),
                *(f"\t\tEngine (\n\t\t\tUiD ( 1 )\n{item}\n\t\t)" for item in self.items(rng.randint(0, 5))), "\t)"])

    def make_service(self, route, name):
        rng, there = self.rng, [path.stem for path in sorted(self.consists.rglob("*.con"))]
        asked = rng.choice(there * 2 + CONSISTS + GHOSTS + ["The " + consist for consist in CONSISTS])
        asked = rng.choices([[asked], ["before", asked], []], [12, 1, 1])[0]
        self.write(self.game / f"ROUTES/{route}/SERVICES/{name}.srv", [
            "Service_Definition (", f'\tName ( "{name}" )',
            *(f"\tTrain_Config ( {self.quote(self.spell(one))} )" for one in asked)])

    def make_activity(self, route, number):
        rng, lines = self.rng, ["Tr_Activity (", f'\tName ( "Activity & <{number}>" )']
        there = [path.stem for path in sorted(self.game.glob(f"ROUTES/{route}/SERVICES/*.srv"))]
        for place in range(rng.choice([0, 1, 1, 2, 3, 4])):
            name = self.spell(rng.choice(SERVICES + GHOSTS if self.one_in(8) or not there else there))
            lines += [f"\tService_Definition ( {self.quote(name)} {rng.randint(1, 86400)}" if place else
                      f'\tPlayer_Service_Definition ( "{name}"', "\t)"]
        lines += self.items(rng.randint(1, 3) if self.one_in(5) else 0)
        self.write(self.game / f"ROUTES/{route}/ACTIVITIES/{rng.choice(['Früh', 'x & y'])} {number}.act", lines)


def change(maker, cache, checkup):
    """A few things that happen between two Checkups; their names."""
    rng, game = maker.rng, maker.game
    fatal, earlier, newest = maker.consists / "m fatal.con", cache.with_name("earlier"), cache.read_bytes()
    consist, train = "TRAINS/CONSISTS/**/*.con", "TRAINS/TRAINSET/*/**/*.*"

    def pick(pattern=None):
        """A file of these, or of those that a Checkup reads."""
        pattern = pattern or rng.choice([consist, "ROUTES/*/SERVICES/*.srv", "ROUTES/*/ACTIVITIES/*.act"])
        return rng.choice(sorted(path for path in game.glob(pattern) if path.is_file()) or [game / "none"])

    def keep_size(path):
        data = path.read_bytes()
        for word in ["lok", "wagen", "local", "shunter", "early", "Name"]:
            if rng.random() < 0.8:
                for code in ("cp1252", "utf-16-le"):
                    data = data.replace(word.encode(code), (word[:-1] + "q").encode(code))
        path.write_bytes(data)

    def changed(path):
        keep_size(path)
        maker.age(path)

    def changed_in_its_time(path):
        """Only the size is another one."""
        before, data = path.stat().st_mtime_ns, path.read_bytes()
        more = "\r\n\tTrain_Config ( local )\r\n\tWagonData ( no where )\r\n\tService_Definition ( gone 1\r\n"
        path.write_bytes(data + more.encode("utf-16-le" if data.startswith(b"\xff\xfe") else "cp1252"))
        os.utime(path, ns=(before, before))

    def changed_at_once(path):
        """Twice within the time in which the clock of a disk may stand still."""
        now = time.time_ns()
        os.utime(path, ns=(now, now))
        checkup()
        if path.exists() and time.time_ns() - now < 2 * 10**9:
            keep_size(path)
            os.utime(path, ns=(now, now))

    def added():
        maker.make_consist(rng.choice(CONSISTS))
        maker.make_service(rng.choice(maker.routes), rng.choice(SERVICES))
        maker.make_activity(rng.choice(maker.routes), rng.randrange(9))

    def swapped(path, other):
        path.rename(game / "between")
        other.rename(path)
        (game / "between").rename(other)

    def damaged(data):
        place = rng.randrange(len(data))
        one, rest = bytes([data[place] ^ 1 << rng.randrange(8)]), data[place + 1:]
        cache.write_bytes(data[:place] + rng.choice([b"", one, one + rest, rest, data[place:] + one]))

    def renamed(path, place):
        path.rename(path.with_name(place + path.suffix) if path.is_file() else maker.trainset / place)

    kinds = {"added": added, "removed": lambda: pick().unlink(), "changed": lambda: changed(pick()),
             "changed in its time": lambda: changed_in_its_time(pick()),
             "changed at once": lambda: changed_at_once(pick()),
             "swapped": lambda: swapped(pick(consist), pick(consist)), "fatal": lambda: fatal.write_bytes(FATAL),
             "train removed": lambda: pick(train).unlink(),
             "train renamed": lambda: renamed(pick(train), rng.choice(STEMS)),
             "folder renamed": lambda: renamed(pick(train).parent, rng.choice([*FOLDERS, "Pack/New", "V 36"])),
             "cache damaged": lambda: damaged(newest), "earlier cache": lambda: shutil.copy(earlier, cache)}
    happened = []
    fatal.unlink(missing_ok=True)
    for kind in rng.choices(list(kinds), k=rng.randint(1, 4)):
        try:
            kinds[kind]()
            happened.append(kind)
        except OSError:
            pass  # nothing is there that it could happen to
    earlier.write_bytes(newest)
    return happened
