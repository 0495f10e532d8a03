"""Operates a running Varnel over its automation port, for tests of the program and of plug-ins.

    from driver import Program

    with Program() as program:                      # its own screen, home directory and port
        varnel = program.client
        print(varnel.read("mainWindow", "windowTitle"))
        varnel.choose("helpAbout")
        varnel.find("aboutBox")
        varnel.press("Escape", on="aboutBox")

See docs/automation.md. Uses only Python's standard library.
"""
from .client import LEFT, MIDDLE, RIGHT, AutomationError, Client, replayable, wait_until
from .keyboard import Keyboard
from .keys import key_code
from .program import Program
from .screen import Desktop, Screen
from .testcase import GuiTest, ProgramTest

__all__ = ["LEFT", "MIDDLE", "RIGHT", "AutomationError", "Client", "Desktop", "GuiTest", "Keyboard", "Program", "ProgramTest", "Screen",
           "key_code", "replayable", "wait_until"]
