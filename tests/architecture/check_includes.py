#!/usr/bin/env python3
"""Reads every #include of src/ and fails on an edge that the table below does not grant, and on a cycle of files.

Usage: check_includes.py SOURCE_FOLDER
"""

import fnmatch
import pathlib
import re
import sys

STANDARD = frozenset(
    """
    algorithm any array atomic barrier bit bitset charconv chrono compare complex concepts condition_variable coroutine
    deque exception execution filesystem format forward_list fstream functional future initializer_list iomanip ios
    iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex new numbers numeric
    optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex source_location span
    sstream stack stdexcept stop_token streambuf string string_view strstream syncstream system_error thread tuple
    type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
    cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef cstdint cstdio
    cstdlib cstring ctime cuchar cwchar cwctype
    """.split()
)

# What stands between < and >, by family.
LIBRARIES = {
    "Qt": ["Q[A-Za-z]*", "qpa/*"],
    "X11": ["xcb/*", "xkbcommon/*"],
    "sound": ["pulse/*", "sndfile.h"],
    "POSIX": ["unistd.h", "fcntl.h", "poll.h", "signal.h", "spawn.h", "pwd.h", "errno.h", "dlfcn.h", "malloc.h",
              "sys/*.h", "linux/*.h"],
    "test": ["gtest/*", "gmock/*"],
}

# Written by a tool at build time, so not among the files read here.
GENERATED = frozenset(["text/UnicodeTables.h", "resources/GeneratedAssetSymbols.h"])

CORE = ["base/*", "text/*", "platform/*.h", "session/*", "settings/*", "lockdown/*", "auth/*", "sound/*", "views/*",
        "app/*"]
SYSTEM = ["base/*", "text/*", "platform/*.h"]
EVERYTHING = ["*"]
EVERY_LIBRARY = list(LIBRARIES)

# Who may include whom. The first row whose pattern fits the including file holds; in patterns a * goes within a
# folder, ** across folders. All may include the standard library, and nothing that is not granted here.
#
# including file                   our files that it may include               libraries
RULES = [
    # Tests of the core run on the simulated platform and may look at all of the core.
    ("platform/linux/**.test.*",     SYSTEM + ["platform/**"],                   EVERY_LIBRARY),
    ("platform/desktop/**.test.*",   SYSTEM + ["platform/**"],                   ["Qt", "POSIX", "test"]),
    ("ui/**.test.*",                 CORE + ["ui/**", "platform/**", "resources/*"], ["Qt", "test"]),
    ("**.test.*",                    CORE + ["platform/simulated/*"],            ["test"]),

    # The layers below: text on base, the interfaces of the platform on base.
    ("base/*",                       ["base/*"],                                 []),
    ("text/*",                       ["base/*", "text/*"],                       []),
    ("platform/*",                   ["base/*", "platform/*.h"],                 []),

    # The one header of its folder that auth and views may read: the rest of lockdown is not theirs.
    ("lockdown/Notifications.h",     SYSTEM,                                     []),

    # The core, from the settings that know nobody to the views that show everything.
    ("settings/*",                   SYSTEM + ["settings/*"],                    []),

    ("sound/*",                      SYSTEM + ["sound/*", "settings/*"],         []),
    ("lockdown/*",                   SYSTEM + ["lockdown/*", "settings/*"],      []),
    ("session/*",                    SYSTEM + ["session/*", "lockdown/*", "sound/*", "settings/*"], []),
    ("auth/*",                       SYSTEM + ["auth/*", "settings/*", "lockdown/Notifications.h"], []),
    ("views/*",                      SYSTEM + ["views/*", "session/*", "settings/*", "sound/*", "auth/*",
                                               "lockdown/Notifications.h"],      []),

    # Where core and platform meet; the only files that see both.
    ("app/main.cpp",                 EVERYTHING,                                 EVERY_LIBRARY),
    ("app/Desktop*",                 EVERYTHING,                                 EVERY_LIBRARY),
    ("app/*",                        CORE,                                       []),

    # The platforms know the interfaces that they implement, never the application.
    ("platform/simulated/*",         SYSTEM + ["platform/simulated/*"],          []),
    ("platform/desktop/**",          SYSTEM + ["platform/desktop/**"],           ["Qt"]),
    ("platform/linux/**",            SYSTEM + ["platform/desktop/**", "platform/linux/**"],
                                                                                 ["Qt", "X11", "sound", "POSIX"]),

    # Adapters between the core's view state and QML.
    ("ui/**",                        CORE + ["ui/**", "resources/*"],            ["Qt"]),
]

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"]', re.MULTILINE)


def matches(name, patterns):
    return any(pattern_expression(pattern).fullmatch(name) for pattern in patterns)


def pattern_expression(pattern):
    pieces = re.split(r"(\*\*|\*)", pattern)
    return re.compile("".join({"**": ".*", "*": "[^/]*"}.get(piece) or re.escape(piece) for piece in pieces)
                      if pattern != "*" else ".*")


def rule_for(name):
    return next((rule for rule in RULES if matches(name, [rule[0]])), None)


def library_of(header):
    for family, patterns in LIBRARIES.items():
        if any(fnmatch.fnmatch(header, pattern) for pattern in patterns):
            return family
    return None


def read_tree(root):
    """Maps each source file to its includes: (quote, name), names as they stand."""
    files = sorted(path for suffix in ("*.h", "*.cpp") for path in root.rglob(suffix))
    return {path.relative_to(root).as_posix(): INCLUDE.findall(path.read_text(encoding="utf-8")) for path in files}


def complaint(name, quote, included, tree):
    rule = rule_for(name)
    if rule is None:
        return "no rule says what this file may include"
    _, ours, libraries = rule
    if quote == "<":
        if included in STANDARD or library_of(included) in libraries:
            return None
        return f"may not include <{included}>"
    if included.endswith(".moc"):
        return None if "Qt" in libraries else f'may not include "{included}"'
    if included not in tree and included not in GENERATED:
        return f'includes "{included}", which is no file of src/ (paths are relative to src/)'
    return None if matches(included, ours) else f'may not include "{included}"'


def forbidden_edges(tree):
    for name, includes in tree.items():
        for quote, included in includes:
            reason = complaint(name, quote, included, tree)
            if reason:
                yield f"src/{name}: {reason}"


def find_cycle(tree):
    """The files of one include cycle, the first again at the end, or None."""
    state = {}
    path = []

    def visit(name):
        state[name] = "open"
        path.append(name)
        for quote, included in tree[name]:
            if quote == "<" or included not in tree:
                continue
            if state.get(included) == "open":
                return path[path.index(included):] + [included]
            cycle = included not in state and visit(included)
            if cycle:
                return cycle
        state[name] = "closed"
        path.pop()
        return None

    for name in tree:
        cycle = name not in state and visit(name)
        if cycle:
            return cycle
    return None


def check(root):
    tree = read_tree(root)
    problems = list(forbidden_edges(tree))
    cycle = find_cycle(tree)
    if cycle:
        problems.append("cycle: " + " -> ".join(cycle))
    if not tree:
        problems.append(f"no source files under {root}")
    return tree, problems


def main():
    tree, problems = check(pathlib.Path(sys.argv[1]))
    print(*problems, sep="\n")
    print(f"{len(tree)} files, {sum(map(len, tree.values()))} includes, {len(problems)} problems")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
