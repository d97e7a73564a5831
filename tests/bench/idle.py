#!/usr/bin/python3
"""What the program does while nobody does anything: share of a core, frames and wake-ups a second."""
import time

from processes import (BARE_WINDOW, FRAME_LOG, PROGRAM, SETTINGS, SIZE, Desktop, Program, cpu_seconds, frames,
                       start_session, wakeups)

SECONDS = 20


def report(desktop, program, what):
    def readings():
        server = desktop.processes[0].pid  # the desktop's first process is its X server
        pid = program.process.pid
        return time.monotonic(), cpu_seconds(pid), cpu_seconds(server), frames(program), wakeups(pid)

    desktop.settle(2)
    before = readings()
    time.sleep(SECONDS)
    wall, cpu, server, drawn, woken = (after - earlier for after, earlier in zip(readings(), before))
    print(f"{what:34} {100 * cpu / wall:10.3f} {100 * server / wall:10.3f} {drawn / wall:10.2f} {woken / wall:10.1f}",
          flush=True)


def main():
    print(f"idle for {SECONDS} s                      % of a core   X server   frames/s  wake-ups/s")
    with Desktop(size=SIZE, accessibility=False) as desktop:
        bare = Program(desktop, BARE_WINDOW, environment=FRAME_LOG, arguments=["blink"])
        report(desktop, bare, "a bare window, cursor blinking")
        bare.quit()
        program = Program(desktop, PROGRAM, settings=SETTINGS, environment=FRAME_LOG)
        report(desktop, program, "the settings window")
        start_session(desktop)
        desktop.key(*["BackSpace"] * 4)
        report(desktop, program, "a session, nothing typed")
        desktop.type("hello sunny day ")
        report(desktop, program, "a session with text")
        program.quit()


if __name__ == "__main__":
    main()
