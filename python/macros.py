"""Your macros: Python functions in the Tools menu and on the macro tool bar.

"Edit Macros" in the Tools menu opens this file. Varnel does not load it automatically: write "import macros" in startup.py
to load it at every start, or enter this in the Command Window to load it now. After a change enter there

    import importlib; importlib.reload(macros)

A copy in the folder "python" of your Varnel data directory replaces the installed file, as for startup.py.

A macro takes no arguments. app.addMacro(function, name, description, shortcut, icon) adds it to the menu; the last
three are optional. app.clearMacro(name) removes one, app.clearMacros() all. An error in a macro is shown in the
Command Window. To try this example, remove the "# ":
"""

# from varnel import app
#
# def saveAndBuild():
#     app.doAction("fileSaveAll")
#     app.doAction("buildBuild")
#
# app.clearMacros()                  # so that reloading this file does not add macros twice
# app.addMacro(saveAndBuild, "Save and Build", "Saves every document, then builds", "Ctrl+Alt+S")
