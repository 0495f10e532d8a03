#pragma once
#include <functional>
#include <QString>
#include <QStringList>

/// What a session runs on and how. Texts that the user wrote, with defaults; paths may be relative to the project.
struct TargetOptions
{
    enum class Kind {
        Automatic, ///< native if the image is of this computer, else an emulated board
        Native,
        Qemu,
        Remote
    };

    QString image; ///< empty: found by findImage()
    QString gdb;   ///< empty: chosen by the image's processor
    QString machine = QStringLiteral("mps2-an385");
    QString qemu;          ///< empty: chosen by the image's processor
    QString qemuArguments; ///< further ones, as on a command line
    QString secondImage;   ///< for the second core of a board that has two
    QString address;       ///< "host:port", or the path of a socket
    QString resetCommand;  ///< for a remote target's "monitor"
    QString arguments;     ///< of a native program, as on a command line
    QString workingDirectory;
    QString runTo = QStringLiteral("main"); ///< a function; empty to stay at the program's start
    QString regions;                        ///< see parseRegions(); empty: as the target says
    QString sourceDirectories;              ///< separated by ";", for an image that was built elsewhere
    QString symbolFiles;                    ///< separated by ";"
    QString commands;                       ///< for gdb's console once connected, separated by ";"
    QString svdFile;
    QString group; ///< of processors that run and stop together; empty for none
    Kind kind = Kind::Automatic;
    int uart = 0;       ///< the serial port that the target console shows
    int processId = 0;  ///< of the native program to attach to
    int timeLimit = 10; ///< in seconds, for the way to runTo and for loading
    bool semihosting = true;
    bool load = true;           ///< send the image to a remote target
    bool leaveRunning = true;   ///< a remote target, when the session ends
    bool readSensitive = false; ///< also registers that reading changes
    bool callFunctions = false; ///< in expressions
    bool verify = false;        ///< read back what is written to memory

    bool operator==(const TargetOptions &) const = default;
};

/// Changes @p options by an option text: the kind of target ("native", "qemu", "remote"), behind a colon what it is
/// (the program, the board, the address), and "key=value" pairs, all separated by ";". The keys are those of
/// optionKeys(). False with @p error set if it cannot be understood.
bool applyOptionText(const QString &text, TargetOptions *options, QString *error);

/// Changes @p options by the values that @p property gives for "gdb" and a key with a capital; null texts change
/// nothing.
void applyProperties(const std::function<QString(const QString &key)> &property, TargetOptions *options);

/// The keys of the option text, in order.
[[nodiscard]] QStringList optionKeys();
