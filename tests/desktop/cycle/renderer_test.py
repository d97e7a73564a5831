"""Who draws: a graphics card where there is one, the processor where OpenGL would only be a stand-in for it."""
import unittest

from case import PROGRAM, DesktopCase, Program, wait_until

TELL = {"QSG_INFO": "1"}  # the toolkit then says what it draws with


class Renderer(DesktopCase):
    def start(self, **environment):
        self.program = Program(self.desktop, PROGRAM, settings={}, environment=TELL | environment)
        self.program.find("Start Session")

    def says(self, words):
        return any(words in line for line in list(self.program.errors))

    def test_the_processor_draws_on_a_display_without_a_graphics_card(self):
        self.start()
        wait_until(lambda: self.says("Loading backend software"), "the software renderer")
        self.assertFalse(self.says("QRhi"), self.program.errors)

    def test_what_the_user_chose_draws(self):
        # Also says that the display has an OpenGL: the other test shows that it is refused, not that it is missing.
        self.start(QSG_RHI_BACKEND="opengl")
        wait_until(lambda: self.says("RENDERER: llvmpipe"), "OpenGL, drawn by its stand-in")
        self.assertFalse(self.says("Loading backend software"), self.program.errors)


if __name__ == "__main__":
    unittest.main(verbosity=2)
