"""The shapes that downloads come in, each with what must become of it."""
import functools
import os
import re
import subprocess

from formats import BMPS, GIF, JPEG, PNG, Entry, noise, packed_by, rar, zip_file
from world import consist, small_program, track

SHAPES = {}  # by name: a function of a trial
GONE = Entry(place=None)
STUB = small_program().ljust(200_000, b"\x90")
FILES = ("World/w.w", "World/w.bk", "Tiles/a.t", "Tiles/a_e.raw", "Shapes/a.s", "Shapes/House.s", "Textures/a.ace",
         "Activities/morning.act", "Services/Morning.srv", "Paths/morning.pat", "Traffic/morning.trf", "forest.dat")


def shape(name):
    return lambda function: SHAPES.update({name: function})


def route(more=None, name="Foo Valley"):
    """A route that covers a default file; with all of the entries `more`."""
    entries = {f"Foo/{path}": f"{path} of {name}, ".encode() * 50 for path in FILES}
    return entries | {"Foo/Foo.trk": track(name)} | (more or {})


def places(entries):
    """Where the files of a route must arrive below the working route."""
    lower = {name: str(name).replace("\\", "/").lower() for name in entries}
    return {getattr(entry, "place", "") or lower[name].removeprefix("foo/"): entry for name, entry in entries.items()
            if getattr(entry, "place", "") is not None and not lower[name].endswith(("/", "_e.raw", ".bk", ".con"))}


def plain(name, more=None, want="ADD", reason="", make=zip_file, files=("foo.zip",), load="exact"):
    """One download, in one or two files: a route with some more entries."""
    @shape(name)
    def trial(t):
        entries = route(more)
        data, half = make(entries), 1000 if len(files) > 1 else None
        loads = {None: places(entries)} if want == "ADD" and load in ("exact", "whole") else {}
        t.take(dict(zip(files, (data[:half], data[half:]))), {None: want}, reason, loads, load == "exact")
        if load in ("refused", "spoilt"):
            t.refuse_load(load == "spoilt")


def together(t, routes, loads=None):
    """Several routes that come in one intake."""
    t.take({stem + ".zip": zip_file(entries) for stem, entries in routes.items()}, dict.fromkeys(routes, "ADD"), "",
           {stem: places(routes[stem]) for stem in loads or routes})


# Pictures, each in a zip of its own. All previews must be the same, but those of pictures with 16 bits a pixel.
PICTURES = {f"bmp-{header}": rows for header, rows in sorted(BMPS.items())} | {
    "png-as-jpg": {"a.jpg": PNG}, "gif-interlaced": {"a.gif": GIF}, "jpeg-progressive": {"a.jpg": JPEG}}
for name, rows in PICTURES.items():
    @shape(name)
    def trial(t, rows=rows):
        files = {f"p{i}": file for i, file in enumerate(rows)}
        together(t, {stem: route({"Foo/" + file: rows[file]}, stem) for stem, file in files.items()}, ["p0"])
        previews = {file: (t.app / f"routes/ts{stem}.jpg").read_bytes() for stem, file in files.items()}
        exact = [data for file, data in previews.items() if not re.search("16-bit|5[56]5", file)]
        for file, data in previews.items():
            if data == t.no_image or data in exact and data != max(exact, key=exact.count):
                t.fail(f"{'no' if data == t.no_image else 'another'} preview of {file}")
plain("bmp-all-in-one", {f"Foo/{header}-{name}": data for header, rows in BMPS.items() for name, data in rows.items()})
for name, number, more in (  # noise, but not of a size that would keep it from being read
        ("bmp-corrupt", 481, {"Foo/a.bmp": b"BM" + noise(16) + b"\xc8\0\0\0" * 2 + noise(3976)}),
        ("track-without-name", 5, {"Foo/Foo.trk": b"no words"})):
    @shape(name)
    def trial(t, number=number, more=more):
        """An intake that such a zip ends; who answers with yes has it set aside."""
        good, routes = route(name="Good Line"), t.app / "routes"
        downloads = {"bad.zip": zip_file(route(more)), "good.zip": zip_file(good)}
        t.put(downloads)
        t.call(number, "add")
        t.call(number, "--answer", "no", "add")
        t.take(downloads, {"good": "ADD", "bad": "MSC"}, "", {"good": places(good)}, True, "--answer", "yes")
        left = [path.name for path in (*routes.glob("bad.*"), *routes.glob("tsbad.*"), *routes.rglob("bad"))]
        if left or t.rows().keys() != {"good"}:
            t.fail(f"left: {left}; the list has {sorted(t.rows())}")

# Zips as other systems make them.
plain("mac", dict.fromkeys(("__MACOSX/Foo/._Foo.trk", "__MACOSX/._Foo", "Foo/._Foo.trk", "Foo/Shapes/._a.s"), GONE))
plain("utf8-without-flag", {"Foo/Services/Köln.srv": b"service", "Foo/Shapes/ÄÖ.s": b"shape"})
plain("backslashes", make=lambda e: zip_file(e, "\\"))
for name, text, place in (
        ("question", b"Shapes/wh?t.s", "shapes/wh_t.s"), ("colon", b"Shapes/a:b.s", "shapes/a_b.s"),
        ("marks", b'Shapes/a*b"c<d>e|f.s', "shapes/a_b_c_d_e_f.s"), ("icon", b"Icon\r", "icon_"),
        ("control", b"Shapes/tab\t\x01.s", "shapes/tab__.s"), ("tail-folder", b"Sound /s", "sound/s|sound_/s"),
        ("tail-blank", b"Shapes/t.s ", "shapes/t.s|shapes/t.s_"), ("tail-dots", b"Shapes/t..", "shapes/t|shapes/t__"),
        ("sjis-5c", b"Shapes/\x83\x5cso.s", "shapes/*_so.s"), ("sjis-7c", b"Shapes/\x83\x7cpo.s", "shapes/*_po.s")):
    plain("name-" + name, {b"Foo/" + text: Entry(place=place)})
plain("name-blank", {b"   ": GONE}, "BAD", "name")
for name, text, mark in (("", "/../../evil.s", "/"), ("-below", "Foo/../../evil.s", "/"), ("-back", "../evil.s", "\\")):
    plain("leads-out" + name, {text: GONE}, "BAD", "leads? out", lambda e, mark=mark: zip_file(e, mark))
plain("readme-twice", {"readme.txt": GONE, "Foo/readme.txt": b"the later one"})
plain("folder-like-zip", {"docs.zip/": Entry(b"", method=0)})
for name, reason, fields in (("password", "password|encrypted", {"flags": 1}), ("method", "method", {"method": 77})):
    locked = Entry(raw=noise(60), place=None, **fields)
    plain(name + "-on-readme", {"readme.txt": locked})
    plain(name + "-on-shape", {"Foo/Shapes/a.s": locked}, "BAD", reason)
for name in (" lead", "trail ", "dot.", "a=b"):
    plain(f"stem-{name.strip()}", files=[name + ".zip"])
for name, text in (("in-quotes", "'Foo'"), ("with-equals", "Up = Down"), ("long", "Long " * 600)):
    shape("track-" + name)(lambda t, text=text: together(
        t, {stem: route({"Foo/Shapes/own.s": stem.encode()}, text) for stem in ("one", "two")}))
for name in ("BZip2", "Deflate64", "LZMA", "PPMd"):
    plain(name.lower(), make=functools.partial(packed_by, "foo.zip", "7z a -mm=" + name))
plain("zip-streamed", make=functools.partial(packed_by, "foo.zip", "bsdtar -c --format zip -f"))

# Other formats.
SEVEN = functools.partial(packed_by, "foo.7z", "7z a")
for name, want, reason, options in (
        ("solid", "ADD", "", "-ms=on -m0=LZMA2"), ("password", "BAD", "password|encrypted", "-psecret"),
        ("password-on-names", "BAD", "password|encrypted", "-psecret -mhe=on")):
    plain("7z-" + name, None, want, reason, functools.partial(packed_by, "foo.7z", "7z a " + options), ["foo.7z"])
plain("7z-large", {"Foo/World/large.w": noise(9 << 20)}, make=SEVEN, files=["foo.7z"])
plain("7z-parts", make=SEVEN, files=["foo.7z.001", "foo.7z.002"])
plain("7z-program", make=lambda e: STUB + SEVEN(e), files=["foo.exe"])
plain("7z-cut-short", None, "BAD", ".", lambda e: SEVEN(e)[:-200], ["foo.7z"])
plain("7z-readme", None, "MSC", "", lambda e: SEVEN({"readme.txt": b"no route"}), ["foo.7z"])
plain("zip-parts", files=["foo.zip.001", "foo.zip.002"])
plain("zip-parts-incomplete", None, "BAD", ".", files=["foo.zip", "foo.z01"])
plain("zip-program", make=lambda e: STUB + zip_file(e), files=["foo.exe"])
plain("rar", make=rar, files=["foo.rar"])
plain("rar-volume", None, "BAD", "volume", lambda e: rar(e, 1), ["foo.rar"])
for file in ("foo.tar.gz", "foo.tgz", "foo.tar.xz", "foo.tar.bz2"):
    plain(file[4:], make=functools.partial(packed_by, file, "python3 -m tarfile -c"), files=[file])

# Damage.
for name, method in (("stored", 0), ("packed", 8)):
    plain("damaged-" + name, {"Foo/Shapes/a.s": Entry(b"a shape, " * 99, method=method, damaged=True)}, "ADD",
          r"a\.s.*damage|damage.*a\.s", load="refused")
plain("damaged-inside", {"Foo/Shapes/b.s": Entry(damaged=True, place=None)}, "ADD", r"b\.s",
      lambda e: zip_file({"inner.zip": zip_file(e)}))
plain("damaged-route-file", {"Foo/World/large.w": noise(100_000)}, load="spoilt")
plain("overlapping", {"Foo/Shapes/b.s": Entry(route()["Foo/Shapes/a.s"], same_as="Foo/Shapes/a.s")}, "BAD", "overlap")
plain("enormous", {"Foo/Shapes/b.s": Entry(claimed_size=1 << 50)}, "BAD", ".")

# Downloads that only this system's disks can have, each beside a good one.
for name, file, make in (
        ("con", "CON.zip", None), ("nul", "nul.zip", None), ("colon", "a:b.zip", None), ("star", "a*b.zip", None),
        ("question", "a?b.zip", None), ("backslash", "a\\b.zip", None), ("tab", "a\tb.zip", None),
        ("dangling", "x.zip", lambda path: path.symlink_to("nowhere")), ("fifo", "y.zip", os.mkfifo)):
    @shape("download-" + name)
    def trial(t, file=file, make=make):
        good, bad = route(name="Good Line"), zip_file(route())
        make(t.downloads / file) if make else t.put({file: bad})
        t.take({"good.zip": zip_file(good)}, {"good": "ADD", None: "BAD"}, "", {"good": places(good)})
        if not make and bad not in t.tree(t.app / "original_zips/bad_zip_files").values():
            t.fail(f"{file!r} is not among the bad zips")

# What a route brings besides, and what is said of it.
for name, reason, more in (
        ("installme", "installme|global", {"Foo/installme.bat": b"copy ..\\..\\GLOBAL\\shapes\\signal.s shapes\r\n"}),
        ("global", "global", {"GLOBAL/Shapes/own.s": b"own"}),
        ("trains", "trains", {"TRAINS/Trainset/Own/own.eng": b"own", "TRAINS/Consists/own.con": consist("Own", "")}),
        ("second-route", "second|another|two routes", {"Bar/Bar.trk": track("Bar Hill"), "Bar/Tiles/b.t": b"own"})):
    plain("brings-" + name, more, "ADD", reason, load="whole")
shape("three")(lambda t: t.take(
    {"good.zip": zip_file(route()), "bad.zip": b"no zip" * 99, "notes.zip": zip_file({"readme.txt": b"no route"})},
    {"good": "ADD", "bad": "BAD", "notes": "MSC"}))


@shape("equal-stems")
def equal_stems(t):
    downloads = {"foo.zip": zip_file(route()), "foo.7z": SEVEN(route())}
    t.put(downloads)
    before = t.tree(t.app / "original_zips"), t.rows()
    t.verdict = t.call(58, "add") and "refused"
    if t.tree(t.downloads) != downloads or (t.tree(t.app / "original_zips"), t.rows()) != before:
        t.fail("something was changed before it was refused")


@shape("full-output")
def full_output(t):
    with open("/dev/full", "w") as full:
        status = subprocess.run([*t.command, "routes"], env=t.env, stdout=full, stderr=subprocess.DEVNULL).returncode
    t.verdict = "refused" if status > 0 else t.fail(f"what could not be written ended with {status}")
