#include "livewindow.h"
#include "activity.h"
#include "lastdirectories.h"
#include "livelist.h"
#include "messages.h"
#include "project.h"
#include "questions.h"
#include "rateswitch.h"
#include "timeplot.h"
#include "wholefile.h"
#include "windowservices.h"
#include <algorithm>
#include <array>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleValidator>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QThreadPool>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int ReadDelay = 50;                              ///< in ms; a program may report often
constexpr std::array Spans{5, 10, 30, 60, 300, 900, 3600}; ///< in seconds

template <typename Widget>
Widget *named(Widget *widget, const QString &name, const QString &toolTip = {})
{
    widget->setObjectName(name);
    widget->setToolTip(toolTip);
    return widget;
}

QString spanText(int seconds)
{
    if (seconds < 60)
        return LiveWindow::tr("%1 s").arg(seconds);
    return seconds < 3600 ? LiveWindow::tr("%1 min").arg(seconds / 60) : LiveWindow::tr("%1 h").arg(seconds / 3600);
}

QHBoxLayout *row()
{
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(4, 4, 4, 2);
    return layout;
}

QLabel *labelFor(QWidget *control, const QString &text)
{
    auto *label = new QLabel(text);
    label->setBuddy(control);
    control->setAccessibleName(text.chopped(1));
    return label;
}
} // namespace

LiveWindow::LiveWindow(const Activity &activity, WindowServices &services, QWidget *parent)
    : QWidget(parent)
    , m_activity(activity)
    , m_services(services)
    , m_recorder(activity)
    , m_splitter(new QSplitter)
    , m_list(new LiveList(m_recorder))
    , m_plot(named(new TimePlot, u"livePlot"_s))
    , m_live(named(new RateSwitch, u"liveRate"_s,
                   tr("Reads the targets while their programs run, without stopping them.")))
    , m_project(named(new QComboBox, u"liveProject"_s, tr("The processor of a new variable")))
    , m_expression(named(new QLineEdit, u"liveExpression"_s))
    , m_add(named(new QPushButton(tr("Add")), u"liveAdd"_s, tr("Adds the variable to the list.")))
    , m_pause(named(new QToolButton, u"livePause"_s, tr("Holds the plot while recording goes on.")))
    , m_span(named(new QComboBox, u"liveSpan"_s))
    , m_low(named(new QLineEdit, u"liveLow"_s))
    , m_high(named(new QLineEdit, u"liveHigh"_s))
    , m_automatic(
          named(new QCheckBox(tr("Automatic")), u"liveAutomatic"_s, tr("The values on screen decide the range.")))
    , m_clear(named(new QPushButton(tr("Clear")), u"liveClear"_s, tr("Begins a new recording.")))
    , m_save(named(new QPushButton(tr("Save...")), u"liveSave"_s,
                   tr("Writes the recording to a file of comma-separated values.")))
{
    setObjectName(u"liveWindow"_s);
    m_changeTimer.setSingleShot(true);
    m_changeTimer.setInterval(ReadDelay);
    createControls();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_splitter);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(listSide());
    m_splitter->addWidget(plotSide());
    m_splitter->setStretchFactor(1, 2);
    m_splitter->setMinimumWidth(m_splitter->widget(1)->minimumSizeHint().width()); // for one below the other
    connectControls();
    showProjects();
    showVariables();
    showView();
}

void LiveWindow::createControls()
{
    m_expression->setPlaceholderText(tr("Variable"));
    m_expression->setAccessibleName(tr("Variable"));
    m_project->setAccessibleName(tr("Processor"));
    m_project->setMinimumContentsLength(10); // names may be long
    m_project->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pause->setText(tr("Pause"));
    m_pause->setCheckable(true);
    m_pause->setFocusPolicy(Qt::StrongFocus);
    for (const int seconds : Spans)
        m_span->addItem(spanText(seconds), seconds);
    m_span->addItem(tr("All"), 0);
    for (QLineEdit *edit : {m_low, m_high}) {
        edit->setValidator(new QDoubleValidator(edit));
        edit->setMinimumWidth(fontMetrics().horizontalAdvance(u'0') * 8);
        edit->setMaximumWidth(fontMetrics().horizontalAdvance(u'0') * 14);
    }
    setFocusProxy(m_list);
}

QWidget *LiveWindow::listSide()
{
    auto *side = new QWidget;
    auto *top = row();
    top->addWidget(m_live);
    top->addWidget(m_project);
    top->addWidget(m_expression, 1);
    top->addWidget(m_add);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    return side;
}

QWidget *LiveWindow::plotSide()
{
    auto *side = new QWidget;
    auto *top = row();
    top->addWidget(m_pause);
    top->addWidget(labelFor(m_span, tr("Time:")));
    top->addWidget(m_span);
    top->addWidget(labelFor(m_low, tr("From:")));
    top->addWidget(m_low, 1);
    top->addWidget(labelFor(m_high, tr("To:")));
    top->addWidget(m_high, 1);
    top->addWidget(m_automatic);
    top->addStretch();
    top->addWidget(m_clear);
    top->addWidget(m_save);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addLayout(top);
    layout->addWidget(m_plot, 1);
    return side;
}

void LiveWindow::connectControls()
{
    connect(&m_activity, &Activity::workspaceOpened, this, &LiveWindow::showProjects);
    connect(&m_activity, &Activity::projectsChanged, this, &LiveWindow::showProjects);
    connect(&m_activity, &Activity::currentProjectChanged, this, &LiveWindow::showProjects);
    connect(&m_activity, &Activity::workspaceClosed, this, &LiveWindow::showProjects);
    connect(&m_activity, &Activity::stateEntered, this, &LiveWindow::schedule);
    connect(&m_changeTimer, &QTimer::timeout, this, [this] {
        m_outdated = false;
        m_recorder.readAll();
    });
    connect(&m_recorder, &LiveRecorder::variablesChanged, this, &LiveWindow::showVariables);
    connect(&m_recorder, &LiveRecorder::valuesChanged, this, &LiveWindow::showValues);
    connect(m_live, &RateSwitch::tick, &m_recorder, &LiveRecorder::record);
    connect(m_add, &QPushButton::clicked, this, &LiveWindow::addVariable);
    connect(m_expression, &QLineEdit::returnPressed, this, &LiveWindow::addVariable);
    connect(m_expression, &QLineEdit::textChanged, this, &LiveWindow::enableAdding);
    connect(m_plot, &TimePlot::viewChanged, this, &LiveWindow::showView);
    connect(m_pause, &QToolButton::toggled, m_plot, [this](bool paused) { m_plot->setFollowing(!paused); });
    connect(m_span, &QComboBox::activated, this, &LiveWindow::chooseSpan);
    for (QLineEdit *edit : {m_low, m_high})
        connect(edit, &QLineEdit::editingFinished, this, [this, edit] { chooseRange(*edit); });
    connect(m_automatic, &QCheckBox::toggled, m_plot, [this](bool automatic) {
        m_plot->setFixedRange(automatic ? std::nullopt : std::optional(m_plot->shownRange()));
    });
    connect(m_clear, &QPushButton::clicked, &m_recorder, &LiveRecorder::clearRecording);
    connect(m_save, &QPushButton::clicked, this, &LiveWindow::save);
}

void LiveWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_outdated)
        schedule();
}

void LiveWindow::hideEvent(QHideEvent *event)
{
    m_changeTimer.stop();
    m_outdated = true;
    QWidget::hideEvent(event);
}

/// In a narrow place the plot is below the list.
void LiveWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    int needed = m_splitter->handleWidth();
    for (int i = 0; i < m_splitter->count(); ++i)
        needed += m_splitter->widget(i)->minimumSizeHint().width();
    const bool isWide = width() >= std::max(needed, height());
    m_splitter->setOrientation(isWide ? Qt::Horizontal : Qt::Vertical);
}

void LiveWindow::schedule()
{
    m_outdated = true;
    if (isVisible() && !m_changeTimer.isActive())
        m_changeTimer.start();
}

// Variables -----------------------------------------------------------------------------------------------------------

void LiveWindow::showProjects()
{
    m_projects = m_activity.projects();
    m_projects.removeIf([](const QPointer<Project> &each) { return !each || !each->executionInterface(); });
    m_project->clear();
    for (const QPointer<Project> &project : std::as_const(m_projects))
        m_project->addItem(project->name());
    m_project->setCurrentIndex(std::max(0, int(m_projects.indexOf(m_activity.currentProject()))));
    enableAdding();
}

void LiveWindow::enableAdding()
{
    m_project->setEnabled(!m_projects.isEmpty());
    m_expression->setEnabled(!m_projects.isEmpty());
    m_add->setEnabled(!m_projects.isEmpty() && !m_expression->text().trimmed().isEmpty());
}

void LiveWindow::addVariable()
{
    Project *project = m_projects.value(m_project->currentIndex());
    const int index = m_recorder.add(project, m_expression->text());
    if (index < 0 && !m_expression->text().trimmed().isEmpty() && project)
        m_services.showMessage(tr("The list cannot have more than %1 variables.").arg(LiveRecorder::MostVariables));
    if (index < 0)
        return;
    m_expression->clear();
    m_list->setCurrentItem(m_list->topLevelItem(index));
    schedule();
}

QString LiveWindow::nameOf(const LiveVariable &variable)
{
    const QString project = variable.project ? variable.project->name() : QString();
    return u"%1: %2"_s.arg(project, variable.expression);
}

void LiveWindow::showVariables()
{
    m_list->showVariables();
    QList<TimePlot::Curve> curves;
    for (const LiveVariable &variable : m_recorder.variables()) {
        if (variable.plotted)
            curves.append({nameOf(variable), variable.style, variable.series});
    }
    m_plot->setCurves(curves);
    showValues();
}

void LiveWindow::showValues()
{
    m_list->showValues();
    m_plot->setNow(m_recorder.time());
    const bool isRecorded = std::ranges::any_of(
        m_recorder.variables(), [](const LiveVariable &each) { return !each.series->samples().isEmpty(); });
    m_clear->setEnabled(isRecorded);
    m_save->setEnabled(isRecorded);
    if (!m_plot->fixedRange())
        showRange(false);
}

QString LiveWindow::text() const
{
    return m_list->text() + m_plot->text();
}

// The view of the plot ------------------------------------------------------------------------------------------------

void LiveWindow::showView()
{
    const QSignalBlocker noPause(m_pause);
    const QSignalBlocker noRange(m_automatic);
    m_pause->setChecked(!m_plot->isFollowing());
    m_automatic->setChecked(!m_plot->fixedRange());
    m_span->setCurrentIndex(m_plot->span() % 1000 == 0 ? m_span->findData(int(m_plot->span() / 1000)) : -1);
    showRange(false);
}

/// Without @p force an edit in which the user may be typing stays as it is.
void LiveWindow::showRange(bool force)
{
    const ValueRange range = m_plot->shownRange();
    for (const auto &[edit, value] : {std::pair(m_low, range.low), std::pair(m_high, range.high)}) {
        const QString text = locale().toString(value, 'g', 6);
        if ((force || !edit->hasFocus()) && edit->text() != text)
            edit->setText(text);
    }
}

void LiveWindow::chooseSpan(int index)
{
    const qint64 seconds = m_span->itemData(index).toInt();
    if (seconds == 0)
        m_plot->showAll();
    else
        m_plot->setSpan(1000 * seconds);
}

/// A range that is none leaves the old one.
void LiveWindow::chooseRange(QLineEdit &edit)
{
    if (!edit.isModified())
        return;
    edit.setModified(false);
    bool lowValid = false;
    bool highValid = false;
    const ValueRange range{locale().toDouble(m_low->text(), &lowValid), locale().toDouble(m_high->text(), &highValid)};
    if (lowValid && highValid)
        m_plot->setFixedRange(range);
    showRange(true);
}

// Session and file ----------------------------------------------------------------------------------------------------

QJsonObject LiveWindow::stored() const
{
    QJsonObject object{
        {u"variables"_s, m_recorder.stored()}, {u"rate"_s, m_live->rate()}, {u"span"_s, double(m_plot->span())}};
    if (const auto range = m_plot->fixedRange())
        object.insert(u"range"_s, QJsonArray{range->low, range->high});
    return object;
}

void LiveWindow::restore(const QJsonObject &stored)
{
    constexpr int DefaultSpan = 30000;
    constexpr int DefaultRate = 5;
    m_live->setChecked(false);
    m_live->setRate(stored.value(u"rate"_s).toInt(DefaultRate));
    m_plot->setFollowing(true);
    m_plot->setSpan(qint64(stored.value(u"span"_s).toDouble(DefaultSpan)));
    m_plot->setFixedRange({});
    const QJsonArray range = stored.value(u"range"_s).toArray();
    if (range.size() == 2)
        m_plot->setFixedRange(ValueRange{range[0].toDouble(), range[1].toDouble()});
    m_recorder.restore(stored.value(u"variables"_s).toArray());
    schedule();
}

QList<LiveColumn> LiveWindow::columns() const
{
    QList<LiveColumn> columns;
    for (const LiveVariable &variable : m_recorder.variables())
        columns.append({nameOf(variable), *variable.series});
    return columns;
}

/// What was recorded when the dialog opened is written, since the workspace may be closed meanwhile.
void LiveWindow::save()
{
    const QList<LiveColumn> recorded = columns();
    const QString directory = m_services.directories().directory(u"Files"_s);
    const QPointer<LiveWindow> self(this);
    QString file = askForSaveFile(m_services.dialogParent(), {u"saveRecordingDialog"_s, tr("Save Recording"), directory,
                                                              tr("Comma-Separated Values (*.csv);;All Files (*.*)")});
    if (!self || file.isEmpty())
        return;
    if (QFileInfo(file).suffix().isEmpty())
        file += u".csv"_s;
    m_services.directories().remember(u"Files"_s, file);
    writeTo(file, recorded);
}

/// A long recording takes seconds, so that it is written by a thread.
void LiveWindow::writeTo(const QString &file, const QList<LiveColumn> &columns)
{
    QThreadPool::globalInstance()->start([self = QPointer(this), file, columns] {
        const bool written = writeFileSafely(file, liveCsv(columns));
        QMetaObject::invokeMethod(
            qApp,
            [self, file, written] {
                if (self && written)
                    self->m_services.showMessage(
                        tr("The recording was written to '%1'.").arg(QDir::toNativeSeparators(file)));
                else if (self)
                    showWarning(self,
                                tr("The recording could not be written to '%1'.").arg(QDir::toNativeSeparators(file)));
            },
            Qt::QueuedConnection);
    });
}
