"""Gives the keyboard to the newest window of a screen that has no window manager.

Without it no window of the program would ever be the active one.
"""
import socket
import struct
import threading

_DESTROY_NOTIFY, _UNMAP_NOTIFY, _MAP_NOTIFY = 17, 18, 19
_SUBSTRUCTURE_NOTIFY = 1 << 19
_REVERT_TO_POINTER_ROOT = 1


class FocusKeeper:
    """Watches the windows of a screen from its own thread, until the screen goes."""

    def __init__(self, display_number):
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(f"/tmp/.X11-unix/X{display_number}")
        self._windows = []  # that are shown, the newest last
        # Change window attributes of the root: have the events of its children reported.
        self._socket.sendall(struct.pack("<BxHIII", 2, 4, self._log_in(), 0x800, _SUBSTRUCTURE_NOTIFY))
        threading.Thread(target=self._watch, daemon=True).start()

    def _log_in(self):
        """Opens the conversation. Returns the root window."""
        self._socket.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
        accepted, length = struct.unpack("<B5xH", self._read(8))
        setup = self._read(length * 4)
        if accepted != 1:
            raise RuntimeError("the X server does not let us in")
        vendor, formats = struct.unpack("<16xH3xB", setup[:22])
        (root,) = struct.unpack_from("<I", setup, 32 + (vendor + 3) // 4 * 4 + formats * 8)
        return root

    def _watch(self):
        try:
            while True:
                self._notice(self._read(32))
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
            self._socket.sendall(struct.pack("<BBHII", 42, _REVERT_TO_POINTER_ROOT, 3, self._windows[-1], 0))

    def _read(self, size):
        data = b""
        while len(data) < size:
            piece = self._socket.recv(size - len(data))
            if not piece:
                raise ConnectionResetError
            data += piece
        return data
