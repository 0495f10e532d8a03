"""Tests of the driver: keys, replies, and a client with a fake server."""
import socket
import threading
import unittest

from driver import AutomationError, Client, keys, replayable, wait_until


class KeysTest(unittest.TestCase):
    def test_combination_is_parsed(self):
        for combination, expected in {
            "Return": (0x1004, 0, "\r"),
            "Escape": (0x1000, 0, "\x1b"),
            "F35": (0x1052, 0, ""),
            "a": (0x41, 0, "a"),
            "Shift+a": (0x41, 0x100, "A"),
            "Ctrl+A": (0x41, 0x200, "\x01"),
            "Ctrl+Shift+F5": (0x1034, 0x300, ""),
            "Alt+F": (0x46, 0x400, ""),
            "PageDown": (0x1017, 0, ""),
            "+": (0x2b, 0, "+"),
            "Ctrl++": (0x2b, 0x200, ""),
        }.items():
            with self.subTest(combination):
                self.assertEqual(keys.parse(combination), expected)

    def test_unknown_key_is_refused(self):
        for combination in ("Any", "Hyper+A", ""):
            with self.subTest(combination), self.assertRaises(ValueError):
                keys.parse(combination)

    def test_character_gives_its_key(self):
        self.assertEqual(keys.of_character("x"), (0x58, 0, "x"))
        self.assertEqual(keys.of_character("X"), (0x58, 0x100, "X"))
        self.assertEqual(keys.of_character("\n"), (0x1004, 0, "\r"))


class FakeServer:
    """Answers commands from a table, on any number of connections."""

    def __init__(self, replies):
        self.commands = []
        self._replies = replies
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port = self._listener.getsockname()[1]
        self._threads = []
        self._start(self._accept)

    def close(self):
        """Ends all threads: the interpreter can crash if one is left at its end. The clients are closed by then."""
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        for thread in self._threads:
            thread.join()

    def _start(self, work, *arguments):
        thread = threading.Thread(target=work, args=arguments)
        self._threads.append(thread)
        thread.start()

    def _accept(self):
        try:
            while True:
                self._start(self._serve, self._listener.accept()[0])
        except OSError:
            pass

    def _serve(self, connection):
        with connection, connection.makefile("r", newline="\n", encoding="utf-8") as lines:
            for line in lines:
                command = line.rstrip("\r\n")
                self.commands.append(command)
                connection.sendall(self._replies.get(command, "ERROR 4 No such object\r\n").encode())


class ClientTest(unittest.TestCase):
    def client(self, replies):
        self.server = FakeServer(replies)
        self.addCleanup(self.server.close)
        client = Client(self.server.port, timeout=10)
        self.addCleanup(client.close)
        return client

    def test_values_are_converted_by_type(self):
        client = self.client({f"GETPROPERTY o p{kind}": f"OK {kind} {text}\r\n" for kind, text in
                              {3: "a  b", 16: "-7", 18: "true", 19: "0.5", 0: "x"}.items()})
        self.assertEqual([client.read("o", f"p{kind}") for kind in (3, 16, 18, 19, 0)], ["a  b", -7, True, 0.5, "x"])

    def test_value_can_have_several_lines(self):
        self.assertEqual(self.client({"GETPROPERTY o text": "OK 3 a\nb\r\n"}).read("o", "text"), "a\nb")

    def test_reply_without_line_end_is_read_at_once(self):
        client = self.client({"GETPROPERTY o p": "ERROR No such property", "GETCLASS o": "OK QWidget\r\n"})
        with self.assertRaisesRegex(AutomationError, "No such property"):
            client.read("o", "p")
        self.assertEqual(client.class_of("o"), "QWidget")

    def test_signatures_with_blanks_are_not_split(self):
        client = self.client({"GETSLOTS o": "OK hide() setText(const QString&) move(int, int)\r\n"})
        self.assertEqual(client.slots("o"), ["hide()", "setText(const QString&)", "move(int, int)"])

    def test_names_with_blanks_are_quoted(self):
        client = self.client({'SETPROPERTY "my button" text  two  blanks': "OK\r\n"})
        client.write("my button", "text", " two  blanks")

    def test_writing_several_lines_is_refused(self):
        with self.assertRaises(ValueError):
            self.client({}).write("o", "text", "a\nb")

    def test_replayable_command_has_the_last_component(self):
        self.assertEqual(replayable("EVENT mainWindow.bar.edit 6 65 97 0 0 1 1 a.b c"),
                         "EVENT edit 6 65 97 0 0 1 1 a.b c")

    def test_waiting_treats_an_error_as_not_yet_until_the_timeout(self):
        client = self.client({})
        with self.assertRaisesRegex(TimeoutError, "an object 'o'.*No such object"):
            client.find("o", timeout=0)
        answers = iter([0, "", 5])
        self.assertEqual(wait_until(lambda: next(answers)), 5)

    def test_answer_presses_a_key_in_the_message_box(self):
        press = "EVENT messageBox 6 89 121 0 0 1 1 y"
        client = self.client({"GETPROPERTY messageBox text": "OK 3 a.c\n\nReload it?\r\n", press: "OK\r\n"})
        client.answer("Reload it?", "y")
        self.assertIn(press, self.server.commands)
        self.assertEqual(self.server.commands[-1], press.replace(" 6 ", " 7 ", 1))  # refused: the box is closed

    def test_message_box_with_another_text_is_not_answered(self):
        client = self.client({"GETPROPERTY messageBox text": "OK 3 Overwrite it?\r\n"})
        client._timeout = 0
        with self.assertRaises(TimeoutError):
            client.answer("Reload it?", "y")
        self.assertFalse([command for command in self.server.commands if command.startswith("EVENT")])

    def test_missing_program_raises_an_error(self):
        reservation = socket.socket()
        self.addCleanup(reservation.close)
        reservation.bind(("127.0.0.1", 0))
        with self.assertRaises(AutomationError):
            Client(reservation.getsockname()[1])


if __name__ == "__main__":
    unittest.main()
