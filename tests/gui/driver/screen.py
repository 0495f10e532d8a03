"""A virtual screen, and screenshots of it."""
import mmap
import os
import pathlib
import select
import struct
import subprocess
import tempfile
import zlib

from .focus import FocusKeeper
from .keyboard import Keyboard


class Screen:
    """A virtual X server, which close() ends. Its mouse pointer can be hidden, for pictures."""

    def __init__(self, width=1280, height=800, pointer=True):
        self._directory = tempfile.TemporaryDirectory(prefix="varnel-screen.")
        self.keyboard = None
        reader, writer = os.pipe()
        self._server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp", "-noreset",
             "-fbdir", self._directory.name, *([] if pointer else ["-nocursor"])],
            pass_fds=[writer], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writer)
        with os.fdopen(reader, "rb") as numbers:
            number = numbers.readline() if select.select([numbers], [], [], 60)[0] else b""
        if not number:
            self.close()
            raise RuntimeError("the X server does not start")
        self.display = ":" + number.decode().strip()
        self.focus = FocusKeeper(number.decode().strip())
        self.keyboard = Keyboard(number.decode().strip())

    def close(self):
        if self.keyboard:
            self.keyboard.close()
        end_process(self._server)
        self._directory.cleanup()

    def screenshot(self, path, window=None):
        """Writes a PNG file of the whole screen. `window` is ignored."""
        pathlib.Path(path).write_bytes(_png(*self.pixels()))

    def pixels(self):
        """(width, height, rows); each row has three bytes per pixel: red, green, blue."""
        with open(os.path.join(self._directory.name, "Xvfb_screen0"), "rb") as file:
            with mmap.mmap(file.fileno(), 0, prot=mmap.PROT_READ) as dump:
                return _read_xwd(dump)


class Desktop:
    """The display of the user. It has no keyboard for tests."""

    keyboard = None

    def __init__(self):
        self.display = os.environ["DISPLAY"]

    def close(self):
        pass

    def screenshot(self, path, window):
        """Writes a PNG file of the window with that title only."""
        subprocess.run(["import", "-window", window, str(path)], check=True)


def end_process(process, patience=10):
    """Ends a process, and kills it if it does not end in time."""
    if process.poll() is None:
        process.terminate()
        try:
            process.wait(patience)
        except subprocess.TimeoutExpired:
            process.kill()
    process.wait()


def _read_xwd(dump):
    header = struct.unpack(">25I", dump[:100])
    (size, _, _, _, width, height, _, byte_order, _, _, _, bits, stride) = header[:13]
    colours = header[19]
    if bits != 32:
        raise RuntimeError(f"a screen with {bits} bits per pixel is not supported")
    red, green, blue = (1, 2, 3) if byte_order else (2, 1, 0)
    begin = size + colours * 12
    rows = []
    for y in range(height):
        row = dump[begin + y * stride:begin + y * stride + width * 4]
        rgb = bytearray(width * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = row[red::4], row[green::4], row[blue::4]
        rows.append(bytes(rgb))
    return width, height, rows


def _png(width, height, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    image = zlib.compress(b"".join(b"\0" + row for row in rows), 6)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", image) + chunk(b"IEND", b""))
