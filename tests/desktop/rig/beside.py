"""Processes that run beside the program and say what they see."""
import os
import subprocess
import threading

from .desktop import wait_until

SERVICES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "services.py")
KEYS = ("handle-hibernate-key", "handle-lid-switch", "handle-power-key", "handle-reboot-key", "handle-suspend-key")


def wishes(keys=KEYS):
    """The inhibitors of a session in Lockdown Mode, as Services tells them, where these keys can be had."""
    return ["session 3", "portal 3", *(f"login {key}" for key in keys)]


class Beside:
    """A process beside the program, whose lines are collected."""

    def __init__(self, desktop, command):
        self.lines = []
        self.process = desktop.run_beside(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.first_line = self.process.stdout.readline().decode().rstrip("\n")
        threading.Thread(target=self._collect, daemon=True).start()

    def _collect(self):
        for line in self.process.stdout:
            self.lines.append(line.decode().rstrip("\n"))

    def tell(self, command):
        del self.lines[:]
        self.process.stdin.write(command.encode() + b"\n")
        self.process.stdin.flush()

    def wait_for(self, line):
        wait_until(lambda: line in self.lines, f"the line {line!r}; there was {self.lines}")

    def end(self):
        self.process.stdin.close()
        self.process.terminate()
        self.process.wait()


class Services(Beside):
    """The stand-ins of services.py, on a desktop that has a system bus."""

    def __init__(self, desktop, *refused):
        super().__init__(desktop, ["/usr/bin/python3", SERVICES, *refused])
        assert self.first_line == "ready", self.first_line

    def held(self):
        """The inhibitors that are held now."""
        lines = list(self.lines)
        begun = [line[2:] for line in lines if line.startswith("+")]
        for line in lines:
            if line.startswith("-"):
                begun.remove(line[2:])
        return sorted(begun)

    def wait_held(self, *expected):
        wait_until(lambda: self.held() == sorted(expected), f"{expected} to be held; there was {self.lines}")
