from varnel import app

def note():
    processor = app.debugger.currentProcessor
    try:
        print("counter =", processor.evaluate("counter"))
    except ValueError as error:
        print(error)
    processor.run()

app.debugger.onBreakpointHit = note
