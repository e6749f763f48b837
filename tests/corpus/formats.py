"""The bytes of pictures and archives, with every field in hand."""
import itertools
import random
import shutil
import struct
import subprocess
import tempfile
import zlib
from pathlib import Path

noise = random.Random(1).randbytes

# Pictures. All show the same, in two colours that every depth has, and none looks the same upside down or mirrored.
SIDE, COLOURS = 200, ((255, 0, 0), (0, 0, 255))
PIXELS = [[int(x < 20 + y // 2 or y > 150 and x % 60 < 20) for x in range(SIDE)] for y in range(SIDE)]
MASKS = {"555": (0x7C00, 0x3E0, 0x1F, 0), "565": (0xF800, 0x7E0, 0x1F, 0), "rgbx": (0xFF, 0xFF00, 0xFF0000, 0),
         "888": (0xFF0000, 0xFF00, 0xFF, 0), "8888": (0xFF0000, 0xFF00, 0xFF, 0xFF000000)}


def bmp(header, depth, compression=0, masks="", top_down=False, colours=0):
    """`header` is its length in bytes; `colours` shortens the palette."""
    masks = MASKS[masks or ("555" if depth == 16 else "888")]
    values = [sum(mask for mask, part in zip(masks, (*colour, 255)) if part) for colour in COLOURS]
    rows = [b"".join(values[p].to_bytes(depth // 8, "little") for p in row) if depth > 8 else
            int("".join(format(p, f"0{depth}b") for p in row), 2).to_bytes(SIDE * depth // 8, "big")
            for row in (PIXELS if top_down else PIXELS[::-1])]
    data = b"".join(row + bytes(-len(row) % 4) for row in rows)
    if compression in (1, 2):  # literal rows and runs in turn; a run is a value and how many bytes of a row have it
        data = b"".join((bytes([0, SIDE]) + row if y % 2 else b"".join(
            bytes([len(list(run)) * 8 // depth, value]) for value, run in itertools.groupby(row))) + b"\0\0"
            for y, row in enumerate(rows))[:-2] + b"\0\1"
    palette = [*COLOURS, *((i, i, i) for i in range(2, colours or 1 << depth))] if depth <= 8 else []
    table = b"".join(bytes(c[::-1]) + bytes(header != 12) for c in palette)
    table = struct.pack("<3I", *masks[:3]) if (header, compression) == (40, 3) else table
    head = struct.pack("<IiiHHIIiiII", header, SIDE, -SIDE if top_down else SIDE, 1, depth, compression, len(data),
                       2835, 2835, colours, 0) + (b"" if header == 64 else struct.pack("<4I4s", *masks, b"BGRs"))
    head = struct.pack("<IHHHH", 12, SIDE, SIDE, 1, depth) if header == 12 else head.ljust(header, b"\0")[:header]
    start = 14 + header + len(table)
    return b"BM" + struct.pack("<IHHI", start + len(data), 0, 0, start) + head + table + data


OLD, NEW, WITH_FIELDS = (12, 16, 64), (40, 108, 124), (40, 52, 56, 108, 124)  # headers
KINDS = [(OLD + NEW if depth in (1, 4, 8, 24) else NEW, f"{depth}-bit", (depth,)) for depth in (1, 4, 8, 16, 24, 32)]
KINDS += [((40,), "2-bit", (2,))] + [(NEW, f"{depth}-bit-runs", (depth, 8 // depth)) for depth in (4, 8)]
KINDS += [(WITH_FIELDS, f"fields-{name}", (16 if name[0] == "5" else 32, 3, name)) for name in MASKS]
KINDS += [(NEW, f"{depth}-bit-top-down", (depth, 0, "", True)) for depth in (8, 24, 32)]
KINDS += [(NEW, f"{depth}-bit-short-palette", (depth, 0, "", False, 2)) for depth in (4, 8)]
BMPS = {header: {f"{name}.bmp": bmp(header, *rest) for headers, name, rest in KINDS if header in headers}
        for header in sorted({*OLD, *WITH_FIELDS})}
LINES = zlib.compress(b"".join(b"\0" + b"".join(bytes(COLOURS[p]) for p in row) for row in PIXELS), 0)
PNG = b"\x89PNG\r\n\x1a\n" + b"".join(
    struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data)) for kind, data in (
        (b"IHDR", b"\0\0\0\xc8\0\0\0\xc8\x08\2\0\0\0"), (b"IDAT", LINES), (b"IEND", b"")))
# Interlaced; its codes are cleared before they get longer.
IN_TURN = [p for first, step in ((0, 8), (4, 8), (2, 4), (1, 2)) for row in PIXELS[first::step] for p in row]
CODES = [code for i in range(0, len(IN_TURN), 2) for code in (4, *IN_TURN[i:i + 2])] + [5]
BITS = sum(code << 3 * i for i, code in enumerate(CODES)).to_bytes(len(CODES) * 3 // 8 + 1, "little")
GIF = b"GIF89a\xc8\0\xc8\0\x80\0\0\xff\0\0\0\0\xff,\0\0\0\0\xc8\0\xc8\0\x40\2" + b"".join(
    bytes([len(BITS[i:i + 255])]) + BITS[i:i + 255] for i in range(0, len(BITS), 255)) + b"\0;"
# Even grey, progressive: one scan for the means of its blocks, and one that says that there is nothing else in them.
JPEG = (b"\xff\xd8\xff\xfe\x08\2" + bytes(2048) + b"\xff\xdb\0\x43\0\x08" + b"\1" * 63 +
        b"\xff\xc2\0\x0b\x08\0\xc8\0\xc8\1\1\x11\0\xff\xc4\0\x1f\0\0\0\0\x0c" + bytes(12) + bytes(range(12)) +
        b"\xff\xda\0\x08\1\1\0\0\0\0\x7a" + bytes(312) + b"\x1f\xff\xc4\0\x14\x10\1" + bytes(15) + b"\x90" +
        b"\xff\xda\0\x08\1\1\0\1\x3f\0\x1c\x7f\xff\xd9")


class Entry(bytes):
    """A file of an archive. `place` is where it must arrive below the working route, as patterns between bars; empty:
    as its name tells; None: nowhere. `raw`: as it is stored; `same_as`: the entry whose bytes in the file are its."""
    place, method, flags, damaged, raw, claimed_size, same_as = "", 8, 0, False, None, None, None

    def __new__(cls, data=b"content", **fields):
        entry = super().__new__(cls, data)
        vars(entry).update(fields)
        return entry


def zip_file(entries, separator="/"):
    body, index, starts = b"", b"", {}
    for name, entry in entries.items():
        entry = entry if isinstance(entry, Entry) else Entry(entry)
        text = name if isinstance(name, bytes) else name.replace("/", separator).encode()
        stored = bytearray(entry.raw or (zlib.compress(entry)[2:-4] if entry.method else entry))
        if entry.damaged:
            stored[len(stored) // 2] ^= 0x55
        fields = struct.pack("<HHHHHI", 20, entry.flags, entry.method, 0x6000, 0x2AC1, zlib.crc32(entry))
        sizes, extra, starts[name] = struct.pack("<II", len(stored), len(entry)), b"", len(body)
        if not entry.same_as:
            body += b"PK\3\4" + fields + sizes + struct.pack("<HH", len(text), 0) + text + stored
        if entry.claimed_size:
            sizes, extra = sizes[:4] + b"\xff" * 4, struct.pack("<HHQ", 1, 8, entry.claimed_size)
        index += b"PK\1\2\x14\0" + fields + sizes + struct.pack("<HHHHHII", len(text), len(extra), 0, 0, 0, 0, starts[
            entry.same_as or name]) + text + extra
    return body + index + b"PK\5\6" + struct.pack("<4HIIH", 0, 0, *[len(entries)] * 2, len(index), len(body), 0)


def packed_by(name, command, entries):
    """What another program makes of them, if it is there. Some systems call 7z 7zz."""
    program, *options = command.split()
    program = shutil.which(program) or shutil.which(program + "z")
    if not program:
        raise NotImplementedError(command + " is not installed")
    with tempfile.TemporaryDirectory() as folder:
        for path, data in entries.items():
            Path(folder, "files", path).parent.mkdir(parents=True, exist_ok=True)
            Path(folder, "files", path).write_bytes(data)
        subprocess.run([program, *options, f"../{name}", "."], cwd=f"{folder}/files", check=True, capture_output=True)
        return Path(folder, name).read_bytes()


def rar(entries, volume=0):
    """RAR 5, stored."""
    def number(value):
        return bytes([value & 127 | 128]) + number(value >> 7) if value > 127 else bytes([value])

    def block(kind, fields, data=None):
        head = number(kind) + (number(0) if data is None else number(2) + number(len(data))) + fields
        sized = number(len(head)) + head
        return struct.pack("<I", zlib.crc32(sized)) + sized + (data or b"")
    files = (block(2, number(4) + number(len(data)) + number(0x20) + struct.pack("<I", zlib.crc32(data)) + b"\0\0" +
                   number(len(name)) + name.encode(), data) for name, data in entries.items())
    return b"Rar!\x1a\7\1\0" + block(1, number(volume)) + b"".join(files) + block(5, number(volume))
