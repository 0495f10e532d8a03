#pragma once
#include "facet.h"
#include "ibreakpoints.h"
#include <QObject>
class GdbSession;
class MiValue;
class SymbolTable;
struct MiRecord;

/// The user's breakpoints. They are kept between sessions and inserted into gdb in each of them.
class BreakpointList : public QObject, public Facet<IBreakpoints>
{
    Q_OBJECT
public:
    BreakpointList(GdbSession *session, SymbolTable *symbols, QUnknownInterface *whole);

    QList<BreakpointRecord> breakpoints() override;
    int setBreakpoint(const QString &file, int line, int state) override;

    void insertAll(); ///< Inserts all of them into the gdb of a new session.
    void forget();    ///< The session has ended: locations are again those that the user set.
    /// Sets the directory of relative paths.
    void setBasePath(const QString &path) { m_basePath = path; }

Q_SIGNALS:
    void changed(); ///< Emitted from the event loop if gdb caused the change.
    void message(const QString &text, bool serious);

private:
    struct Entry
    {
        BreakpointLocation wanted;
        int state = BreakpointEnabled;
        int number = 0;                      ///< of the breakpoint in gdb; 0 if it is not inserted
        QList<BreakpointLocation> locations; ///< where gdb inserted it

        [[nodiscard]] QList<BreakpointLocation> places() const;
    };

    Entry *find(const BreakpointLocation &location);
    /// With @p pending also where no code is known yet: in libraries that the program loads.
    bool insert(Entry *entry, QString *error, bool pending = false);
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

/// The locations in gdb's "bkpt" tuple: source lines first, then addresses as lines of the disassembly, each one once.
/// @p onlyAddresses omits the source lines.
[[nodiscard]] QList<BreakpointLocation> breakpointPlaces(const MiValue &breakpoint, bool onlyAddresses);
