#!/usr/bin/python3
"""What a key costs the session's display, beside a text item that gets the whole text anew and another toolkit's view."""
import re
import subprocess

from processes import SIZE, Desktop, measuring_program

OURS, REBUILT, VIEW = "typed text", "rebuilt styled text", "GTK text view, paragraphs"
ROW = re.compile(r"^(.+?) +(\d+) +(\d+) +([\d.]+) +([\d.]+) +([\d.]+)$")


def run(desktop, program, costs, **environment):
    """Prints what the program prints, and keeps its rows: (what, length) -> (median, dearest)."""
    with subprocess.Popen([measuring_program(program)], env=desktop.environment | environment,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True) as process:
        for line in process.stdout:
            print(line, end="", flush=True)
            if row := ROW.match(line):
                what, length, _, median, _, dearest = row.groups()
                costs[what, int(length)] = float(median), float(dearest)


def main():
    costs = {}
    with Desktop(size=SIZE, wm=None, accessibility=False) as desktop:
        run(desktop, "typed_text_bench", costs, QT_QPA_PLATFORM="xcb", QT_SCALE_FACTOR="1")
        run(desktop, "gtk_text_bench", costs, GDK_BACKEND="x11")
    for what, part in (("median", 0), ("dearest", 1)):
        for length in (5000, 50000):
            ours = costs[OURS, length][part]
            print(f"{what} key at {length}: typed text / rebuilt {ours / costs[REBUILT, length][part]:8.4f}, "
                  f"typed text / GTK {ours / costs[VIEW, length][part]:6.2f}")


if __name__ == "__main__":
    main()
