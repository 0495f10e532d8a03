"""Sets the keyboard focus to the newest window of a screen without a window manager.

Without a focus no window of the program would become active.
"""
import struct
import threading

from .xserver import connect, read

_DESTROY_NOTIFY, _UNMAP_NOTIFY, _MAP_NOTIFY = 17, 18, 19
_SUBSTRUCTURE_NOTIFY = 1 << 19
_REVERT_TO_POINTER_ROOT = 1
_NO_WINDOW = 0


class FocusKeeper:
    """Observes the windows of a screen in a thread, until the connection to the screen is closed."""

    def __init__(self, display_number):
        self._socket, root = connect(display_number)
        self._windows = []  # visible windows, the newest last
        # ChangeWindowAttributes of the root window: select the events of its children.
        self._socket.sendall(struct.pack("<BxHIII", 2, 4, root, 0x800, _SUBSTRUCTURE_NOTIFY))
        threading.Thread(target=self._watch, daemon=True).start()

    def take_away(self):
        """Removes the keyboard focus from all windows, as if the user changed to another program."""
        self._give_to(_NO_WINDOW)

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
