"""An example of a docked panel: a part of the memory as a picture, such as the contents of a display.

To try it, enter "import memorypicture" in the Command Window. The panel is in memorypicture.ui. Rows follow each other
without gaps; bits are shown from the lowest, words are little-endian.
"""

import base64
import struct
import zlib

from panels import number, paused_processor, show
from varnel import app
from varneltexts import tr

BITS = (1, 8, 16, 32)  # of a pixel, in the order of the box


def grey_of_bits(row, width):
    return bytes(255 if row[x // 8] >> x % 8 & 1 else 0 for x in range(width))


def rgb_of_565(row, width):
    pixels = bytearray()
    for (value,) in struct.iter_unpack("<H", row[:2 * width]):
        red, green, blue = value >> 11, value >> 5 & 63, value & 31
        pixels += bytes((red * 255 // 31, green * 255 // 63, blue * 255 // 31))
    return bytes(pixels)


def rgb_of_888(row, width):
    return b"".join(bytes((row[4 * x + 2], row[4 * x + 1], row[4 * x])) for x in range(width))


def png(data, width, height, bits):
    """A PNG file with the picture."""
    convert = {1: grey_of_bits, 8: lambda row, width: row, 16: rgb_of_565, 32: rgb_of_888}[bits]
    stride = (width * bits + 7) // 8
    lines = b"".join(b"\0" + convert(data[y * stride:(y + 1) * stride], width) for y in range(height))

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    colour = 0 if bits <= 8 else 2
    header = struct.pack(">IIBBBBB", width, height, 8, colour, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines)) + chunk(b"IEND", b""))


def read(processor, address, count):
    """The bytes of the region in which the address lies. The user's region and mode are kept."""
    memory = processor.memory
    if memory is None:
        raise ValueError(tr("The target has no memory that can be read."))
    kept = memory.currentRegion, memory.currentMode
    try:
        for region in memory.regions:
            memory.currentRegion = region
            if memory.lowAddress <= address and address + count - 1 <= memory.highAddress:
                memory.currentMode = "Byte"
                return bytes(memory[address:address + count])
    finally:
        memory.currentRegion, memory.currentMode = kept
    raise ValueError(tr("No region of the memory contains these {} bytes.").format(count))


class MemoryPicture:
    def __init__(self):
        self.panel = app.loadUI("memorypicture.ui")
        self.panel.showButton.onClicked = self.refresh
        self.panel.addressEdit.onReturnPressed = self.refresh
        app.dockUI(self.panel, 1)

    def refresh(self, sender):
        show(self.panel, self.panel.pictureView, self.picture)

    def picture(self):
        panel = self.panel
        processor = paused_processor()
        width, height = panel.widthBox.value, panel.heightBox.value
        bits = BITS[panel.formatBox.currentIndex]
        expression = panel.addressEdit.text.strip()
        if not expression:
            raise ValueError(tr("Enter an address."))
        address = number(processor, "(unsigned long)(%s)" % expression)
        file = png(read(processor, address, (width * bits + 7) // 8 * height), width, height, bits)
        scale = max(1, 256 // max(width, height))
        return "<img width='%d' height='%d' src='data:image/png;base64,%s'/>" % (
            width * scale, height * scale, base64.b64encode(file).decode())


memoryPicture = MemoryPicture()
