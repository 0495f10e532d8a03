#include "callstackview.h"
#include "gdbsession.h"
#include <QComboBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int LastFrame = 199;
}

QStringList frameColumns(const MiValue &frame)
{
    const QString function = frame.contains(u"func") ? frame.text(u"func") : frame.text(u"addr");
    const QString file = frame.contains(u"file") ? QFileInfo(frame.text(u"file")).fileName() : frame.text(u"from");
    const QString line = frame.text(u"line");
    return {frame.text(u"level"), function, line.isEmpty() ? file : file + u", "_s + line};
}

CallStackView::CallStackView(GdbSession *session, QWidget *parent)
    : QWidget(parent), m_session(session), m_threads(new QComboBox), m_frames(new QTreeWidget)
{
    setWindowTitle(tr("Call stack"));
    setObjectName(u"callStackView"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_threads);
    layout->addWidget(m_frames);
    m_threads->hide();
    m_threads->setAccessibleName(tr("Thread"));
    m_frames->setAccessibleName(tr("Call stack"));
    m_frames->setObjectName(u"framesTree"_s);
    m_frames->setRootIsDecorated(false);
    m_frames->setHeaderLabels({tr("Level"), tr("Function"), tr("Place")});
    m_frames->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    connect(m_frames, &QTreeWidget::itemActivated, this, &CallStackView::selectFrame);
    connect(m_threads, &QComboBox::activated, this, &CallStackView::selectThread);
    connect(session, &GdbSession::changed, this, &CallStackView::update);
}

QString CallStackView::text() const
{
    QString text;
    for (int row = 0; row < m_frames->topLevelItemCount(); ++row) {
        const QTreeWidgetItem *frame = m_frames->topLevelItem(row);
        text += u"%1 %2 %3\n"_s.arg(frame->text(0), frame->text(1), frame->text(2));
    }
    return text;
}

void CallStackView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    update();
}

void CallStackView::update()
{
    if (!isVisible() || !m_session)
        return;
    setEnabled(m_session->isStopped());
    if (!m_session->isStopped()) {
        m_frames->clear();
        return;
    }
    const QPointer<CallStackView> self(this);
    m_session->gdb()->send("-thread-info", [self](const MiRecord &answer) {
        if (self)
            self->showThreads(answer);
    });
    m_session->gdb()->send("-stack-list-frames 0 " + QByteArray::number(LastFrame), [self](const MiRecord &answer) {
        if (self)
            self->showFrames(answer);
    });
}

void CallStackView::showThreads(const MiRecord &answer)
{
    m_threads->clear();
    for (const MiValue &thread : answer.results[u"threads"].items()) {
        const QString id = thread.text(u"id");
        const QString name = thread.contains(u"name") ? thread.text(u"name") : thread.text(u"target-id");
        m_threads->addItem(u"%1  %2"_s.arg(id, name), id);
    }
    m_threads->setCurrentIndex(m_threads->findData(answer.results.text(u"current-thread-id")));
    m_threads->setVisible(m_threads->count() > 1);
}

void CallStackView::showFrames(const MiRecord &answer)
{
    m_frames->clear();
    for (const MiValue &frame : answer.results[u"stack"].items()) {
        auto *item = new QTreeWidgetItem(m_frames, frameColumns(frame));
        if (m_session && frame.number(u"level") == m_session->frame().level)
            m_frames->setCurrentItem(item);
    }
}

void CallStackView::selectFrame(const QTreeWidgetItem *item)
{
    if (m_session)
        m_session->selectFrame(item->text(0).toInt());
}

void CallStackView::selectThread(int index)
{
    if (m_session)
        m_session->selectThread(m_threads->itemData(index).toString());
}
