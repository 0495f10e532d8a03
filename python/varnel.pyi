"""The module "varnel" of the embedded Python, for editors and type checkers: scripts import it, this file is not run."""

from collections.abc import Callable
from typing import Any

app: App

mbNone: int
mbOk: int
mbCancel: int
mbYes: int
mbNo: int
mbAbort: int
mbRetry: int
mbIgnore: int

mcBackward: int
mcForward: int
mcWordBackward: int
mcWordForward: int
mcUp: int
mcDown: int
mcLineStart: int
mcLineEnd: int
mcHome: int
mcEnd: int


class App:
    """The root of the Varnel object model. A single instance of this object called 'app' is available at program startup."""

    def processEvents(self, time: int = 0, /) -> None:
        """processEvents([time]) - processes UI events"""

    def doAction(self, actionName: str, /) -> None:
        """doAction(actionName) - performs a menu or toolbar action. Not supported"""

    def messageBox(self, dialogTitle: str, prompt: str, button1: int, button2: int = 0, button3: int = 0, /) -> int:
        """messageBox(dialogTitle, prompt, button1, [button2], [button3]) - displays a message box with up to three buttons. Use mbOk, mbCancel, mbYes, mbNo, mbIgnore, mbAbort, mbRetry, mbNone for button values"""

    def inputBox(self, dialogTitle: str, prompt: str, defaultValue: str = "", /) -> str | None:
        """inputBox(dialogTitle, prompt, [defaultValue]) - displays a dialog prompting the user to enter a string"""

    def openFileDialog(self, prompt: str, path: str = "", filter: str = "", /) -> str:
        """openFileDialog(prompt, [path], [filter]) - displays a standard open file dialog"""

    def addMacro(self, function: Callable[[], object], name: str, description: str = "", shortcutKey: str = "", iconFile: str = "", /) -> None:
        """addMacro(function, name, [description], [shortcutKey], [iconFile]) - adds a macro to the Tools menu and Macro toolbar"""

    def clearMacro(self, name: str | Callable[[], object], /) -> None:
        """clearMacro(name)- removes a macro"""

    def clearMacros(self, /) -> None:
        """clearMacros() - clears all macros"""

    def openWorkspace(self, filename: str, /) -> None:
        """openWorkspace(filename) - opens a workspace file"""

    def closeWorkspace(self, /) -> None:
        """closeWorkspace() - closes the workspace"""

    def saveWorkspace(self, /) -> None:
        """saveWorkspace() - saves the workspace"""

    def loadUI(self, filename: str, /) -> Any:
        """loadUI(filename) - load UI definition from file"""

    def createUI(self, className: str, name: str = "", /) -> Any:
        """createUI(class, [name]) - create new widget"""

    def dockUI(self, widget: Any, position: int = 1, /) -> None:
        """dockUI(widget, [position]) - dock a widget"""

    def createTimer(self, name: str = "", /) -> Any:
        """createTimer([name]) - create a new timer"""

    @property
    def state(self) -> int:
        """The current application state"""

    @property
    def currentProject(self) -> Project | None:
        """The currently active project [RW]"""

    @currentProject.setter
    def currentProject(self, value: Project) -> None: ...

    @property
    def projects(self) -> Projects | None:
        """A list of projects in the currently-open workspace [R]"""

    @property
    def editor(self) -> Editor:
        """The editor object [R]"""

    @property
    def outputWindow(self) -> OutputWindow:
        """The Python output window [R]"""

    @property
    def onCurrentProjectChanged(self) -> Callable[[], object] | None:
        """Event handler called when current project changes [RW]"""

    @onCurrentProjectChanged.setter
    def onCurrentProjectChanged(self, value: Callable[[], object] | None) -> None: ...

    @property
    def onWorkspaceLoaded(self) -> Callable[[], object] | None:
        """Event handler called after workspace loaded successfully[RW]"""

    @onWorkspaceLoaded.setter
    def onWorkspaceLoaded(self, value: Callable[[], object] | None) -> None: ...


class OutputWindow:
    """UI element for displaying name/values pairs"""

    def show(self, /) -> None:
        """show() - Shows the python output window"""

    def hide(self, /) -> None:
        """hide() - Hides the python output window"""

    def clear(self, /) -> None:
        """clear() - Clears the python output window"""

    def clearProperty(self, propertyName: str, /) -> None:
        """clearProperty(propertyName) - Removes the property value 'proopetyName' from the Output Window"""

    def __getitem__(self, name: str, /) -> str: ...
    def __setitem__(self, name: str, value: str, /) -> None: ...


class Editor:
    """Represents a the source editor, and provides access to Text Documents"""

    def openDocument(self, filename: str, /) -> None:
        """openDocument(filename) - Opens document with path 'filename'"""

    def newDocument(self, filename: str, addToProject: int = 0, /) -> None:
        """newDocument(filename,[addToProject]) - Creates a new document with name 'filename'"""

    def saveAll(self, modifiedOnly: int = 1, /) -> None:
        """saveAll([modifiedOnly]) - Saves all open documents"""

    @property
    def documents(self) -> list[TextDocument]:
        """List fo currently open documents [R]"""

    @property
    def currentDocument(self) -> TextDocument | None:
        """TexDocument object representing the currently active documents [R]"""


class TextDocument:
    """Represents a single open text document"""

    def activate(self, /) -> None:
        """activate() - Makes the document the currently active document in the work place."""

    def save(self, /) -> None:
        """save() - Saves the last editing operation"""

    def saveAs(self, filename: str, /) -> None:
        """saveAs(filename) - Saves document with name 'filename'"""

    def undo(self, /) -> None:
        """undo() - Undoes the last editing operation"""

    def redo(self, /) -> None:
        """redo() - Redoes the last editing operation"""

    def cut(self, /) -> None:
        """cut() - Cuts the selected text to the clipboard."""

    def copy(self, /) -> None:
        """copy() - Copies the selected text to the clipboard"""

    def paste(self, /) -> None:
        """paste() - Pastes the text on the clipboard at the current cursor position"""

    def gotoLine(self, line: int, /) -> None:
        """gotoLine(line) - Moves the cursor to 'line'"""

    def insert(self, text: str, /) -> None:
        """instert(text) - inserts 'text' at the cursor"""

    def moveCursor(self, direction: int, select: int = 0, /) -> None:
        """moveCursor(CursorDirection,[SelectText]) - Moves cursor in 'CursorDirection' and optionally selects text"""

    def selectAll(self, /) -> None:
        """SelectAll() - selects the entire document"""

    @property
    def title(self) -> str:
        """Returns the title of the document. [R]"""

    @property
    def path(self) -> str:
        """Returns full path to the document [R]"""

    @property
    def isModified(self) -> int:
        """Returns 1 if document is modified [R]"""

    @property
    def selectedText(self) -> str:
        """Returns the currently selected text. [R]"""


class Project:
    """Represents an Varnel project"""

    def addFile(self, filename: str, /) -> None:
        """AddFile(filename) - adds the file 'filename' to the project"""

    def build(self, rebuild: int = 0, /) -> None:
        """build() - Builds the current configuration of the project"""

    def save(self, /) -> None:
        """save() - Saves the current project"""

    @property
    def name(self) -> str:
        """Returns the name of the project [R]"""

    @property
    def basePath(self) -> str:
        """Returns the base path of the project [R]"""

    @property
    def properties(self) -> ProjectProperties:
        """Returns the ProjectProperties object [R]"""

    @property
    def folders(self) -> list[ProjectFolder]:
        """Returns list of ProjectFolder objects [R]"""

    @property
    def files(self) -> list[ProjectFile]:
        """Returns a collection of files in the root of the project [R]"""

    @property
    def configurations(self) -> list[str]:
        """Returns a list of configuration names [R]"""

    @property
    def currentConfiguration(self) -> str:
        """Returns current project configuration name [R]"""

    @property
    def isModified(self) -> int:
        """Returns 1 if project has been modified [R]"""


class ProjectFolder:
    """Represents a project folder"""

    def test(self, text: str, /) -> str:
        """test method"""

    @property
    def name(self) -> str:
        """Returns the name of the file [R]"""

    @property
    def extensions(self) -> list[str]:
        """List of extensions associated with this folder [R]"""

    @property
    def folders(self) -> list[ProjectFolder]:
        """Returns a list of folders in the folder [R]"""

    @property
    def files(self) -> list[ProjectFile]:
        """Returns a list of files in the folder [R]"""


class ProjectFile:
    """Represents a file contained in the project"""

    def test(self, text: str, /) -> str:
        """test method"""

    @property
    def name(self) -> str:
        """Returns the name of the file [R]"""

    @property
    def path(self) -> str:
        """Returns the relative path of the file [R]"""

    @property
    def properties(self) -> ProjectProperties:
        """Returns the the peroperties of the page [R]"""


class ProjectProperties:
    """Represents an object container for file and folder properties"""

    def property(self, propertyName: str, configName: str, /) -> str:
        """property(propertName,configName) - Get the value of the specified property"""

    def setProperty(self, propertyName: str, value: str, configName: str, /) -> None:
        """setProperty(propertyName,value,configName) - Set the value of a property"""

    def propertyKeys(self, configName: str, /) -> list[str]:
        """propertyKeys(configName) - Returns a list of property key names for configuration 'configName'"""


class Projects:  # not in the module: objects come from app.projects
    """Documentation for Projects Object"""

    def __len__(self) -> int: ...
    def __getitem__(self, key: int | str, /) -> Project: ...
    def __iter__(self) -> ProjectsIterator: ...


class ProjectsIterator:  # not in the module: objects come from app.projects
    def next(self, /) -> Project: ...
    def __iter__(self) -> ProjectsIterator: ...
    def __next__(self) -> Project: ...
