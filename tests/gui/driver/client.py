"""The client's side of the automation protocol."""
import contextlib
import re
import socket
import time

from . import keys

EOL = b"\r\n"
_NO_PROPERTY = b"ERROR No such property"  # the only reply without a line end

LEFT, RIGHT, MIDDLE = 1, 2, 4
_PRESS, _RELEASE, _DOUBLE_CLICK, _MOVE, _KEY_PRESS, _KEY_RELEASE = 2, 3, 4, 5, 6, 7
_INT, _UINT, _BOOL, _DOUBLE, _LONG_LONG, _ULONG_LONG = 16, 17, 18, 19, 33, 34


class AutomationError(Exception):
    """The program refused a command, or has ended."""


def wait_until(condition, what="the condition", timeout=20.0, pause=0.02):
    """Calls `condition()` repeatedly until it returns a true value, and returns that.

    A refused command counts as "not yet". Raises TimeoutError with `what` after the timeout.
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
    """One connection: sends lines with commands, receives replies and recorded events."""

    def __init__(self, port, host="127.0.0.1", timeout=20.0):
        try:
            self._socket = socket.create_connection((host, port), timeout=timeout)
        except OSError as error:
            raise AutomationError(f"cannot connect to port {port} of {host}: {error}") from None
        self._socket.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        self._received = b""

    def send(self, line):
        try:
            self._socket.sendall(line.encode() + EOL)
        except OSError as error:
            raise AutomationError(f"the program has ended: {error}") from None

    def receive(self):
        """The next reply without its line end; replies can contain line feeds. None after the program has ended."""
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
    """A test driver: finds, reads and operates the objects of the user interface by their names.

    Each method returns when the program has handled its command; use `wait_until` for later effects. An object is a
    widget, an action, or any other named child of the main window; the first one with the name is used.
    """

    MAIN_WINDOW = "mainWindow"

    def __init__(self, port, host="127.0.0.1", timeout=20.0):
        self._address = (port, host, timeout)
        self._timeout = timeout
        self._connection = Connection(*self._address)

    # Reading ---------------------------------------------------------------

    def exists(self, name):
        return not self._ask(f"GETCLASS {_quoted(name)}").startswith("ERROR")

    def find(self, name, timeout=None):
        """Waits until an object with that name exists. Returns its class."""
        return self.wait_until(lambda: self.class_of(name), f"an object '{name}'", timeout)

    def find_gone(self, name, timeout=None):
        """Waits until no visible object with that name exists."""
        self.wait_until(lambda: not self.exists(name) or not self.read(name, "visible"), f"'{name}' to go", timeout)

    def class_of(self, name):
        return self._ok(f"GETCLASS {_quoted(name)}")

    def read(self, name, attribute):
        """The value of a property as a str, bool, int or float."""
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
        """Waits until a property has that value, or, if `value` is a function, until it returns True for the property."""
        holds = value if callable(value) else lambda read: read == value
        self.wait_until(lambda: holds(self.read(name, attribute)), f"'{name}' to have the {attribute} {value!r}", timeout)

    # Operating -------------------------------------------------------------

    def write(self, name, attribute, value):
        """Sets a property. A bool is sent as 0 or 1, because the protocol does not support words."""
        text = str(int(value)) if isinstance(value, bool) else str(value)
        if "\n" in text:
            raise ValueError("a command is one line, so a value cannot have several")
        self._ok(f"SETPROPERTY {_quoted(name)} {attribute} {text}")

    def choose(self, action):
        """Triggers an action by its name. Raises AutomationError if it is disabled.

        Returns when the command has ended or has opened a dialog.
        """
        if not self.read(action, "enabled"):
            raise AutomationError(f"the action '{action}' is disabled")
        if self.read(action, "checkable"):
            self.call(action, "trigger()")  # DOACTION does not change the check mark
        else:
            self._run(f"DOACTION {action}")

    def call(self, name, slot):
        """Calls a slot without arguments, by its signature: call("outputWindow", "hide()")."""
        if slot not in self.slots(name):
            raise AutomationError(f"'{name}' has no slot {slot}")
        self._run(f"CALLSLOT {_quoted(name)} {_quoted(slot)}")

    def emit(self, name, signal):
        """Emits a signal without arguments, by its signature: emit("okButton", "clicked()")."""
        if signal not in self.signals(name):
            raise AutomationError(f"'{name}' has no signal {signal}")
        self._run(f"EMITSIGNAL {_quoted(name)} {_quoted(signal)}")

    def choose_file(self, dialog, path):
        """Enters a file in an open file dialog and accepts it."""
        self.wait_for(dialog, "visible", True)
        self.write("fileNameEdit", "text", path)
        self.press("Return", on="fileNameEdit")
        self.find_gone(dialog)

    def answer(self, question, key):
        """Waits for a message box whose text contains `question`, and presses a key in it, such as "y" for Yes."""
        self.wait_for("messageBox", "text", lambda text: question in text)
        self.press(key, on="messageBox")

    def click(self, name, x=None, y=None, button=LEFT, modifiers="", double=False):
        """Clicks into a widget, by default in its centre."""
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

        The key is sent to the widget even without focus. It does not trigger shortcuts: use choose() for their actions.
        """
        self._key(on, *keys.parse(combination))

    def event(self, name, type_number, *fields):
        """Posts an event by the numbers of the protocol. It is handled before the next command."""
        if re.search(r"\s", name):
            raise ValueError("the protocol cannot send events to an object with a blank in its name")
        self._ok(" ".join(["EVENT", name, str(type_number), *map(str, fields)]))

    def record(self):
        """Starts a recording of events: see Recording."""
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
        with contextlib.suppress(AutomationError):  # the key may have closed the widget or the program
            self.event(name, _KEY_RELEASE, *fields)

    def _ask(self, command):
        self._connection.send(command)
        reply = self._connection.receive()
        if reply is None:
            raise AutomationError(f"the program ended during: {command}")
        return reply

    def _ok(self, command):
        status, _, rest = self._ask(command).partition(" ")
        if status != "OK":
            raise AutomationError(f"{command}: {status} {rest}".strip())
        return rest

    def _run(self, command):
        """Sends a command that may open a dialog, on a second connection.

        The reply to such a command, if any, arrives when the dialog closes. The reply to the next command on the
        connection arrives when the first one has ended or has opened its dialog, so that reply is awaited. The late
        reply is ignored by closing this connection.
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
                raise AutomationError("the program has ended")
            self._events.append(reply)


def replayable(command):
    """A recorded command for a replay: with the last component of the object's path only."""
    word, path, rest = command.split(" ", 2)
    return f"{word} {path.rpartition('.')[2]} {rest}"


def _quoted(name):
    return f'"{name}"' if " " in name else name


def _signatures(text):
    """Splits "a(const QString &) b()" after the closing parentheses."""
    return [signature.strip() for signature in re.findall(r"[^)]*\)", text)]
