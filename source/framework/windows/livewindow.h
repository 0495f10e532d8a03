#pragma once
#include "liverecorder.h"
#include <QJsonObject>
#include <QTimer>
#include <QWidget>
class LiveList;
class RateSwitch;
class TimePlot;
class WindowServices;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSplitter;
class QToolButton;

/// Variables of several processors side by side, with a plot of their values over time. They are read while the
/// programs run as long as the switch "Live" is on, and after each stop. Nothing is read while the window is hidden.
class LiveWindow : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    /// Both arguments outlive this object.
    LiveWindow(const Activity &activity, WindowServices &services, QWidget *parent = nullptr);

    [[nodiscard]] LiveRecorder &recorder() { return m_recorder; }
    [[nodiscard]] QString text() const; ///< The rows of the list, then what the plot shows.

    /// What is kept with the session of a workspace: variables, rate and axes.
    [[nodiscard]] QJsonObject stored() const;
    void restore(const QJsonObject &stored);

public Q_SLOTS:
    void schedule(); ///< A processor may have stopped or ended: reads all soon, or when the window appears.
    void save();     ///< Asks for a file and writes what was recorded.

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void createControls();
    [[nodiscard]] QWidget *listSide();
    [[nodiscard]] QWidget *plotSide();
    void connectControls();
    void showProjects();
    void enableAdding();
    void showVariables();
    void showValues();
    void showView();
    void showRange(bool force);
    void addVariable();
    void chooseSpan(int index);
    void chooseRange(QLineEdit &edit);
    void writeTo(const QString &file, const QList<LiveColumn> &columns);
    [[nodiscard]] QList<LiveColumn> columns() const;
    [[nodiscard]] static QString nameOf(const LiveVariable &variable);

    const Activity &m_activity;
    WindowServices &m_services;
    LiveRecorder m_recorder;
    QSplitter *const m_splitter;
    LiveList *const m_list;
    TimePlot *const m_plot;
    RateSwitch *const m_live;
    QComboBox *const m_project;
    QLineEdit *const m_expression;
    QPushButton *const m_add;
    QToolButton *const m_pause;
    QComboBox *const m_span;
    QLineEdit *const m_low;
    QLineEdit *const m_high;
    QCheckBox *const m_automatic;
    QPushButton *const m_clear;
    QPushButton *const m_save;
    QList<QPointer<Project>> m_projects; ///< those in the box
    QTimer m_changeTimer{this};          ///< active while a reading is due
    bool m_outdated = true;              ///< changed while hidden
};
