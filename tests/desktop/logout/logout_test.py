"""Logging out of the desktop: refused in Lockdown Mode only, and what holds it off goes with the session."""
import os
import signal
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "cycle"))

from case import DesktopCase, wait_until  # noqa: E402  pylint: disable=wrong-import-position
from rig.beside import Beside, Services, wishes  # noqa: E402  pylint: disable=wrong-import-position

SESSION_MANAGER = os.environ["TAPALONG_SESSION_MANAGER"]
TAP_ENDED = "🔓 CGEventTap deactivated — normal input restored"


class SessionManagement(DesktopCase):
    """The session management protocol of X, with a session manager that asks everybody before it logs out."""

    def setUp(self):
        super().setUp()
        self.manager = Beside(self.desktop, [SESSION_MANAGER])
        self.desktop.environment["SESSION_MANAGER"] = self.manager.first_line

    def tearDown(self):
        super().tearDown()
        del self.desktop.environment["SESSION_MANAGER"]
        self.manager.end()

    def start_session(self, **settings):
        program = super().start_session(**settings)
        # The session manager has asked a new client for what it has; only then may it ask again.
        self.manager.wait_for("saved")
        return program

    def assert_ends_in_order(self):
        self.manager.tell("die")
        self.assertEqual(self.program.wait_for_end(), 0)
        self.manager.wait_for("left")

    def test_lockdown_mode_refuses_and_the_session_goes_on(self):
        program = self.start_session(kioskMode=True)
        for _ in range(2):
            self.manager.tell("log-out")
            self.manager.wait_for("cancelled the log-out")
            self.manager.wait_for("did not save")
        self.desktop.type("on")
        self.wait_text("on")
        self.assertNotIn(TAP_ENDED, program.lines)

    def test_after_lockdown_mode_the_desktop_logs_out(self):
        self.start_session(kioskMode=True)
        self.leave()
        self.manager.tell("log-out")
        self.manager.wait_for("saved")
        self.assertEqual(self.manager.lines, ["saved"])
        self.assert_ends_in_order()

    def test_without_lockdown_mode_a_session_lets_go_and_ends(self):
        self.start_session(kioskMode=False)
        self.manager.tell("log-out")
        self.manager.wait_for("saved")
        self.assertEqual(self.manager.lines, ["saved"])
        self.assert_ends_in_order()
        self.assertIn(TAP_ENDED, self.program.lines)

    def test_a_log_out_that_heeds_nobody_ends_lockdown_mode_in_order(self):
        self.start_session(kioskMode=True)
        self.assert_ends_in_order()
        self.assertIn(TAP_ENDED, self.program.lines)


class Inhibitors(DesktopCase):
    """What is asked of the desktop's services and of the login service."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desktop.start_system_bus()

    def setUp(self):
        super().setUp()
        self.services = None

    def tearDown(self):
        super().tearDown()
        if self.services is not None:
            self.services.end()

    def start_services(self, *refused):
        self.services = Services(self.desktop, *refused)

    def test_they_are_held_for_the_length_of_a_session_in_lockdown_mode(self):
        self.start_services()
        self.start_session(kioskMode=True)
        self.services.wait_held(*wishes())
        self.desktop.settle(1.2)  # the watchdog asserts the options twice a second
        self.services.wait_held(*wishes())
        for wish in ("session 3", "portal 3"):
            self.assertEqual(self.services.lines.count(f"+ {wish}"), 1)
        self.leave()
        self.services.wait_held()

    def test_without_lockdown_mode_nothing_is_asked(self):
        self.start_services()
        self.start_session(kioskMode=False)
        self.leave()
        self.assertEqual(self.services.lines, [])

    def test_they_go_with_a_program_that_is_killed(self):
        self.start_services()
        self.start_session(kioskMode=True)
        self.services.wait_held(*wishes())
        self.program.process.kill()
        self.services.wait_held()

    def test_they_go_with_a_program_that_is_told_to_end(self):
        self.start_services()
        self.start_session(kioskMode=True)
        self.services.wait_held(*wishes())
        self.assertEqual(self.program.quit(), 0)
        self.services.wait_held()

    def test_what_is_refused_is_done_without(self):
        self.start_services("handle-power-key", "handle-lid-switch")
        self.start_session(kioskMode=True)
        self.services.wait_held(*wishes(("handle-suspend-key", "handle-hibernate-key", "handle-reboot-key")))
        self.leave()
        self.services.wait_held()

    def test_services_that_do_not_answer_hold_nothing_up(self):
        self.start_services()
        # Only now: the accessibility service, by which we look, waits for the session manager when it starts.
        program = self.launch(kioskMode=True)
        self.services.process.send_signal(signal.SIGSTOP)
        self.addCleanup(self.services.process.send_signal, signal.SIGCONT)
        program.click("Start Session")
        wait_until(lambda: program.typed_text() == "", "an empty session")
        self.desktop.type("on")
        self.wait_text("on")
        self.leave()
        self.services.process.send_signal(signal.SIGCONT)
        self.services.wait_held()

    def test_switching_lockdown_mode_on_tries_for_a_moment_the_keys_whose_refusal_is_told(self):
        self.start_services()
        program = self.launch()
        program.click("Lockdown Mode", "check box")
        tried = [f"{done} login handle-{key}-key" for done in "+-" for key in ("hibernate", "power", "suspend")]
        wait_until(lambda: sorted(self.services.lines) == tried, "the keys to be held and let go")


if __name__ == "__main__":
    unittest.main(verbosity=2)
