"""An example of a docked panel: it builds the current project and counts the builds.

To try it, enter "import buildpanel" in the Command Window, or write that line into startup.py. The panel is in the file
buildpanel.ui beside this one, made with Designer. Each widget in it is an attribute of the panel, each slot of a widget a
method, and "onClicked" is the handler of its signal "clicked".
"""

from varnel import app
from varneltexts import tr

BUILDING = 1  # a value of app.state


class BuildPanel:
    def __init__(self):
        self.builds = 0
        self.building = False
        self.panel = app.loadUI("buildpanel.ui")
        self.panel.buildButton.onClicked = self.build
        self.panel.resetButton.onClicked = self.reset
        self.timer = app.createTimer("buildPanelTimer")
        self.timer.interval = 250
        self.timer.onTimeout = self.refresh
        self.timer.start(0)
        self.refresh(self.timer)
        app.dockUI(self.panel, 1)

    def build(self, button):
        app.doAction("buildBuild")
        self.refresh(button)

    def reset(self, button):
        self.builds = 0
        self.show()

    def refresh(self, sender):
        """Counts a build when it begins: the state is read four times a second, and after a click."""
        building = app.state == BUILDING
        if building and not self.building:
            self.builds += 1
        self.building = building
        self.show()

    def show(self):
        project = app.currentProject
        self.panel.projectLabel.text = project.name if project else tr("No project is open.")
        self.panel.buildButton.enabled = project is not None and app.state != BUILDING
        self.panel.countLabel.text = tr("Building...") if self.building else tr("Builds: {}").format(self.builds)


buildPanel = BuildPanel()
