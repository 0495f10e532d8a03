#pragma once
#include <QList>
#include <QMap>
#include <QString>

/// What a session needs to know of a program file before, and beside, gdb.
struct ElfImage
{
    struct Segment
    {
        quint64 address = 0; ///< where it runs
        quint64 size = 0;    ///< in memory
        bool writable = false;
        bool executable = false;
    };

    int machine = 0;   ///< the processor's number
    bool wide = false; ///< 64 bits
    bool bigEndian = false;
    bool program = false;     ///< can be run; object files and archives cannot
    bool relocatable = false; ///< its place is chosen when it is loaded
    bool debugInformation = false;
    quint64 entry = 0;
    QList<Segment> segments;
    QList<quint64> functions; ///< start addresses in ascending order

    enum Machine { I386 = 3, Arm = 40, X86_64 = 62, Avr = 83, AArch64 = 183, RiscV = 243 };

    [[nodiscard]] bool isValid() const { return machine != 0; }
    [[nodiscard]] bool isNative() const; ///< for the kind of processor that we run on
};

/// Reads a file's contents; not valid if it is no ELF file.
[[nodiscard]] ElfImage readElfImage(const QByteArray &contents);
[[nodiscard]] ElfImage loadElfImage(const QString &fileName);

/// Where a project's program is looked for.
struct ImageSearch
{
    QString basePath;
    QString buildDirectory = QStringLiteral("build"); ///< relative to basePath or absolute
    QString name;                                     ///< what the program is called, without its suffix
    QString configuration;
};

/// The program of a project: in the configuration's folder of the build directory, in the configuration's folder of the
/// project, in the build directory or anywhere in the project; the first of them that has any. Programs of the wanted
/// name go first, then newer ones. Empty if there is none.
[[nodiscard]] QString findImage(const ImageSearch &search);
