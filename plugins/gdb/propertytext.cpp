#include "propertytext.h"
#include <QCoreApplication>
#include <QXmlStreamWriter>

using namespace Qt::StringLiterals;

namespace {
struct Choice
{
    QString key;
    QString label;
};

struct Property
{
    QString key;
    QString name;
    QString type;
    QString defaultValue;
    QString description;
    QList<Choice> choices;
};

struct Page
{
    QString name;
    QList<Property> properties;
};

QString tr(const char *text)
{
    return QCoreApplication::translate("GdbProperties", text);
}

Page targetPage()
{
    return {tr("Target"),
            {{u"gdbTarget"_s,
              tr("Target"),
              u"list"_s,
              u"auto"_s,
              tr("What the program runs on."),
              {{u"auto"_s, tr("By the program")},
               {u"native"_s, tr("This computer")},
               {u"qemu"_s, tr("Emulated board (QEMU)")},
               {u"remote"_s, tr("At an address (gdbserver, OpenOCD, simavr)")}}},
             {u"gdbImage"_s,
              tr("Program"),
              u"file"_s,
              {},
              tr("The program to be debugged. $(Configuration) and $(Project) may stand in it. Empty for what the "
                 "project's build makes."),
              {}},
             {u"gdbRunTo"_s,
              tr("Run to"),
              u"text"_s,
              u"main"_s,
              tr("The function at which a session begins. Empty to begin at the program's very first instruction."),
              {}},
             {u"gdbTimeLimit"_s,
              tr("Time limit"),
              u"integer"_s,
              u"10"_s,
              tr("Seconds for loading, and for the way to that function."),
              {}},
             {u"gdbGdb"_s,
              tr("gdb"),
              u"file"_s,
              {},
              tr("The gdb to be used. Empty to choose one by the program's processor."),
              {}},
             {u"gdbCommands"_s,
              tr("gdb commands"),
              u"text"_s,
              {},
              tr("Commands for gdb's console once it is connected, separated by ';'."),
              {}},
             {u"gdbGroup"_s,
              tr("Group"),
              u"text"_s,
              {},
              tr("Processors whose projects name the same group run, pause and restart together."),
              {}}}};
}

Page boardPage()
{
    return {tr("Emulated board"),
            {{u"gdbMachine"_s,
              tr("Board"),
              u"text"_s,
              u"mps2-an385"_s,
              tr("A board that QEMU knows: mps2-an385, mps2-an386, mps2-an500, mps2-an505, mps2-an521, mps3-an547, "
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
              tr("The one that the target console shows, counted from 0."),
              {}},
             {u"gdbSemihosting"_s,
              tr("Semihosting"),
              u"boolean"_s,
              u"true"_s,
              tr("Shows its output in the target console as well."),
              {}},
             {u"gdbQemu"_s, tr("QEMU"), u"file"_s, {}, tr("Empty to choose it by the program's processor."), {}},
             {u"gdbQemuArguments"_s, tr("Further arguments"), u"text"_s, {}, tr("For QEMU's command line."), {}}}};
}

Page remotePage()
{
    return {
        tr("Target at an address"),
        {{u"gdbAddress"_s, tr("Address"), u"text"_s, {}, tr("host:port, or the path of a socket."), {}},
         {u"gdbLoad"_s, tr("Load the program"), u"boolean"_s, u"true"_s, tr("Sends the program to the target."), {}},
         {u"gdbResetCommand"_s,
          tr("Reset command"),
          u"text"_s,
          {},
          tr("For the target's monitor after loading and to restart, such as 'reset halt' for OpenOCD."),
          {}},
         {u"gdbLeaveRunning"_s, tr("Leave it running"), u"boolean"_s, u"true"_s, tr("When a session ends."), {}},
         {u"gdbRegions"_s,
          tr("Memory regions"),
          u"text"_s,
          {},
          tr("name:start:length:kind, separated by ';', the kind being ram, rom or io; the code's region first. "
             "Empty for what the target says."),
          {}}}};
}

Page programPage()
{
    return {
        tr("Program of this computer"),
        {{u"gdbArguments"_s, tr("Arguments"), u"text"_s, {}, tr("Of the program, as on a command line."), {}},
         {u"gdbWorkingDirectory"_s, tr("Working directory"), u"directory"_s, {}, tr("Empty for the project's."), {}},
         {u"gdbProcessId"_s,
          tr("Process to attach to"),
          u"integer"_s,
          u"0"_s,
          tr("For the command that attaches the debugger."),
          {}}}};
}

Page windowsPage()
{
    return {
        tr("Symbols and windows"),
        {{u"gdbSvdFile"_s, tr("Device description"), u"file"_s, {}, tr("An SVD file, for the peripheral window."), {}},
         {u"gdbReadSensitive"_s,
          tr("Read sensitive registers"),
          u"boolean"_s,
          u"false"_s,
          tr("Reads also those device registers that reading changes."),
          {}},
         {u"gdbSourceDirectories"_s,
          tr("Source directories"),
          u"directorylist"_s,
          {},
          tr("Where sources are that are no longer where the program was built."),
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
          tr("Lets a watch call functions of the program. They really run."),
          {}},
         {u"gdbVerify"_s,
          tr("Verify memory"),
          u"boolean"_s,
          u"false"_s,
          tr("Reads back what is written to memory."),
          {}}}};
}

void write(const Property &property, QXmlStreamWriter *xml)
{
    xml->writeStartElement(u"property"_s);
    xml->writeAttribute(u"key"_s, property.key);
    xml->writeAttribute(u"name"_s, property.name);
    xml->writeAttribute(u"type"_s, property.type);
    xml->writeAttribute(u"defaultvalue"_s, property.defaultValue);
    if (property.key == u"gdbProcessId")
        xml->writeAttribute(u"maximum"_s, u"4194304"_s); // the largest number of a process on Linux
    xml->writeTextElement(u"description"_s, property.description);
    for (const Choice &choice : property.choices) {
        xml->writeStartElement(u"option"_s);
        xml->writeAttribute(u"key"_s, choice.key);
        xml->writeCharacters(choice.label);
        xml->writeEndElement();
    }
    xml->writeEndElement();
}
} // namespace

QString gdbPropertyDefinitions()
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(u"properties"_s);
    xml.writeStartElement(u"group"_s);
    xml.writeAttribute(u"name"_s, tr("Debugger"));
    xml.writeEmptyElement(u"appliesto"_s);
    xml.writeAttribute(u"selector"_s, u"project"_s);
    for (const Page &page : {targetPage(), boardPage(), remotePage(), programPage(), windowsPage()}) {
        xml.writeStartElement(u"propertygroup"_s);
        xml.writeAttribute(u"name"_s, page.name);
        for (const Property &property : page.properties)
            write(property, &xml);
        xml.writeEndElement();
    }
    xml.writeEndElement();
    xml.writeEndElement();
    return text;
}
