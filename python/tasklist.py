"""An example of a docked panel: the tasks of a real-time operating system.

To try it, enter "import tasklist" in the Command Window. The panel is in tasklist.ui. What it knows of a kernel is in the
data file tasklist.json beside this one: names of variables and members of structures, as C expressions. To add a kernel,
copy the file into the folder "python" of your Varnel data directory and add an entry there:

    name     of the kernel, as it is shown
    detect   an expression that only a program with this kernel can evaluate
    first    the first task; "{i}" stands for its number if the tasks are in a table
    count    how many tasks a table has; absent for a list
    next     the next task in a list, in which "{task}" stands for the one before; the list ends at 0 or at the first task
    current  the task that runs; optional
    columns  titles, and expressions in which "{task}" stands for the task, or an object with "value" and "names"
"""

import json
import pathlib

from panels import NoTarget, number, paused_processor, show, table, text
from varnel import app
from varneltexts import tr

MOST_TASKS = 256  # a list that is longer is broken


def description_file():
    """The user's file, found like a module, or the one beside this file."""
    import sys
    for directory in sys.path:
        file = pathlib.Path(directory, "tasklist.json")
        if file.is_file():
            return file
    return pathlib.Path(__file__).with_name("tasklist.json")


def works(processor, expression):
    try:
        processor.evaluate(expression)
        return True
    except ValueError:
        return False


def tasks_of(processor, kernel):
    """The expressions of all tasks, as addresses with the type of a task."""
    kind = kernel["type"]
    if "count" in kernel:
        count = min(number(processor, kernel["count"]), MOST_TASKS)
        return ["((%s)%d)" % (kind, number(processor, kernel["first"].format(i=i))) for i in range(count)]
    tasks, address = [], number(processor, kernel["first"])
    seen = set()
    while address and address not in seen and len(tasks) < MOST_TASKS:
        seen.add(address)
        tasks.append("((%s)%d)" % (kind, address))
        address = number(processor, kernel["next"].format(task=tasks[-1]))
    return tasks


def cell(processor, task, column):
    if isinstance(column, str):
        return text(processor, column.format(task=task))
    value = str(number(processor, column["value"].format(task=task)))
    return column["names"].get(value, value)


class TaskList:
    def __init__(self):
        with open(description_file(), encoding="utf-8") as file:
            self.kernels = json.load(file)["kernels"]
        self.panel = app.loadUI("tasklist.ui")
        self.panel.refreshButton.onClicked = self.refresh
        app.dockUI(self.panel, 1)
        self.refresh(None)

    def refresh(self, button):
        self.panel.kernelLabel.text = ""
        show(self.panel, self.panel.taskView, self.tasks)

    def tasks(self):
        processor = paused_processor()
        kernel = next((each for each in self.kernels if works(processor, each["detect"])), None)
        if kernel is None:
            raise NoTarget(tr("The program has none of these kernels: {}").format(
                ", ".join(each["name"] for each in self.kernels)))
        self.panel.kernelLabel.text = kernel["name"]
        current = number(processor, kernel["current"]) if "current" in kernel else 0
        rows = []
        for task in tasks_of(processor, kernel):
            mark = "▶" if current and number(processor, task) == current else ""
            rows.append([mark] + [cell(processor, task, column) for column in kernel["columns"].values()])
        return table([""] + list(kernel["columns"]), rows)


taskList = TaskList()
