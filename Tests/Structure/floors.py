#!/usr/bin/env python3
"""floors.py ROOT: checks the includes of the source tree below ROOT, and first itself.

A file may include files of its own folder, of the folders on the floors below, and of the neighbours that its folder lists.
Subfolders share the floor of their folder. A private header is for its own folder. Tests may include any file. Third-party
headers belong to the folders that list them, and never to a public header. Headers form no circle.
"""
import os
import re
import sys

# Folder: floor, and the folders of the same floor that it may use. VarnholtLib/ alone is the frame.
FOLDERS = {
    "Tools/": (10, []),
    "Desktop/Station/": (11, []),
    "Desktop/Qt/": (10, []),
    "Benchmarks/": (12, []),
    "Examples/": (12, []),
    "Fuzz/": (13, ["Tests/"]),
    "Tests/": (13, []),
    "VarnholtLib/": (9, []),
    "VarnholtLib/UI/": (8, []),
    "VarnholtLib/Files/": (7, []),
    "VarnholtLib/Services/": (6, []),
    "VarnholtLib/Numerics/": (6, []),
    "VarnholtLib/Data/": (5, []),
    "VarnholtLib/Foundation/": (4, []),
    "VarnholtBaseLib/": (3, []),
    "Platform/Controls/": (2, ["Platform/Drawing/"]),
    "Platform/Drawing/": (2, []),
    "Platform/Http/": (2, []),
    "Platform/Registry/": (2, []),
    "Platform/Xml/": (2, []),
    "Platform/Zip/": (2, []),
    "Platform/System/": (1, []),
    "Platform/Runtime/": (0, []),
}

# The beginning of a header's path, and who may include it. A plain name in brackets is the standard library's, or
# Qt's if it begins with a Q.
THIRD_PARTIES = {
    "unicode/": ["Platform/Runtime/"],
    "libxml/": ["Platform/Xml/", "Benchmarks/"],
    "curl/": ["Platform/Http/", "Benchmarks/"],
    "zip.h": ["Platform/Zip/"],
    "sqlite3.h": ["Platform/Registry/"],
    "cairo": ["Platform/Drawing/"],
    "pango/": ["Platform/Drawing/"],
    "zlib.h": ["VarnholtLib/Files/", "Benchmarks/"],
    "boost/": ["VarnholtLib/Data/", "VarnholtLib/Numerics/", "Benchmarks/"],
    "CLI/": ["Tools/"],
    "mpi.h": ["Tools/"],
    "Q": ["Desktop/Qt/", "Benchmarks/"],
    "benchmark/": ["Benchmarks/"],
    "spdlog/": ["Benchmarks/"],
    "gsl/": ["Benchmarks/"],
    "muParser": ["Benchmarks/"],
    "sys/": ["Platform/", "Tools/", "Benchmarks/"],
    "linux/": ["Platform/"],
    "arpa/inet.h": ["Benchmarks/"],
    "netinet/in.h": ["Benchmarks/"],
    "cxxabi.h": ["Platform/Controls/"],
    "elf.h": ["Platform/System/"],
    "link.h": ["Platform/System/"],
    "dlfcn.h": ["Platform/System/"],
    "fcntl.h": ["Platform/", "Tools/", "Benchmarks/"],
    "langinfo.h": ["Platform/Runtime/"],
    "locale.h": ["Platform/Runtime/"],
    "malloc.h": ["Benchmarks/"],
    "pthread.h": ["Platform/Runtime/", "Platform/System/"],
    "grp.h": ["Platform/System/"],
    "pwd.h": ["Platform/System/"],
    "signal.h": ["Platform/", "Tools/", "Benchmarks/"],
    "spawn.h": ["Platform/System/"],
    "termios.h": ["Tools/"],
    "unistd.h": ["Platform/", "Tools/", "Benchmarks/", "Fuzz/"],
}


def starts_with_one_of(path, prefixes):
    return any(path.startswith(prefix) for prefix in prefixes)


def folder_of(path):
    """The innermost folder of a path, or None. What is deeper in VarnholtLib/ is not the frame's."""
    innermost = max((folder for folder in FOLDERS if path.startswith(folder)), key=len, default=None)
    return None if innermost == "VarnholtLib/" and path.count("/") > 1 else innermost


def is_private(path):
    return path.endswith("Private.h")


def is_public(path):
    inside = starts_with_one_of(path, ["Platform/", "VarnholtBaseLib/", "VarnholtLib/", "Desktop/Qt/"])
    return inside and path.endswith(".h") and not is_private(path)


def problem_of_third_party(source, header):
    if not re.search("^Q|[/.]", header):
        return ""
    if is_public(source):
        return "shows a third party in a public header"
    users = next((users for prefix, users in THIRD_PARTIES.items() if header.startswith(prefix)), None)
    if users is None:
        return "is unknown: list who may include it, in floors.py"
    return "" if starts_with_one_of(source, users) else "is a third party that this folder may not use"


def problem_of_private(source, target, is_same_folder):
    if is_public(source):
        return "shows a private header in a public one"
    is_load_work = folder_of(source) == "VarnholtLib/" and target.endswith("LoadPrivate.h")
    here, there = os.path.dirname(source) + "/", os.path.dirname(target) + "/"
    is_own = is_same_folder and (here.startswith(there) or there.startswith(here))
    return "" if is_own or is_load_work else "takes a private header of another folder"


def problem_of(source, include):
    """What is wrong with one file's include, which begins with its bracket or quote; empty if it is allowed."""
    target = include[1:]
    own = folder_of(source)
    if own is None:
        return "has no floor: give its folder one in floors.py"
    if include[0] == "<":
        return problem_of_third_party(source, target)
    other = folder_of(target)
    if other is None and starts_with_one_of(target, ["Platform/", "VarnholtLib/"]):
        return "includes a folder without a floor"
    if other is None:
        return "is not written from the root of the tree"
    (floor, neighbours), (other_floor, _) = FOLDERS[own], FOLDERS[other]
    if other_floor > floor:
        return "runs against the floors"
    if other_floor == floor and other != own and not starts_with_one_of(other, neighbours):
        return "joins two folders of one floor"
    if is_private(target):
        return problem_of_private(source, target, other == own)
    return "is not installed" if own == "Examples/" and not is_public(target) else ""


def read_tree(root):
    """The includes of every file; any folder of the root is read, except the tests, builds and hidden ones."""
    directive = re.compile(r"^\s*#\s*include\s*([<\"][^\">]+)[\">]", re.MULTILINE)
    tree = {}
    for folder, folders, files in os.walk(root):
        if folder == root:
            folders[:] = [name for name in folders if name != "Tests" and not name.startswith(("build", "."))]
        for name in files:
            if name.endswith((".h", ".cpp")):
                path = os.path.join(folder, name)
                with open(path, encoding="utf-8") as text:
                    tree[os.path.relpath(path, root)] = directive.findall(text.read())
    return tree


def circles(tree):
    """The files from which following the includes leads back to them."""
    state, found = {}, []

    def visit(file):
        if state.get(file) == "in progress":
            found.append(file)
        if file not in tree or file in state:
            return
        state[file] = "in progress"
        for include in tree[file]:
            visit(include[1:])
        state[file] = "done"

    for file in tree:
        visit(file)
    return found


UPWARDS, BESIDE = "runs against the floors", "joins two folders of one floor"
PRIVATELY, SHOWN = "takes a private header of another folder", "shows a private header in a public one"
FOREIGN = "is a third party that this folder may not use"
CASES = [
    ("VarnholtLib/Numerics/a.h", '"VarnholtLib/Data/b.h', ""),
    ("VarnholtLib/Data/a.h", '"VarnholtLib/Numerics/b.h', UPWARDS),
    ("VarnholtLib/Numerics/a.h", '"VarnholtLib/Services/b.h', BESIDE),
    ("VarnholtLib/Numerics/a.cpp", '"VarnholtLib/Numerics/Calc/b.h', ""),
    ("VarnholtLib/Data/a.cpp", '"VarnholtLib/Numerics/Calc/b.h', UPWARDS),
    ("VarnholtBaseLib/a.cpp", '"Platform/Xml/b.h', ""),
    ("Platform/Runtime/a.cpp", '"Platform/Controls/b.h', UPWARDS),
    ("Platform/Runtime/a.cpp", '"Platform/System/b.h', UPWARDS),
    ("Platform/Http/a.cpp", '"Platform/System/b.h', ""),
    ("Platform/Http/a.cpp", '"Platform/Zip/b.h', BESIDE),
    ("Platform/Controls/a.h", '"Platform/Drawing/b.h', ""),
    ("Platform/Drawing/a.h", '"Platform/Controls/b.h', BESIDE),
    ("Platform/Sound/a.cpp", '<vector', "has no floor: give its folder one in floors.py"),
    ("VarnholtLib/Sound/a.cpp", '<vector', "has no floor: give its folder one in floors.py"),
    ("VarnholtLib/a.h", '"VarnholtLib/Sound/b.h', "includes a folder without a floor"),
    ("Platform/Runtime/a.cpp", '"b.h', "is not written from the root of the tree"),
    ("VarnholtLib/Data/a.cpp", '"VarnholtLib/Data/bPrivate.h', ""),
    ("VarnholtLib/Data/aPrivate.h", '"VarnholtLib/Data/bPrivate.h', ""),
    ("VarnholtLib/Data/a.h", '"VarnholtLib/Data/bPrivate.h', SHOWN),
    ("VarnholtLib/Numerics/a.cpp", '"VarnholtLib/Data/bPrivate.h', PRIVATELY),
    ("Tools/varnholt/a.cpp", '"VarnholtLib/Data/bPrivate.h', PRIVATELY),
    ("VarnholtLib/Numerics/a.cpp", '"VarnholtLib/Numerics/Calc/bPrivate.h', ""),
    ("VarnholtLib/Numerics/Calc/a.cpp", '"VarnholtLib/Numerics/bPrivate.h', ""),
    ("VarnholtLib/Numerics/Calc/a.cpp", '"VarnholtLib/Numerics/Fit/bPrivate.h', PRIVATELY),
    ("VarnholtLib/a.cpp", '"VarnholtLib/Numerics/bLoadPrivate.h', ""),
    ("VarnholtLib/a.cpp", '"VarnholtLib/Numerics/bPrivate.h', PRIVATELY),
    ("VarnholtLib/a.h", '"VarnholtLib/Numerics/bLoadPrivate.h', SHOWN),
    ("Tools/varnholt/a.cpp", '"VarnholtLib/Numerics/bLoadPrivate.h', PRIVATELY),
    ("Fuzz/a.cpp", '"VarnholtLib/Data/b.h', ""),
    ("Fuzz/a.cpp", '"Tests/Numerics/b.h', ""),
    ("Benchmarks/a.cpp", '"Tests/Numerics/b.h', UPWARDS),
    ("Fuzz/a.cpp", '"VarnholtLib/Data/bPrivate.h', PRIVATELY),
    ("Tools/varnholt/a.cpp", '"Tools/varnholt/b.h', ""),
    ("Examples/x/a.cpp", '"VarnholtBaseLib/b.h', ""),
    ("Examples/x/a.cpp", '"Examples/b.h', "is not installed"),
    ("Platform/Runtime/a.h", '<vector', ""),
    ("Platform/Runtime/a.h", '<unicode/b.h', "shows a third party in a public header"),
    ("Platform/Runtime/aPrivate.h", '<unicode/b.h', ""),
    ("VarnholtLib/Data/a.cpp", '<unicode/b.h', FOREIGN),
    ("VarnholtLib/Data/a.cpp", '<unistd.h', FOREIGN),
    ("Platform/Runtime/a.cpp", '<CLI/CLI.hpp', FOREIGN),
    ("Platform/Controls/a.cpp", '<QString', FOREIGN),
    ("Desktop/Station/a.cpp", '<QString', FOREIGN),
    ("Desktop/Qt/a.cpp", '<QString', ""),
    ("Desktop/Qt/a.h", '<QString', "shows a third party in a public header"),
    ("Tools/varnholt/a.cpp", '<CLI/CLI.hpp', ""),
    ("Tools/varnholt/a.cpp", '<new/a.h', "is unknown: list who may include it, in floors.py"),
]


def main():
    failures = [f"{file} includes {include}: '{problem_of(file, include)}' instead of '{problem}'"
                for file, include, problem in CASES if problem_of(file, include) != problem]
    if circles({"a.h": ['"b.h'], "b.h": ['"a.h'], "c.h": ['"a.h']}) != ["a.h"]:
        failures.append("A circle is not found")
    tree = read_tree(sys.argv[1])
    if len(tree) <= 100:
        failures.append("The tree was not found")
    for file, includes in sorted(tree.items()):
        for include in ["<vector"] + includes:
            if problem := problem_of(file, include):
                failures.append(f"{file} includes {include}: it {problem}")
    failures += [f"There is a circle of includes through {file}" for file in circles(tree)]
    print("\n".join(failures) or f"{len(tree)} files keep the floors")
    sys.exit(1 if failures else 0)


main()
