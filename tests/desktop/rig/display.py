"""X servers that exist in memory only. Each starts one on a display that is free, and says its number."""
import os
import shutil
import time


class RigError(Exception):
    """The rig itself failed: the test says nothing about the program."""


class Fixed:
    """One screen of one size. The quickest, and what most tests need."""

    def __init__(self, size):
        self.size = size

    def start(self, desktop):
        width, height = self.size
        return _numbered(desktop, ["Xvfb", "-screen", "0", f"{width}x{height}x24"])


class Outputs:
    """A graphics card whose monitors come and go and change their mode, through `xrandr` as on a real one. They are
    called DUMMY0 to DUMMY15; the first one is on. It cannot rotate."""

    def __init__(self, size):
        self.size = size

    def start(self, desktop):
        configuration = desktop.path("display.conf")
        with open(configuration, "w", encoding="utf-8") as file:
            file.write(CARD % "{}x{}".format(*self.size))
        # Not by the name in the path, which may be a program that asks who may start a server.
        server = next(path for path in ("/usr/lib/xorg/Xorg", shutil.which("Xorg")) if path and os.path.exists(path))
        return _numbered(desktop, [server, "-config", configuration, "-logfile", desktop.path("display.log"),
                                   "-sharevts", "-novtswitch"])


class Turning:
    """One screen that can be rotated and given other sizes, up to 1600 x 1200; a window on a server of its own."""

    def __init__(self, size):
        self.size = size

    def start(self, desktop):
        around = _numbered(desktop, ["Xvfb", "-screen", "0", "1600x1600x24"])
        width, height = self.size
        return _numbered(desktop, ["Xephyr", "-screen", f"{width}x{height}"], DISPLAY=f":{around}")


class OnWayland:
    """An X server that is a window of a Wayland compositor, which has no devices of its own. Input of the test extension
    reaches the X server alone."""

    def __init__(self, size):
        self.size = size

    def start(self, desktop):
        width, height = self.size
        compositor = desktop.run_beside(["weston", "--backend=headless-backend.so", f"--width={width}",
                                         f"--height={height}", "--socket=around", "--idle-time=0", "--no-config"])
        while not os.path.exists(desktop.path("run", "around")):
            if compositor.poll() is not None:
                raise RigError("weston did not start")
            time.sleep(0.03)
        return _numbered(desktop, ["Xwayland", "-shm"], WAYLAND_DISPLAY="around")


def _numbered(desktop, command, **environment):
    read_end, write_end = os.pipe()
    desktop.run_beside(command + ["-displayfd", str(write_end), "-nolisten", "tcp", "-noreset"],
                       pass_fds=(write_end,), environment=environment)
    os.close(write_end)
    with os.fdopen(read_end) as pipe:
        number = pipe.readline().strip()
    if not number:
        raise RigError(f"{command[0]} did not start")
    return number


CARD = """
Section "ServerFlags"
  Option "AutoAddDevices" "false"
  Option "AutoEnableDevices" "false"
  Option "AutoAddGPU" "false"
EndSection
Section "Device"
  Identifier "card"
  Driver "dummy"
  VideoRam 65536
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5-1000
  VertRefresh 5-200
EndSection
Section "Screen"
  Identifier "screen"
  Device "card"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Modes "%s"
    Virtual 3840 2400
  EndSubSection
EndSection
"""
