#!/usr/bin/python3
"""What the program does while nobody does anything: share of a core, frames and wake-ups a second."""
import time

from processes import (BARE_WINDOW, FRAME_LOG, PROGRAM, SETTINGS, SIZE, Desktop, Program, cpu_seconds, frames, goal,
                       resident_mebibytes, start_session, wakeups)

SECONDS = 20


def report(desktop, program, what):
    """Prints and returns share of a core in percent, frames and wake-ups a second, and MiB."""
    def readings():
        server = desktop.processes[0].pid  # the desktop's first process is its X server
        pid = program.process.pid
        return time.monotonic(), cpu_seconds(pid), cpu_seconds(server), frames(program), wakeups(pid)

    desktop.settle(2)
    before = readings()
    time.sleep(SECONDS)
    wall, cpu, server, drawn, woken = (after - earlier for after, earlier in zip(readings(), before))
    memory = resident_mebibytes(program.process.pid)
    print(f"{what:34} {100 * cpu / wall:10.3f} {100 * server / wall:10.3f} {drawn / wall:10.2f} {woken / wall:10.1f}"
          f" {memory:10.1f}", flush=True)
    return 100 * cpu / wall, drawn / wall, woken / wall, memory


def main():
    print(f"idle for {SECONDS} s                      % of a core   X server   frames/s  wake-ups/s        MiB")
    with Desktop(size=SIZE, accessibility=False) as desktop:
        bare = Program(desktop, BARE_WINDOW, environment=FRAME_LOG, arguments=["blink"])
        *_, bare_memory = report(desktop, bare, "a bare window, cursor blinking")
        bare.quit()
        program = Program(desktop, PROGRAM, settings=SETTINGS, environment=FRAME_LOG)
        report(desktop, program, "the settings window")
        start_session(desktop)
        desktop.key(*["BackSpace"] * 4)
        report(desktop, program, "a session, nothing typed")
        desktop.type("hello sunny day ")
        share, drawn, woken, memory = report(desktop, program, "a session with text")
        program.quit()
        program = Program(desktop, PROGRAM, settings=SETTINGS | {"kioskMode": True}, environment=FRAME_LOG)
        start_session(desktop)
        locked, _, locked_woken, _ = report(desktop, program, "a session in Lockdown Mode")
        program.quit()
    goal("idle session, % of a core", share, "at most 0.15")
    goal("idle session, frames a second", drawn, "at most 2")
    goal("idle session, wake-ups a second", woken, "(1.67 blinks, 4 looks at the corner, 2 at the focus)")
    goal("the same in Lockdown Mode, % of a core", locked, "at most 0.15")
    goal("the same in Lockdown Mode, wake-ups a second", locked_woken, "(the same)")
    goal("session with a few words, memory / bare window as large", memory / bare_memory, "at most 1.5")


if __name__ == "__main__":
    main()
