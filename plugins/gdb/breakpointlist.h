#pragma once
#include "databreakpoints.h"
#include "facet.h"
#include "ibreakpointdetails.h"
#include <QObject>
class GdbSession;
class MiValue;
class SymbolTable;
struct MiRecord;

/// The user's breakpoints. They are kept between sessions and inserted into gdb in each of them.
class BreakpointList : public QObject, public Facet<IBreakpoints, IBreakpointDetails>
{
    Q_OBJECT
public:
    BreakpointList(GdbSession *session, SymbolTable *symbols, QUnknownInterface *whole);

    QList<BreakpointRecord> breakpoints() override;
    int setBreakpoint(const QString &file, int line, int state) override;
    int features() override { return Condition | HitCount | LogText | Thread | Temporary | DataWrite | DataRead; }
    bool details(const QString &file, int line, BreakpointDetails &details) override;
    bool setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason) override;
    QList<DataBreakpoint> dataBreakpoints() override { return m_data.all(); }
    bool setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason) override;
    BreakpointLimits limits() override;

    void insertAll();     ///< Inserts all of them into the gdb of a new session.
    void insertAllData(); ///< The same for those at data, whose addresses are final when the program is loaded.
    void readLimits();    ///< Those of the processor of a new session.
    void catchUp();       ///< Carries out what was changed while the session was starting in the background.
    void forget();        ///< The session has ended: locations are again those that the user set.
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
        BreakpointDetails details;
        bool isOutdated = false; ///< whether gdb does not know the state or the breakpoint yet

        [[nodiscard]] QList<BreakpointLocation> places() const;
    };

    Entry *find(const BreakpointLocation &location);
    /// With @p pending also where no code is known yet: in libraries that the program loads.
    bool insert(Entry *entry, QString *error, bool pending = false);
    MiRecord insertAt(const Entry &entry, const QByteArray &location, bool pending);
    int add(const BreakpointLocation &location, int state);
    int change(Entry *entry, int state);
    int remove(Entry *entry);
    void drop(const Entry *entry);
    void takePlaces(const MiValue &breakpoint, Entry *entry);
    void handleRecord(const MiRecord &record);
    void removeDeleted(int number);
    void takeRefusals(const QString &text);
    void sessionChanged();
    void printLog(const QString &text);
    [[nodiscard]] bool needsHardware(const Entry &entry) const;
    BreakpointLocation normalised(const QString &file, int line) const;

    GdbSession *const m_session;
    SymbolTable *const m_symbols;
    QString m_basePath;
    QList<Entry> m_entries;
    BreakpointLimits m_limits; ///< of the processor
    QList<int> m_obsolete;     ///< numbers of breakpoints that gdb still has
    DataBreakpoints m_data;
    QString m_log;              ///< what a breakpoint with a text has printed of a line that is not complete
    int m_refusedAtStop = -1;   ///< GdbSession::stopNumber() when the target refused some; -1 if it has all
    bool m_hitsChanged = false; ///< since the last stop
};

/// The locations in gdb's "bkpt" tuple: source lines first, then addresses as lines of the disassembly, each one once.
/// @p onlyAddresses omits the source lines.
[[nodiscard]] QList<BreakpointLocation> breakpointPlaces(const MiValue &breakpoint, bool onlyAddresses);
