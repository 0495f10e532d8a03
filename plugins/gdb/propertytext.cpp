#include "propertytext.h"
#include "propertypages.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(GdbProperties)
};

constexpr int MaximumProcessId = 4194304; // of Linux

PropertyPage targetPage()
{
    return {Text::tr("Target"),
            {},
            {{u"gdbTarget"_s,
              Text::tr("Target"),
              u"list"_s,
              u"auto"_s,
              Text::tr("The kind of target that the program runs on."),
              {{u"auto"_s, Text::tr("Automatic")},
               {u"native"_s, Text::tr("This computer")},
               {u"qemu"_s, Text::tr("Emulated board (QEMU)")},
               {u"remote"_s, Text::tr("Debug server (gdbserver, OpenOCD, simavr)")}}},
             {u"gdbImage"_s,
              Text::tr("Program"),
              u"file"_s,
              {},
              Text::tr("The program to debug. May contain $(Configuration) and $(Project). Empty for the output of the "
                       "project's build."),
              {}},
             {u"gdbRunTo"_s,
              Text::tr("Run to"),
              u"text"_s,
              u"main"_s,
              Text::tr("The function at which a session starts. Empty to start at the first instruction."),
              {}},
             {u"gdbTimeLimit"_s,
              Text::tr("Time limit"),
              u"integer"_s,
              u"10"_s,
              Text::tr("Seconds without a sign of life while the program is loaded or runs to that function."),
              {}},
             {u"gdbGdb"_s,
              Text::tr("gdb"),
              u"file"_s,
              {},
              Text::tr("The gdb to use. Empty to choose it by the program's processor."),
              {}},
             {u"gdbCommands"_s,
              Text::tr("gdb commands"),
              u"text"_s,
              {},
              Text::tr("Commands for gdb's console after it has connected, separated by ';'."),
              {}},
             {u"gdbGroup"_s,
              Text::tr("Group"),
              u"text"_s,
              {},
              Text::tr("Processors of projects with the same group run, pause and restart together."),
              {}}}};
}

PropertyPage boardPage()
{
    return {Text::tr("Emulated board"),
            {},
            {{u"gdbMachine"_s,
              Text::tr("Board"),
              u"text"_s,
              u"mps2-an385"_s,
              Text::tr("A board of QEMU: mps2-an385, mps2-an386, mps2-an500, mps2-an505, mps2-an521, mps3-an547, "
                       "lm3s6965evb, netduinoplus2, stm32vldiscovery, microbit or another one."),
              {}},
             {u"gdbSecondImage"_s,
              Text::tr("Second core's program"),
              u"file"_s,
              {},
              Text::tr("For a board with two cores (mps2-an521)."),
              {}},
             {u"gdbUart"_s,
              Text::tr("Serial port"),
              u"integer"_s,
              u"0"_s,
              Text::tr("The serial port that the target console shows, counted from 0."),
              {}},
             {u"gdbSemihosting"_s,
              Text::tr("Semihosting"),
              u"boolean"_s,
              u"true"_s,
              Text::tr("Shows semihosting output in the target console."),
              {}},
             {u"gdbQemu"_s,
              Text::tr("QEMU"),
              u"file"_s,
              {},
              Text::tr("The QEMU to use. Empty to choose it by the program's processor."),
              {}},
             {u"gdbQemuArguments"_s,
              Text::tr("Further arguments"),
              u"text"_s,
              {},
              Text::tr("Further arguments for QEMU's command line."),
              {}}}};
}

PropertyPage remotePage()
{
    return {
        Text::tr("Debug server"),
        {},
        {{u"gdbAddress"_s, Text::tr("Address"), u"text"_s, {}, Text::tr("host:port, or the path of a socket."), {}},
         {u"gdbServer"_s,
          Text::tr("Start this server"),
          u"text"_s,
          {},
          Text::tr(
              "Command line of a server that is started and ended with the session, such as 'openocd -f board.cfg'. "
              "$(Program) is the program, $(Port) a free port, also in the address. Empty if the server runs already."),
          {}},
         {u"gdbTclPort"_s,
          Text::tr("Tcl port of OpenOCD"),
          u"integer"_s,
          u"0"_s,
          Text::tr("Port of a running OpenOCD, usually 6666, by which the memory is read while the program runs. 0 for "
                   "no such access; an OpenOCD that is started by the line above gets a free port."),
          {}},
         {u"gdbLoad"_s,
          Text::tr("Load the program"),
          u"boolean"_s,
          u"true"_s,
          Text::tr("Sends the program to the target."),
          {}},
         {u"gdbResetCommand"_s,
          Text::tr("Reset command"),
          u"text"_s,
          {},
          Text::tr("Monitor command that resets the target, after loading and to restart, such as 'reset halt' for "
                   "OpenOCD."),
          {}},
         {u"gdbLeaveRunning"_s,
          Text::tr("Leave it running"),
          u"boolean"_s,
          u"true"_s,
          Text::tr("Leaves the target running when a session ends."),
          {}},
         {u"gdbRegions"_s,
          Text::tr("Memory regions"),
          u"text"_s,
          {},
          Text::tr(
              "name:start:length:kind, separated by ';', where kind is ram, rom or io; the region of the code first. "
              "Empty to read the regions from the target."),
          {}}}};
}

PropertyPage programPage()
{
    return {Text::tr("Program of this computer"),
            {},
            {{u"gdbArguments"_s,
              Text::tr("Arguments"),
              u"text"_s,
              {},
              Text::tr("Arguments of the program, as on a command line."),
              {}},
             {u"gdbEnvironment"_s,
              Text::tr("Environment variables"),
              u"text"_s,
              {},
              Text::tr("NAME=value, separated by ';'. A name alone removes the variable that Varnel itself has."),
              {}},
             {u"gdbWorkingDirectory"_s,
              Text::tr("Working directory"),
              u"directory"_s,
              {},
              Text::tr("Empty for the project's directory."),
              {}},
             {u"gdbProcessId"_s,
              Text::tr("Process to attach to"),
              u"integer"_s,
              u"0"_s,
              Text::tr("The process id for the command \"Attach\"."),
              {},
              {},
              MaximumProcessId}}};
}

PropertyPage windowsPage()
{
    return {
        Text::tr("Symbols and windows"),
        {},
        {{u"gdbSvdFile"_s,
          Text::tr("Device description"),
          u"file"_s,
          {},
          Text::tr("An SVD file, for the peripheral window."),
          {}},
         {u"gdbReadSensitive"_s,
          Text::tr("Read sensitive registers"),
          u"boolean"_s,
          u"false"_s,
          Text::tr("Reads also device registers that change when read."),
          {}},
         {u"gdbCatchFaults"_s,
          Text::tr("Stop at faults"),
          u"boolean"_s,
          u"true"_s,
          Text::tr(
              "Stops a Cortex-M program in the handlers of HardFault, MemManage, BusFault and UsageFault, and explains "
              "the fault on the page \"Debug\"."),
          {}},
         {u"gdbTasks"_s,
          Text::tr("Tasks"),
          u"text"_s,
          {},
          Text::tr(
              "Expressions for the tasks of the program's scheduler, separated by \";\": their number, the one that "
              "runs, and of the task $task its stack pointer and a pointer to its name."),
          {}},
         {u"gdbSourceDirectories"_s,
          Text::tr("Source directories"),
          u"directorylist"_s,
          {},
          Text::tr("Where to find source files that were moved after the build."),
          {}},
         {u"gdbSymbolFiles"_s,
          Text::tr("Further symbols"),
          u"filelist"_s,
          {},
          Text::tr("Programs whose symbols are added, such as a boot loader."),
          {}},
         {u"gdbCallFunctions"_s,
          Text::tr("Allow calls in expressions"),
          u"boolean"_s,
          u"false"_s,
          Text::tr("Allows expressions to call functions of the program, which then run on the target."),
          {}},
         {u"gdbVerify"_s,
          Text::tr("Verify memory"),
          u"boolean"_s,
          u"false"_s,
          Text::tr("Reads memory back after writing."),
          {}},
         {u"gdbRtt"_s,
          Text::tr("Text in memory (RTT)"),
          u"boolean"_s,
          u"false"_s,
          Text::tr("Shows text that the program writes into an RTT buffer in its memory in the target console."),
          {}}}};
}
} // namespace

QString gdbPropertyDefinitions()
{
    return propertyDefinitionsXml(Text::tr("Debugger"), {u"project"_s},
                                  {targetPage(), boardPage(), remotePage(), programPage(), windowsPage()});
}
