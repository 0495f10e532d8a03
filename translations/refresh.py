"""refresh [--check]: brings the files varnel_*.ts up to date with the texts of the program, and lists those without a
translation, to be entered in the files by hand or with Linguist.

With --check it changes nothing, and fails if a file is out of date or if lupdate has something to report.
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

import producttexts

HERE = pathlib.Path(__file__).resolve().parent
# Of scripts that are part of the product: the loader of forms translates them by their class.
FORMS = ["python", "templates/embedded/device/device.ui", "templates/existing/folder/fromfolder.ui",
         "templates/existing/folder/target.ui"]
SOURCES = [HERE.parent / name for name in ("branding", "plugins", "source", *FORMS)]


def lupdate():
    return shutil.which("lupdate", path="/usr/lib/qt6/bin") or shutil.which("lupdate") or sys.exit(
        "refresh: there is no lupdate; install the package qt6-l10n-tools")


def update(files):
    """Updates the files. Returns what lupdate reports."""
    with tempfile.TemporaryDirectory() as folder:
        products = pathlib.Path(folder) / "producttexts.h"
        products.write_text("\n".join(producttexts.lines()) + "\n", encoding="utf-8")
        done = subprocess.run([lupdate(), "-silent", "-no-obsolete", "-locations", "none", *SOURCES, products, "-ts", *files],
                              capture_output=True, text=True, check=True)
    return done.stdout + done.stderr


def entries(file):
    """Each text of a file: its context, source and comment, with the element of its translation."""
    return [((context.findtext("name"), message.findtext("source"), message.findtext("comment") or ""),
             message.find("translation"))
            for context in ElementTree.parse(file).getroot().iterfind("context") for message in context.iterfind("message")]


def untranslated(file):
    return [key for key, translation in entries(file) if translation.get("type") == "unfinished"]


def difference(file, current):
    old, new = ({key for key, _ in entries(each)} for each in (file, current))
    return [f"{file.name} lacks {key}" for key in sorted(new - old)] + [f"nothing uses {key}" for key in sorted(old - new)]


def check(files):
    with tempfile.TemporaryDirectory() as folder:
        copies = [pathlib.Path(shutil.copy(file, folder)) for file in files]
        problems = update(copies).splitlines()
        for file, copy in zip(files, copies):
            problems += difference(file, copy)
    return problems


def main():
    files = sorted(HERE.glob("varnel_*.ts"))
    if "--check" in sys.argv[1:]:
        problems = check(files)
        print("\n".join(problems))
        sys.exit(f"refresh: {len(problems)} problems; run translations/refresh" if problems else 0)
    print(update(files), end="")
    for file in files:
        for context, source, comment in untranslated(file):
            print(f"{file.name}: {context}{f' ({comment})' if comment else ''}: {source!r}")


if __name__ == "__main__":
    main()
