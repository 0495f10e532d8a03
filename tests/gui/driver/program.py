"""Starts Varnel on its own screen, with its own home directory and automation port."""
import os
import pathlib
import socket
import subprocess
import tempfile

from .client import Client, wait_until
from .screen import Screen, end_process

BUILT_PROGRAM = pathlib.Path(__file__).parents[3] / "build/stage/bin/varnel"
DEFAULT_PROGRAM = BUILT_PROGRAM if BUILT_PROGRAM.exists() else "varnel"


class Program:
    """A running program and a client connected to it.

    `settings` are keys of its settings file by section: {"Startup": {"DisableSplashScreen": 1}}. By default the start
    page is not shown, and only this computer can connect. The environment variable VARNEL_PROGRAM is the path of the
    executable; the default is that of the build directory, or the installed one. close() ends only processes that were
    started here. With `home`, the home directory of a program that has ended, the new program uses its settings and
    session; close() does not delete such a directory.
    """

    def __init__(self, *arguments, settings=None, program=None, screen=None, environment=None, home=None,
                 timeout=60.0):
        self._own_screen = None if screen else Screen()
        self.screen = screen or self._own_screen
        self._own_home = None if home else tempfile.TemporaryDirectory(prefix="varnel-gui.")
        self.home = pathlib.Path(home or self._own_home.name)
        self.log_file = self.home / "log"
        self.client = None
        self.process = None
        try:
            self._start(program or os.environ.get("VARNEL_PROGRAM") or DEFAULT_PROGRAM, arguments, settings or {},
                        environment or {}, timeout)
        except BaseException:
            self.close()
            raise

    def log(self):
        """The output of the program: warnings and the debug log."""
        return self.log_file.read_text(encoding="utf-8", errors="replace")

    def settings_file(self):
        return self.home / ".config/Ostrand Labs/Varnel/1.0.ini"

    def wait(self, timeout=60.0):
        """Waits until the program has ended. Returns its exit code."""
        return self.process.wait(timeout)

    def close(self):
        if self.client:
            self.client.close()
        if self.process:
            end_process(self.process)
        if self._own_screen:
            self._own_screen.close()
        if self._own_home:
            self._own_home.cleanup()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def _start(self, program, arguments, settings, environment, timeout):
        self._write_settings(settings)
        with _reserved_port() as reservation:
            port = self.port = reservation.getsockname()[1]
            with open(self.log_file, "wb") as log:
                self.process = subprocess.Popen([program, "-r", str(port), *map(str, arguments)], stderr=log,
                                                stdout=log, stdin=subprocess.DEVNULL, cwd=self.home,
                                                env=self._environment(environment))
            self.client = wait_until(lambda: self._connect(port, timeout), "the program to listen", timeout)

    def _connect(self, port, timeout):
        if self.process.poll() is not None:
            raise RuntimeError(f"the program ended with {self.process.returncode}:\n{self.log()}")
        return Client(port, timeout=timeout)

    def _write_settings(self, settings):
        if self.settings_file().exists():
            return
        sections = {name: dict(keys) for name, keys in settings.items()}
        startup = sections.setdefault("Startup", {})
        startup.setdefault("AutomationAddress", "127.0.0.1")
        startup.setdefault("StartPage", 0)  # only what a test opens is open
        self.settings_file().parent.mkdir(parents=True, exist_ok=True)
        with open(self.settings_file(), "w", encoding="utf-8") as file:
            for section, keys in sections.items():
                file.write(f"[{section}]\n" + "".join(f"{key}={value}\n" for key, value in keys.items()))

    def _environment(self, more):
        runtime = self.home / "run"
        runtime.mkdir(mode=0o700, exist_ok=True)
        kept = {name: value for name, value in os.environ.items()
                if not name.startswith(("XDG_", "QT_")) and name not in ("WAYLAND_DISPLAY", "XAUTHORITY")}
        return {**kept, "DISPLAY": self.screen.display, "QT_QPA_PLATFORM": "xcb", "HOME": str(self.home),
                "XDG_RUNTIME_DIR": str(runtime), "LC_ALL": "C.UTF-8", **more}


def _reserved_port():
    """A bound socket: the system does not assign its port to other programs, but Varnel can listen on it."""
    reservation = socket.socket()
    reservation.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    reservation.bind(("127.0.0.1", 0))
    return reservation
