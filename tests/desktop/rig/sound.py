"""A sound server for a private desktop, and an ear at what it plays."""
import os
import subprocess
import threading

from .desktop import wait_until


class SoundServer:
    """A real pulseaudio without hardware, which ends with the desktop. Programs that start from now on find it."""

    def __init__(self, desktop):
        self.desktop = desktop
        self._heard = threading.Event()
        # The socket last: when it is there, so is what plays.
        desktop.run_beside(["pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                            "--realtime=no", "--high-priority=no", "-L", "module-null-sink sink_name=silent",
                            "-L", "module-native-protocol-unix"])
        # A client that asked before might start a server by itself.
        wait_until(lambda: os.path.exists(desktop.path("run", "pulse", "native")), "the sound server")
        self._ear = desktop.run_beside(["parec", "--device=silent.monitor", "--format=s16le", "--channels=1"],
                                       stdout=subprocess.PIPE)
        threading.Thread(target=self._listen, daemon=True).start()

    def _listen(self):
        while samples := self._ear.stdout.read1(1 << 16):
            if any(samples):
                self._heard.set()

    def forget(self):
        """What was heard so far."""
        self._heard.clear()

    def wait_for_sound(self):
        wait_until(self._heard.is_set, "a sound since what was heard was forgotten")

    def streams(self):
        """Of all programs, paused or not."""
        return len(self.desktop.output(["pactl", "list", "short", "sink-inputs"]).splitlines())
