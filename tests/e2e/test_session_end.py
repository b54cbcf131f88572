#!/usr/bin/python3
"""The end of the session of X11, with a run and without one: the program has the session wait until
its question is answered, and ends when the session does."""

import os
import signal
import sys
import unittest.mock

try:
    import session_manager
except OSError as error:  # no such library
    print(f"SKIPPED: no session manager can be played: {error}")
    sys.exit(77)

from harness import ProgramTest, main, window
from movies import make_hevc
from session_manager import BOTH, NO_QUESTIONS, QUESTIONS
from texts import text


class SessionEnd(ProgramTest):
    def setUp(self):
        self.manager = session_manager.SessionManager()
        self.addCleanup(self.manager.close)
        with unittest.mock.patch.dict(os.environ, self.manager.environment):
            super().setUp()
        self.wait_to_hear("began")
        self.output = os.path.join(self.documents, "long_HQ_1280x720.mp4")

    def wait_to_hear(self, *words):
        window.wait_for(lambda: len(self.manager.heard) >= len(words), f"{words} to be said")
        self.assertEqual(list(words), self.manager.heard)

    def begin_run(self, repeat=60):
        movie = make_hevc(self.movie_path("long.mp4"), "1280x720", 2, repeat=repeat)
        self.app.add_all(movie)
        self.app.convert()
        window.wait_for(lambda: os.path.exists(self.output), "the run to begin")

    def check_end(self):
        """The session's last word ends the program, without half a movie."""
        self.manager.let_die()
        self.assertEqual(0, self.app.wait_until_ended())
        self.assertEqual([], self.outputs())
        self.assertTrue(os.path.exists(os.path.join(self.documents, "default_hevc_path.txt")))

    def question(self):
        box = self.app.box()
        self.assertEqual(text("IDS_TXT_POPUP_SESSIONENDS"), box.message)
        self.assertEqual([text("IDS_BTN_POPUP_CANCEL"), text("IDS_BTN_POPUP_ENDSESSION")],
                         box.buttons)
        return box

    def test_without_a_run(self):
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "saved")
        self.check_end()

    def test_the_user_lets_it_end(self):
        self.begin_run()
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "asks to ask")
        self.assertEqual([], self.app.boxes())
        self.manager.let_ask()
        self.question().answer(text("IDS_BTN_POPUP_ENDSESSION"))
        self.wait_to_hear("began", "asks to ask", "agrees", "saved")
        self.assertTrue(self.app.encoders())
        self.check_end()

    def test_the_user_does_not(self):
        self.begin_run()
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "asks to ask")
        self.manager.let_ask()
        self.question().answer(text("IDS_BTN_POPUP_CANCEL"))
        self.wait_to_hear("began", "asks to ask", "cancels", "not saved")
        self.manager.go_on()
        # The next one that is put off by another program, before this one was let ask.
        self.manager.heard[1:] = []
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "asks to ask")
        self.manager.go_on()
        self.wait_to_hear("began", "asks to ask", "saved")
        self.assertEqual([], self.app.boxes())
        self.assertTrue(self.app.encoders())
        # And one that nobody is asked about.
        self.manager.heard[1:] = []
        self.manager.save(BOTH, True, NO_QUESTIONS)
        self.wait_to_hear("began", "saved")
        self.check_end()

    def test_an_end_while_the_question_is_open(self):
        self.begin_run()
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "asks to ask")
        self.manager.let_ask()
        self.question()
        self.check_end()

    def test_put_off_while_the_question_is_open(self):
        self.begin_run()
        for _ in range(2):
            self.manager.heard[1:] = []
            self.manager.save(BOTH, True, QUESTIONS)
            self.wait_to_hear("began", "asks to ask")
            self.manager.let_ask()
            self.question()
            self.assertEqual(1, len(self.app.boxes()))
            self.manager.go_on()
            window.wait_for(lambda: not self.app.boxes(), "the question to go")
            self.wait_to_hear("began", "asks to ask", "saved")
        self.assertTrue(self.app.encoders())
        self.check_end()

    def test_the_run_ends_while_the_question_is_open(self):
        self.begin_run(repeat=1)
        encoder, = self.app.encoders()
        os.kill(encoder, signal.SIGSTOP)
        self.manager.save(BOTH, True, QUESTIONS)
        self.wait_to_hear("began", "asks to ask")
        self.manager.let_ask()
        self.question()
        os.kill(encoder, signal.SIGCONT)
        window.wait_for(lambda: [text("IDS_BTN_POPUP_OK")] == [box.buttons[0] for box in self.app.boxes()],
                        "the summary in place of the question")
        self.close_summary()
        self.wait_to_hear("began", "asks to ask", "agrees", "saved")
        self.assertEqual(1, len(self.outputs()))


if __name__ == "__main__":
    main()
