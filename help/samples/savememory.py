from varnel import app

def save_memory(path, start, count):
    memory = app.debugger.currentProcessor.memory
    for region in memory.regions:
        memory.currentRegion = region
        if memory.lowAddress <= start <= memory.highAddress:
            break
    memory.currentMode = "Byte"
    with open(path, "wb") as file:
        file.write(bytes(memory[start:start + count]))

path = app.inputBox("Save memory", "File:", "ram.bin")
if path:
    save_memory(path, 0x20000000, 256)
