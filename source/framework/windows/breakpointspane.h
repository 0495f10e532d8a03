#pragma once
#include "delayedrefresh.h"
#include "ibreakpointdetails.h"
#include <QPointer>
#include <QWidget>
class Activity;
class DebugControl;
class ListView;
class ListViewItem;
class Project;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidgetItem;
class WindowServices;

/// The breakpoints of all projects, those at data included: a check box enables one, Delete removes it, Return shows
/// its line. What the environment supports of condition, hit count and text is edited in its cell.
///
/// The environments are asked a short time after a change, and only while the list is visible.
class BreakpointsPane : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    /// The first three arguments outlive this object.
    BreakpointsPane(Activity &activity, DebugControl &debug, WindowServices &services, QWidget *parent = nullptr);

    [[nodiscard]] QString text() const; ///< The rows, a line each: "[x] main.c, 7|condition|hit|text|hits|project".

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum Column { PlaceColumn, ConditionColumn, HitCountColumn, LogTextColumn, HitsColumn, ProjectColumn, ColumnCount };
    struct Row
    {
        QPointer<Project> project;
        bool isData = false;
        BreakpointLocation place; ///< the first one
        DataBreakpoint data;
        int state = BreakpointEnabled;
        BreakpointDetails details;
        int features = 0; ///< of the environment
    };

    void createLayout();
    QWidget *createDataRow();
    void followProgram();
    void read();
    static void addRowsOf(Project *project, QList<Row> *rows);
    void showRows(const QList<Row> &rows);
    void showRow(ListViewItem *item, const Row &row) const;
    [[nodiscard]] static QString dataText(const DataBreakpoint &point);
    void showLimits();
    void fillAccessChoice(int features);
    [[nodiscard]] const Row *rowOf(const QTreeWidgetItem *item) const; ///< Null if it is gone.

    bool mayChange();
    void checkChanged(QTreeWidgetItem *item, int column);
    void remove();
    void setState(const Row &row, int state);
    void edited(ListViewItem *item, int column, const QString &text);
    void setDetails(const Row &row, const BreakpointDetails &details);
    void setData(Project *project, DataBreakpoint point);
    void addData();
    void openSource(const QTreeWidgetItem *item);
    void report(const QString &text);

    Activity &m_activity;
    DebugControl &m_debug;
    WindowServices &m_services;
    ListView *const m_list;
    QLineEdit *m_expression = nullptr;
    QComboBox *m_access = nullptr;
    QPushButton *m_add = nullptr;
    QLabel *m_message = nullptr;
    QLabel *m_limits = nullptr;
    QList<Row> m_rows; ///< as shown
    bool m_filling = false;
    DelayedRefresh m_refresh;
};
