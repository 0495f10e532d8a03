from varnel import app

def note():
    processor = app.debugger.currentProcessor
    try:
        print("samples =", processor.evaluate("samples"))
    except ValueError as error:
        print(error)
    processor.run()

app.debugger.onBreakpointHit = note
