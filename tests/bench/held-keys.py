#!/usr/bin/python3
"""A session under ten held keys and thirty more a second: a minute, or ten of them in ./bench --long."""
import os
import subprocess

from processes import PROGRAM, SETTINGS, SIZE, Desktop, Program, measuring_program, start_session

PERIODS, SECONDS = (10, 60) if os.environ.get("TAPALONG_LONG") else (4, 15)


def main():
    # The text is cut as it is for a child, or the memory would grow with it.
    settings = {name: value for name, value in SETTINGS.items() if name != "maxCharacters"}
    with Desktop(size=SIZE, accessibility=False) as desktop:
        program = Program(desktop, PROGRAM, settings=settings)
        start_session(desktop)
        subprocess.run([measuring_program("held_keys"), str(program.process.pid), str(PERIODS), str(SECONDS)],
                       env=desktop.environment, stdin=subprocess.DEVNULL, check=True)
        program.quit()


if __name__ == "__main__":
    main()
