#pragma once
#include <functional>
#include <QString>
#include <QStringList>

/// The options of a session, with their defaults. Paths may be relative to the project.
struct TargetOptions
{
    enum class Kind {
        Automatic, ///< Native if the image is for this computer, else Qemu
        Native,
        Qemu,
        Remote
    };

    QString image; ///< empty: found by findImage()
    QString gdb;   ///< empty: chosen by the image's processor
    QString machine = QStringLiteral("mps2-an385");
    QString qemu;          ///< empty: chosen by the image's processor
    QString qemuArguments; ///< further arguments, as on a command line
    QString secondImage;   ///< program of the second core of a board with two cores
    QString address;       ///< "host:port", or the path of a socket
    QString server;        ///< command line of the server that a remote target starts; empty if it runs already
    QString resetCommand;  ///< for a remote target's "monitor"
    QString arguments;     ///< of a native program, as on a command line
    QString environment;   ///< variables of a native program, "NAME=value" separated by ";"; "NAME" removes one
    QString workingDirectory;
    QString runTo = QStringLiteral("main"); ///< a function; empty to stay at the start of the program
    QString regions;                        ///< see parseRegions(); empty: read from the target
    QString sourceDirectories;              ///< separated by ";", where to find source files that were moved
    QString symbolFiles;                    ///< separated by ";"
    QString commands;                       ///< for gdb's console after it has connected, separated by ";"
    QString svdFile;
    QString tasks; ///< expressions for the tasks of the program's scheduler, see TaskList; empty for none
    QString group; ///< name of a group of processors that run and stop together; empty for none
    Kind kind = Kind::Automatic;
    int uart = 0;       ///< the serial port that the target console shows
    int tclPort = 0;    ///< of an OpenOCD, for its memory; 0: chosen for an OpenOCD that is started
    int processId = 0;  ///< of the native program to attach to
    int timeLimit = 10; ///< in seconds, for loading and for reaching runTo
    bool semihosting = true;
    bool load = true;           ///< load the image into a remote target
    bool leaveRunning = true;   ///< leave a remote target running when the session ends
    bool readSensitive = false; ///< read also registers that change when read
    bool callFunctions = false; ///< allow calls in expressions
    bool catchFaults = true;    ///< stop in the fault handlers of a Cortex-M processor
    bool verify = false;        ///< read memory back after writing
    bool rtt = false;           ///< show text that the program writes into a buffer in its memory

    bool operator==(const TargetOptions &) const = default;
};

/// Applies an option text to @p options: the kind of target ("native", "qemu", "remote"), after a colon the program,
/// board or address, and "key=value" pairs, all separated by ";". The keys are those of optionKeys(). False with @p
/// error set if the text is invalid.
bool applyOptionText(const QString &text, TargetOptions *options, QString *error);

/// Applies properties to @p options. @p property returns the value of a property, whose name is "gdb" and a key with a
/// capital first letter; null texts change nothing.
void applyProperties(const std::function<QString(const QString &key)> &property, TargetOptions *options);

/// The keys of the option text, in order.
[[nodiscard]] QStringList optionKeys();
