#pragma once
#include "facet.h"
#include "ibreakpoints.h"
#include <QObject>
class GdbSession;
class MiValue;
class SymbolTable;
struct MiRecord;

/// The user's breakpoints. They stay from session to session; gdb gets them anew in each.
class BreakpointList : public QObject, public Facet<IBreakpoints>
{
    Q_OBJECT
public:
    BreakpointList(GdbSession *session, SymbolTable *symbols, QUnknownInterface *whole);

    QList<BreakpointRecord> breakpoints() override;
    int setBreakpoint(const QString &file, int line, int state) override;

    void insertAll(); ///< Gives all of them to a gdb that has none yet.
    void forget();    ///< The session has ended: places are as the user set them.
    /// Sets the folder that relative paths start at.
    void setBasePath(const QString &path) { m_basePath = path; }

Q_SIGNALS:
    void changed(); ///< From the event loop where gdb is the cause.
    void message(const QString &text, bool serious);

private:
    struct Entry
    {
        BreakpointLocation wanted;
        int state = BreakpointEnabled;
        int number = 0;                      ///< gdb's; 0 if gdb does not have it
        QList<BreakpointLocation> locations; ///< as gdb placed it

        [[nodiscard]] QList<BreakpointLocation> places() const;
    };

    Entry *find(const BreakpointLocation &location);
    bool insert(Entry *entry, QString *error);
    int add(const BreakpointLocation &location, int state);
    int change(Entry *entry, int state);
    int remove(Entry *entry);
    void drop(const Entry *entry);
    void takePlaces(const MiValue &breakpoint, Entry *entry);
    void handleRecord(const MiRecord &record);
    BreakpointLocation normalised(const QString &file, int line) const;

    GdbSession *const m_session;
    SymbolTable *const m_symbols;
    QString m_basePath;
    QList<Entry> m_entries;
};

/// Where gdb's "bkpt" tuple places a breakpoint: source lines, and program addresses as lines of the disassembly. Each
/// place stands once, the source lines first. @p onlyAddresses leaves out the source lines.
[[nodiscard]] QList<BreakpointLocation> breakpointPlaces(const MiValue &breakpoint, bool onlyAddresses);
