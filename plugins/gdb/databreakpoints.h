#pragma once
#include "ibreakpointdetails.h"
#include <QObject>
class GdbSession;
struct MiRecord;

/// The user's breakpoints at data. They are kept between sessions and inserted into gdb in each of them.
class DataBreakpoints : public QObject
{
    Q_OBJECT
public:
    explicit DataBreakpoints(GdbSession *session) : m_session(session) {}

    [[nodiscard]] QList<DataBreakpoint> all() const;
    /// See IBreakpointDetails::setDataBreakpoint().
    bool set(DataBreakpoint &breakpoint, QString &reason);
    void insertAll();               ///< Those that the gdb of the session does not have.
    void forget();                  ///< The session has ended.
    [[nodiscard]] int used() const; ///< Number of those that the target watches.

    bool takeHits(int number, uint hits); ///< Whether the breakpoint with gdb's number is one of these.
    bool takeRefusal(int number, const QString &text);
    void clearRefusals();

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    struct Entry
    {
        DataBreakpoint point;
        int number = 0; ///< of the breakpoint in gdb; 0 if it is not inserted
    };

    Entry *find(int id);
    Entry *findNumber(int number);
    bool insert(Entry *entry, QString *reason);
    bool enable(const Entry &entry, QString *reason);
    void drop(const Entry &entry);

    GdbSession *const m_session;
    QList<Entry> m_entries;
    int m_lastId = 0;
};
