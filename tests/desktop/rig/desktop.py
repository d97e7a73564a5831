"""A private desktop for tests: an X server without a screen, its own buses, home and window manager.

Nothing of it is shared with the desktop of whoever runs it, and all of it ends with it.
"""
import os
import shutil
import signal
import subprocess
import tempfile
import time

from .display import Fixed, RigError


def wait_until(condition, what, seconds=15.0, interval=0.03):
    """Calls `condition` until it returns something true, and returns that. The time is only a guard against hanging."""
    end = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"waited {seconds:g} s in vain: {what}")
        time.sleep(interval)


class Desktop:
    """Use as a context. `wm` is the window manager's command, or None for none; `display` one of display.py."""

    def __init__(self, size=(1280, 1200), wm=("openbox",), accessibility=True, display=Fixed):
        self.size = size
        self.display = display
        self.wm = wm
        self.accessibility = accessibility
        self.processes = []
        self.folder = None
        self.environment = {}

    def __enter__(self):
        self.folder = tempfile.mkdtemp(prefix="tapalong-desktop-")
        try:
            self._start()
        except BaseException:
            self.__exit__(None, None, None)
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            if process.poll() is None:
                os.killpg(process.pid, signal.SIGTERM)
        for process in reversed(self.processes):
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                os.killpg(process.pid, signal.SIGKILL)
                process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)

    def path(self, *parts):
        return os.path.join(self.folder, *parts)

    @property
    def settings_file(self):
        return self.path("config", "tapalong", "settings.json")

    def _start(self):
        for name in ("home", "config", "run"):
            os.mkdir(self.path(name), 0o700)
        kept = {k: v for k, v in os.environ.items()
                if k not in ("WAYLAND_DISPLAY", "SESSION_MANAGER", "XAUTHORITY") and not k.startswith("PULSE_")}
        self.environment = kept | {
            "HOME": self.path("home"),
            "XDG_CONFIG_HOME": self.path("config"),
            "XDG_RUNTIME_DIR": self.path("run"),
            "GSETTINGS_BACKEND": "memory",
            "LC_ALL": "C.UTF-8",
        }
        self._start_display()
        self._start_bus()
        if self.accessibility:
            self.start_accessibility()
        if self.wm:
            self._start_window_manager()

    def _start_display(self):
        self.environment["DISPLAY"] = f":{self.display(self.size).start(self)}"

    def _start_bus(self):
        bus = self.run_beside(["dbus-daemon", "--session", "--nofork", "--print-address=1"], stdout=subprocess.PIPE)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()
        # No system bus: what the machine itself runs must not answer.
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + self.path("run", "no-system-bus")

    def start_system_bus(self):
        """A system bus of our own, with nothing on it, and nothing known of its rights."""
        bus = self.run_beside(["dbus-daemon", "--session", "--nofork", "--print-address=1"], stdout=subprocess.PIPE)
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()

    def start_accessibility(self):
        """A program that was started before looks at the tree's bus from now on if it was told to by
        QT_LINUX_ACCESSIBILITY_ALWAYS_ON; one that is started later does in any case."""
        launcher = next((path for path in ("/usr/libexec/at-spi-bus-launcher",
                                           "/usr/lib/at-spi2-core/at-spi-bus-launcher") if os.path.exists(path)), None)
        if launcher is None:
            raise RigError("at-spi-bus-launcher is not installed")
        self.run_beside([launcher, "--launch-immediately"])
        ask = ["gdbus", "call", "--session", "-d", "org.a11y.Bus", "-o", "/org/a11y/bus", "-m"]
        wait_until(lambda: self.succeeds(ask + ["org.a11y.Bus.GetAddress"]), "the accessibility bus")
        self.call(ask + ["org.freedesktop.DBus.Properties.Set", "org.a11y.Status", "IsEnabled", "<true>"])
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"

    def _start_window_manager(self):
        self.run_beside(list(self.wm))
        wait_until(lambda: "window id" in self.output(["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]),
                   "the window manager")

    def run_beside(self, command, environment=None, **options):
        """Starts a process that ends with the desktop."""
        for stream in ("stdin", "stdout", "stderr"):
            options.setdefault(stream, subprocess.DEVNULL)
        process = subprocess.Popen(command, env=self.environment | (environment or {}), start_new_session=True,
                                   **options)
        self.processes.append(process)
        return process

    def call(self, command):
        subprocess.run(command, env=self.environment, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)

    def succeeds(self, command):
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def output(self, command):
        return subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL).stdout.decode()

    # Real input, through the X server's test extension.

    def xdotool(self, *words):
        self.call(["xdotool", *map(str, words)])

    def type(self, text, delay_ms=12):
        self.xdotool("type", "--delay", delay_ms, text)

    def key(self, *chords):
        self.xdotool("key", "--delay", 12, *chords)

    def move(self, x, y):
        self.xdotool("mousemove", x, y)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", x, y, "click", button)

    def ask_to_close(self, title):
        """What a window manager's close button does."""
        self.call(["/usr/bin/python3", "-c", ASK_TO_CLOSE, self.window(title)])

    def window(self, title):
        """The X window of that title, shown or not."""
        return wait_until(lambda: self.output(["xdotool", "search", "--name", f"^{title}$"]).split(),
                          f"a window titled {title!r}")[0]

    def wait_shown(self, title):
        """The accessibility tree has a window before the window manager shows it, and input of that time is lost: it
        goes past the window, or to it before the window manager is done with it."""
        wait_until(lambda: self.output(["xdotool", "search", "--onlyvisible", "--name", f"^{title}$"]),
                   f"a window titled {title!r} on the screen")
        self.settle(0.25)

    def focus(self, title):
        self.xdotool("windowfocus", "--sync", self.window(title))

    def screenshot(self, path):
        self.call(["import", "-silent", "-window", "root", path])

    def settle(self, seconds=0.4):
        """Lets fades and the window manager come to rest; nothing is asserted by it."""
        time.sleep(seconds)


# Sends the window a delete request of the window manager protocol.
ASK_TO_CLOSE = """
import ctypes, ctypes.util, sys
class Message(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5), ("room", ctypes.c_long * 24)]
x = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
x.XInternAtom.restype = ctypes.c_ulong
display, window = ctypes.c_void_p(x.XOpenDisplay(None)), int(sys.argv[1])
atom = lambda name: x.XInternAtom(display, name, 0)
message = Message(33, 0, 1, display.value, window, atom(b"WM_PROTOCOLS"), 32)
message.data[0] = atom(b"WM_DELETE_WINDOW")
x.XSendEvent(display, ctypes.c_ulong(window), 0, ctypes.c_long(0), ctypes.byref(message))
x.XSync(display, 0)
"""
