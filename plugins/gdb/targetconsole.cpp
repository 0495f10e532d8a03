#include "targetconsole.h"
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostLines = 10000;
}

TargetConsole::TargetConsole(QWidget *parent) : QWidget(parent), m_text(new QPlainTextEdit), m_input(new QLineEdit)
{
    setWindowTitle(tr("Target console"));
    setProperty("dockName", u"Target console"_s);
    setProperty("namedByProject", true); // there is a console for each processor
    setObjectName(u"targetConsole"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    auto *row = new QHBoxLayout;
    auto *end = new QToolButton;
    row->addWidget(m_input);
    row->addWidget(end);
    layout->addLayout(row);
    end->setText(tr("End"));
    end->setToolTip(tr("Sends the end of the input (Ctrl+D)"));
    end->setObjectName(u"EndButton"_s);
    connect(end, &QToolButton::clicked, this, &TargetConsole::sendEnd);
    m_input->installEventFilter(this);
    m_text->setReadOnly(true);
    m_text->setAccessibleName(tr("Output of the program"));
    m_input->setAccessibleName(tr("Line to send to the program"));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setMaximumBlockCount(MostLines);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_input->setPlaceholderText(tr("Line to send to the program"));
    m_input->setObjectName(u"InputEdit"_s);
    connect(m_input, &QLineEdit::returnPressed, this, &TargetConsole::send);
}

/// Appends the text, and scrolls to the end unless the user has scrolled away from it.
void TargetConsole::append(const QByteArray &bytes)
{
    QScrollBar *bar = m_text->verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    QString text = m_decoder.decode(bytes);
    text.remove(u'\r');
    text.remove(u'\0');
    QTextCursor cursor(m_text->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    if (atEnd)
        bar->setValue(bar->maximum());
}

void TargetConsole::clear()
{
    m_text->clear();
    m_decoder.resetState();
}

QString TargetConsole::text() const
{
    return m_text->toPlainText();
}

void TargetConsole::send()
{
    const QByteArray line = m_input->text().toUtf8() + '\n';
    m_input->clear();
    append(line);
    Q_EMIT entered(line);
}

/// A line that was not sent yet comes first.
void TargetConsole::sendEnd()
{
    if (!m_input->text().isEmpty())
        send();
    Q_EMIT entered("\x04");
}

/// Ctrl+D in the line of input, also if it is the key of a command.
bool TargetConsole::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != Qt::Key_D || key->modifiers() != Qt::ControlModifier)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        sendEnd();
    event->accept();
    return true;
}
