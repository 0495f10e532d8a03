"""The module "varnel" of the embedded Python, for editors and type checkers: scripts import it, this file is not run."""

from collections.abc import Callable
from typing import Any, overload

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

    def loadUI(self, filename: str, /) -> _Object:
        """loadUI(filename) - load UI definition from file"""

    def createUI(self, className: str, name: str = "", /) -> _Object:
        """createUI(class, [name]) - create new widget"""

    def dockUI(self, widget: _Object, position: int = 1, /) -> None:
        """dockUI(widget, [position]) - dock a widget"""

    def createTimer(self, name: str = "", /) -> _Object:
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
    def projects(self) -> _Projects | None:
        """A list of projects in the currently-open workspace [R]"""

    @property
    def editor(self) -> Editor:
        """The editor object [R]"""

    @property
    def outputWindow(self) -> OutputWindow:
        """The Python output window [R]"""

    @property
    def debugger(self) -> Debugger | None:
        """The debugger object. This is 'None' if no workspace is loaded [R]"""

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


class Debugger:
    """An object providing access to the Varnel debugger"""

    def stop(self, /) -> None:
        """Stops the debugger."""

    def restart(self, /) -> None:
        """Restarts the debugger."""

    def attach(self, /) -> None:
        """Attaches the debugger. Takes Varnel into debugging mode."""

    @property
    def uiUpdatesEnabled(self) -> int:
        """Set to 0 to disable UI updates, 1 to enable UI updates [RW] """

    @uiUpdatesEnabled.setter
    def uiUpdatesEnabled(self, value: int, /) -> None: ...

    @property
    def currentProcessor(self) -> Processor | None:
        """Processor object representing the current active processor [R]"""

    @property
    def processors(self) -> _Processors:
        """Collection of 'Processor' objects under control of the debugger [R]"""

    @property
    def onRestart(self) -> Callable[[], object] | None:
        """Event handler called when the debugger is restarted [RW]"""

    @onRestart.setter
    def onRestart(self, value: Callable[[], object] | None, /) -> None: ...

    @property
    def onAttach(self) -> Callable[[], object] | None:
        """Event handler called when the debugger is attched [RW]"""

    @onAttach.setter
    def onAttach(self, value: Callable[[], object] | None, /) -> None: ...

    @property
    def onPreAttach(self) -> Callable[[], object] | None:
        """Event handler called before the debugger is attached, but after the user has selected Debug/Attach [RW]"""

    @onPreAttach.setter
    def onPreAttach(self, value: Callable[[], object] | None, /) -> None: ...

    @property
    def onBreakpointHit(self) -> Callable[[], object] | None:
        """Event handler called after a breakpoint is hit [RW]"""

    @onBreakpointHit.setter
    def onBreakpointHit(self, value: Callable[[], object] | None, /) -> None: ...

    @property
    def onStopped(self) -> Callable[[], object] | None:
        """Event handler called when the debugger is stopped [RW]"""

    @onStopped.setter
    def onStopped(self, value: Callable[[], object] | None, /) -> None: ...


class Processor:
    """Provides access to an individual processor associated with an Varnel project"""

    def evaluate(self, expression: str, /) -> str:
        """evaluate(expression) - evaluetes 'expression' returning the result as a string"""

    def run(self, /) -> None:
        """run() - Set processor running"""

    def runTo(self, filename: str, lineNumber: int, /) -> None:
        """runTo(filename, lineNumber) - Run the processor to 'lineNumber' in 'filename'"""

    def pause(self, /) -> None:
        """pause() - Pauses the processor."""

    def stepInto(self, filename: str, /) -> None:
        """stepInto(filename) - Executes a 'Step Into' operation into 'filename'"""

    def stepOver(self, filename: str, /) -> None:
        """stepOver(filename) - Executes a 'Step Over' operation in 'filename'"""

    def wakeUp(self, /) -> None:
        """wakeup() - Triggers the processor to wake up"""

    def setBreakpoint(self, filename: str, lineNumber: int, /) -> None:
        """setBreakpont(filename,lineNumber) - Sets a breakpoint at line 'lineNumber' in file 'filename'"""

    def setBreakpointAtAddress(self, address: int, /) -> None:
        """setBreakpointAtAddress(address) - Sets a breakpoint at the program address 'address'"""

    def setBreakpointAtSymbol(self, symbolName: str, /) -> None:
        """setBreakpointAtSymbol(symbolName) - Sets a breakpoint at the symbol 'symbolName'"""

    def disableBreakpoint(self, filename: str, lineNumber: int, /) -> None:
        """disableBreakpoint(filename, lineNumber) - Disables the breakpoint at 'lineNumber' in 'filename'"""

    def removeBreakpoint(self, filename: str, lineNumber: int, /) -> None:
        """removeBreakpoint(filename, lineNumber) - Remove the brakepoint at line 'lineNumber' and in file 'filename'"""

    def getSymbolAddress(self, symbolName: str, /) -> int:
        """getSymbolAddress(symbolName) - Returns the address corresponding to the given symbol."""

    def getSourceLines(self, address: int, /) -> list[tuple[str, int]]:
        """getSourceLines(address) - Returns a list of source files and lines of program address 'address'"""

    def getSourceAddress(self, filename: str, line: int, /) -> int:
        """getSourceAddress(filename,line) - Returns program address in 'filename' at 'line'"""

    def getSymbol(self, address: int, /) -> str:
        """getSymbol(address) - Returns the symbol corresponding to the given address"""

    @property
    def processorStatus(self) -> int:
        """Returns the current processor status [R]"""

    @property
    def programStatus(self) -> int:
        """Returns the current program status [R]"""

    @property
    def currentProgramLocation(self) -> tuple[str, int]:
        """Returns a tuple containing the current program location [R]"""

    @property
    def registers(self) -> Registers | None:
        """Returns the registers object"""

    @property
    def peripherals(self) -> Peripherals | None:
        """Returns the peripherals object"""

    @property
    def memory(self) -> Memory | None:
        """Returns the memory object"""

    @property
    def extension(self) -> Any:
        """Plugin specific"""

    @property
    def breakpoints(self) -> list[tuple[str, int, int]]:
        """Returns a list of tuples - one for each breakpoint [R]"""

    @property
    def project(self) -> Project:
        """Returns the project associated with the processor"""


class Registers:
    """Provides access to processor registers"""

    @property
    def keys(self) -> list[str]:
        """Returns a list of register names [R]"""

    def __len__(self, /) -> int: ...

    def __getitem__(self, name: str, /) -> int: ...

    def __setitem__(self, name: str, value: int, /) -> None: ...


class Memory:
    """Provides access to memory"""

    def disassemble(self, address: int, /) -> str:
        """disassemble(address) - Disassemble specified 'address'"""

    @property
    def verify(self) -> int:
        """Set to 1 to enable varification of memory reads and writes [RW]"""

    @verify.setter
    def verify(self, value: int, /) -> None: ...

    @property
    def currentMode(self) -> str:
        """The currently active mode for accessing memory [RW]"""

    @currentMode.setter
    def currentMode(self, value: str, /) -> None: ...

    @property
    def currentRegion(self) -> str:
        """The currently active memory region [RW]"""

    @currentRegion.setter
    def currentRegion(self, value: str, /) -> None: ...

    @property
    def highAddress(self) -> int:
        """High address of current region [R]"""

    @property
    def lowAddress(self) -> int:
        """Low address of current region [R]"""

    @property
    def modes(self) -> list[str]:
        """List of available memory modes for accessing memory [R]"""

    @property
    def regions(self) -> list[str]:
        """List of available memory regions [R]"""

    def __len__(self, /) -> int: ...

    @overload
    def __getitem__(self, address: int, /) -> int: ...

    @overload
    def __getitem__(self, addresses: slice, /) -> list[int]: ...

    @overload
    def __setitem__(self, address: int, value: int, /) -> None: ...

    @overload
    def __setitem__(self, addresses: slice, values: list[int], /) -> None: ...


class Peripherals:
    """Provides access to peripheral registers"""

    @property
    def keys(self) -> list[str]:
        """Returns list of peripheral names [R]"""

    def __len__(self, /) -> int: ...

    def __getitem__(self, name: str, /) -> Peripheral: ...


class Peripheral:
    """Provides access to a single peripheral and its registers"""

    @property
    def keys(self) -> list[str]:
        """Returns list of peripheral register names [R]"""

    def __len__(self, /) -> int: ...

    def __getitem__(self, name: str, /) -> int: ...

    def __setitem__(self, name: str, value: int, /) -> None: ...


# Types that the module does not offer by name. Their objects come from the expressions that are named here.


class _Projects:  # app.projects
    """Documentation for Projects Object"""

    def __len__(self, /) -> int: ...

    def __getitem__(self, key: int | str, /) -> Project: ...

    def __iter__(self, /) -> _ProjectsIterator: ...


class _ProjectsIterator:  # iter(app.projects)
    def next(self, /) -> Project: ...

    def __iter__(self, /) -> _ProjectsIterator: ...

    def __next__(self, /) -> Project: ...


class _Processors:  # app.debugger.processors
    """Collection of processors"""

    def __len__(self, /) -> int: ...

    def __getitem__(self, key: int | str, /) -> Processor: ...

    def __iter__(self, /) -> _ProcessorsIterator: ...


class _ProcessorsIterator:  # iter(app.debugger.processors)
    def next(self, /) -> Processor: ...

    def __iter__(self, /) -> _ProcessorsIterator: ...

    def __next__(self, /) -> Processor: ...


class _Object:  # app.loadUI(), app.createUI(), app.createTimer(), and the objects in them
    """A widget or another object of the toolkit. Its other attributes are its child objects, its properties, its slots as
    methods, and the handlers of its signals, "onClicked"."""

    @property
    def children(self) -> list[_Object]: ...

    @property
    def properties(self) -> list[str]: ...

    @property
    def signals(self) -> list[str]: ...

    @property
    def slots(self) -> list[str]: ...

    def __getattr__(self, name: str, /) -> Any: ...

    def __setattr__(self, name: str, value: str | float | Callable[..., object] | None, /) -> None: ...


class _Slot:  # a method of such an object
    def __call__(self, *arguments: str | float | _Object) -> Any: ...
