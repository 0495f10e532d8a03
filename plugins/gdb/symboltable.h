#pragma once
#include "facet.h"
#include "isourcemapping.h"
#include "isymbollookup.h"
#include "linetable.h"
#include <functional>
#include <QHash>
#include <QObject>
#include <QSet>
class GdbSession;

/// Sources, lines, addresses and symbols of the program.
///
/// The host's addresses have 32 bits. Those of wider targets are taken to be near the program's code: their upper half
/// is that of the code's addresses.
class SymbolTable : public QObject, public Facet<ISourceMapping, ISymbolLookup>
{
    Q_OBJECT
public:
    SymbolTable(GdbSession *session, QUnknownInterface *whole);

    /// Sets where sources are looked for that are not where the program was built: files by absolute paths, asked for
    /// when they are needed, and folders.
    void setSources(const std::function<QStringList()> &projectFiles, const QStringList &directories);
    void reset(); ///< Another program, or another place for it.

    /// The file on this computer for a file that gdb names; empty if there is none, which is told once.
    [[nodiscard]] QString localFile(const QString &gdbFile);
    /// What gdb calls a file on this computer.
    [[nodiscard]] QString gdbFile(const QString &localFile);
    [[nodiscard]] const LineTable &lines();
    [[nodiscard]] quint64 widen(uint address);

    bool symbolAddress(const QString &name, uint &address) override;
    bool sourceLocation(uint address, int kind, QString &file, int &line) override;
    void reserved1() override {}
    void reserved2() override {}
    bool addressOf(const QString &file, int line, uint &address) override;
    bool symbolAt(uint address, int region, QString &name) override;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    QString findLocalFile(const QString &gdbFile) const;
    const QStringList &gdbFiles();

    GdbSession *const m_session;
    std::function<QStringList()> m_projectFiles;
    QStringList m_directories;
    QHash<QString, QString> m_localFiles;
    QStringList m_gdbFiles;
    bool m_linesKnown = false;
    LineTable m_lines;
};
