"""The keyboard of a screen: keys are sent to the window with the focus."""
import struct

from . import keys
from .xserver import connect, read

_KEY_PRESS, _KEY_RELEASE = 2, 3
_FIRST_CODE, _LAST_CODE = 8, 255


def _numbered(first, names):
    return {name: first + number for number, name in enumerate(names.split())}


_SYMBOLS = {
    "Backspace": 0xff08, "Tab": 0xff09, "Return": 0xff0d, "Escape": 0xff1b, "Delete": 0xffff, "Space": 0x20,
    **_numbered(0xff50, "Home Left Up Right Down PageUp PageDown End"),
    **{f"F{number}": 0xffbe + number - 1 for number in range(1, 13)},
    "Shift": 0xffe1, "Ctrl": 0xffe3, "Alt": 0xffe9,
}


class Keyboard:
    """Presses keys on the X server of a screen through its XTEST extension."""

    def __init__(self, display_number):
        self._socket, _ = connect(display_number)
        self._extension = self._find_extension(b"XTEST")
        self._codes = self._read_codes()

    def press(self, combination):
        """Presses and releases keys together: press("Ctrl+S"), press("F4"), press("x")."""
        *modifiers, key = keys.split(combination)
        if modifiers and len(key) == 1:
            key = key.lower()  # the S of Ctrl+S is not typed with Shift
        code, shifted = self._codes[_SYMBOLS.get(key) or ord(key)]
        held = [self._codes[_SYMBOLS[modifier]][0] for modifier in modifiers]
        if shifted and "Shift" not in modifiers:
            held.append(self._codes[_SYMBOLS["Shift"]][0])
        for pressed in [*held, code]:
            self._send(_KEY_PRESS, pressed)
        for released in reversed([*held, code]):
            self._send(_KEY_RELEASE, released)

    def type(self, text):
        """Types characters of the ASCII table; a line feed is the Return key."""
        for character in text:
            self.press({"\n": "Return", "\t": "Tab", " ": "Space"}.get(character, character))

    def close(self):
        self._socket.close()

    def _send(self, kind, code):
        self._socket.sendall(struct.pack("<BBHBBxxIIxxxxxxxxHHxxxxxxxx", self._extension, 2, 9, kind, code, 0, 0, 0, 0))

    def _find_extension(self, name):
        padding = b"\0" * (-len(name) % 4)
        self._socket.sendall(struct.pack("<BxHHxx", 98, 2 + (len(name) + 3) // 4, len(name)) + name + padding)
        present, opcode = struct.unpack("<8xBB22x", read(self._socket, 32))
        if not present:
            raise RuntimeError("the X server cannot press keys")
        return opcode

    def _read_codes(self):
        """The code of each symbol, and whether it needs Shift."""
        count = _LAST_CODE - _FIRST_CODE + 1
        self._socket.sendall(struct.pack("<BxHBBxx", 101, 2, _FIRST_CODE, count))
        width, length = struct.unpack("<xBxxI24x", read(self._socket, 32))
        symbols = struct.unpack(f"<{length}I", read(self._socket, length * 4))
        codes = {}
        for shifted in (False, True):
            for row in range(count):
                codes.setdefault(symbols[row * width + shifted], (_FIRST_CODE + row, shifted))
        return codes
