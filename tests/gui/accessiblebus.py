"""A desktop bus of its own with the registry of accessible objects, and what a screen reader reads from it."""
import contextlib
import os
import subprocess
import tempfile

# The roles of what a user operates or reads: each needs a name.
CONTROLS = {
    "push button", "toggle button", "check box", "radio button", "combo box", "text", "password text", "entry", "spin button",
    "slider", "list", "list box", "tree", "tree table", "table", "page tab", "menu", "menu item", "check menu item",
    "radio menu item", "hotkey field", "terminal", "editbar",
}
WINDOWS = {"frame", "dialog", "alert", "file chooser", "color chooser", "window"}
# Parts of the toolkit's controls: the control around them has the name.
INNER_PARENTS = {"combo box", "spin button"}
NAMED_BY_ITS_PARTS = "page tab list"
DEEPEST = 60
MOST_ROWS = 300


class AccessibleBus:
    """While it is open, programs that are started with its environment are seen by the registry."""

    def __init__(self):
        self._runtime = tempfile.TemporaryDirectory(prefix="varnel-bus.")
        os.environ["XDG_RUNTIME_DIR"] = self._runtime.name
        self._bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address=1"], stdout=subprocess.PIPE, text=True,
                                     stderr=subprocess.DEVNULL)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = self._bus.stdout.readline().strip()
        import gi  # reads the address
        gi.require_version("Atspi", "2.0")
        from gi.repository import Atspi, GLib
        self._atspi, self._error = Atspi, GLib.Error
        Atspi.init()

    environment = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def close(self):
        self._bus.terminate()
        self._bus.wait()
        self._bus.stdout.close()
        self._runtime.cleanup()

    def application(self, pid):
        """The accessible object of a process, None if it is not registered yet."""
        return next((child for child in self.children(self._atspi.get_desktop(0)) if child.get_process_id() == pid), None)

    def children(self, accessible):
        """Those that exist: a window can close meanwhile."""
        result = []
        with contextlib.suppress(self._error):
            accessible.clear_cache()
            for i in range(min(accessible.get_child_count(), MOST_ROWS)):
                result.append(accessible.get_child_at_index(i))
        return [child for child in result if child]

    def has_state(self, accessible, state):
        with contextlib.suppress(self._error):
            return accessible.get_state_set().contains(state)
        return False

    def is_showing(self, accessible):
        return self.has_state(accessible, self._atspi.StateType.SHOWING)

    def titles(self, application):
        """The titles of the windows of a program."""
        return [self.role_and_name(window)[1] for window in self.children(application) if self.is_showing(window)]

    def role_and_name(self, accessible):
        with contextlib.suppress(self._error):
            return accessible.get_role_name(), accessible.get_name() or ""
        return "vanished", "vanished"

    def walk(self, accessible, path=()):
        """Each showing object below one: the roles and names of those around it and its own, and whether it takes keys.

        Rows of tables count as their table.
        """
        for child in self.children(accessible):
            if not self.is_showing(child) or len(path) > DEEPEST:
                continue
            here = (*path, self.role_and_name(child))
            yield here, self.has_state(child, self._atspi.StateType.FOCUSABLE)
            if here[-1][0] not in ("tree", "tree table", "table"):
                yield from self.walk(child, here)

    def unnamed(self, accessible):
        """The controls without a name, and what else takes keys, each as the way to it."""
        result = []
        for way, takes_keys in self.walk(accessible):
            role, name = way[-1]
            parent = way[-2][0] if len(way) > 1 else ""
            is_window = len(way) == 1 and role in WINDOWS
            if role == NAMED_BY_ITS_PARTS:
                continue
            if (role in CONTROLS or is_window or takes_keys) and not name.strip() and parent not in INNER_PARENTS:
                result.append(" > ".join(f"{role} '{name}'" for role, name in way))
        return result

    def names(self, accessible):
        return [way[-1] for way, _ in self.walk(accessible)]
