import time
from varnel import app

label = app.createUI("QLabel", "clock")
label.windowTitle = "Clock"
app.dockUI(label, 1)

def tick(timer):
    label.text = time.strftime("%H:%M:%S")

timer = app.createTimer("clockTimer")
timer.interval = 500
timer.onTimeout = tick
timer.start(0)
