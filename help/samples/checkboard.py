import os
import sys
import time
from varnel import app

def wait_until(condition, what, seconds):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            sys.exit(f"Waited {seconds} seconds for {what}.")
        app.processEvents(50)

workspace, file, line, expression = sys.argv[1:]
app.openWorkspace(workspace)
app.currentProject.build(0)
wait_until(lambda: app.state == 0, "the build", 300)

hits = []
app.debugger.onBreakpointHit = lambda: hits.append(app.currentProject.name)
processor = app.debugger.currentProcessor
processor.setBreakpoint(os.path.abspath(file), int(line))
app.doAction("debugRun")
wait_until(lambda: hits, "the breakpoint", 60)
value = int(processor.evaluate(expression))
app.debugger.stop()
print(expression, "is", value)
sys.exit(0 if value > 0 else 1)
