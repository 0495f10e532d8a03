"""Scripts that run in the whole program without a display, by `varnel-run`."""
import os
import pathlib
import signal
import subprocess
import tempfile
import time
import unittest
import unittest.mock

from debugging import BUILD_TIME, copy_of_examples, line_of
from driver.program import DEFAULT_PROGRAM

PROGRAM = pathlib.Path(os.environ.get("VARNEL_PROGRAM") or DEFAULT_PROGRAM).with_name("varnel-run")
BOARD = pathlib.Path(__file__).parents[1] / "plugins/gdb/programs/board.svd"

# What the debugger scripts begin with.
BEGINNING = """
import pathlib, sys, time
from varnel import app
examples = pathlib.Path(sys.argv[1])
def wait(condition, timeout=120):
    end = time.monotonic() + timeout
    while not condition():
        assert time.monotonic() < end, condition
        app.processEvents(50)
def build():
    app.currentProject.build(0)
    wait(lambda: app.state == 0, 300)
"""


class ScriptTest(unittest.TestCase):
    def setUp(self):
        self.directory = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory(prefix="varnel-script.")))

    def write(self, text):
        file = self.directory / "script.py"
        file.write_text(text, encoding="utf-8")
        return file

    def start(self, *arguments, **options):
        environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "QT_QPA_PLATFORM")}
        return subprocess.Popen([PROGRAM, *map(str, arguments)], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                stdin=subprocess.DEVNULL, cwd=self.directory, env=environment, text=True, **options)

    def run_program(self, *arguments, timeout=BUILD_TIME):
        process = self.start(*arguments)
        try:
            output, errors = process.communicate(timeout=timeout)
        finally:
            process.kill()
        return process.returncode, output, errors

    def run_script(self, text, *arguments):
        return self.run_program(self.write(text), *arguments)


class RunTest(ScriptTest):
    def test_exit_codes(self):
        for statement, code in (("pass", 0), ("import sys; sys.exit()", 0), ("import sys; sys.exit(0)", 0),
                                ("import sys; sys.exit(7)", 7), ("import sys; sys.exit('broken')", 1),
                                ("raise ValueError('broken')", 1), ("x = (", 1), ("raise KeyboardInterrupt", 130)):
            with self.subTest(statement):
                found, output, errors = self.run_script(statement)
                self.assertEqual(found, code, errors)
                self.assertEqual(output, "")
                self.assertEqual("broken" in errors, "broken" in statement)

    def test_exception_has_a_traceback_on_the_error_stream(self):
        code, output, errors = self.run_script("def fail():\n    raise ValueError('wrong')\nfail()\n")
        self.assertEqual((code, output), (1, ""))
        self.assertIn(f"Traceback (most recent call last):\n  File \"{self.directory}/script.py\", line 3", errors)
        self.assertTrue(errors.endswith("ValueError: wrong\n"), errors)

    def test_output_and_arguments(self):
        code, output, errors = self.run_script(
            "import sys\nprint(sys.argv[1:], __name__, __file__ == sys.argv[0])\nprint('err', file=sys.stderr)\n",
            "one", "-platform", "-r", "ü")
        self.assertEqual((code, output), (0, "['one', '-platform', '-r', 'ü'] __main__ True\n"))
        self.assertEqual(errors, "err\n")

    def test_modules_beside_the_script_are_found(self):
        (self.directory / "helper.py").write_text("value = 5\n", encoding="utf-8")
        self.assertEqual(self.run_script("import helper\nprint(helper.value)\n")[:2], (0, "5\n"))

    def test_module_is_run_by_its_name(self):
        self.write("import sys\nprint(sys.argv[1:], __name__)\n")
        self.assertEqual(self.run_program("-m", "script", "a")[:2], (0, "['a'] __main__\n"))
        self.assertEqual(self.run_program("-m", "no_such_module")[0], 1)

    def test_script_that_does_not_exist(self):
        code, output, errors = self.run_program("none.py")
        self.assertEqual((code, output, errors), (2, "", "varnel-run: cannot open 'none.py'\n"))
        self.assertEqual(self.run_program()[0], 2)

    def test_help_and_version_are_printed(self):
        code, output, errors = self.run_program("--help")
        self.assertEqual((code, errors), (0, ""))
        self.assertIn("Usage: varnel-run SCRIPT [ARGUMENTS]\n", output)
        code, output, errors = self.run_program("--version")
        self.assertEqual((code, errors), (0, ""))
        self.assertRegex(output, r"^Varnel \d+\.\d+\n$")
        self.write("import sys\nprint(sys.argv[1:])\n")
        self.assertEqual(self.run_program("-m", "script", "--help")[:2], (0, "['--help']\n"))

    def test_dialogs_are_written_and_cancelled(self):
        code, output, errors = self.run_script(
            "from varnel import *\nprint(app.messageBox('Title', 'Really?', mbYes, mbNo), app.inputBox('Name', 'Who'))\n")
        self.assertEqual((code, output), (0, "4 None\n"))
        self.assertIn("Really?\n", errors)

    def test_unsaved_changes_do_not_ask(self):
        file = self.directory / "a.txt"
        file.write_text("a\n", encoding="utf-8")
        code, output, errors = self.run_script(
            "import sys\nfrom varnel import app\napp.editor.openDocument(sys.argv[1])\n"
            "app.editor.currentDocument.insert('changed')\nprint(app.editor.currentDocument.isModified)\n", file)
        self.assertEqual((code, output, errors), (0, "1\n", ""))
        self.assertEqual(file.read_text(encoding="utf-8"), "a\n")

    def test_failed_save_of_a_project_is_a_failure(self):
        (self.directory / "x.vnp").write_text("<project/>", encoding="utf-8")
        (self.directory / "x.vnw").write_text("<workspace><project path='x.vnp'/></workspace>", encoding="utf-8")
        script = """
import os, sys
from varnel import app
app.openWorkspace(sys.argv[1])
if sys.argv[2] == "broken":
    os.remove("x.vnp")
    os.mkdir("x.vnp")
app.currentProject.save()
timer = app.createTimer()
timer.interval = 1
timer.onTimeout = lambda timer: timer.stop()  # a handler runs before the script ends
timer.start(0)
app.processEvents(50)
print("on")
"""
        for state, expected in (("whole", 0), ("broken", 1)):
            code, output, errors = self.run_script(script, self.directory / "x.vnw", state)
            self.assertEqual((code, output), (expected, "on\n"), errors)
            self.assertEqual("OSError: Could not save project" in errors, state == "broken")

    def test_users_file_of_macros_is_preferred(self):
        file = self.directory / "data/Ostrand Labs/Varnel/python/macros.py"
        file.parent.mkdir(parents=True)
        script = "from varnel import app\napp.doAction('toolsMacroEdit')\nprint(app.editor.currentDocument.path)\n"
        with unittest.mock.patch.dict("os.environ", {"XDG_DATA_HOME": str(self.directory / "data")}):
            self.assertEqual(self.run_script(script)[:2], (0, str(PROGRAM.parents[1] / "python/macros.py") + "\n"))
            file.write_text("# mine\n", encoding="utf-8")
            self.assertEqual(self.run_script(script)[:2], (0, str(file) + "\n"))

    def test_waiting_uses_no_processor(self):
        code, output, errors = self.run_script(
            "import time\nfrom varnel import app\nbegin, used = time.monotonic(), time.process_time()\n"
            "for i in range(20): app.processEvents(50)\n"
            "print(time.monotonic() - begin >= 1, time.process_time() - used < 0.5)\n")
        self.assertEqual((code, output), (0, "True True\n"), errors)

    def test_signal_interrupts_a_wait(self):
        script = self.write("from varnel import app\nprint('started')\napp.processEvents(60000)\n")
        process = self.start(script)
        self.assertEqual(process.stdout.readline(), "started\n")
        process.send_signal(signal.SIGTERM)
        output, errors = process.communicate(timeout=30)
        self.assertEqual((process.returncode, output), (130, ""), errors)

    def test_signal_interrupts_the_script(self):
        script = self.write("import time\nprint('started')\ntry:\n    while True: time.sleep(0.01)\n"
                            "finally: print('cleaned up')\n")
        process = self.start(script)
        self.assertEqual(process.stdout.readline(), "started\n")
        process.send_signal(signal.SIGTERM)
        output, errors = process.communicate(timeout=60)
        self.assertEqual((process.returncode, output), (130, "cleaned up\n"), errors)


class ExampleTest(ScriptTest):
    """Scripts beside a copy of the examples."""

    def setUp(self):
        super().setUp()
        self.examples = copy_of_examples(self.directory)

    def check(self, text, *arguments):
        """Runs a script that ends with the line "done", and returns its other output."""
        code, output, errors = self.run_script(BEGINNING + text, self.examples, *arguments)
        self.assertEqual(code, 0, output + errors)
        self.assertEqual(output.splitlines()[-1:], ["done"])
        return output


class DebuggerTest(ExampleTest):
    def test_native_program(self):
        main = self.examples / "calculator/main.cpp"
        self.check("""
app.openWorkspace(str(examples / "calculator/calculator.vnw"))
build()
p = app.debugger.currentProcessor
line = int(sys.argv[2])
p.setBreakpoint(str(examples / "calculator/main.cpp"), line)
hits = []
app.debugger.onBreakpointHit = lambda: hits.append(p.currentProgramLocation)
app.doAction("debugRun")
wait(lambda: hits)
assert hits[0][0].endswith("main.cpp") and hits[0][1] == line, hits
assert p.evaluate("failures") == "0"
file, found, state = p.breakpoints[0]
assert (found, state) == (line, 1) and file.endswith("main.cpp")
p.stepOver("")
wait(lambda: p.currentProgramLocation[1] > line and p.programStatus == 0)
assert float(p.evaluate("value")) == 7
address = p.getSymbolAddress("main")
assert p.getSymbol(address).startswith("main")
assert p.getSourceLines(address)[0][0].endswith("main.cpp")
assert p.registers["rip"] > 0 and len(p.registers) == len(p.registers.keys)
code = [name for name in p.memory.regions]
for name in p.memory.regions:
    p.memory.currentRegion = name
    if p.memory.lowAddress <= address < p.memory.highAddress:
        break
words = p.memory[address:address + 16]
assert len(words) == 16 and words[0] == p.memory[address]
assert p.memory.disassemble(address)
p.disableBreakpoint(str(examples / "calculator/main.cpp"), line)
assert p.breakpoints[0][2] == 2
p.run()
wait(lambda: p.programStatus == 4)
try:
    p.evaluate("value")
except ValueError as error:
    assert str(error).startswith("Could not evaluate expression: ")
app.debugger.stop()
assert app.state == 0
print("done")
""", line_of(main, "work(text, variables);"))

    def test_two_boards(self):
        project = self.examples / "thermostat/thermostat.vnp"
        text = project.read_text(encoding="utf-8")
        project.write_text(text.replace("group=examples", f"group=examples;svdFile={BOARD}"), encoding="utf-8")
        self.check("""
app.openWorkspace(str(examples / "twoprocessors.vnw"))
build()
debugger = app.debugger
thermostat, morse = debugger.processors
assert [p.project.name for p in debugger.processors] == ["thermostat", "morse"]
thermostat.setBreakpoint(str(examples / "thermostat/main.c"), int(sys.argv[2]))
morse.setBreakpoint(str(examples / "morse/lamp.c"), int(sys.argv[3]))
hits = []
debugger.onBreakpointHit = lambda: hits.append(app.currentProject.name)
stopped = []
debugger.onStopped = lambda: stopped.append(app.state)
debugger.restart()
wait(lambda: all(p.currentProgramLocation[0].endswith("main.c") for p in debugger.processors))
while len(set(hits)) < 2:
    count = len(hits)
    app.doAction("debugRun")
    wait(lambda: len(hits) > count)
    assert debugger.currentProcessor.project.name == hits[-1]
    if hits[-1] == "thermostat":
        assert thermostat.evaluate("regulator.target") == "21000"
        thermostat.removeBreakpoint(str(examples / "thermostat/main.c"), int(sys.argv[2]))
    else:
        assert morse.evaluate("lamp->head") == str(hits.count("morse"))
    wait(lambda: all(p.programStatus != 1 for p in debugger.processors))

assert morse.registers["pc"] != 0
assert morse.peripherals.keys == ["LAMPS", "UART0", "SYSTICK"]  # of the example's own description
memory = thermostat.memory
address = thermostat.getSymbolAddress("history")
for name in memory.regions:
    memory.currentRegion = name
    if memory.lowAddress <= address < memory.highAddress:
        break
memory.currentMode = "Word32"
before = memory[address:address + 8]
assert len(before) == 2
memory[address:address + 8] = [1, 0x12345678] + [0] * 6
assert memory[address:address + 8] == [1, 0x12345678]
assert thermostat.evaluate("history[0].temperature") == str(0x12345678)
memory.currentMode = "byte"
assert memory[address + 4:address + 8] == [0x78, 0x56, 0x34, 0x12]
thermostat.registers["r0"] = 0xCAFE
assert thermostat.registers["r0"] == 0xCAFE
uart = thermostat.peripherals["UART0"]
divider, = (name for name in uart.keys if name.endswith("BAUDDIV"))
uart[divider] = 0x123
assert uart[divider] == 0x123
debugger.stop()
assert stopped == [0]
print("done")
""", line_of(self.examples / "thermostat/main.c", "keep_sample();"),
                   line_of(self.examples / "morse/lamp.c", "lamp->code = code_of(letter);"))

    def test_processes_of_a_session_end_with_the_script(self):
        script = self.write(BEGINNING + """
app.openWorkspace(str(examples / "twoprocessors.vnw"))
build()
app.debugger.restart()
wait(lambda: app.debugger.currentProcessor.currentProgramLocation[0])
print("started", flush=True)
sys.exit(3) if sys.argv[2] == "exit" else wait(lambda: False)
""")
        for ending, code in (("exit", 3), ("signal", 130), ("kill", -signal.SIGKILL)):
            with self.subTest(ending):
                process = self.start(script, self.examples, ending)
                while "started" not in (line := process.stdout.readline()):
                    self.assertTrue(line, "the script ended")
                children = children_of(process.pid)
                self.assertTrue(ending == "exit" or len(children) >= 4, children)
                if ending != "exit":
                    process.send_signal(signal.SIGTERM if ending == "signal" else signal.SIGKILL)
                process.communicate(timeout=60)
                self.assertEqual(process.returncode, code)
                end = time.monotonic() + 30
                while any(map(runs, children)):
                    self.assertLess(time.monotonic(), end, "processes are left")
                    time.sleep(0.05)

    def test_tests_of_the_example(self):
        code, output, errors = self.run_program("-m", "pytest", "-p", "no:cacheprovider", self.examples / "tests")
        self.assertEqual(code, 0, output + errors)
        self.assertIn("3 passed", output)
        test = self.examples / "tests/test_twoprocessors.py"
        test.write_text(test.read_text(encoding="utf-8").replace("== 21000", "== 21001"), encoding="utf-8")
        code, output, _ = self.run_program("-m", "pytest", "-p", "no:cacheprovider", "-k", "heats", test)
        self.assertEqual(code, 1)
        self.assertIn("assert 21000 == 21001", output)


FIRMWARE = """
#include "board.h"
enum state { ready, waiting, ended };
struct task { const char *name; int priority; enum state state; uint32_t *stack_base; struct task *next; uint32_t wake_time; };
#ifdef LIST
struct task second = {"second", 1, waiting, 0, 0, 77};
struct task first = {"first", 2, ready, 0, &second, 5};
struct task *task_list = &first;
struct task *current_task = &first;
#else
struct task task_table[] = {{"idle", 0, ready}, {"<blink>", 3, waiting}, {"log", 1, ended}};
unsigned task_count = 3;
struct task *current_task = &task_table[1];
#endif
uint8_t picture[8] = {0, 255, 128, 64, 255, 0, 1, 2};
volatile int number;
void *volatile kept;
__attribute__((noinline)) static int reached(int value) { return value + 1; }
__attribute__((noinline)) static int missed(int value)
{
    number = 7;
    return value - 1;
}
int main(void)
{
    board_init();
    kept = picture;
    kept = &current_task;
#ifdef LIST
    kept = &task_list;
#else
    kept = &task_count;
#endif
    for (int i = 0; i < 3; i++)
        number = reached(number);
    if (number < 0)
        number = missed(number);
    number = *(volatile int *)0xB0000000; /* fault */
    for (;;)
        ;
}
"""


class PanelTest(ExampleTest):
    """The panels that are shipped as examples, with firmware on an emulated board."""

    def check_firmware(self, text, firmware=FIRMWARE):
        (self.examples / "thermostat/main.c").write_text(firmware, encoding="utf-8")
        return self.check("""
main = examples / "thermostat/main.c"
line = lambda words: next(i for i, text in enumerate(main.read_text().splitlines(), 1) if words in text)
hits = []
def go():
    count = len(hits)
    app.debugger.onBreakpointHit = lambda: hits.append(p.currentProgramLocation)
    app.doAction("debugRun")
    wait(lambda: len(hits) > count)
def check_end(panel, button, view):  # between two clicks the program runs, the session ends, the workspace is closed
    app.debugger.onBreakpointHit = None
    for file, found, state in p.breakpoints:
        p.removeBreakpoint(file, found)
    run = lambda: (p.run(), wait(lambda: p.programStatus == 1))
    for leave, message in ((run, "The program is not paused."), (app.debugger.stop, "No debug session is running."),
                           (app.closeWorkspace, "No debug session is running.")):
        leave()
        button.click()
        assert (panel.messageLabel.text, view.plainText) == (message, ""), (message, panel.messageLabel.text, view.plainText)
def start():
    global p
    app.openWorkspace(str(examples / "thermostat/thermostat.vnw"))
    build()
    p = app.debugger.currentProcessor
    p.setBreakpoint(str(main), line("board_init();"))
    go()
""" + text)

    def test_tasks_in_a_table(self):
        self.check_firmware("""
import tasklist
panel = tasklist.taskList.panel
assert panel.messageLabel.text == "No debug session is running.", panel.messageLabel.text
start()
panel.refreshButton.click()
assert (panel.messageLabel.text, panel.kernelLabel.text) == ("", "Tasks in a table"), panel.messageLabel.text
lines = panel.taskView.plainText.split()
assert " ".join(lines) == "Task Priority State idle 0 ready ▶ <blink> 3 waiting log 1 ended", lines
p.evaluate("task_count=0")
panel.refreshButton.click()
assert "idle" not in panel.taskView.plainText
check_end(panel, panel.refreshButton, panel.taskView)
print("done")
""")

    def test_tasks_in_a_list(self):
        self.check_firmware("""
import tasklist
start()
panel = tasklist.taskList.panel
panel.refreshButton.click()
assert panel.kernelLabel.text == "Tasks in a list", panel.messageLabel.text
text = panel.taskView.plainText
assert [word in text for word in ("first", "second", "77", "sleeping")] == [True] * 4, text
p.evaluate("second.next=&first")  # a list without an end
panel.refreshButton.click()
assert panel.taskView.plainText == text
print("done")
""", "#define LIST\n" + FIRMWARE)

    def test_fault(self):
        self.check_firmware("""
import faultpanel
start()
panel = faultpanel.faultPanel.panel
panel.refreshButton.click()
assert panel.reportView.plainText == "There is no fault.", (panel.messageLabel.text, panel.reportView.plainText)
p.setBreakpointAtSymbol("Fault_Handler")
go()
panel.refreshButton.click()
text = panel.reportView.plainText
assert "PRECISERR" in text and "0xb0000000" in text, (panel.messageLabel.text, text)
assert "It happened at" in text and "main.c, %d" % line("/* fault */") in text, text
check_end(panel, panel.refreshButton, panel.reportView)
print("done")
""")

    def test_memory_picture(self):
        self.check_firmware("""
import memorypicture, zlib
start()
panel = memorypicture.memoryPicture.panel
panel.showButton.click()
assert panel.messageLabel.text == "Enter an address."
panel.addressEdit.text = "picture"
panel.widthBox.value, panel.heightBox.value, panel.formatBox.currentIndex = 4, 2, 1
region, mode = p.memory.currentRegion, p.memory.currentMode
panel.showButton.click()
assert panel.messageLabel.text == "", panel.messageLabel.text
assert "data:image/png;base64," in panel.pictureView.html
assert (p.memory.currentRegion, p.memory.currentMode) == (region, mode)
data = bytes([0, 255, 128, 64, 255, 0, 1, 2])
address = p.getSymbolAddress("picture")
assert memorypicture.read(p, address, 8) == data
def pixels(bits, width, height):
    file = memorypicture.png(data, width, height, bits)
    start = file.index(b"IDAT") + 4
    return zlib.decompress(file[start:-16])
assert pixels(8, 4, 2) == bytes([0, 0, 255, 128, 64, 0, 255, 0, 1, 2])
assert pixels(1, 9, 1) == bytes([0] + [0] * 8 + [255])
assert pixels(16, 1, 1) == bytes([0, 255, 28 * 255 // 63 * 0 + (0xFF00 >> 5 & 63) * 255 // 63, 0])
assert pixels(32, 1, 1) == bytes([0, 128, 255, 0])
panel.addressEdit.text = "no_such_symbol"
panel.showButton.click()
assert "no_such_symbol" in panel.messageLabel.text and panel.pictureView.plainText == ""
panel.addressEdit.text = "0xB0000000"
panel.showButton.click()
assert panel.messageLabel.text
panel.addressEdit.text = "picture"
panel.showButton.click()
assert panel.messageLabel.text == ""
check_end(panel, panel.showButton, panel.pictureView)
print("done")
""")

    def test_line_coverage(self):
        self.check_firmware("""
import linecoverage
start()
coverage = linecoverage.lineCoverage
app.editor.openDocument(str(main))
end = line("/* fault */")
p.setBreakpoint(str(main), end)  # the user's
handler, ends = app.debugger.onBreakpointHit, []
app.debugger.onStopped = lambda: ends.append(app.state)
count = len(hits)
coverage.panel.startButton.click()
assert coverage.panel.messageLabel.text == "", coverage.panel.messageLabel.text
assert line("number = 7;") in coverage.waiting and end not in coverage.waiting, coverage.waiting
app.doAction("debugRun")
wait(lambda: p.programStatus in (0, 5) and p.currentProgramLocation[1] == end)
assert line("return value + 1;") in coverage.reached and line("number = 7;") in coverage.waiting
assert hits[count:] == [p.currentProgramLocation], hits  # the user's, and no other
folder = str(main.parent)
assert coverage.is_file(str(main)) and coverage.is_file("main.c") and coverage.is_file("../thermostat/main.c")
assert not coverage.is_file(folder + "/other/main.c") and not coverage.is_file("other/main.c")
assert line("uint8_t picture") not in coverage.waiting | coverage.reached
text = coverage.panel.linesView.plainText
assert "+ %4d  __attribute__((noinline)) static int reached" % line("int reached") in text and "- %4d      number = 7;" % line("number = 7;") in text, text
coverage.panel.stopButton.click()
assert {found for path, found, state in p.breakpoints} == {line("board_init();"), end}, p.breakpoints
assert app.debugger.onBreakpointHit is handler
coverage.panel.startButton.click()
app.debugger.stop()
assert ends == [0], ends
app.debugger.onStopped()
assert ends == [0, 0] and app.debugger.onBreakpointHit is handler  # the user's again
app.closeWorkspace()
coverage.panel.stopButton.click()
coverage.panel.startButton.click()
assert coverage.panel.messageLabel.text == "No debug session is running."
print("done")
""")


def children_of(parent):
    found = []
    for file in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            fields = file.read_text(encoding="utf-8", errors="replace").rpartition(") ")[2].split()
        except OSError:
            continue
        if int(fields[1]) == parent:
            found.append(int(file.parent.name))
    return found


def runs(process):
    try:
        return pathlib.Path(f"/proc/{process}/stat").read_text(encoding="utf-8").rpartition(") ")[2][0] != "Z"
    except OSError:
        return False


if __name__ == "__main__":
    unittest.main()
