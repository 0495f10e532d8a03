"""Tests of the firmware of both boards."""


def test_thermostat_heats_a_cold_room(boards, run):
    thermostat = boards["thermostat"]
    line = thermostat.set_breakpoint("main.c", "keep_sample();")
    assert run() == "thermostat"
    assert thermostat.place == ("main.c", line)
    assert thermostat.number("regulator.target") == 21000
    assert thermostat.number("regulator.power") == 1000
    before = thermostat.number("room.temperature")
    assert run() == "thermostat"
    assert thermostat.number("room.temperature") > before


def test_thermostat_keeps_its_samples_in_memory(boards, run):
    thermostat = boards["thermostat"]
    thermostat.set_breakpoint("main.c", "keep_sample();")
    run()
    run()
    address = thermostat.processor.getSymbolAddress("history")
    memory = thermostat.processor.memory
    memory.currentRegion = next(name for name in memory.regions if holds(memory, name, address))
    memory.currentMode = "Word32"
    ticks, temperature, power = memory[address:address + 12]
    assert temperature == thermostat.number("history[0].temperature")
    assert power == 1000


def test_lamp_sends_its_text(boards, run):
    morse = boards["morse"]
    line = morse.set_breakpoint("lamp.c", "lamp->code = code_of(letter);")
    sent = []
    while len(sent) < 2:
        assert run() == "morse"
        assert morse.place == ("lamp.c", line)
        sent.append(chr(morse.number("letter")))
    assert sent == ["C", "Q"]


def holds(memory, region, address):
    memory.currentRegion = region
    return memory.lowAddress <= address < memory.highAddress
