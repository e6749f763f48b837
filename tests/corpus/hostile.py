"""Downloads that mean harm, by kind. Each must end in a verdict, and harm nothing: not by the intake, nor by what follows.

A kind is a function of the folder that a link would lead to; it gives the download's name and its bytes."""
import bz2
import functools
import io
import lzma
import random
import re
import struct
import tarfile
import zlib

from formats import Entry, noise, packed_by, rar, zip_file
from shapes import STUB, places, route
from world import track

KINDS = {}  # by name
MEGABYTE, GIGABYTE = 1 << 20, 1 << 30


def kind(name, make, file="foo.zip"):
    KINDS[name] = lambda outside: (file, make(outside) if callable(make) else make)


# Names. Each is that of one more file in a route that is whole.
NAMES = {
    "parent": b"../evil.s", "parent-far": b"Foo/" + b"../" * 40 + b"evil.s", "parent-back": b"..\\..\\evil.s",
    "parent-mixed": b"Foo/..\\../..\\evil.s", "parent-blank": b".. /evil.s", "parent-dots": b".../evil.s",
    "parent-inside": b"Foo/Shapes/../../../evil.s", "parent-last": b"Foo/Shapes/..", "parent-percent": b"%2e%2e/%2e%2e%2fevil.s",
    "parent-overlong": b"\xc0\xae\xc0\xae/evil.s", "parent-overlong-slash": b"..\xc0\xafevil.s",
    "parent-wide": "．．/evil.s".encode(), "parent-wide-slash": "..／evil.s".encode(), "parent-colon": b"..:/evil.s",
    "parent-nul": b"..\0/evil.s", "parent-stand-in": "..\uf05cevil.s".encode(), "parent-folder": b"../evil/",
    "slash": b"/tmp/evil.s", "slashes": b"//tmp//evil.s", "home": b"~/evil.s", "variable": b"%TEMP%/$HOME/evil.s",
    "drive": b"C:\\evil.s", "drive-relative": b"C:evil.s", "drive-parent": b"c:/../../evil.s", "drive-twice": b"C:D:/evil.s",
    "share": b"\\\\server\\share\\evil.s", "raw-path": b"\\\\?\\C:\\evil.s", "pipe": b"\\\\.\\pipe\\evil",
    "con": b"Foo/Shapes/CON", "con-shape": b"Foo/Shapes/con.s", "nul-text": b"Foo/Shapes/NUL.tar.gz", "com1": b"Foo/Shapes/COM1.s",
    "com-superscript": "Foo/Shapes/COM¹.s".encode(), "lpt-folder": b"Foo/LPT9/evil.s", "conin": b"Foo/Shapes/CONIN$",
    "aux-folder": b"Foo/aux/evil.s", "prn-blank": b"Foo/Shapes/PRN .s", "tail-dot": b"Foo/Shapes/evil.s.",
    "tail-blanks": b"Foo/Shapes/evil.s   ", "tail-folder": b"Foo/Shapes./evil.s", "blank-folder": b"Foo/ /evil.s",
    "dot-folder": b"Foo/./././evil.s", "stream": b"Foo/Shapes/a.s:evil", "stream-data": b"Foo/Shapes/a.s::$DATA",
    "stream-index": b"Foo/Shapes:$I30:$INDEX_ALLOCATION/evil.s", "empty": b"", "only-slash": b"/", "only-slashes": b"///",
    "only-backslash": b"\\", "only-dot": b".", "nul-inside": b"Foo/Shapes/b.s\0evil.exe", "nul-first": b"\0evil.s",
    "line-end": b"Foo/Shapes/b\r\nevil.s", "terminal": b"Foo/Shapes/\x1b[2J\x1b]0;evil\x07.s", "format": b"Foo/Shapes/%s%n%n%n.s",
    "shell": b"Foo/Shapes/`touch evil`$(touch evil);touch evil|.s", "html": b"Foo/readme<script>alert(1)</script>.htm",
    "wildcards": b"Foo/Shapes/*.*", "quote": b"Foo/Shapes/\"evil\".s", "long": b"Foo/Shapes/" + b"e" * 300 + b".s",
    "longer": b"Foo/" + b"long/" * 1000 + b"evil.s", "longest": b"e" * 65535, "deep": b"a/" * 900 + b"evil.s",
    "right-to-left": "Foo/Shapes/\u202es.ssalg.exe".encode(), "no-width": "Foo/Shapes/\u200b\u200d\ufeff.s".encode(),
    "marks": ("Foo/Shapes/e" + "\u0301" * 100 + ".s").encode(), "surrogates": b"Foo/Shapes/\xed\xa0\xbd\xed\xb8\x80.s",
    "no-text": b"Foo/Shapes/\xff\xfe\xfd\x80.s", "cut-letter": b"Foo/Shapes/\xf0\x9f", "case": b"FOO/SHAPES/A.S",
    "case-sharp-s": "Foo/Shapes/STRASSE.s|Foo/Shapes/straße.s", "case-kelvin": "Foo/Shapes/k.s|Foo/Shapes/\u212a.s",
    "case-dotless": "Foo/Shapes/I.s|Foo/Shapes/ı.s|Foo/Shapes/i.s|Foo/Shapes/İ.s",
    "composed": "Foo/Shapes/é.s|Foo/Shapes/e\u0301.s", "file-and-folder": b"Foo/Shapes", "file-and-folder-case": b"FOO/SHAPES",
    "folder-with-data": b"Foo/Evil/", "below-a-file": b"Foo/Shapes/a.s/evil.s", "backup": b"Foo/Shapes/ts-bak-a.s",
    "backup-old": b"Foo/Shapes/ostr-a.s", "half-written": b"Foo/Shapes/a.s.part~", "mark-of-work": b"Foo/quillon-work-folder",
    "program": b"Foo/evil.exe", "script": b"Foo/custom.cst", "settings": b"Foo/desktop.ini", "route-file": b"Foo/foo.qnz",
    "zip-inside": b"Foo/evil.zip", "picture-program": b"Foo/picture.jpg.exe",
}
for name, text in NAMES.items():
    names = [one.encode() for one in text.split("|")] if isinstance(text, str) else [text]
    kind("name-" + name, zip_file(route({one: Entry(b"evil", flags=0x800 * (max(one, default=0) > 127)) for one in names})))
kind("name-route-is-device", zip_file({name.replace("Foo/", "CON/"): data for name, data in route().items()}))
kind("name-route-is-parent", zip_file({name.replace("Foo/", "../"): data for name, data in route().items()}))
kind("name-twice-hundredfold", zip_file({b"Foo/Shapes/a.s" + b"\0" * i: b"evil" for i in range(100)} | route()))

# What the route calls itself: it goes into settings and pages.
for name, text in (("line-end", "Foo\r\n[Current]\r\nLoaded=evil"), ("bracket", "[Current]"), ("html", "<script>alert(1)</script>"),
                   ("parent", "..\\..\\evil"), ("device", "CON"), ("long", "e" * 100_000), ("empty", ""), ("nul", "Foo\0evil"),
                   ("right-to-left", "\u202eliveS"), ("of-default", "USA1"), ("no-route", "No route loaded.")):
    kind("track-" + name, zip_file(route(name=text)))
kind("track-endless", lambda _: zip_file(route({"Foo/Foo.trk": track("Foo")[:-40] + b"(\0 \0" * (2 * MEGABYTE)})))
kind("track-half-letter", zip_file(route({"Foo/Foo.trk": track("Foo") + b"\xd8"})))

# What the download calls itself.
for name, file in (("parent", "..zip"), ("dots", "....zip"), ("blank", " .zip"), ("only-end", ".zip"), ("option", "-rf.zip"),
                   ("line-end", "evil\r\n.zip"), ("section", "[Current].zip"), ("equals", "=evil.zip"), ("html", "<b>evil.zip"),
                   ("shell", "$(touch evil).zip"), ("long", "e" * 240 + ".zip"), ("no-text", "\udcff\udcfe.zip"),
                   ("right-to-left", "\u202epiz.zip"), ("no-image", "none.zip"), ("settings", "tsqn.zip")):
    kind("download-" + name, zip_file(route()), file)


# Lies: fields of a whole zip that tell the wrong thing. Offsets count from the record's start.
WHOLE = zip_file(route())
LOCAL, CENTRAL, END = (WHOLE.index(b"PK\3\4", 1), WHOLE.rindex(b"PK\1\2"), len(WHOLE) - 22)


def patched(record, offset, form, value):
    at = record + offset
    return WHOLE[:at] + struct.pack(form, value) + WHOLE[at + struct.calcsize(form):]


FIELDS = {"local-mark": (LOCAL, 0, "<I", 0), "local-flags": (LOCAL, 6, "<H", 0xFFFF), "local-method": (LOCAL, 8, "<H", 0),
          "local-crc": (LOCAL, 14, "<I", 1), "local-packed": (LOCAL, 18, "<I", 0xFFFFFFF0), "local-size": (LOCAL, 22, "<I", 1 << 31),
          "local-name-length": (LOCAL, 26, "<H", 0xFFFF), "local-extra-length": (LOCAL, 28, "<H", 0xFFFF),
          "local-name": (LOCAL, 30, "5s", b"../ev"), "mark": (CENTRAL, 0, "<I", 0), "system": (CENTRAL, 5, "B", 3),
          "version": (CENTRAL, 6, "<H", 0xFFFF), "flags": (CENTRAL, 8, "<H", 0xFFFF), "locked": (CENTRAL, 8, "<H", 1),
          "sizes-behind": (CENTRAL, 8, "<H", 8), "stored": (CENTRAL, 10, "<H", 0), "method": (CENTRAL, 10, "<H", 0xFFFF),
          "method-bzip2": (CENTRAL, 10, "<H", 12), "method-lzma": (CENTRAL, 10, "<H", 14), "method-zstd": (CENTRAL, 10, "<H", 93),
          "method-ppmd": (CENTRAL, 10, "<H", 98), "method-shrunk": (CENTRAL, 10, "<H", 1), "method-aes": (CENTRAL, 10, "<H", 99),
          "date": (CENTRAL, 12, "<I", 0xFFFFFFFF), "crc": (CENTRAL, 16, "<I", 0), "packed-less": (CENTRAL, 20, "<I", 3),
          "packed-none": (CENTRAL, 20, "<I", 0), "packed-more": (CENTRAL, 20, "<I", 0x7FFFFFFF), "size-less": (CENTRAL, 24, "<I", 3),
          "size-none": (CENTRAL, 24, "<I", 0), "size-more": (CENTRAL, 24, "<I", 0x7FFFFFFF), "size-long": (CENTRAL, 24, "<I", 0xFFFFFFFF),
          "name-none": (CENTRAL, 28, "<H", 0), "name-endless": (CENTRAL, 28, "<H", 0xFFFF), "extra-endless": (CENTRAL, 30, "<H", 0xFFFF),
          "comment-endless": (CENTRAL, 32, "<H", 0xFFFF), "disk": (CENTRAL, 34, "<H", 7), "attributes": (CENTRAL, 38, "<I", 0xFFFFFFFF),
          "offset-none": (CENTRAL, 42, "<I", 0), "offset-behind": (CENTRAL, 42, "<I", len(WHOLE)),
          "offset-far": (CENTRAL, 42, "<I", 0x7FFFFFFF), "offset-long": (CENTRAL, 42, "<I", 0xFFFFFFFF),
          "offset-directory": (CENTRAL, 42, "<I", CENTRAL), "end-disk": (END, 4, "<H", 3), "count-less": (END, 8, "<HH", None),
          "count-none": (END, 8, "<I", 0), "count-more": (END, 8, "<I", 0xFFFEFFFE), "directory-none": (END, 12, "<I", 0),
          "directory-endless": (END, 12, "<I", 0xFFFFFFF0), "directory-far": (END, 16, "<I", 0x7FFFFFFF),
          "directory-start": (END, 16, "<I", 0), "end-comment": (END, 20, "<H", 0xFFFF)}
FIELDS["count-less"] = (END, 8, "<I", 0x00020002)
for name, fields in FIELDS.items():
    kind("lie-" + name, patched(*fields))


def with_extra(extra, sizes=b"\xff" * 8, method=8):
    """The last entry's extra field, in the directory."""
    start = CENTRAL + 46 + struct.unpack_from("<H", WHOLE, CENTRAL + 28)[0]
    head = bytearray(WHOLE[CENTRAL:start])
    head[20:28], head[30:32], head[10:12] = sizes, struct.pack("<H", len(extra)), struct.pack("<H", method)
    size = END - CENTRAL + len(extra)
    first = struct.unpack_from("<I", WHOLE, END + 16)[0]
    end = bytearray(WHOLE[END:])
    end[12:16] = struct.pack("<I", size + CENTRAL - first)
    return WHOLE[:CENTRAL] + head + extra + WHOLE[start:END] + end


TRUE_SIZES = WHOLE[CENTRAL + 20:CENTRAL + 28]
UNICODE = b"\1" + struct.pack("<I", zlib.crc32(b"Foo/Foo.trk")) + b"../evil.s"
for name, extra, sizes in (
        ("none", b"", b"\xff" * 8), ("short", b"\1\0\4\0abcd", b"\xff" * 8), ("endless", b"\1\0\xff\xff", b"\xff" * 8),
        ("sizes", struct.pack("<HHQQ", 1, 16, 1 << 63, 1 << 63), b"\xff" * 8), ("half", b"\1", TRUE_SIZES),
        ("name", struct.pack("<HH", 0x7075, len(UNICODE)) + UNICODE, TRUE_SIZES), ("aes", b"\1\x99\7\0\2\0AE\3\x08\0", TRUE_SIZES),
        ("many", b"\xfe\xca\0\0" * 16000, TRUE_SIZES)):
    kind("extra-" + name, with_extra(extra, sizes))
LONG_END = b"PK\6\6" + struct.pack("<QHHIIQQQQ", 44, 45, 45, 0, 0, 1 << 40, 1 << 40, 1 << 60, 0)
for name, record, at in (("count", LONG_END, END), ("far", LONG_END, 1 << 62), ("itself", b"", END), ("cut", LONG_END[:20], END)):
    kind("zip64-" + name, WHOLE[:END] + record + b"PK\6\7" + struct.pack("<IQI", 0, at, 1) + WHOLE[END:])

# Cut short, and lengthened.
for percent in (0, 1, 10, 25, 50, 75, 90, 99):
    kind(f"cut-{percent}-percent", WHOLE[:len(WHOLE) * percent // 100])
for name, count in (("last-byte", 1), ("end-record", 22), ("in-end-record", 10)):
    kind("cut-" + name, WHOLE[:-count])
for name, data in (("before", noise(70_000) + WHOLE), ("behind", WHOLE + noise(70_000)), ("behind-little", WHOLE + b"evil"),
                   ("two-zips", zip_file(route({"Foo/Shapes/b.s": b"other"}, "Other one")) + WHOLE),
                   ("two-ends", WHOLE + WHOLE[END:]), ("only-end", WHOLE[END:]), ("only-noise", noise(50_000)),
                   ("only-zeros", bytes(50_000)), ("a-page", b"<html>404</html>"),
                   ("comment-of-ends", patched(END, 20, "<H", 2200) + WHOLE[END:] * 100)):
    kind("body-" + name, data)


# Bombs.
def nested(depth, width=1):
    data = zip_file(route())
    for _ in range(depth):
        data = zip_file({f"{i}.zip": data for i in range(width)})
    return data


PIECE = bytes(4 * MEGABYTE)


def deflated(size, window=-15):
    """Zeros: one packed piece many times over."""
    pack = zlib.compressobj(9, zlib.DEFLATED, window)
    first, more = (pack.compress(PIECE) + pack.flush(zlib.Z_FULL_FLUSH) for _ in range(2))
    return first + more * (size // len(PIECE) - 1) + b"\3\0"


def bomb(method, size):
    packed = {8: deflated, 12: lambda size: bz2.compress(bytes(size)), 95: lambda size: lzma.compress(bytes(size), preset=0)}
    packed, crc = packed[method](size), 0
    for _ in range(size // len(PIECE)):
        crc = zlib.crc32(PIECE, crc)
    entry = Entry(b"", raw=packed, method=method)
    data = bytearray(zip_file(route() | {"Foo/World/bomb.w": entry}))
    for mark, offset in ((b"PK\3\4", 14), (b"PK\1\2", 16)):
        struct.pack_into("<III", data, data.rindex(mark) + offset, crc, len(packed), size)
    return bytes(data)


def overlapping(count):
    """Every entry is the same bytes of the file."""
    one = Entry(bytes(100_000))
    more = {f"Foo/World/{i}.w": Entry(bytes(100_000), same_as="Foo/World/one.w") for i in range(count)}
    return zip_file(route({"Foo/World/one.w": one} | more))


def quoting(count):
    """Every entry's data quotes the headers of all that follow."""
    body, index, kernel = b"", b"", zlib.compress(bytes(100_000))[2:-4]
    names = [f"Foo/World/{i}.w".encode() for i in range(count)]
    heads = [b"PK\3\4" + struct.pack("<HHHIIIIHH", 20, 0, 8, 0, 0, 0, 0, len(name), 0) + name for name in names]
    for i, name in enumerate(names):
        quoted = heads[i + 1:]
        packed = sum(len(head) + 5 for head in quoted) + len(kernel)
        index += b"PK\1\2" + struct.pack("<HHHHIIIIHHHHHII", 20, 20, 0, 8, 0, 0, packed, 100_000, len(name), 0, 0, 0, 0, 0,
                                         len(body)) + name
        body += heads[i] + (b"\0" + struct.pack("<HH", len(quoted[0]), 0xFFFF ^ len(quoted[0])) if quoted else kernel)
    return body + index + b"PK\5\6" + struct.pack("<4HIIH", 0, 0, count, count, len(index), len(body), 0)


for name, make in (
        ("nested", lambda _: nested(5)), ("nested-wide", lambda _: nested(3, 8)), ("nested-deep", lambda _: nested(60)),
        ("deflate", lambda _: bomb(8, GIGABYTE)), ("bzip2", lambda _: bomb(12, 16 * MEGABYTE)), ("xz", lambda _: bomb(95, 16 * MEGABYTE)),
        ("entries", lambda _: zip_file(route({f"Foo/{i}": Entry(b"", method=0) for i in range(60_000)}))),
        ("folders", lambda _: zip_file(route({f"Foo/{i}/{i}/": Entry(b"", method=0) for i in range(20_000)}))),
        ("overlap", lambda _: overlapping(2000)), ("quoting", lambda _: quoting(2000)),
        ("claim", lambda _: zip_file(route({"Foo/b.s": Entry(claimed_size=1 << 62)}))),
        ("claims-overflow", lambda _: zip_file(route({f"Foo/{i}.s": Entry(claimed_size=(1 << 64) - 1) for i in range(9)}))),
        ("names", lambda _: zip_file({b"%d" % i + b"n" * 60_000: b"" for i in range(100)} | route())),
        ("inner", lambda _: zip_file({"inner.zip": bomb(8, GIGABYTE)}))):
    kind("bomb-" + name, make)
PNG = b"\x89PNG\r\n\x1a\n" + b"\0\0\0\rIHDR" + struct.pack(">IIBBBBB", 60_000, 60_000, 1, 0, 0, 0, 0)
for name, data in (("png", PNG + struct.pack(">I", zlib.crc32(PNG[12:])) + b"\0\0\0\0IDAT"),
                   ("bmp", b"BM" + struct.pack("<IIIIiiHHI", 0, 0, 54, 40, 0x7FFFFFFF, -0x80000000, 1, 32, 0) + bytes(4000)),
                   ("gif", b"GIF89a\xff\xff\xff\xff\x80\0\0" + bytes(6) + b",\0\0\0\0\xff\xff\xff\xff\0\2" + b"\1\4" * 2000),
                   ("jpeg", b"\xff\xd8\xff\xc2\0\x11\x08\xff\xdc\xff\xdc\3\1\x22\0\2\x11\1\3\x11\1" + b"\xff\xda\0\x0c\3" * 1000),
                   ("webp", b"RIFF\0\x10\0\0WEBPVP8L\0\x10\0\0\x2f\xff\xff\xff\xff" + bytes(4000))):
    kind("picture-" + name, zip_file(route({"Foo/a." + name[:3].replace("jpe", "jpg"): data})))


# Links and other things that are no files, in zips as unix has them.
def with_modes(entries, modes):
    data = bytearray(zip_file(route(entries)))
    for name, mode in modes.items():
        at = data.rindex(b"PK\1\2", 0, data.rindex(name.encode()))
        struct.pack_into("<B", data, at + 5, 3)
        struct.pack_into("<I", data, at + 38, mode << 16)
    return bytes(data)


LINK, FIFO, DEVICE, SETUID = 0o120777, 0o010666, 0o060666, 0o104777
for name, entries, mode in (
        ("file", {"Foo/Shapes/link.s": "{}/canary"}, LINK), ("folder", {"Foo/Sound": "{}"}, LINK),
        ("through", {"Foo/Sound": "{}", "Foo/Sound/evil.s": "evil"}, LINK), ("parent", {"Foo/Sound": "../../../.."}, LINK),
        ("itself", {"Foo/Shapes/link.s": "link.s"}, LINK), ("each-other", {"Foo/x.s": "y.s", "Foo/y.s": "x.s"}, LINK),
        ("nowhere", {"Foo/Shapes/link.s": "/nowhere/evil"}, LINK), ("track", {"Foo/Bar.trk": "{}/canary"}, LINK),
        ("fifo", {"Foo/Shapes/pipe.s": ""}, FIFO), ("device", {"Foo/Shapes/disk.s": ""}, DEVICE),
        ("setuid", {"Foo/Shapes/program.s": "evil"}, SETUID)):
    kind("zip-link-" + name, lambda outside, entries=entries, mode=mode: with_modes(
        {path: text.format(outside).encode() for path, text in entries.items()},
        {path: mode for path in entries if not path.endswith("evil.s")}))


# Tars.
def tar(*members, form=tarfile.GNU_FORMAT, end=True, pax=None):
    buffer = io.BytesIO()
    with tarfile.open(fileobj=buffer, mode="w", format=form, pax_headers=pax) as archive:
        for path, data in route().items():
            archive.addfile(member(path, data), io.BytesIO(data))
        for one, data in members:
            archive.addfile(one, io.BytesIO(data))
    return buffer.getvalue() if end else buffer.getvalue().rstrip(b"\0")


def member(path, data=b"", type=tarfile.REGTYPE, claimed=None, **fields):
    info = tarfile.TarInfo(path)
    info.size, info.type = claimed or len(data), type
    for field, value in fields.items():
        setattr(info, field, value)
    return info


def header_lie(offset, data, checked=True):
    """The first header with another field."""
    whole = bytearray(tar())
    whole[offset:offset + len(data)] = data
    if checked:
        whole[148:156] = b" " * 8
        whole[148:156] = b"%06o\0 " % sum(whole[:512])
    return bytes(whole)


T = tarfile
for name, members in (
        ("parent", lambda o: [(member("../evil.s", b"evil"), b"evil")]), ("absolute", lambda o: [(member(f"{o}/evil.s", b"evil"), b"evil")]),
        ("gnu-long-parent", lambda o: [(member("../" * 60 + "evil.s", b"evil"), b"evil")]),
        ("gnu-long", lambda o: [(member("Foo/" + "e" * 70_000, b"evil"), b"evil")]),
        ("link", lambda o: [(member("Foo/link.s", type=T.SYMTYPE, linkname=f"{o}/canary"), b"")]),
        ("link-folder-then-file", lambda o: [(member("Foo/out", type=T.SYMTYPE, linkname=o), b""),
                                             (member("Foo/out/evil.s", b"evil"), b"evil")]),
        ("link-file-then-file", lambda o: [(member("Foo/a.s", type=T.SYMTYPE, linkname=f"{o}/canary"), b""),
                                           (member("Foo/a.s", b"evil"), b"evil")]),
        ("link-parent", lambda o: [(member("Foo/out", type=T.SYMTYPE, linkname="../../../.."), b"")]),
        ("links-each-other", lambda o: [(member("Foo/x", type=T.SYMTYPE, linkname="y"), b""),
                                        (member("Foo/y", type=T.SYMTYPE, linkname="x"), b"")]),
        ("hard-link", lambda o: [(member("Foo/hard.s", type=T.LNKTYPE, linkname="Foo/Shapes/a.s"), b"")]),
        ("hard-link-outside", lambda o: [(member("Foo/hard.s", type=T.LNKTYPE, linkname=f"{o}/canary"), b"")]),
        ("hard-link-then-file", lambda o: [(member("Foo/hard.s", type=T.LNKTYPE, linkname=f"{o}/canary"), b""),
                                           (member("Foo/hard.s", b"evil"), b"evil")]),
        ("fifo", lambda o: [(member("Foo/pipe.s", type=T.FIFOTYPE), b"")]),
        ("device", lambda o: [(member("Foo/disk.s", type=T.BLKTYPE, devmajor=8), b"")]),
        ("terminal-device", lambda o: [(member("Foo/tty.s", type=T.CHRTYPE, devmajor=5), b"")]),
        ("setuid", lambda o: [(member("Foo/program.s", b"evil", mode=0o6777), b"evil")]),
        ("no-rights", lambda o: [(member("Foo/locked.s", b"evil", mode=0), b"evil")]),
        ("owner", lambda o: [(member("Foo/own.s", b"evil", uid=1 << 40, gid=-5, uname="root"), b"evil")]),
        ("time-before", lambda o: [(member("Foo/old.s", b"evil", mtime=-1 << 50), b"evil")]),
        ("time-far", lambda o: [(member("Foo/new.s", b"evil", mtime=1 << 62), b"evil")]),
        ("type-unknown", lambda o: [(member("Foo/odd.s", type=b"Z"), b"")]),
        ("folder-and-file", lambda o: [(member("Foo/Shapes", b"evil"), b"evil")]),
        ("twice", lambda o: [(member("Foo/Shapes/A.S", b"evil"), b"evil"), (member("foo/shapes/a.s", b"last"), b"last")])):
    kind("tar-" + name, lambda outside, members=members: tar(*members(outside)), "foo.tar")
PAX = (member("Foo/pax.s", b"evil"), b"evil")
for name, headers in (("path", {"path": "../../evil.s"}), ("link", {"linkpath": "/etc/passwd"}), ("size", {"size": "99999999999999"}),
                      ("size-less", {"size": "-1"}), ("sparse", {"GNU.sparse.major": "1", "GNU.sparse.minor": "0",
                                                                   "GNU.sparse.realsize": "999999999999"}),
                      ("charset", {"hdrcharset": "BINARY", "path": "Foo/\udcff\udcfe.s"})):
    def make(_, headers=headers):
        info, data = PAX
        info.pax_headers = headers
        return tar((info, data), form=tarfile.PAX_FORMAT)
    kind("tar-pax-" + name, make, "foo.tar")
for name, data in (
        ("checksum", header_lie(0, b"evil", False)), ("size", header_lie(124, b"77777777777\0")),
        ("size-negative", header_lie(124, b"\xff" * 12)), ("size-long", header_lie(124, b"\x80" + b"\xff" * 11)),
        ("size-letters", header_lie(124, b"evil evil ev")), ("sparse", header_lie(156, b"S")), ("long-name", header_lie(156, b"L")),
        ("long-link", header_lie(156, b"K")), ("volume", header_lie(156, b"M")), ("all-ones", b"\xff" * 5120),
        ("no-end", tar(end=False)), ("cut", tar()[:-7000]), ("pax-endless", b"")):
    kind("tar-lie-" + name, data or header_lie(156, b"x"), "foo.tar")


def tar_bomb(pack, size, claimed):
    """Behind a route, zeros without end; every packing may come in several runs."""
    whole = tar(end=False)
    return pack(whole + bytes(-len(whole) % 512) + member("Foo/World/bomb.w", claimed=claimed).tobuf()) + pack(bytes(size))


kind("bomb-tgz", lambda _: tar_bomb(lambda data: zlib.compress(data, wbits=31), 16 * MEGABYTE, 2 * GIGABYTE), "foo.tgz")
kind("bomb-tar-xz", lambda _: tar_bomb(lambda data: lzma.compress(data, preset=0), 16 * MEGABYTE, 16 * MEGABYTE), "foo.tar.xz")
kind("bomb-tar-bz2", lambda _: tar_bomb(bz2.compress, 16 * MEGABYTE, 16 * MEGABYTE), "foo.tar.bz2")


# 7z, rar, lzh, cab, programs.
@functools.cache
def seven(options="-m0=LZMA"):
    return packed_by("foo.7z", "7z a -mtc=off -mta=off -mtm=off " + options, route({"Foo/World/large.w": random.Random(2).randbytes(9000)}))


def seven_lie(offset, data, checked=True):
    whole = bytearray(seven())
    whole[offset:offset + len(data)] = data
    if checked:
        struct.pack_into("<I", whole, 8, zlib.crc32(whole[12:32]))
    return bytes(whole)


def seven_names(old, new):
    """Names of the directory, which is not packed: their lengths stay."""
    whole = seven("-mhc=off").replace(old.encode("utf-16-le"), new.encode("utf-16-le"))
    at, size = struct.unpack_from("<QQ", whole, 12)
    whole = whole[:28] + struct.pack("<I", zlib.crc32(whole[32 + at:32 + at + size])) + whole[32:]
    return whole[:8] + struct.pack("<I", zlib.crc32(whole[12:32])) + whole[12:]


for name, make in (
        ("mark", lambda _: seven_lie(0, b"7z\xbc\xaf\x27\x00")), ("start-checksum", lambda _: seven_lie(8, b"evil", False)),
        ("directory-far", lambda _: seven_lie(12, b"\xff" * 7 + b"\x7f")), ("directory-negative", lambda _: seven_lie(12, b"\xff" * 8)),
        ("directory-endless", lambda _: seven_lie(20, b"\xff" * 7 + b"\x3f")), ("directory-none", lambda _: seven_lie(20, bytes(8))),
        ("directory-checksum", lambda _: seven_lie(28, b"evil")), ("cut-half", lambda _: seven()[:len(seven()) // 2]),
        ("cut-start", lambda _: seven()[:20]), ("parent", lambda _: seven_names("Foo/Shapes/a.s", "../../../evil.")),
        ("absolute", lambda _: seven_names("Foo/Shapes/a.s", "/tmp/evil/ab.s")),
        ("back", lambda _: seven_names("Foo/Shapes/a.s", "..\\..\\..\\evil.")),
        ("stream", lambda _: seven_names("Foo/Shapes/a.s", "Foo/a.s:evil.s")), ("locked", lambda _: seven("-psecret")),
        ("data", lambda _: seven()[:2000] + b"evil" + seven()[2004:])):
    kind("7z-" + name, make, "foo.7z")
for name, make in (("parent", lambda: rar(route({"../../evil.s": b"evil"}))), ("absolute", lambda: rar(route({"/tmp/evil.s": b"evil"}))),
                   ("back", lambda: rar(route({"..\\evil.s": b"evil"}))), ("cut", lambda: rar(route())[:-900]),
                   ("long", lambda: rar(route({"e" * 70_000: b"evil"}))), ("mark-only", lambda: b"Rar!\x1a\7\1\0"),
                   ("old-noise", lambda: b"Rar!\x1a\7\0" + noise(5000)), ("noise", lambda: b"Rar!\x1a\7\1\0" + noise(5000))):
    kind("rar-" + name, lambda _, make=make: make(), "foo.rar")
LZH = b"-lh0-" + struct.pack("<III", 4, 4, 0) + b"\x20\0"
for name, path in (("parent", b"../evil.s"), ("absolute", b"/tmp/evil.s"), ("back", b"..\\evil.s")):
    head = LZH + bytes([len(path)]) + path + b"\0\0"
    kind("lzh-" + name, bytes([len(head), sum(head) & 255]) + head + b"evil\0", "foo.lzh")
kind("lzh-noise", b"\x30\x11-lh5-" + noise(3000), "foo.lzh")
kind("cab-noise", b"MSCF\0\0\0\0" + noise(3000), "foo.cab")
kind("program-many-marks", (b"MZ" + b"Rar!\x1a\7\1\0" * 40 + b"7z\xbc\xaf\x27\x1c" * 40).ljust(60_000), "foo.exe")
kind("program-parent", STUB + zip_file(route({"../evil.s": b"evil"})), "foo.exe")
kind("program-cut", STUB + WHOLE[:3000], "foo.exe")
