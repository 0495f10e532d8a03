#include "querypane.h"
#include "gridtext.h"
#include "listview.h"
#include <QLabel>
#include <QStackedLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int ClearDelay = 500; ///< in ms; a step takes less, and its rows should not flicker
}

QueryPane::QueryPane(ListView *list, QWidget *parent)
    : DebugPane(parent), m_list(list), m_note(new QLabel), m_message(new QLabel), m_stack(new QStackedLayout)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addLayout(m_stack, 1);
    layout->addWidget(m_message);
    m_stack->addWidget(m_list);
    m_stack->addWidget(m_note);
    m_list->setMinimumSize(readableSize(*m_list));
    m_list->setAllColumnsShowFocus(true);
    m_note->setObjectName(u"note"_s);
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setWordWrap(true);
    m_note->setMargin(8);
    m_note->setTextFormat(Qt::PlainText);
    m_message->setObjectName(u"message"_s);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setWordWrap(true);
    m_message->setMargin(4);
    m_message->hide();
    m_note->setFocusPolicy(Qt::TabFocus);
    setFocusProxy(m_list);
    m_clearTimer.setSingleShot(true);
    m_clearTimer.setInterval(ClearDelay);
    connect(&m_clearTimer, &QTimer::timeout, this, &QueryPane::showNotPaused);
}

void QueryPane::addTopRow(QWidget *row)
{
    static_cast<QVBoxLayout *>(layout())->insertWidget(0, row);
}

void QueryPane::setOffered(bool offered, const QString &missing)
{
    m_offered = offered;
    m_queries.cancel();
    if (offered)
        showNotPaused();
    else
        showNote(missing);
}

void QueryPane::showNote(const QString &text)
{
    m_note->setText(text);
    const bool hadFocus = m_stack->currentWidget()->hasFocus();
    m_stack->setCurrentIndex(text.isEmpty() ? 0 : 1);
    setFocusProxy(m_stack->currentWidget());
    if (hadFocus)
        setFocus();
}

void QueryPane::showMessage(const QString &text)
{
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

QString QueryPane::message() const
{
    return m_message->text();
}

QString QueryPane::note() const
{
    return m_note->text();
}

void QueryPane::setPaused(bool paused)
{
    if (m_paused == paused)
        return;
    m_paused = paused;
    m_outdated = true;
    if (!paused)
        return m_clearTimer.start();
    m_clearTimer.stop();
    if (m_updateWaits) // an update may arrive before the pause, depending on the order of the connections
        update();
}

void QueryPane::showNotPaused()
{
    m_queries.cancel();
    clear();
    if (m_offered)
        showNote(tr("The program is not paused."));
}

void QueryPane::update()
{
    m_outdated = true;
    m_updateWaits = !m_paused;
    if (!m_offered || !m_paused || !isVisible())
        return;
    m_outdated = false;
    m_queries.cancel();
    showMessage({});
    read();
}

void QueryPane::showEvent(QShowEvent *event)
{
    DebugPane::showEvent(event);
    if (m_outdated)
        update();
}
