"""What all talk with an X server begins with."""
import socket
import struct


def connect(display_number):
    """A connection to an X server of this machine, and its root window."""
    connection = socket.socket(socket.AF_UNIX)
    connection.connect(f"/tmp/.X11-unix/X{display_number}")
    connection.sendall(struct.pack("<BxHHHHxx", ord("l"), 11, 0, 0, 0))
    accepted, length = struct.unpack("<B5xH", read(connection, 8))
    setup = read(connection, length * 4)
    if accepted != 1:
        raise RuntimeError("the X server does not let us in")
    vendor, formats = struct.unpack("<16xH3xB", setup[:22])
    (root,) = struct.unpack_from("<I", setup, 32 + (vendor + 3) // 4 * 4 + formats * 8)
    return connection, root


def read(connection, size):
    """So many bytes. Raises ConnectionResetError when the server goes."""
    data = b""
    while len(data) < size:
        piece = connection.recv(size - len(data))
        if not piece:
            raise ConnectionResetError
        data += piece
    return data
