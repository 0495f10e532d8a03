"""Your macros: Python functions with a place in the Tools menu and on the macro tool bar.

"Edit Macros" in the Tools menu opens this file. Varnel does not load it by itself: write "import macros" in startup.py to
have your macros at every start, or at the prompt of the Command Window to have them now. After a change there, type

    import importlib; importlib.reload(macros)

A copy in the folder "python" of your own Varnel data wins over the installed file, as with startup.py.

A macro takes no arguments. app.addMacro(function, name, description, shortcut, icon) puts it into the menu; the last
three are optional. app.clearMacro(name) takes one away, app.clearMacros() all. An error in a macro is shown in the
Command Window. For example, remove the "# " before:
"""

# from varnel import app
#
# def saveAndBuild():
#     app.doAction("fileSaveAll")
#     app.doAction("buildBuild")
#
# app.clearMacros()                  # so that loading this file again adds nothing twice
# app.addMacro(saveAndBuild, "Save and Build", "Saves every document, then builds", "Ctrl+Alt+B")
