"""Lockdown Mode that is wanted and not to be had: the session says so for as long as it lasts, and the settings window
afterwards."""
import ctypes
import os
import shutil
import socket
import subprocess
import tempfile
import unittest

from case import PASSWORD, PROGRAM, Program, WitnessCase, wait_until

WARNING = ("Lockdown Mode is not in force: Tapalong could not get all of the keyboard for itself. "
           "Keys may reach other programs or the system.")
OVERLAY_WARNING = ("Lockdown Mode is not in force: what you type may reach another program. If no dots appear here, a "
                   "menu may be open: press Escape.")
PARTLY = ("Lockdown Mode was not in force for a part of the last session: Tapalong could not get all of the keyboard "
          "for itself, perhaps because of an open menu or another program. Keys may have reached other programs or the "
          "system.")
NEVER = ("Lockdown Mode was not in force in the last session: Tapalong could not get all of the keyboard for itself, "
         "perhaps because of an open menu or another program. Keys may have reached other programs or the system.")
LIMIT = ("Some keys can still get past it: Control and Alt together with a function key or Backspace can switch to a text "
         "screen or end all programs, Shift held or pressed five times can change how the keyboard works, and shortcuts "
         "of other programs can still act.")
GUARD = os.path.join(os.path.dirname(PROGRAM), "tapalong-x11-guard")
REFUSED = "⚠️ Failed to create CGEventTap. Accessibility permission required!"
IN_FORCE = "✅ CGEventTap active — all keyboard input intercepted"


class Refused(WitnessCase):
    def hold(self, what):
        """A program that has the keyboard, or keyboard and pointer, until its standard input ends."""
        holder = subprocess.Popen(["/usr/bin/python3", "-c", HOLD, what], env=self.desktop.environment,
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(holder.wait)
        self.addCleanup(holder.kill)
        self.addCleanup(holder.stdout.close)
        self.assertEqual(holder.stdout.readline(), b"held\n")
        return holder

    @staticmethod
    def let_go(holder):
        holder.stdin.close()
        holder.wait()

    def start_by_shortcut(self, **settings):
        """The server's raw events tell of the shortcut whoever holds the keyboard."""
        self.launch(kioskMode=True, **settings)
        self.desktop.focus("witness")
        self.desktop.settle()  # nobody switches windows and presses a chord within the same few milliseconds
        return lambda: self.desktop.key("ctrl+alt+super+t")

    def assert_warned(self):
        warning = self.program.find(WARNING)
        self.assertIn(REFUSED, self.program.lines)
        self.assertIsNone(self.program.look_for("Lockdown Mode is off"))
        return warning

    def assert_had_and_said_afterwards(self):
        """From here on every key is the session's alone."""
        self.program.wait_for_line(IN_FORCE)
        self.program.wait_gone(WARNING)
        before = self.keys_seen_by_others()
        text = self.program.typed_text()
        self.desktop.focus("witness")
        self.desktop.type("held")
        self.wait_text(text + "held")
        self.desktop.key("alt+Tab", "super+e")
        self.leave()
        self.assertEqual(self.keys_seen_by_others(), before)
        self.program.find(PARTLY)

    def test_another_program_holds_the_keyboard_for_a_while(self):
        holder = self.hold("keyboard")
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        self.assert_warned()
        self.desktop.settle(2.5)  # it is tried again meanwhile
        self.assert_warned()
        self.let_go(holder)
        self.assert_had_and_said_afterwards()
        # The next session has it from the first moment: then there is nothing more to say.
        self.program.click("Start Session")
        wait_until(lambda: self.program.typed_text() == "", "an empty session")
        self.assertIsNone(self.program.look_for(WARNING))
        self.leave()
        self.assertIsNone(self.program.look_for(PARTLY))

    def test_the_exit_question_says_that_another_program_has_the_keyboard(self):
        holder = self.hold("keyboard")
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        self.assert_warned()
        self.open_overlay()
        self.program.find(OVERLAY_WARNING)
        self.let_go(holder)
        self.program.wait_gone(OVERLAY_WARNING)
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assert_back_in_settings()

    def test_another_program_holds_keyboard_and_pointer_as_a_window_manager_does(self):
        press_shortcut = self.start_by_shortcut(modifierKeysTypeEmoji=False)
        holder = self.hold("both")
        press_shortcut()
        self.assert_warned()
        self.let_go(holder)
        self.assert_had_and_said_afterwards()

    def test_an_open_menu_of_the_window_manager(self):
        press_shortcut = self.start_by_shortcut(modifierKeysTypeEmoji=False)
        self.desktop.click(1100, 1100, button=3)
        wait_until(self.something_has_the_keyboard, "the window manager's menu")
        press_shortcut()
        self.assert_warned()
        self.desktop.key("Escape")
        self.assert_had_and_said_afterwards()

    def test_it_is_had_while_the_question_is_open_and_another_program_has_the_focus(self):
        holder = self.hold("keyboard")
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        self.assert_warned()
        self.open_overlay()
        self.desktop.focus("witness")
        self.desktop.settle()
        before = self.keys_seen_by_others()
        self.let_go(holder)
        self.program.wait_for_line(IN_FORCE)
        self.program.wait_for_focus("Enter exit password")
        self.desktop.type(PASSWORD)
        self.desktop.key("Return")
        self.program.wait_gone("Exit Tapalong")
        self.assertEqual(self.keys_seen_by_others(), before)
        self.program.find(PARTLY)

    def something_has_the_keyboard(self):
        return "refused" in self.desktop.output(["/usr/bin/python3", "-c", HOLD, "keyboard"])

    def launch_beside(self, guard=None):
        """The program closes what no grab stops with another one beside it: this one, or none."""
        folder = tempfile.mkdtemp(dir=self.desktop.folder)
        self.guard = os.path.join(folder, os.path.basename(GUARD))
        if guard is not None:
            os.symlink(guard, self.guard)
        self.program = Program(self.desktop, shutil.copy(PROGRAM, folder), settings={
            "exitPassword": PASSWORD, "useTouchID": False, "kioskMode": True, "modifierKeysTypeEmoji": False})
        self.launched()

    def assert_warned_of_a_part(self):
        """What can be grabbed is the session's alone."""
        self.program.click("Start Session")
        self.program.find(WARNING)
        self.assertIn(IN_FORCE, self.program.lines)
        before = self.keys_seen_by_others()
        self.desktop.type("kept")
        self.wait_text("kept")
        self.assertEqual(self.keys_seen_by_others(), before)

    def test_the_keys_that_no_grab_stops_stay_open_for_a_while(self):
        self.launch_beside()
        self.program.find(LIMIT)
        self.assert_warned_of_a_part()
        os.symlink(GUARD, self.guard)
        self.assert_had_and_said_afterwards()
        self.program.wait_gone(LIMIT)

    def test_the_keys_that_no_grab_stops_turn_out_to_stay_open(self):
        self.launch_beside("/bin/false")
        self.assertIsNone(self.program.look_for(LIMIT))
        self.assert_warned_of_a_part()
        self.leave()
        self.program.find(NEVER)
        self.program.find(LIMIT)

    def test_a_program_that_has_lost_the_keyboard_for_good_leaves(self):
        self.start_session(kioskMode=True, modifierKeysTypeEmoji=False)
        self.program.wait_for_line(IN_FORCE)
        self.desktop.type("abc")
        self.wait_text("abc")
        self.assertNotIn("a", self.keys_seen_by_others())
        self.cut_newest_connection()
        self.assertNotEqual(self.program.wait_for_end(), 0)
        self.desktop.focus("witness")
        self.desktop.type("abc")
        wait_until(lambda: self.keys_seen_by_others()[-3:] == ["a", "b", "c"], "the keyboard at another program")

    def cut_newest_connection(self):
        """The toolkit's connection to the X server is the older one and stays."""
        pid = self.program.process.pid
        libc = ctypes.CDLL(None, use_errno=True)
        process = os.pidfd_open(pid)
        connections = []
        for number in sorted(int(name) for name in os.listdir(f"/proc/{pid}/fd")):
            if not os.readlink(f"/proc/{pid}/fd/{number}").startswith("socket:"):
                continue
            copy = libc.syscall(PIDFD_GETFD, process, number, 0)
            self.assertGreaterEqual(copy, 0, os.strerror(ctypes.get_errno()))
            connection = socket.socket(fileno=copy)
            self.addCleanup(connection.close)
            try:
                peer = connection.getpeername()
            except OSError:
                continue
            if b".X11-unix" in (peer if isinstance(peer, bytes) else str(peer).encode()):
                connections.append(connection)
        os.close(process)
        self.assertEqual(len(connections), 2)
        connections[-1].shutdown(socket.SHUT_RDWR)


PIDFD_GETFD = 438  # the same number on every architecture

# Grabs the keyboard, and the pointer with "both", until its standard input ends.
HOLD = r"""
import ctypes, ctypes.util, sys
x = ctypes.CDLL(ctypes.util.find_library("X11") or "libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
display = ctypes.c_void_p(x.XOpenDisplay(None))
x.XDefaultRootWindow.restype = ctypes.c_ulong
root, none, now = ctypes.c_ulong(x.XDefaultRootWindow(display)), ctypes.c_ulong(0), ctypes.c_ulong(0)
status = x.XGrabKeyboard(display, root, 0, 1, 1, now)
if sys.argv[1] == "both":
    status = status or x.XGrabPointer(display, root, 0, 0, 1, 1, none, none, now)
x.XSync(display, 0)
print("held" if status == 0 else "refused", flush=True)
sys.stdin.read()
"""

if __name__ == "__main__":
    unittest.main(verbosity=2)
