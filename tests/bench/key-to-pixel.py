#!/usr/bin/python3
"""From a key to the first changed pixel, as another program on the display sees it: a session beside a small editor."""
from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, measuring_program, start_session, wait_until

EDITOR = "/usr/bin/mousepad"  # its own default font: fewer pixels per key than the session draws
KEYS = 200
ROUNDS = 3


def measure(desktop, name):
    print(desktop.output([measuring_program("key_to_pixel"), name, str(KEYS)]), end="", flush=True)


def session(desktop, **changes):
    program = Program(desktop, PROGRAM, settings=SETTINGS | changes)
    start_session(desktop)
    measure(desktop, "a session in Lockdown Mode" if changes else "a session")
    program.quit()


def editor(desktop):
    program = Program(desktop, EDITOR, arguments=["--disable-server"])
    wait_until(lambda: "Mousepad" in desktop.output(["xdotool", "getactivewindow", "getwindowname"]), "the editor")
    desktop.settle(1)
    measure(desktop, "a small GTK editor")
    program.quit()


def main():
    print("milliseconds from key to pixel           keys     median    95 in 100    slowest  unanswered")
    with Desktop(size=SIZE, accessibility=False) as desktop:
        for _ in range(ROUNDS):  # in turn: the machine may be busier at one time than at another
            editor(desktop)
            session(desktop)
            session(desktop, kioskMode=True)


if __name__ == "__main__":
    main()
