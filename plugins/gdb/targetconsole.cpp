#include "targetconsole.h"
#include <QFontDatabase>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostLines = 10000;
}

TargetConsole::TargetConsole(QWidget *parent) : QWidget(parent), m_text(new QPlainTextEdit), m_input(new QLineEdit)
{
    setWindowTitle(tr("Target console"));
    setObjectName(u"targetConsole"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    layout->addWidget(m_input);
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
