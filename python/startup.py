"""Runs when Varnel starts, in the namespace of the console (the page "Command Window" of the output window).

Everything defined here can be used in the console. Edit this file to customise Varnel. If you cannot write the installed
file, put a copy into the folder "python" of your Varnel data directory (~/.local/share/Ostrand Labs/Varnel on Linux): it
is run instead of this one.

While this file runs, the main window is not complete and no workspace is open. Put code that needs them into a function
that is called from the console, by a macro or by an event. To try this example, remove the "# ":
"""

# from varnel import app
#
# def loaded():
#     print("Opened", ", ".join(project.name for project in app.projects))
#
# app.onWorkspaceLoaded = loaded     # called each time a workspace has been opened

# import macros                      # adds your macros (see macros.py) to the Tools menu
