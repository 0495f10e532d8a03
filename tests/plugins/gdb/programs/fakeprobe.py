#!/usr/bin/python3
"""A Cortex-M3 chip behind a debug probe, for OpenOCD's driver "remote_bitbang" with JTAG. Prints its port.

It has memory at 0 and 0x20000000 and the registers of the core's debug unit, but executes no instructions. While it is not
halted, the word at 0x20000000 and the cycle counter of the unit DWT (0xE0001004) count milliseconds. The word at
0x20000004 is the number of halts.
"""
import socket
import time

CPUID, AIRCR, DHCSR, DCRSR, DCRDR, DEMCR = 0xE000ED00, 0xE000ED0C, 0xE000EDF0, 0xE000EDF4, 0xE000EDF8, 0xE000EDFC
COUNTER, HALTS, CYCLES = 0x20000000, 0x20000004, 0xE0001004
DEBUG_ON, HALT, READY, HALTED = 1, 2, 1 << 16, 1 << 17


class Core:
    """The bus of the chip, with its processor."""

    def __init__(self):
        self.memory = {0: bytearray(1 << 16), 0x20000000: bytearray(1 << 16)}
        self.registers = [0] * 128
        self.system = {CPUID: 0x412FC231, 0xE0002000: 0x260, 0xE0001000: 0x40000000}
        self.control = 0
        self.passed = 0.0
        self.since = time.monotonic()
        self.halts = 0

    def halted(self):
        return self.control & (DEBUG_ON | HALT) == DEBUG_ON | HALT

    def milliseconds(self):
        running = 0 if self.halted() else time.monotonic() - self.since
        return int((self.passed + running) * 1000)

    def read(self, address):
        """The aligned word at an address."""
        if address in (COUNTER, CYCLES):
            return self.milliseconds()
        if address == HALTS:
            return self.halts
        if address == DHCSR:
            return self.control | READY | (HALTED if self.halted() else 0)
        for start, block in self.memory.items():
            if start <= address < start + len(block):
                return int.from_bytes(block[address - start:address - start + 4], "little")
        return self.system.get(address, 0)

    def write(self, address, value, mask):
        value = value & mask | self.read(address) & ~mask
        if address == DHCSR:
            self.set_control(value)
        elif address == DCRSR and value & 0x10000:
            self.registers[value & 0x7F] = self.system.get(DCRDR, 0)
        elif address == DCRSR:
            self.system[DCRDR] = self.registers[value & 0x7F]
        for start, block in self.memory.items():
            if start <= address < start + len(block):
                block[address - start:address - start + 4] = value.to_bytes(4, "little")
                return
        self.system[address] = value

    def set_control(self, value):
        if value >> 16 != 0xA05F:
            return
        was, self.control = self.halted(), value & 0xF
        if self.halted() and not was:
            self.halts += 1
            self.passed += time.monotonic() - self.since
        elif was and not self.halted():
            self.since = time.monotonic()


class Port:
    """The debug port and its one access port, to the bus."""

    def __init__(self, core):
        self.core = core
        self.select = self.status = self.address = 0
        self.mode = 0x43000052

    def read(self, access_port, register):
        if access_port:
            return self.read_access(register)
        return {4: self.status | self.status << 1 & 0xA0000000, 8: self.select}.get(register, 0)

    def write(self, access_port, register, value):
        if access_port:
            self.write_access(register, value)
        elif register == 4:
            self.status = value & 0x50000000
        elif register == 8:
            self.select = value

    def read_access(self, register):
        register |= self.select & 0xF0
        if self.select >> 24:
            return 0
        if register == 0x0C:
            value = self.core.read(self.address & ~3)
            self.advance()
            return value
        if register & 0xF0 == 0x10:
            return self.core.read(self.address & ~15 | register & 12)
        return {0x00: self.mode | 0x40, 0x04: self.address, 0xF8: 0xE00FF003, 0xFC: 0x24770011}.get(register, 0)

    def write_access(self, register, value):
        register |= self.select & 0xF0
        if self.select >> 24:
            return
        if register == 0x00:
            self.mode = value & ~0x20  # no packed transfers
        elif register == 0x04:
            self.address = value
        elif register == 0x0C:
            size = 8 << (self.mode & 3)
            self.core.write(self.address & ~3, value, ((1 << size) - 1) << 8 * (self.address & 3) & 0xFFFFFFFF)
            self.advance()
        elif register & 0xF0 == 0x10:
            self.core.write(self.address & ~15 | register & 12, value, 0xFFFFFFFF)

    def advance(self):
        """Within 1 KiB, as real ones do."""
        if self.mode & 0x30:
            self.address = self.address & ~0x3FF | self.address + (1 << (self.mode & 3)) & 0x3FF


class Tap:
    """The JTAG interface of the port: an instruction of 4 bits, accesses of 35."""

    # Of each state: the next one for TMS 0 and 1.
    NEXT = {"reset": ("idle", "reset"), "idle": ("idle", "select-dr"),
            "select-dr": ("capture-dr", "select-ir"), "capture-dr": ("shift-dr", "exit1-dr"),
            "shift-dr": ("shift-dr", "exit1-dr"), "exit1-dr": ("pause-dr", "update-dr"),
            "pause-dr": ("pause-dr", "exit2-dr"), "exit2-dr": ("shift-dr", "update-dr"),
            "update-dr": ("idle", "select-dr"), "select-ir": ("capture-ir", "reset"),
            "capture-ir": ("shift-ir", "exit1-ir"), "shift-ir": ("shift-ir", "exit1-ir"),
            "exit1-ir": ("pause-ir", "update-ir"), "pause-ir": ("pause-ir", "exit2-ir"),
            "exit2-ir": ("shift-ir", "update-ir"), "update-ir": ("idle", "select-dr")}
    DEBUG_PORT, ACCESS_PORT, IDENTITY, ANSWER_OK = 0xA, 0xB, 0xE, 0b010

    def __init__(self, port):
        self.port = port
        self.state = "reset"
        self.instruction = self.IDENTITY
        self.shift = self.length = self.result = 0

    def out(self):
        return self.shift & 1

    def clock(self, tms, tdi):
        """A rising edge."""
        if self.state.startswith("shift"):
            self.shift = self.shift >> 1 | tdi << self.length - 1
        self.state = self.NEXT[self.state][tms]
        if self.state == "reset":
            self.instruction = self.IDENTITY
        elif self.state == "capture-ir":
            self.shift, self.length = 1, 4
        elif self.state == "update-ir":
            self.instruction = self.shift
        elif self.state == "capture-dr":
            self.shift, self.length = self.captured()
        elif self.state == "update-dr" and self.instruction in (self.DEBUG_PORT, self.ACCESS_PORT):
            self.access(self.shift & 1, self.shift << 1 & 12, self.shift >> 3)

    def captured(self):
        if self.instruction == self.IDENTITY:
            return 0x4BA00477, 32
        if self.instruction in (self.DEBUG_PORT, self.ACCESS_PORT, 0x8):
            return self.result << 3 | self.ANSWER_OK, 35
        return 0, 1

    def access(self, reads, register, value):
        """The result of a read is shifted out with the next access."""
        access_port = self.instruction == self.ACCESS_PORT
        if reads:
            self.result = self.port.read(access_port, register)
        else:
            self.port.write(access_port, register, value)


def main():
    server = socket.create_server(("127.0.0.1", 0))
    print(server.getsockname()[1], flush=True)
    core = Core()
    while True:
        tap, clock = Tap(Port(core)), 0
        client = server.accept()[0]
        client.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        while commands := client.recv(65536):
            answers = ""
            for command in commands.decode():
                if command == "R":
                    answers += str(tap.out())
                elif command in "01234567":
                    levels = int(command)
                    if levels & 4 and not clock:
                        tap.clock(levels >> 1 & 1, levels & 1)
                    clock = levels & 4
            client.sendall(answers.encode())


main()
