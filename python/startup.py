"""Runs when Varnel starts, in the namespace of the console (the page "Command Window" of the output window).

Everything defined here is at hand at the prompt. Edit this file to make Varnel yours. Where the installed file cannot be
changed, put a copy into the folder "python" of your own Varnel data (~/.local/share/Ostrand Labs/Varnel on Linux): it is
run in place of this one.

The main window is still being built while this file runs, and no workspace is open yet. What needs one goes into a
function, to be called from the prompt, by a macro or when something happens. For example, remove the "# " before:
"""

# from varnel import app
#
# def loaded():
#     print("Opened", ", ".join(project.name for project in app.projects))
#
# app.onWorkspaceLoaded = loaded     # called each time a workspace has been opened

# import macros                      # adds your macros (see macros.py) to the Tools menu
