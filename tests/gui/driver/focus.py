"""Gives the keyboard to the newest window of a screen that has no window manager.

Without it no window of the program would ever be the active one.
"""
import struct
import threading

from .xserver import connect, read

_DESTROY_NOTIFY, _UNMAP_NOTIFY, _MAP_NOTIFY = 17, 18, 19
_SUBSTRUCTURE_NOTIFY = 1 << 19
_REVERT_TO_POINTER_ROOT = 1
_NOBODY = 0


class FocusKeeper:
    """Watches the windows of a screen from its own thread, until the screen goes."""

    def __init__(self, display_number):
        self._socket, root = connect(display_number)
        self._windows = []  # that are shown, the newest last
        # Change window attributes of the root: have the events of its children reported.
        self._socket.sendall(struct.pack("<BxHIII", 2, 4, root, 0x800, _SUBSTRUCTURE_NOTIFY))
        threading.Thread(target=self._watch, daemon=True).start()

    def take_away(self):
        """Leaves no window of the screen with the keyboard, as if the user went to another program."""
        self._give_to(_NOBODY)

    def give_back(self):
        self._give_to(self._windows[-1])

    def _watch(self):
        try:
            while True:
                self._notice(read(self._socket, 32))
        except OSError:
            self._socket.close()

    def _notice(self, event):
        kind, window, bypasses = struct.unpack("<B7xIB19x", event)
        if kind & 0x7f not in (_DESTROY_NOTIFY, _UNMAP_NOTIFY, _MAP_NOTIFY):
            return
        if window in self._windows:
            self._windows.remove(window)
        if kind & 0x7f == _MAP_NOTIFY and not bypasses:  # menus and tool tips bypass the window manager
            self._windows.append(window)
        if self._windows:
            self._give_to(self._windows[-1])

    def _give_to(self, window):
        self._socket.sendall(struct.pack("<BBHII", 42, _REVERT_TO_POINTER_ROOT, 3, window, 0))
