#!/usr/bin/env python3
"""Runs clang-tidy 14 over our .cpp files, and only over those that changed since they last passed.

A file has changed when it, a header of ours that it includes directly or not, its compile command, .clang-tidy or
the installed tool differ. What passed is remembered in the build tree, under tidy/, as empty files named by the hash of
all that.
"""

import argparse
import concurrent.futures
import functools
import hashlib
import json
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
TIDY = "clang-tidy-14"
# Stands in for the one standard header that version 14 cannot read.
SHIMS = ROOT / "tools" / "lint" / "clang14"
INCLUDE = re.compile(rb'^[ \t]*#[ \t]*include[ \t]*"([^"]+)"', re.MULTILINE)


@functools.cache
def content(path):
    return path.read_bytes()


def included_by(path):
    for name in INCLUDE.findall(content(path)):
        for folder in (path.parent, ROOT / "src", ROOT / "tests"):
            candidate = (folder / name.decode()).resolve()
            if candidate.is_file():
                yield candidate
                break


def with_headers(source):
    seen, waiting = set(), [source]
    while waiting:
        path = waiting.pop()
        if path not in seen:
            seen.add(path)
            waiting.extend(included_by(path))
    return sorted(seen)


def fingerprint(entry, source, surroundings):
    digest = hashlib.sha256(surroundings)
    digest.update(entry["command"].encode())
    for path in with_headers(source):
        digest.update(str(path).encode() + b"\0" + content(path))
    return digest.hexdigest()


def own_sources(build):
    """Our own files in the compile commands; what a tool generated into the build tree is not ours to lint."""
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(entry["directory"], entry["file"]).resolve()
        if source.is_relative_to(ROOT) and not source.is_relative_to(ROOT / "build"):
            found[source] = entry
    return found


def is_analyzed(source):
    """Whether the static analyzer reads a file too, which takes as long again as all other checks together.

    Of a test it sees mostly GoogleTest's macros, and of the files on top of Qt the allocations that Qt owns; the
    sanitizers run over both. The core and what speaks to C libraries are worth its time.
    """
    if source.name.endswith(".test.cpp"):
        return False
    return not any(source.is_relative_to(ROOT / folder) for folder in ("tests", "src/ui", "src/platform/desktop"))


def lint(build, source):
    # The compilers' own warnings are g++'s business, with its own list of flags.
    arguments = ["-Wno-everything", "-isystem", str(SHIMS)]
    command = [TIDY, "--quiet", "-p", str(build), *(f"--extra-arg={word}" for word in arguments)]
    if not is_analyzed(source):
        command.append("--checks=-clang-analyzer-*")
    command.append(str(source))
    return subprocess.run(command, capture_output=True, text=True, check=False)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="a built tree with compile_commands.json")
    parser.add_argument("--jobs", type=int, default=2)
    arguments = parser.parse_args()

    version = subprocess.run([TIDY, "--version"], capture_output=True, check=True).stdout
    configuration = [ROOT / ".clang-tidy", pathlib.Path(__file__).resolve(), *sorted(SHIMS.iterdir())]
    surroundings = version + b"".join(map(content, configuration))
    build = arguments.build.resolve()
    memory = build / "tidy"
    memory.mkdir(exist_ok=True)
    marks = {source: memory / fingerprint(entry, source, surroundings) for source, entry in own_sources(build).items()}
    if not marks:
        sys.exit("no source of ours in compile_commands.json")
    changed = [source for source, mark in marks.items() if not mark.exists()]
    print(f"{len(marks)} files, {len(changed)} to look at", flush=True)

    findings = []
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        for done, (source, result) in enumerate(zip(changed, pool.map(functools.partial(lint, build), changed)), 1):
            print(f"[{done}/{len(changed)}] {source.relative_to(ROOT)}", flush=True)
            if result.returncode == 0:
                marks[source].touch()
            else:
                findings.append(result.stdout + result.stderr)
    for stale in set(memory.iterdir()) - set(marks.values()):
        stale.unlink()
    if findings:
        # Together at the end, where whoever sees the end of a long log finds them.
        sys.exit("\n".join(findings) + f"{len(findings)} of {len(marks)} files have findings")


main()
