#!/usr/bin/python3
"""The real program in the desktop's language, Qt's own texts and the layout's direction included."""

import texts
from harness import ProgramTest, main, window
from texts import text


class InALanguage(ProgramTest):
    desktop = "en"  # what the desktop asks for
    shown = "en"

    def setUp(self):
        self.addCleanup(texts.speak, "en")
        texts.speak(self.desktop)
        super().setUp()
        texts.speak(self.shown)

    def left(self, key):
        # In the window, which the window manager may still move.
        component = window.Atspi.Component
        return component.get_extents(self.app.button(key), window.Atspi.CoordType.WINDOW).x

    def cancel_of_the_panel(self):
        """What Qt itself calls the button."""
        window.press(self.app.button("IDS_BTN_ADD_FILE"))
        panel = self.app.panel(text("IDS_TXT_PANEL_ADD"))
        names = [node.get_name() for node in window.descendants(panel.node)
                 if node.get_role() == window.Role.PUSH_BUTTON]
        panel.press(names[-1])
        return names[-1]

    def check_the_end(self):
        self.app.terminate()
        self.assertEqual(0, self.app.wait_until_ended())


class German(InALanguage):
    desktop = shown = "de"

    def test(self):
        self.assertLess(self.left("IDS_BTN_ADD_FILE"), self.left("IDS_BTN_REMOVE_FILE"))
        self.assertEqual("Abbrechen", self.cancel_of_the_panel())
        self.check_the_end()


class Arabic(InALanguage):
    desktop = "ar_EG"
    shown = "ar"

    def test(self):
        self.assertGreater(self.left("IDS_BTN_ADD_FILE"), self.left("IDS_BTN_REMOVE_FILE"))
        self.assertGreater(self.left("IDS_BTN_STOP"), self.left("IDS_BTN_CONVERT"))
        self.assertNotIn(self.cancel_of_the_panel(), ("Cancel", ""))
        self.check_the_end()


class OneThatIsNotThere(InALanguage):
    """The next wish counts, in another country's words where it must."""
    desktop = "fi:pt_PT:en"
    shown = "pt_BR"

    def test(self):
        self.assertEqual("Cancelar", self.cancel_of_the_panel())
        self.check_the_end()


class EnglishFirst(InALanguage):
    desktop = "en_GB:de"

    def test(self):
        self.assertEqual("Cancel", self.cancel_of_the_panel())
        self.check_the_end()


if __name__ == "__main__":
    main()
