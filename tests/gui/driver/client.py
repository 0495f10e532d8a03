"""The client's side of the automation protocol."""
import contextlib
import re
import socket
import time

from . import keys

EOL = b"\r\n"
_NO_PROPERTY = b"ERROR No such property"  # the one reply that has no line end

LEFT, RIGHT, MIDDLE = 1, 2, 4
_PRESS, _RELEASE, _DOUBLE_CLICK, _MOVE, _KEY_PRESS, _KEY_RELEASE = 2, 3, 4, 5, 6, 7
_INT, _UINT, _BOOL, _DOUBLE, _LONG_LONG, _ULONG_LONG = 16, 17, 18, 19, 33, 34


class AutomationError(Exception):
    """The program refused a command, or has gone."""


def wait_until(condition, what="the condition", timeout=20.0, pause=0.02):
    """Asks again and again until `condition()` gives something true, and returns that.

    A command that is refused counts as "not yet". Raises TimeoutError with `what` if it never becomes true.
    """
    end = time.monotonic() + timeout
    refusal = None
    while True:
        try:
            result = condition()
            if result:
                return result
        except AutomationError as error:
            refusal = error
        if time.monotonic() >= end:
            raise TimeoutError(f"waited {timeout} s for {what}" + (f" (last: {refusal})" if refusal else ""))
        time.sleep(pause)


class Connection:
    """One connection, on the level of lines: commands out, replies and recorded events in."""

    def __init__(self, port, host="127.0.0.1", timeout=20.0):
        try:
            self._socket = socket.create_connection((host, port), timeout=timeout)
        except OSError as error:
            raise AutomationError(f"nobody listens on port {port} of {host}: {error}") from None
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._received = b""

    def send(self, line):
        try:
            self._socket.sendall(line.encode() + EOL)
        except OSError as error:
            raise AutomationError(f"the program has gone: {error}") from None

    def receive(self):
        """The next reply without its line end; replies can hold line feeds. None once the program has gone."""
        while True:
            line = self._take()
            if line is not None:
                return line.decode()
            try:
                received = self._socket.recv(65536)
            except (ConnectionResetError, BrokenPipeError):
                return None
            except TimeoutError:
                raise AutomationError("the program does not answer") from None
            if not received:
                return None
            self._received += received

    def close(self):
        self._socket.close()

    def _take(self):
        if self._received.startswith(_NO_PROPERTY):
            self._received = self._received[len(_NO_PROPERTY):]
            return _NO_PROPERTY
        line, end, rest = self._received.partition(EOL)
        if not end:
            return None
        self._received = rest
        return line


class Client:
    """A test driver: finds, reads and operates the objects of the program's user interface by their names.

    Each method returns when the program has handled its command; what the program does later on its own account,
    `wait_until` waits for. An object is a widget, an action, or anything else with a name below the main window;
    the first one of that name is meant.
    """

    MAIN_WINDOW = "mainWindow"

    def __init__(self, port, host="127.0.0.1", timeout=20.0):
        self._address = (port, host, timeout)
        self._timeout = timeout
        self._connection = Connection(*self._address)

    # Looking ---------------------------------------------------------------

    def exists(self, name):
        return not self._ask(f"GETCLASS {_quoted(name)}").startswith("ERROR")

    def find(self, name, timeout=None):
        """Waits until there is an object of that name. Returns its class."""
        return self.wait_until(lambda: self.class_of(name), f"an object '{name}'", timeout)

    def find_gone(self, name, timeout=None):
        """Waits until there is no visible object of that name."""
        self.wait_until(lambda: not self.exists(name) or not self.read(name, "visible"), f"'{name}' to go", timeout)

    def class_of(self, name):
        return self._ok(f"GETCLASS {_quoted(name)}")

    def read(self, name, attribute):
        """The value of a property: a str, a bool or a number."""
        kind, _, text = self._ok(f"GETPROPERTY {_quoted(name)} {attribute}").partition(" ")
        kind = int(kind)
        if kind == _BOOL:
            return text == "true"
        if kind in (_INT, _UINT, _LONG_LONG, _ULONG_LONG):
            return int(text)
        return float(text) if kind == _DOUBLE else text

    def properties(self, name):
        return self._ok(f"GETPROPERTIES {_quoted(name)}").split()

    def slots(self, name):
        return _signatures(self._ok(f"GETSLOTS {_quoted(name)}"))

    def signals(self, name):
        return _signatures(self._ok(f"GETSIGNALS {_quoted(name)}"))

    def wait_until(self, condition, what="the condition", timeout=None):
        return wait_until(condition, what, self._timeout if timeout is None else timeout)

    def wait_for(self, name, attribute, value, timeout=None):
        """Waits until a property has that value, or one of which `value(it)` is true."""
        holds = value if callable(value) else lambda read: read == value
        self.wait_until(lambda: holds(self.read(name, attribute)), f"'{name}' to have the {attribute} {value!r}", timeout)

    # Operating -------------------------------------------------------------

    def write(self, name, attribute, value):
        """Sets a property. A bool is sent as 0 or 1: the protocol knows no words for them."""
        text = str(int(value)) if isinstance(value, bool) else str(value)
        if "\n" in text:
            raise ValueError("a command is one line, so a value cannot have several")
        self._ok(f"SETPROPERTY {_quoted(name)} {attribute} {text}")

    def choose(self, action):
        """Chooses a command of the menus by its action's name, as the user does: not if it is disabled.

        Returns when the command has ended or waits for the user in a dialog.
        """
        if not self.read(action, "enabled"):
            raise AutomationError(f"the action '{action}' is disabled")
        if self.read(action, "checkable"):
            self.call(action, "trigger()")  # the other way leaves the check mark as it is
        else:
            self._run(f"DOACTION {action}")

    def call(self, name, slot):
        """Calls a slot that needs no argument, by its signature: call("outputWindow", "hide()")."""
        if slot not in self.slots(name):
            raise AutomationError(f"'{name}' has no slot {slot}")
        self._run(f"CALLSLOT {_quoted(name)} {_quoted(slot)}")

    def emit(self, name, signal):
        """Emits a signal that has no argument, by its signature: emit("okButton", "clicked()")."""
        if signal not in self.signals(name):
            raise AutomationError(f"'{name}' has no signal {signal}")
        self._run(f"EMITSIGNAL {_quoted(name)} {_quoted(signal)}")

    def choose_file(self, dialog, path):
        """Answers an open file dialog with a file."""
        self.wait_for(dialog, "visible", True)
        self.write("fileNameEdit", "text", path)
        self.press("Return", on="fileNameEdit")
        self.find_gone(dialog)

    def answer(self, question, key):
        """Answers a message box by a key, such as "y" for its Yes, once one shows text that contains `question`."""
        self.wait_for("messageBox", "text", lambda text: question in text)
        self.press(key, on="messageBox")

    def click(self, name, x=None, y=None, button=LEFT, modifiers="", double=False):
        """Clicks into a widget: at a point of it, or in its middle."""
        x = self.read(name, "width") // 2 if x is None else x
        y = self.read(name, "height") // 2 if y is None else y
        state = sum(keys.MODIFIERS[m] for m in modifiers.split("+") if m)
        self.event(name, _PRESS, x, y, x, y, button, state)
        self.event(name, _RELEASE, x, y, x, y, button, state | button)
        if double:
            self.event(name, _DOUBLE_CLICK, x, y, x, y, button, state)
            self.event(name, _RELEASE, x, y, x, y, button, state | button)

    def drag(self, name, start, end, button=LEFT):
        """Presses the button at one point of a widget and releases it at another."""
        self.event(name, _PRESS, *start, *start, button, 0)
        self.event(name, _MOVE, *end, *end, 0, button)
        self.event(name, _RELEASE, *end, *end, button, button)

    def type(self, name, text):
        """Types text into a widget, character by character."""
        for character in text:
            self._key(name, *keys.of_character(character))

    def press(self, combination, on):
        """Presses and releases a key: press("Ctrl+A", on="nameEdit"), press("Return", on="aboutBox").

        The widget gets it whoever has the focus. Shortcuts are not found this way: choose() their actions.
        """
        self._key(on, *keys.parse(combination))

    def event(self, name, type_number, *fields):
        """Posts an event by the numbers of the protocol; its handling begins before the next command's."""
        if re.search(r"\s", name):
            raise ValueError("the protocol cannot send events to an object with a blank in its name")
        self._ok(" ".join(["EVENT", name, str(type_number), *map(str, fields)]))

    def record(self):
        """Records events until it is closed: see Recording."""
        return Recording(*self._address)

    def close(self):
        self._connection.close()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    # The protocol ----------------------------------------------------------

    def _key(self, name, code, state, text):
        ascii_code = ord(text) if len(text) == 1 and ord(text) < 256 else 0
        fields = [code, ascii_code, state, 0, 1] + ([f"1 {text}"] if text else [0])
        self.event(name, _KEY_PRESS, *fields)
        with contextlib.suppress(AutomationError):  # the key can have closed it, and have ended the program with it
            self.event(name, _KEY_RELEASE, *fields)

    def _ask(self, command):
        self._connection.send(command)
        reply = self._connection.receive()
        if reply is None:
            raise AutomationError(f"the program has gone at: {command}")
        return reply

    def _ok(self, command):
        status, _, rest = self._ask(command).partition(" ")
        if status != "OK":
            raise AutomationError(f"{command}: {status} {rest}".strip())
        return rest

    def _run(self, command):
        """Sends a command that may open a dialog, on a connection of its own.

        The reply of such a command, if it has one, comes when the dialog closes. A second command is answered when the
        first one has ended or waits in its dialog, so that answer is waited for. Who else talks on this connection
        could not tell whose reply is whose; the program does not mind that the connection goes.
        """
        connection = Connection(*self._address)
        connection.send(command)
        connection.send(f"GETCLASS {self.MAIN_WINDOW}")
        reply = connection.receive()
        connection.close()
        if reply and reply.startswith("ERROR"):
            raise AutomationError(f"{command}: {reply}")


class Recording:
    """The events of the user and of other drivers, each as the command that posts it again."""

    def __init__(self, port, host="127.0.0.1", timeout=20.0):
        self._connection = Connection(port, host, timeout)
        self._events = []
        self._command("RECORD ON")

    def stop(self):
        """Ends the recording and returns its commands."""
        self._command("RECORD OFF")
        self._connection.close()
        return self._events

    def _command(self, command):
        self._connection.send(command)
        while (reply := self._connection.receive()) != "OK":
            if reply is None:
                raise AutomationError("the program has gone")
            self._events.append(reply)


def replayable(command):
    """A recorded command as the program takes it: with the last component of the object's path."""
    word, path, rest = command.split(" ", 2)
    return f"{word} {path.rpartition('.')[2]} {rest}"


def _quoted(name):
    return f'"{name}"' if " " in name else name


def _signatures(text):
    """Parts "a(const QString &) b()" behind the closing parentheses."""
    return [signature.strip() for signature in re.findall(r"[^)]*\)", text)]
