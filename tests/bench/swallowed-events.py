#!/usr/bin/python3
"""What the lock on the keyboard costs by itself: a hundred events a second that it swallows and that type nothing,
beside a bare window that gets the same events and does nothing with them."""
import statistics
import time

from processes import BARE_WINDOW, PROGRAM, SETTINGS, SIZE, Desktop, Program, cpu_seconds, goal, start_session

SECONDS = 10
ROUNDS = 3
EVENTS_A_SECOND = 100
# A press and a release of a key that is set to type nothing.
KEYS = ["Control_L"] * (EVENTS_A_SECOND // 2 * SECONDS)


def share_of_a_core(pid, act):
    """In percent, while `act` goes on; and how long it took."""
    began, cpu = time.monotonic(), cpu_seconds(pid)
    act()
    took = time.monotonic() - began
    return 100 * (cpu_seconds(pid) - cpu) / took, took


def measure(desktop, program, what):
    """Prints a row, and returns what a hundred events a second cost in percent of a core."""
    pid = program.process.pid
    idle, _ = share_of_a_core(pid, lambda: time.sleep(SECONDS))
    busy, took = share_of_a_core(pid, lambda: desktop.xdotool("key", "--delay", 1000 * SECONDS // len(KEYS), *KEYS))
    rate = 2 * len(KEYS) / took
    print(f"{what:30} {idle:8.2f} {rate:10.0f} {busy:8.2f}", flush=True)
    return (busy - idle) * EVENTS_A_SECOND / rate


def main():
    print("% of a core                        idle   events/s     busy")
    costs = []
    with Desktop(size=SIZE, accessibility=False) as desktop:
        for _ in range(ROUNDS):
            bare = Program(desktop, BARE_WINDOW, arguments=["blink"])
            desktop.settle(1)
            anchor = measure(desktop, bare, "a bare window")
            bare.quit()
            program = Program(desktop, PROGRAM,
                              settings=SETTINGS | {"kioskMode": True, "modifierKeysTypeEmoji": False})
            start_session(desktop)
            costs.append((measure(desktop, program, "a session in Lockdown Mode"), anchor))
            program.quit()
    ours, anchor = map(statistics.median, zip(*costs))
    goal("100 events a second in Lockdown Mode, % of a core", ours, "(under 1 for the tap's callback)")
    goal("the same / a bare window with the focus", ours / anchor, "(the toolkit's share of it)")


if __name__ == "__main__":
    main()
