"""Makes a project of a folder, and builds it in the program: varnel-run build_folder.py FOLDER PROJECT_DIRECTORY [TARGET]

The target is a program or library by its name, by default the first one. Prints what could not be taken over, and the
output of the build if it fails.
"""
import pathlib
import sys
import time
import xml.etree.ElementTree as ElementTree

sys.path.insert(0, str(pathlib.Path(__file__).parents[2] / "templates/existing/folder"))
from folderproject import Inspection, describe  # noqa: E402
from varnel import app  # noqa: E402

BUILDING = 1  # a value of app.state
TIME_LIMIT = 600  # seconds


def main(folder, directory, name=""):
    target_directory = pathlib.Path(directory)
    target_directory.mkdir(parents=True)
    inspection = Inspection(folder, directory, ask=True)
    target = next((each for each in inspection.targets if name in ("", each.name)), None)
    project = inspection.create("project", target)
    print(f"{inspection.origin or 'no build system'}: {describe(target) if target else 'all sources'}")
    for each in inspection.problems:
        print(f"    {each}")
    workspace = target_directory / "project.vnw"
    workspace.write_text('<workspace>\n <project path="project.vnp"/>\n</workspace>\n', encoding="utf-8")
    app.openWorkspace(str(workspace))
    built = build(target_directory, output_of(project))
    print("    built without errors" if built else "    NOT BUILT")
    return 0 if built else 1


def output_of(project):
    properties = ElementTree.parse(project).findall(".//configuration[@name='Debug']/property")
    options = {each.get("key"): each.text for each in properties}
    name = options.get("buildOutputName", "project")
    return name if options.get("buildTargetType") != "library" else f"lib{name.removeprefix('lib')}.a"


def build(directory, output):
    app.currentProject.build()
    end = time.monotonic() + TIME_LIMIT
    while app.state == BUILDING and time.monotonic() < end:
        app.processEvents(50)
    return any((directory / "build/Debug").glob(f"{output}*"))


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
