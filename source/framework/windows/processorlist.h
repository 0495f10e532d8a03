#pragma once
#include "delayedrefresh.h"
#include "processortext.h"
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>
class Activity;
class DebugControl;
class ListView;
class ListViewItem;
class Project;
class QPushButton;
class WindowServices;

/// All processors of the workspace with their states, and buttons that run and pause one or all. The current project is
/// bold; a double click on another one, or Return, makes it the current one.
///
/// The environments are asked a short time after a change, and only while the list is visible.
class ProcessorList : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    /// The first three arguments outlive this object.
    ProcessorList(Activity &activity, DebugControl &debug, const WindowServices &services, QWidget *parent = nullptr);

    [[nodiscard]] QString text() const; ///< The rows, a line each: the columns but the time, separated by "|".

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    enum Column { ProjectColumn, StateColumn, FunctionColumn, PlaceColumn, ReasonColumn, TimeColumn, ColumnCount };
    struct Row
    {
        QPointer<Project> project;
        QString name;
        bool current = false;
        ProcessorState state = ProcessorState::NoEnvironment;
        ProgramSpot spot;
        QString reason;
        QElapsedTimer since; ///< invalid if there is no report
    };

    void createLayout(const WindowServices &services);
    void connectButtons();
    void followProgram();
    void read();
    [[nodiscard]] Row rowOf(Project *project) const;
    void showRows(const QList<Row> &rows);
    static void showRow(ListViewItem *item, const Row &row);
    void showTimes();
    void clear();
    [[nodiscard]] Project *selectedProject() const;
    void makeCurrent();
    void enableButtons();
    [[nodiscard]] bool canRun(const Row &row) const;
    [[nodiscard]] static bool canPause(const Row &row);

    Activity &m_activity;
    DebugControl &m_debug;
    ListView *const m_list;
    QPushButton *const m_run;
    QPushButton *const m_pause;
    QPushButton *const m_runAll;
    QPushButton *const m_pauseAll;
    QList<Row> m_rows; ///< as shown
    QTimer m_clock;    ///< updates the times
    DelayedRefresh m_refresh;
};
