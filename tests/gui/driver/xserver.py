"""Connects to an X server and reads from it."""
import socket
import struct


def connect(display_number):
    """Connects to a local X server. Returns the connection and the root window.

    The abstract socket is used, as Xlib does: the file of that name can be missing, because an earlier server of the
    same number removes it when it ends.
    """
    connection = socket.socket(socket.AF_UNIX)
    connection.connect(f"\0/tmp/.X11-unix/X{display_number}")
    connection.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
    accepted, length = struct.unpack("<B5xH", read(connection, 8))
    setup = read(connection, length * 4)
    if accepted != 1:
        raise RuntimeError("the X server refused the connection")
    vendor, formats = struct.unpack("<16xH3xB", setup[:22])
    (root,) = struct.unpack_from("<I", setup, 32 + (vendor + 3) // 4 * 4 + formats * 8)
    return connection, root


def read(connection, size):
    """Reads `size` bytes. Raises ConnectionResetError when the server closes the connection."""
    data = b""
    while len(data) < size:
        piece = connection.recv(size - len(data))
        if not piece:
            raise ConnectionResetError
        data += piece
    return data
