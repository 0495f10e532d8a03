"""The module "varnelreplay" of the embedded Python, for editors and type checkers: recorded scripts import it."""

replay: Replay


class Replay:
    """Carries out what the recorder has written"""

    def trigger(self, name: str, /) -> None:
        """trigger(name) - performs a command; RuntimeError if it is disabled"""

    def setChecked(self, name: str, checked: bool, /) -> None:
        """setChecked(name, checked) - switches a command on or off"""

    def waitFor(self, state: str, seconds: float = 60, /) -> None:
        """waitFor(state, [seconds]) - waits for a state after the last command; TimeoutError after 60 seconds"""

    def useWorkspace(self, path: str, /) -> None:
        """useWorkspace(path) - opens a workspace unless it is open"""

    def path(self, relative: str, /) -> str:
        """path(relative) - a path in the folder of the open workspace"""

    def setWatches(self, project: str, expressions: list[str], /) -> None:
        """setWatches(project, expressions) - replaces the watches of a project"""
