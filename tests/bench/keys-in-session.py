#!/usr/bin/python3
"""What a key costs the real program in a real session, by the length of the text that is there."""
import contextlib
import re

from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, goal, measuring_program, start_session

LENGTHS = (100, 1000, 5000, 50000)
LIMIT = 50300
KEYS = LIMIT + 6  # as many as the program types that measures
LEFT = KEYS - (LIMIT + 1) * 3 // 10


def session(desktop):
    # The tree is asked for the text at the end only; while keys are measured there is nobody who could ask.
    program = Program(desktop, PROGRAM, settings=SETTINGS | {"maxCharacters": LIMIT},
                      environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
    start_session(desktop)
    # What the shortcut's own modifier keys typed when they were released.
    desktop.key(*["BackSpace"] * 4)
    desktop.settle(1)
    return program


def print_goals(table):
    def figure(words):
        return float(re.search(words + r" +([\d.]+)$", table, re.MULTILINE)[1])

    dearest = max(float(line.split()[-1]) for line in table.splitlines() if line.startswith("the program"))
    grown = figure(f"memory at {LENGTHS[-1]} characters, MiB:") - figure(f"memory at {LENGTHS[0]} characters, MiB:")
    goal(f"in a session: key at {LENGTHS[-1]} / at {LENGTHS[0]} characters",
         figure("key at the last / first length:"), "at most 1.2")
    goal("in a session: dearest of 200 keys at any of these lengths, ms", dearest, "at most 5, or see the text alone")
    goal(f"in a session: cut at {LIMIT} characters, in keys", figure("the key that cuts the text, in keys:"),
         "at most 10")
    goal(f"in a session: growth of memory to {LENGTHS[-1]} characters, MiB", grown, "at most 10")


def main():
    with contextlib.ExitStack() as stack:
        sessions = []
        for length in LENGTHS:
            desktop = stack.enter_context(Desktop(size=SIZE, accessibility=False))
            sessions.append((desktop, session(desktop), length))
        command = [measuring_program("key_cost"), str(LIMIT)]
        for desktop, program, length in sessions:
            command += [str(program.process.pid), desktop.environment["DISPLAY"], str(length)]
        desktop, program, _ = sessions[-1]
        table = desktop.output(command)
        print(table, end="")
        print_goals(table)
        desktop.start_accessibility()
        text = program.wait_for_text(lambda found: found, "the typed text")
        shown = sum(each != "\uFE0F" for each in text)  # it only says that the character before it is an emoji
        print(f"characters in the session at the end: {shown} for {KEYS} keys; {LEFT} are right")
        for _, each, _ in sessions:
            each.quit()


if __name__ == "__main__":
    main()
