"""Answers like OpenOCD on its Tcl port: a command and its answer end in 0x1a.

fakeopenocd.py DIRECTORY        memory of 4096 bytes at 0
fakeopenocd.py DIRECTORY qemu   the memory of a QEMU that connects its qtest channel to DIRECTORY/qtest

Prints its port, and the commands on standard error. Answers are late by the number of ms in DIRECTORY/delay.
"""
import pathlib
import socket
import sys
import time

directory = pathlib.Path(sys.argv[1])
own = bytearray(4096)


def ask_qemu(qemu, line):
    qemu.sendall(line.encode() + b"\n")
    answer = b""
    while not answer.endswith(b"\n"):
        answer += qemu.recv(65536)
    words = answer.decode().split()
    return words[1:] if words and words[0] == "OK" else None


def read(qemu, address, width, count):
    length = width // 8 * count
    if qemu:
        words = ask_qemu(qemu, f"read 0x{address:x} {length}")
        data = bytes.fromhex(words[0][2:]) if words else b""
    else:
        data = bytes(own[address:address + length])
    if len(data) != length:
        return "read_memory: failed to read memory"
    cells = range(0, length, width // 8)
    return " ".join(hex(int.from_bytes(data[at:at + width // 8], "little")) for at in cells)


def write(qemu, address, width, values):
    data = b"".join(int(value, 0).to_bytes(width // 8, "little") for value in values)
    if qemu:
        done = ask_qemu(qemu, f"write 0x{address:x} {len(data)} 0x{data.hex()}") is not None
    else:
        done = address + len(data) <= len(own)
        own[address:address + len(data)] = data if done else b""
    return "" if done else "write_memory: failed to write memory"


def answer(qemu, command):
    print("<", command, file=sys.stderr, flush=True)
    delay = directory / "delay"
    if delay.exists():
        time.sleep(int(delay.read_text() or 0) / 1000)
    words = command.replace("{", " ").replace("}", " ").split()
    address, width = int(words[1], 0), int(words[2], 0)
    if words[0] == "read_memory":
        return read(qemu, address, width, int(words[3], 0))
    return write(qemu, address, width, words[3:])


def main():
    qemu = None
    server = socket.create_server(("127.0.0.1", 0))
    qtest = socket.socket(socket.AF_UNIX)
    qtest.bind(str(directory / "qtest"))
    qtest.listen()
    print(server.getsockname()[1], flush=True)
    if "qemu" in sys.argv:
        qemu = qtest.accept()[0]
    while True:
        client = server.accept()[0]
        rest = b""
        while block := client.recv(65536):
            *commands, rest = (rest + block).split(b"\x1a")
            for command in commands:
                client.sendall(answer(qemu, command.decode()).encode() + b"\x1a")


main()
