#!/usr/bin/python3
"""What a key costs the real program in a real session, by the length of the text that is there."""
from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, measuring_program, start_session

LENGTHS = (100, 1000, 5000, 50000)
LIMIT = 50300
KEYS = LIMIT + 6  # as many as the program types that measures
LEFT = KEYS - (LIMIT + 1) * 3 // 10


def main():
    with Desktop(size=SIZE, accessibility=False) as desktop:
        # The tree is asked for the text at the end only; while keys are measured there is nobody who could ask.
        program = Program(desktop, PROGRAM, settings=SETTINGS | {"maxCharacters": LIMIT},
                          environment={"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"})
        start_session(desktop)
        # What the shortcut's own modifier keys typed when they were released.
        desktop.key(*["BackSpace"] * 4)
        desktop.settle(1)
        command = [measuring_program("key_cost"), str(program.process.pid), str(LIMIT), *map(str, LENGTHS)]
        print(desktop.output(command), end="")
        desktop.start_accessibility()
        text = program.wait_for_text(lambda found: found, "the typed text")
        shown = sum(each != "\uFE0F" for each in text)  # it only says that the character before it is an emoji
        print(f"characters in the session at the end: {shown} for {KEYS} keys; {LEFT} are right")
        program.quit()


if __name__ == "__main__":
    main()
