#pragma once
#include <array>
#include <QByteArray>
#include <QMap>
#include <QRandomGenerator>
#include <QStringList>

/// A simple model of the program as scripts see it: a workspace with the projects "fw" and "dsp", and the debugger of
/// the first. It chooses calls at random and knows what each returns, as text of `repr` or "Class: text" of an error.
class ScriptModel
{
public:
    ScriptModel(QRandomGenerator &random, const QString &directory);

    /// Chooses the next call. Returns its expression, and sets the expected result.
    QByteArray next(QString *expected);

    /// Names and functions that the expressions use.
    [[nodiscard]] QByteArray preparation() const;

private:
    using Call = QByteArray (ScriptModel::*)(QString *expected);
    struct Region
    {
        const char *name;
        int low, high;
        QList<int> modes; ///< the first one is the one that a new region gets
    };
    struct Project
    {
        QMap<QString, QString> properties;
        QStringList files;
        bool modified = false;
    };
    struct Breakpoint
    {
        QString file;
        int line;
        int state;
        bool operator==(const Breakpoint &) const = default;
    };

    // scriptmodel.cpp
    QByteArray closedCall(QString *expected);
    QByteArray openWorkspace(QString *expected);
    QByteArray closeWorkspace(QString *expected);
    QByteArray staleObject(QString *expected);
    QByteArray changeSession(QString *expected);
    QByteArray readState(QString *expected);
    QByteArray setHandler(QString *expected);
    QByteArray takeEvents(QString *expected);
    QByteArray lookUpProject(QString *expected);
    QByteArray setCurrentProject(QString *expected);
    QByteArray setProperty(QString *expected);
    QByteArray readProject(QString *expected);
    QByteArray addFile(QString *expected);
    QByteArray changeUpdates(QString *expected);
    void fire(const QString &event, int state);
    void saveAll();

    // scriptmodeltarget.cpp
    QByteArray readWord(QString *expected);
    QByteArray writeWord(QString *expected);
    QByteArray readSlice(QString *expected);
    QByteArray writeSlice(QString *expected);
    QByteArray changeMode(QString *expected);
    QByteArray changeRegion(QString *expected);
    QByteArray readRegister(QString *expected);
    QByteArray writeRegister(QString *expected);
    QByteArray usePeripheral(QString *expected);
    QByteArray changeBreakpoint(QString *expected);
    QByteArray listBreakpoints(QString *expected);
    QByteArray evaluate(QString *expected);
    QByteArray verify(QString *expected);
    bool slice(QByteArray *bounds, int *begin, int *units);
    [[nodiscard]] int address();
    [[nodiscard]] int width() const;
    [[nodiscard]] const Region &region() const;

    bool chance(int oneOf) { return m_random.bounded(oneOf) == 0; }
    static QByteArray text(qint64 number) { return QByteArray::number(number); }
    static QByteArray quoted(const QString &text) { return '\'' + text.toUtf8() + '\''; }
    static QString listOf(const QStringList &texts);

    QRandomGenerator &m_random;
    const QByteArray m_directory;
    // The workspace
    bool m_open = true;
    bool m_hasStale = false;
    std::array<Project, 2> m_projects;
    int m_current = 0;
    int m_state = 0;
    bool m_updates = true;
    QMap<QString, bool> m_handlers; ///< by the name of the event
    QStringList m_events;           ///< since they were taken
    // The processor "fw"
    QMap<uint, uint> m_words;
    int m_region = 0;
    int m_mode = 1;
    bool m_verify = false;
    uint m_register = 0xFFFFFFFF;
    uint m_data = 0x41;
    QList<Breakpoint> m_breakpoints;
};
