#pragma once
#include "timeseries.h"
#include <memory>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QObject>
#include <QPointer>
class Activity;
class ILiveMemory;
class Project;

/// A variable of one processor, with what has been recorded of it.
struct LiveVariable
{
    enum State {
        NotSupported, ///< the processor cannot be read while it runs
        NoSession,    ///< or its target cannot be read at present
        Unreadable,
        Readable
    };

    QPointer<Project> project;
    QString expression;
    int style = 0; ///< of its curve
    bool plotted = true;
    State state = NoSession;
    QString text; ///< its last value; empty if it was never read
    std::shared_ptr<TimeSeries> series = std::make_shared<TimeSeries>();
    bool tried = false; ///< it was prepared since the last stop, without success
};

/// Reads variables of several processors while these run, and records their values. It holds no plug-in object from one
/// call to the next.
///
/// The clock of the recording stands still while no processor runs.
class LiveRecorder : public QObject
{
    Q_OBJECT
public:
    static constexpr qsizetype MostVariables = 200;

    /// @p activity outlives this object.
    explicit LiveRecorder(const Activity &activity, QObject *parent = nullptr);

    [[nodiscard]] const QList<LiveVariable> &variables() const { return m_variables; }
    [[nodiscard]] qint64 time() const { return m_time; } ///< Of the recording, in ms.

    /// The index of the variable, which may have been there already; -1 if there are too many, or for an empty text.
    int add(Project *project, const QString &expression, bool plotted = true);
    void remove(int index);
    void setPlotted(int index, bool plotted);
    void clear();          ///< Removes all variables.
    void clearRecording(); ///< Begins a new recording of the same variables.

    /// The variables for the session of the workspace.
    [[nodiscard]] QJsonArray stored() const;
    void restore(const QJsonArray &stored); ///< Those of open projects.

public Q_SLOTS:
    void record();  ///< Reads the processors that run. Called several times a second.
    void readAll(); ///< Reads also processors that are paused: one may have stopped.

Q_SIGNALS:
    void variablesChanged(); ///< Some were added or removed, or are plotted now or no longer.
    void valuesChanged();    ///< After each reading.

private:
    struct Processor;

    void read(bool all);
    void advanceClock();
    bool readProcessor(Project *project, bool all);
    bool readVariable(int index, const Processor &processor);
    void dropGoneProjects();
    [[nodiscard]] int freeStyle() const;

    const Activity &m_activity;
    QList<LiveVariable> m_variables;
    int m_changes = 0;      ///< of the list; a plug-in that is asked may call back
    bool m_asking = false;  ///< a plug-in is being asked
    bool m_running = false; ///< a processor ran at the last reading
    qint64 m_time = 0;
    QElapsedTimer m_clock; ///< since the last reading
};

/// The number that a plot shows for a value as text: that at its beginning, in the base of the expression's format; 1
/// and 0 for "true" and "false". Nothing for other texts.
[[nodiscard]] std::optional<double> liveNumber(const QString &expression, const QString &text);

/// A series with a heading, for a file.
struct LiveColumn
{
    QString name;
    TimeSeries series;
};

/// Comma-separated values: a line for each time in seconds, a column for each series. Cells without a value are empty.
[[nodiscard]] QByteArray liveCsv(const QList<LiveColumn> &columns);
