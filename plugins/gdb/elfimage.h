#pragma once
#include <QList>
#include <QMap>
#include <QString>

/// The properties of a program file that a session needs in addition to gdb.
struct ElfImage
{
    struct Segment
    {
        quint64 address = 0; ///< at run time
        quint64 size = 0;    ///< in memory
        bool writable = false;
        bool executable = false;
    };

    int machine = 0;   ///< the number of the processor architecture
    bool wide = false; ///< 64 bits
    bool bigEndian = false;
    bool program = false;     ///< executable; object files and archives are not
    bool relocatable = false; ///< its address is chosen when it is loaded
    bool debugInformation = false;
    bool dataAtZero = false; ///< whether a variable is at address 0, such as a table of vectors
    quint64 entry = 0;
    quint64 loadSize = 0; ///< bytes of all sections that are loaded into a target; debug information is not
    QList<Segment> segments;
    QList<quint64> functions; ///< start addresses in ascending order

    enum Machine { I386 = 3, Arm = 40, X86_64 = 62, Avr = 83, AArch64 = 183, RiscV = 243 };

    [[nodiscard]] bool isValid() const { return machine != 0; }
    [[nodiscard]] bool isNative() const; ///< for the processor of this computer
};

/// Reads a file's contents; the result is invalid if it is not an ELF file.
[[nodiscard]] ElfImage readElfImage(const QByteArray &contents);
[[nodiscard]] ElfImage loadElfImage(const QString &fileName);

/// Where to search for the program of a project.
struct ImageSearch
{
    QString basePath;
    QString buildDirectory = QStringLiteral("build"); ///< relative to basePath or absolute
    QString name;                                     ///< name of the program without extension
    QString configuration;
    QString project; ///< its name; projects in one directory have directories of this name in the build directory
};

/// The program of a project, from the first of these directories that contains programs: the configuration's directory
/// in the build directory, the configuration's directory in the project, the build directory, the project. Programs
/// with the wanted name have priority, then newer ones. Empty if there is none.
[[nodiscard]] QString findImage(const ImageSearch &search);
