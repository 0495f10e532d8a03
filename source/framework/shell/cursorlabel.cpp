#include "cursorlabel.h"
#include <QCoreApplication>
#include <QEvent>

namespace {
constexpr int Delay = 30; ///< milliseconds
}

CursorLabel::CursorLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    m_timer.setSingleShot(true);
    m_timer.setInterval(Delay);
    connect(&m_timer, &QTimer::timeout, this, &CursorLabel::refresh);
}

void CursorLabel::showPosition(uint line, int column)
{
    m_line = line;
    m_column = column;
    changeSoon();
}

void CursorLabel::showNothing()
{
    m_line = 0;
    changeSoon();
}

void CursorLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        setFixedSize(sizeHint());
}

QString CursorLabel::currentText() const
{
    if (m_line == 0)
        return {};
    return QCoreApplication::translate("MainWindow", " Ln %1, Col %2").arg(m_line).arg(m_column);
}

void CursorLabel::changeSoon()
{
    if (!m_timer.isActive()) // else nothing would be painted while a key repeats
        m_timer.start();
}

void CursorLabel::refresh()
{
    const QString shown = currentText();
    if (shown == text())
        return;
    setText(shown);
    setFixedSize(sizeHint().expandedTo({minimumWidth(), 0}));
}
