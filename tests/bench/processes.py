"""What the benchmarks share that measure whole processes from outside, through /proc and the toolkit's own log."""
import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "desktop"))

from rig.desktop import Desktop, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.program import Program  # noqa: E402  pylint: disable=wrong-import-position

__all__ = ["BARE_WINDOW", "Desktop", "FRAME_LOG", "PROGRAM", "Program", "SETTINGS", "SIZE", "cpu_seconds",
           "frames", "goal", "is_frame", "measuring_program", "resident_mebibytes", "start_session", "wait_until",
           "wakeups"]

PROGRAM = os.environ["TAPALONG_PROGRAM"]


def measuring_program(name):
    """One of those that are built beside the program."""
    return os.path.join(os.path.dirname(PROGRAM), name)


BARE_WINDOW = measuring_program("bare_window")
SIZE = (1920, 1080)

# The scene of the other benchmark of typed text; longer texts than any here are not cut.
SETTINGS = {"exitPassword": "giraffe", "soundEnabled": False, "useTouchID": False, "fontSize": 96,
            "useSystemAppearance": False, "customBGColorHex": "#12121A", "maxCharacters": 100000}

# Both programs then write a line whenever a frame is on the screen; both wait for none before they draw.
FRAME_LOG = {"QT_LOGGING_RULES": "qt.scenegraph.time.renderloop=true", "QT_QPA_UPDATE_IDLE_TIME": "0"}
FRAME_WORDS = "Frame rendered"


def goal(what, figure, wanted):
    """Prints a figure beside what it ought to be; ./bench shows them all once more at its end."""
    line = f"{what:66} {figure:9.3f}   {wanted}"
    print(line, flush=True)
    if path := os.environ.get("TAPALONG_GOALS"):
        with open(path, "a", encoding="utf-8") as file:
            file.write(line + "\n")


def is_frame(line):
    return FRAME_WORDS in line


def frames(program):
    return sum(map(is_frame, list(program.errors)))


def _threads(pid):
    return [f"/proc/{pid}/task/{thread}" for thread in os.listdir(f"/proc/{pid}/task")]


def _read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def cpu_seconds(pid):
    """CPU time of all threads, in the scheduler's nanoseconds: /proc/PID/stat counts in hundredths of a second."""
    return sum(int(_read(f"{thread}/schedstat").split()[0]) for thread in _threads(pid)) / 1e9


def _status(path, field):
    return int(next(line for line in _read(path).splitlines() if line.startswith(field + ":")).split()[1])


def wakeups(pid):
    """How often a thread went to sleep of its own accord, and so has been or will be woken."""
    return sum(_status(f"{thread}/status", "voluntary_ctxt_switches") for thread in _threads(pid))


def resident_mebibytes(pid):
    return _status(f"/proc/{pid}/status", "VmRSS") / 1024


def start_session(desktop):
    """By the shortcut, as from any program; the session's window is the one that covers the screen."""
    width, height = desktop.size

    def there_is(window):
        return lambda: window in desktop.output(["xwininfo", "-root", "-tree"])

    wait_until(there_is('"Tapalong Settings"'), "the settings window")
    desktop.settle(1)
    desktop.key("ctrl+alt+super+t")
    wait_until(there_is(f'"tapalong" "tapalong")  {width}x{height}+0+0'), "the session's window")
    desktop.settle(1)
