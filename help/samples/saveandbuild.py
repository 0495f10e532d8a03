from varnel import app

def saveAndBuild():
    app.doAction("fileSaveAll")
    app.doAction("buildBuild")

app.clearMacro("Save and Build")
app.addMacro(saveAndBuild, "Save and Build", "Saves every document, then builds", "Ctrl+Alt+S")
