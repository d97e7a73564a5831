"""The real program on a private desktop: started, looked at and operated as a user would.

What is on the screen is found through the accessibility tree; what is done to it is real key and pointer input at the
places found there.
"""
import json
import os
import signal
import subprocess
import threading
import warnings

from .desktop import wait_until

warnings.simplefilter("ignore")


class Program:
    """One run of the program. The accessibility library reads the environment when it is first used, so a Python
    process can look at one desktop only."""

    def __init__(self, desktop, executable, settings=None, environment=None, arguments=(), stdout=subprocess.PIPE):
        self.desktop = desktop
        self.lines = []
        self.errors = []
        if settings is not None:
            self.write_settings(settings)
        self.process = subprocess.Popen([executable, *arguments], env=desktop.environment | (environment or {}),
                                        stdin=subprocess.DEVNULL, stdout=stdout, stderr=subprocess.PIPE,
                                        start_new_session=True)
        desktop.processes.append(self.process)
        for stream, lines in ((self.process.stdout, self.lines), (self.process.stderr, self.errors)):
            if stream is not None:
                threading.Thread(target=self._collect, args=(stream, lines), daemon=True).start()

    @staticmethod
    def _collect(stream, lines):
        for line in stream:
            lines.append(line.decode(errors="replace").rstrip("\n"))

    def write_settings(self, settings):
        os.makedirs(os.path.dirname(self.desktop.settings_file), mode=0o700, exist_ok=True)
        with open(self.desktop.settings_file, "w", encoding="utf-8") as file:
            json.dump(settings, file)

    def stored_settings(self):
        try:
            with open(self.desktop.settings_file, encoding="utf-8") as file:
                return json.load(file)
        except FileNotFoundError:
            return {}

    def is_running(self):
        return self.process.poll() is None

    def wait_for_end(self):
        wait_until(lambda: not self.is_running(), "the program's end")
        return self.process.returncode

    def quit(self):
        if self.is_running():
            self.process.send_signal(signal.SIGTERM)
        return self.wait_for_end()

    def wait_for_line(self, line):
        wait_until(lambda: line in self.lines, f"the line {line!r} on standard output; there was {self.lines}")

    # The accessibility tree.

    @property
    def _atspi(self):
        for name in ("DBUS_SESSION_BUS_ADDRESS", "DISPLAY", "XDG_RUNTIME_DIR", "HOME"):
            os.environ[name] = self.desktop.environment[name]
        import gi  # pylint: disable=import-outside-toplevel
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi  # pylint: disable=import-outside-toplevel
        return Atspi

    def nodes(self):
        """Every accessible node of the program that is there now."""
        root = self._atspi.get_desktop(0)
        root.clear_cache()
        found = []
        for child in self._children(root):
            if child.get_process_id() == self.process.pid:
                # What the library remembers of a node is wrong once the node was hidden and shown again.
                child.set_cache_mask(self._atspi.Cache.NONE)
                child.clear_cache()
                self._collect_nodes(child, found)
        return found

    def _collect_nodes(self, node, found):
        found.append(node)
        for child in self._children(node):
            self._collect_nodes(child, found)

    @staticmethod
    def _children(node):
        try:
            return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]
        except Exception:  # a node may go while it is looked at  pylint: disable=broad-except
            return []

    def _has_state(self, node, state):
        return node.get_state_set().contains(getattr(self._atspi.StateType, state))

    def is_showing(self, node):
        extents = node.get_component_iface().get_extents(self._atspi.CoordType.SCREEN)
        return self._has_state(node, "SHOWING") and extents.width > 0

    def look_for(self, name, role=None):
        """The shown node of that name, or None."""
        for node in self.nodes():
            try:
                if node.get_name() == name and role in (None, node.get_role_name()) and self.is_showing(node):
                    return node
            except Exception:  # pylint: disable=broad-except
                continue
        return None

    def find(self, name, role=None):
        return wait_until(lambda: self.look_for(name, role), f"{role or 'anything'} named {name!r} on the screen")

    def wait_gone(self, name, role=None):
        wait_until(lambda: self.look_for(name, role) is None, f"{name!r} to go from the screen")

    def names(self):
        return [node.get_name() for node in self.nodes()]

    def text_of(self, node):
        """What its text interface lets anybody read; None where it has none."""
        text = node.get_text_iface()
        # By the interface's own name: some versions of the library hide its method behind one of the node.
        interface = self._atspi.Text
        return interface.get_text(text, 0, interface.get_character_count(text)) if text else None

    def is_checked(self, name):
        return self._has_state(self.find(name), "CHECKED")

    def is_focused(self, name):
        node = self.look_for(name)
        return node is not None and self._has_state(node, "FOCUSED")

    def centre(self, node):
        extents = node.get_component_iface().get_extents(self._atspi.CoordType.SCREEN)
        return extents.x + extents.width // 2, extents.y + extents.height // 2

    def act(self, name, role=None):
        """The node's accessible action, as a screen reader would do it."""
        node = self.find(name, role)
        action = node.get_action_iface()
        names = [action.get_action_name(i) for i in range(action.get_n_actions())]
        wanted = next((n for n in ("Toggle", "Press") if n in names), None)
        assert wanted is not None, f"{name!r} offers {names}"
        assert action.do_action(names.index(wanted))

    def click(self, name, role=None):
        self.desktop.click(*self.centre(self.find(name, role)))

    def wait_for_focus(self, name):
        wait_until(lambda: self.is_focused(name), f"the keyboard focus in {name!r}")

    # The session.

    def typed_text(self):
        """What stands on the session's screen; None while there is no session."""
        node = next((node for node in self.nodes() if node.get_description() == "Typed text"), None)
        return node.get_name() if node else None

    def wait_for_text(self, condition, what):
        return wait_until(lambda: (text := self.typed_text()) is not None and condition(text) and [text],
                          f"{what}; there was {self.typed_text()!r}")[0]
