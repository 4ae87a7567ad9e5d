#!/usr/bin/env python3
"""archive-format.py PROGRAM FOLDER: reads and writes archives as Docs/archive-format.md describes them, and checks that
the program and this script understand each other. FOLDER has the files to pack."""
import os
import struct
import subprocess
import sys
import tempfile
import zlib

HEADER = struct.Struct("<iibii")
ENTRY = struct.Struct("<iB200siiqi")
LEVELS = {0: 0, 1: 1, 2: -1, 3: 9}


def read(path):
    data = open(path, "rb").read()
    start, count, folders, level, end = HEADER.unpack_from(data)
    assert (start, end) == (2835, 122)
    files, at = {}, HEADER.size
    for _ in range(count):
        first, length, name, packed, size, position, last = ENTRY.unpack_from(data, at)
        assert (first, last, position) == (2725, 2801, at + ENTRY.size)
        content = zlib.decompress(data[position:position + packed])
        assert len(content) == size
        files[name[:length].decode("windows-1252")] = content
        at = position + packed
    assert at == len(data)
    return files, folders, level


def write(path, files, level):
    data = HEADER.pack(2835, len(files), 1, level, 122)
    for name, content in files.items():
        packed = zlib.compress(content, LEVELS[level])
        encoded = name.encode("windows-1252")
        data += ENTRY.pack(2725, len(encoded), encoded, len(packed), len(content), len(data) + ENTRY.size, 2801) + packed
    open(path, "wb").write(data)


def main():
    program, folder = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    names = sorted(name for name in os.listdir(folder) if os.path.isfile(os.path.join(folder, name)))
    files = {name: open(os.path.join(folder, name), "rb").read() for name in names}
    with tempfile.TemporaryDirectory() as work:
        os.chdir(work)
        for level in LEVELS:
            subprocess.check_call([program, "pack", "a.vrn", folder, "--base", folder, "--keep-folders", "--level", str(level)])
            assert read("a.vrn") == (files, 1, level)
            written = {"sub\\\u00fc.txt": b"\x00\xff" * 100000, "empty": b"", **files}
            write("b.vrn", written, level)
            subprocess.check_call([program, "unpack", "b.vrn", "--to", "out", "--overwrite"])
            for name, content in written.items():
                assert open(os.path.join("out", *name.split("\\")), "rb").read() == content, name
    print("The formats agree")


main()
