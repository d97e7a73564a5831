#!/usr/bin/python3
"""A session under ten held keys and thirty more a second: a minute, or ten of them in ./bench --long."""
import os
import statistics
import subprocess

from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, goal, measuring_program, start_session

PERIODS, SECONDS = (10, 60) if os.environ.get("TAPALONG_LONG") else (4, 15)
LIMIT = 5000  # the program's own


def follow(desktop, command):
    """Prints what the program prints as it comes, and returns the numbers of its rows."""
    rows = []
    with subprocess.Popen(command, env=desktop.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          text=True) as process:
        for line in process.stdout:
            print(line, end="", flush=True)
            rows.append([float(word) for word in line.split()])
    return rows


def print_goals(rows):
    _, _, median, _, _, rest, _, memory = zip(*rows)
    half = PERIODS // 2
    goal("held keys: key to pixel, periods of the second half / of the first",
         statistics.median(median[half:]) / statistics.median(median[:half]), "1: flat")
    goal("held keys: work left after the last key of a period, most, ms", max(rest), "none that grows")
    goal(f"held keys: growth of memory in {PERIODS * SECONDS} s, MiB", memory[-1] - memory[0], "0: flat")


def main():
    # The text is cut as it is for a child, or the memory would grow with it.
    settings = SETTINGS | {"maxCharacters": LIMIT}
    with Desktop(size=SIZE, accessibility=False) as desktop:
        program = Program(desktop, PROGRAM, settings=settings)
        start_session(desktop)
        print("period     keys  median ms  95 in 100   slowest ms  work after ms   CPU %  resident MiB")
        rows = follow(desktop, [measuring_program("held_keys"), str(program.process.pid), str(LIMIT), str(PERIODS),
                                str(SECONDS)])
        print_goals(rows)
        program.quit()


if __name__ == "__main__":
    main()
