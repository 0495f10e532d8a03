from varnel import app

def show_values():
    registers = app.debugger.currentProcessor.registers
    for name in registers.keys:
        app.outputWindow[name] = hex(registers[name])

app.outputWindow.show()
app.debugger.onBreakpointHit = show_values
