#include "propertytext.h"
#include "propertypages.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
QString tr(const char *text)
{
    return QCoreApplication::translate("GdbProperties", text);
}

constexpr int MaximumProcessId = 4194304; // of Linux

PropertyPage targetPage()
{
    return {tr("Target"),
            {},
            {{u"gdbTarget"_s,
              tr("Target"),
              u"list"_s,
              u"auto"_s,
              tr("The kind of target that the program runs on."),
              {{u"auto"_s, tr("Automatic")},
               {u"native"_s, tr("This computer")},
               {u"qemu"_s, tr("Emulated board (QEMU)")},
               {u"remote"_s, tr("Debug server (gdbserver, OpenOCD, simavr)")}}},
             {u"gdbImage"_s,
              tr("Program"),
              u"file"_s,
              {},
              tr("The program to debug. May contain $(Configuration) and $(Project). Empty for the output of the "
                 "project's build."),
              {}},
             {u"gdbRunTo"_s,
              tr("Run to"),
              u"text"_s,
              u"main"_s,
              tr("The function at which a session starts. Empty to start at the first instruction."),
              {}},
             {u"gdbTimeLimit"_s,
              tr("Time limit"),
              u"integer"_s,
              u"10"_s,
              tr("Seconds for loading, and for reaching that function."),
              {}},
             {u"gdbGdb"_s,
              tr("gdb"),
              u"file"_s,
              {},
              tr("The gdb to use. Empty to choose it by the program's processor."),
              {}},
             {u"gdbCommands"_s,
              tr("gdb commands"),
              u"text"_s,
              {},
              tr("Commands for gdb's console after it has connected, separated by ';'."),
              {}},
             {u"gdbGroup"_s,
              tr("Group"),
              u"text"_s,
              {},
              tr("Processors of projects with the same group run, pause and restart together."),
              {}}}};
}

PropertyPage boardPage()
{
    return {tr("Emulated board"),
            {},
            {{u"gdbMachine"_s,
              tr("Board"),
              u"text"_s,
              u"mps2-an385"_s,
              tr("A board of QEMU: mps2-an385, mps2-an386, mps2-an500, mps2-an505, mps2-an521, mps3-an547, "
                 "lm3s6965evb, netduinoplus2, stm32vldiscovery, microbit or another one."),
              {}},
             {u"gdbSecondImage"_s,
              tr("Second core's program"),
              u"file"_s,
              {},
              tr("For a board with two cores (mps2-an521)."),
              {}},
             {u"gdbUart"_s,
              tr("Serial port"),
              u"integer"_s,
              u"0"_s,
              tr("The serial port that the target console shows, counted from 0."),
              {}},
             {u"gdbSemihosting"_s,
              tr("Semihosting"),
              u"boolean"_s,
              u"true"_s,
              tr("Shows semihosting output in the target console."),
              {}},
             {u"gdbQemu"_s,
              tr("QEMU"),
              u"file"_s,
              {},
              tr("The QEMU to use. Empty to choose it by the program's processor."),
              {}},
             {u"gdbQemuArguments"_s,
              tr("Further arguments"),
              u"text"_s,
              {},
              tr("Further arguments for QEMU's command line."),
              {}}}};
}

PropertyPage remotePage()
{
    return {
        tr("Debug server"),
        {},
        {{u"gdbAddress"_s, tr("Address"), u"text"_s, {}, tr("host:port, or the path of a socket."), {}},
         {u"gdbServer"_s,
          tr("Start this server"),
          u"text"_s,
          {},
          tr("Command line of a server that is started and ended with the session, such as 'openocd -f board.cfg'. "
             "$(Program) is the program, $(Port) a free port, also in the address. Empty if the server runs already."),
          {}},
         {u"gdbLoad"_s, tr("Load the program"), u"boolean"_s, u"true"_s, tr("Sends the program to the target."), {}},
         {u"gdbResetCommand"_s,
          tr("Reset command"),
          u"text"_s,
          {},
          tr("Monitor command that resets the target, after loading and to restart, such as 'reset halt' for OpenOCD."),
          {}},
         {u"gdbLeaveRunning"_s,
          tr("Leave it running"),
          u"boolean"_s,
          u"true"_s,
          tr("Leaves the target running when a session ends."),
          {}},
         {u"gdbRegions"_s,
          tr("Memory regions"),
          u"text"_s,
          {},
          tr("name:start:length:kind, separated by ';', where kind is ram, rom or io; the region of the code first. "
             "Empty to read the regions from the target."),
          {}}}};
}

PropertyPage programPage()
{
    return {
        tr("Program of this computer"),
        {},
        {{u"gdbArguments"_s, tr("Arguments"), u"text"_s, {}, tr("Arguments of the program, as on a command line."), {}},
         {u"gdbEnvironment"_s,
          tr("Environment variables"),
          u"text"_s,
          {},
          tr("NAME=value, separated by ';'. A name alone removes the variable that Varnel itself has."),
          {}},
         {u"gdbWorkingDirectory"_s,
          tr("Working directory"),
          u"directory"_s,
          {},
          tr("Empty for the project's directory."),
          {}},
         {u"gdbProcessId"_s,
          tr("Process to attach to"),
          u"integer"_s,
          u"0"_s,
          tr("The process id for the command \"Attach\"."),
          {},
          {},
          MaximumProcessId}}};
}

PropertyPage windowsPage()
{
    return {
        tr("Symbols and windows"),
        {},
        {{u"gdbSvdFile"_s, tr("Device description"), u"file"_s, {}, tr("An SVD file, for the peripheral window."), {}},
         {u"gdbReadSensitive"_s,
          tr("Read sensitive registers"),
          u"boolean"_s,
          u"false"_s,
          tr("Reads also device registers that change when read."),
          {}},
         {u"gdbCatchFaults"_s,
          tr("Stop at faults"),
          u"boolean"_s,
          u"true"_s,
          tr("Stops a Cortex-M program in the handlers of HardFault, MemManage, BusFault and UsageFault, and explains "
             "the fault on the page \"Debug\"."),
          {}},
         {u"gdbSourceDirectories"_s,
          tr("Source directories"),
          u"directorylist"_s,
          {},
          tr("Where to find source files that were moved after the build."),
          {}},
         {u"gdbSymbolFiles"_s,
          tr("Further symbols"),
          u"filelist"_s,
          {},
          tr("Programs whose symbols are added, such as a boot loader."),
          {}},
         {u"gdbCallFunctions"_s,
          tr("Allow calls in expressions"),
          u"boolean"_s,
          u"false"_s,
          tr("Allows expressions to call functions of the program, which then run on the target."),
          {}},
         {u"gdbVerify"_s, tr("Verify memory"), u"boolean"_s, u"false"_s, tr("Reads memory back after writing."), {}}}};
}
} // namespace

QString gdbPropertyDefinitions()
{
    return propertyDefinitionsXml(tr("Debugger"), {u"project"_s},
                                  {targetPage(), boardPage(), remotePage(), programPage(), windowsPage()});
}
