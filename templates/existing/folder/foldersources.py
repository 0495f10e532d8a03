"""The sources, headers and linker scripts in a folder."""
import os
import re

from commandlines import SOURCES

HEADERS = (".h", ".hh", ".hpp", ".hxx")
SCRIPTS = (".ld",)
MOST_ENTRIES = 20000  # of all directories
MOST_FILES = 2000
LARGEST_SEARCH = 10_000_000  # bytes
# Two patterns, and the second one is bounded: a search takes a time that grows with the size of the file only.
_NAME = re.compile(rb"^[\w \t]*\bmain\s*\(", re.MULTILINE)
_PARAMETERS = re.compile(rb"[^;{}]{0,500}\)\s{0,200}\{")


class FolderFiles:
    """Absolute paths, sorted. Hidden directories, links and trees of generated files are left out."""

    def __init__(self, folder, left_out=()):
        self.sources, self.headers, self.scripts = [], [], []
        self.is_whole = True  # False if there are more files than are searched
        entries, waiting = 0, [os.path.abspath(folder)]
        while waiting:
            current = waiting.pop(0)
            for entry in _entries(current):
                entries += 1
                if entries > MOST_ENTRIES or len(self.sources) + len(self.headers) >= MOST_FILES:
                    self.is_whole = False
                    waiting = []
                    break
                if entry.is_dir(follow_symlinks=False):
                    if entry.path not in left_out and not _is_generated(entry.path):
                        waiting.append(entry.path)
                elif entry.is_file(follow_symlinks=False):
                    self._take(entry.path)
        for each in (self.sources, self.headers, self.scripts):
            each.sort()

    def _take(self, path):
        suffix = os.path.splitext(path)[1]
        if suffix in SOURCES or suffix.lower() in SOURCES:
            self.sources.append(path)
        elif suffix.lower() in HEADERS:
            self.headers.append(path)
        elif suffix.lower() in SCRIPTS:
            self.scripts.append(path)


def _entries(directory):
    try:
        with os.scandir(directory) as found:
            return [each for each in found if not each.name.startswith(".")]
    except OSError:
        return []


def _is_generated(directory):
    """Whether another build system generates files there, by its marks."""
    return any(os.path.exists(os.path.join(directory, name)) for name in ("CMakeCache.txt", "build.ninja"))


def has_main(path):
    """Whether a function `main` is defined in a source."""
    try:
        with open(path, "rb") as file:
            text = file.read(LARGEST_SEARCH)
    except OSError:
        return False
    return any(_PARAMETERS.match(text, found.end()) for found in _NAME.finditer(text))
