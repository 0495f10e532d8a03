"""A docked panel of this project: it shows an expression whenever the program stops.

The option "Run on opening" in the properties of this file makes Varnel run it when the workspace is opened. The widgets
are in panel.ui, made with Designer. Each one is an attribute of the panel, each slot of a widget a method, and "onClicked"
is the handler of its signal "clicked".
"""
import os

from varnel import app

BUILDING = 1  # a value of app.state


class Panel:
    def __init__(self, directory):
        self._panel = app.loadUI(os.path.join(directory, "panel.ui"))
        self._panel.buildButton.onClicked = self._build
        self._panel.runButton.onClicked = self._run
        self._panel.expressionEdit.onReturnPressed = self._show
        app.debugger.onBreakpointHit = self._show
        app.debugger.onStopped = self._show
        app.dockUI(self._panel, 1)

    def close(self):
        self._panel.deleteLater()

    def _build(self, _button):
        app.doAction("buildBuild")

    def _run(self, _button):
        app.doAction("debugRun")

    def _show(self, *_):
        processor = app.debugger.currentProcessor if app.debugger else None
        try:
            self._panel.valueLabel.text = processor.evaluate(self._panel.expressionEdit.text)
        except (AttributeError, RuntimeError, ValueError) as error:  # no session, or no such expression
            self._panel.valueLabel.text = str(error)


if "panel" in globals():
    panel.close()  # of the last time: a panel stays when the workspace is closed
panel = Panel(app.currentProject.basePath)
