#!/usr/bin/python3
"""From the start of the process to the first frame of the settings window, beside a bare QML window."""
import statistics
import subprocess
import time

from processes import (BARE_WINDOW, FRAME_LOG, PROGRAM, SIZE, Desktop, cpu_seconds, goal, is_frame,
                       resident_mebibytes)

STARTS = 15


def start(desktop, command):
    """Milliseconds of wall clock, milliseconds of CPU, and MiB at the first frame."""
    began = time.monotonic()
    process = subprocess.Popen(command, env=desktop.environment | FRAME_LOG, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, start_new_session=True)
    try:
        next(line for line in process.stderr if is_frame(line))
        wall = time.monotonic() - began
        return wall * 1e3, cpu_seconds(process.pid) * 1e3, resident_mebibytes(process.pid)
    finally:
        process.terminate()
        process.communicate()


def main():
    programs = {"the program": [PROGRAM], "a bare QML window": [BARE_WINDOW],
                "with three texts and a switch": [BARE_WINDOW, "controls"]}
    figures = {name: [] for name in programs}
    with Desktop(size=SIZE, accessibility=False) as desktop:
        for turn in range(STARTS + 1):
            for name, command in programs.items():
                measured = start(desktop, command)
                if turn:  # the first start of each reads from the disk
                    figures[name].append(measured)
    print(f"start to first frame, median of {STARTS}    wall ms     CPU ms        MiB")
    ours, *others = ({"name": name, "row": [statistics.median(column) for column in zip(*rows)]}
                     for name, rows in figures.items())
    for each in (ours, *others):
        print(f"{each['name']:38}", *(f"{value:10.1f}" for value in each["row"]))
    for other in others:
        print(f"{'ratio to ' + other['name']:38}", *(f"{a / b:10.2f}" for a, b in zip(ours["row"], other["row"])))
    bare = others[0]["row"]
    goal("start to first frame, CPU, / bare window", ours["row"][1] / bare[1], "at most 2")
    goal("memory at the first frame / bare window", ours["row"][2] / bare[2], "at most 1.5")


if __name__ == "__main__":
    main()
