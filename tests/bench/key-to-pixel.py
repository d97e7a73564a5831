#!/usr/bin/python3
"""From a key to the first changed pixel, as another program on the display sees it: a session beside a small editor."""
import statistics

from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, goal, measuring_program, start_session, wait_until

EDITOR = "/usr/bin/mousepad"  # its own default font: fewer pixels per key than the session draws
KEYS = 200
ROUNDS = 3


def measure(desktop, name):
    """Prints a row, and returns its median."""
    row = desktop.output([measuring_program("key_to_pixel"), name, str(KEYS)])
    print(row, end="", flush=True)
    return float(row.removeprefix(name).split()[1])


def session(desktop, **changes):
    program = Program(desktop, PROGRAM, settings=SETTINGS | changes)
    start_session(desktop)
    median = measure(desktop, "a session in Lockdown Mode" if changes else "a session")
    program.quit()
    return median


def editor(desktop):
    program = Program(desktop, EDITOR, arguments=["--disable-server"])
    wait_until(lambda: "Mousepad" in desktop.output(["xdotool", "getactivewindow", "getwindowname"]), "the editor")
    desktop.settle(1)
    median = measure(desktop, "a small GTK editor")
    program.quit()
    return median


def main():
    print("milliseconds from key to pixel           keys     median    95 in 100    slowest  unanswered")
    medians = []
    with Desktop(size=SIZE, accessibility=False) as desktop:
        for _ in range(ROUNDS):  # in turn: the machine may be busier at one time than at another
            medians.append((editor(desktop), session(desktop), session(desktop, kioskMode=True)))
    anchor, ours, locked = map(statistics.median, zip(*medians))
    goal("key to pixel: a session / the editor, median", ours / anchor, "at most 1")
    goal("key to pixel: a session in Lockdown Mode / the editor, median", locked / anchor, "at most 1")


if __name__ == "__main__":
    main()
