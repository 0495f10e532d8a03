"""Names of keys, with the codes and modifiers of the automation protocol."""


def _numbered(first, names):
    return {name: first + number for number, name in enumerate(names.split())}


_CODES = {
    **_numbered(0x1000, "Escape Tab Backtab Backspace Return Enter Insert Delete Pause Print SysReq Clear"),
    **_numbered(0x1010, "Home End Left Up Right Down PageUp PageDown"),
    **_numbered(0x1020, "Shift Ctrl Meta Alt CapsLock NumLock ScrollLock"),
    **{f"F{number}": 0x1030 + number - 1 for number in range(1, 36)},
    "Menu": 0x1055,
    "Space": 0x20,
}

# The text of keys with a name.
_TEXTS = {"Escape": "\x1b", "Tab": "\t", "Backtab": "\t", "Backspace": "\b", "Return": "\r", "Enter": "\r",
          "Delete": "\x7f", "Space": " "}

MODIFIERS = {"Shift": 0x100, "Ctrl": 0x200, "Alt": 0x400, "Meta": 0x800, "Keypad": 0x4000}


def key_code(name):
    """The code of a key such as "Return", "F5", "Left", or of a character."""
    if name in _CODES:
        return _CODES[name]
    if len(name) == 1:
        return ord(name.upper())
    raise ValueError(f"there is no key '{name}'")


def split(combination):
    """The names of the keys of a combination; the last is the one with the modifiers, also "+" in "Ctrl++"."""
    *modifiers, key = combination.split("+") if not combination.endswith("+") else [*combination[:-2].split("+"), "+"]
    return [*filter(None, modifiers), key]


def parse(combination):
    """(code, state, text) of a combination such as "Ctrl+Shift+F5", "Return" or "a"."""
    *modifiers, key = split(combination)
    state = 0
    for modifier in modifiers:
        if modifier not in MODIFIERS:
            raise ValueError(f"there is no modifier '{modifier}'")
        state |= MODIFIERS[modifier]
    return key_code(key), state, _text(key, state)


def of_character(character):
    """(code, state, text) of the key press that types a character."""
    named = {"\n": "Return", "\t": "Tab", "\b": "Backspace"}.get(character)
    if named:
        return parse(named)
    shift = MODIFIERS["Shift"] if character.isupper() else 0
    return key_code(character), shift, character


def _text(key, state):
    if state & (MODIFIERS["Alt"] | MODIFIERS["Meta"]):
        return ""
    if state & MODIFIERS["Ctrl"]:
        return chr(ord(key.upper()) - 0x40) if len(key) == 1 and key.isalpha() else ""
    if key in _TEXTS:
        return _TEXTS[key]
    if len(key) != 1:
        return ""
    return key.upper() if state & MODIFIERS["Shift"] else key
