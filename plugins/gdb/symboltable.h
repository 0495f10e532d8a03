#pragma once
#include "facet.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "linetable.h"
#include "regiontable.h"
#include <functional>
#include <memory>
#include <optional>
#include <QHash>
#include <QObject>
#include <QSet>
class GdbSession;
struct MiRecord;

/// Source files, lines, addresses and symbols of the program.
///
/// The host's addresses have 32 bits. On 64-bit targets their upper half is taken from the addresses of the program's
/// code.
class SymbolTable : public QObject, public Facet<ISourceMapping, ISymbolLookup>
{
    Q_OBJECT
public:
    SymbolTable(GdbSession *session, QUnknownInterface *whole);

    /// Sets where to search for source files that were moved: a function that returns absolute paths of files, called
    /// when needed, and directories.
    void setSources(const std::function<QStringList()> &projectFiles, const QStringList &directories);
    /// Sets the project's directory. If it was opened through a symbolic link, files below it keep the link in their
    /// paths, as the project has them.
    void setBasePath(const QString &path);
    void reset(); ///< Called when another program is loaded, or at other addresses.

    /// The file on this computer for a file name of gdb; empty if there is none, which message() reports once.
    [[nodiscard]] QString localFile(const QString &gdbFile);
    /// The file name of gdb for a file on this computer.
    [[nodiscard]] QString gdbFile(const QString &localFile);
    [[nodiscard]] const LineTable &lines();
    /// Begins to read the lines and waits at most @p milliseconds. True if lines() answers at once.
    bool fetchLines(int milliseconds);
    /// Sets the region that the disassembly window shows.
    void setShown(const TargetRegion &region) { m_shown = region; }
    /// The 64-bit address for an address of the host, first of all in the region that is shown.
    [[nodiscard]] quint64 widen(uint address);

    // With whole addresses. Nothing, false or an empty text if there is none.
    [[nodiscard]] std::optional<quint64> addressOfSymbol(const QString &name);
    [[nodiscard]] std::optional<quint64> addressOfLine(const QString &file, int line);
    bool placeOf(quint64 address, int kind, QString &file, int &line);
    [[nodiscard]] QString symbolNear(quint64 address);

    bool symbolAddress(const QString &name, uint &address) override;
    bool sourceLocation(uint address, int kind, QString &file, int &line) override;
    void reserved1() override {}
    void reserved2() override {}
    bool addressOf(const QString &file, int line, uint &address) override;
    bool symbolAt(uint address, int region, QString &name) override;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    struct LineRequest;

    QString findLocalFile(const QString &gdbFile) const;
    const QStringList &gdbFiles();
    void takeFiles(const MiRecord &answer);
    void requestLines();
    void requestLinesOf(const std::shared_ptr<LineRequest> &request);
    void takeLines();

    GdbSession *const m_session;
    std::function<QStringList()> m_projectFiles;
    QStringList m_directories;
    QString m_basePath;
    QString m_realBasePath; ///< without symbolic links
    QHash<QString, QString> m_localFiles;
    QStringList m_gdbFiles;
    bool m_linesKnown = false;
    std::shared_ptr<LineRequest> m_lineRequest; ///< null while the lines are not being read
    LineTable m_lines;
    TargetRegion m_shown; ///< in the disassembly window
};
