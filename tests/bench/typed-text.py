#!/usr/bin/python3
"""What a key costs the session's display, beside a text item that gets the whole text anew and another toolkit's view."""
import re
import subprocess

from processes import SIZE, Desktop, goal, measuring_program

OURS, REBUILT, VIEW = "typed text", "rebuilt styled text", "GTK text view, paragraphs"
ROW = re.compile(r"^(.+?) +(\d+) +(\d+) +([\d.]+) +([\d.]+) +([\d.]+)$")
FIGURE = re.compile(r"^(.+?) +([\d.]+)$")


def run(desktop, program, costs, figures, **environment):
    """Prints what the program prints, and keeps its rows, (what, length) -> (median, dearest), and single figures."""
    with subprocess.Popen([measuring_program(program)], env=desktop.environment | environment,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True) as process:
        for line in process.stdout:
            print(line, end="", flush=True)
            if row := ROW.match(line):
                what, length, _, median, _, dearest = row.groups()
                costs[what, int(length)] = float(median), float(dearest)
            elif single := FIGURE.match(line):
                figures[single[1]] = float(single[2])


def main():
    costs, figures = {}, {}
    with Desktop(size=SIZE, wm=None, accessibility=False) as desktop:
        run(desktop, "typed_text_bench", costs, figures, QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR="1")
        run(desktop, "gtk_text_bench", costs, figures, GDK_BACKEND="x11")
    print_goals(costs, figures)


def print_goals(costs, figures):
    def ratio(part, other, length=5000):
        return costs[OURS, length][part] / costs[other, length][part]

    median, dearest = 0, 1
    goal("text alone: key at 50000 / at 100 characters", costs[OURS, 50000][median] / costs[OURS, 100][median],
         "at most 1.2")
    goal("text alone: key at 5000 / text item rebuilt", ratio(median, REBUILT), "at most 0.01")
    goal("text alone: key at 5000 / GTK text view with paragraphs", ratio(median, VIEW), "at most 0.5")
    for length in (5000, 50000):
        goal(f"text alone: dearest of 200 keys at {length}, ms", costs[OURS, length][dearest], "at most 5, or")
        goal("    / dearest of the rebuilt item", ratio(dearest, REBUILT, length), "    at most 0.25")
        goal("    / dearest of the GTK view", ratio(dearest, VIEW, length), "    at most 0.25")
    goal("text alone: cut at 50000 characters, in keys", figures["trim of 50000 / key at 50000"], "at most 10")
    goal("text alone: growth of memory from 100 to 50000, MiB", figures["memory at 50000 less memory at 100, MiB"],
         "at most 10")


if __name__ == "__main__":
    main()
