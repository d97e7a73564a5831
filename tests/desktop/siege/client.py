"""A client program of the siege: told by lines on its standard input, answering by lines that end with "done"."""
import subprocess

from rig.desktop import RigError


class Client:
    """Use as a context, on a desktop that runs."""

    def __init__(self, desktop, executable):
        self.desktop = desktop
        self.executable = executable

    def __enter__(self):
        self.process = subprocess.Popen([self.executable], env=self.desktop.environment, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, text=True)
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait(10)
        self.process.stdout.close()

    def ask(self, command):
        """The lines of the answer."""
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()
        answer = []
        for line in self.process.stdout:
            if line == "done\n":
                return answer
            answer.append(line.rstrip("\n"))
        raise RigError(f"{self.executable} ended at {command!r}")
