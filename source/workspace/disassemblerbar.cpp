#include "disassemblerbar.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

DisassemblerBar::DisassemblerBar(QWidget *parent)
    : QWidget(parent)
    , m_goTo(new QLineEdit)
    , m_message(new QLabel)
    , m_progress(new QProgressBar)
    , m_cancel(new QToolButton)
{
    setBackgroundRole(QPalette::Window); // the space around documents is darker
    setAutoFillBackground(true);
    m_goTo->setObjectName(u"DisassemblyGoTo"_s);
    m_message->setObjectName(u"DisassemblyMessage"_s);
    m_progress->setObjectName(u"DisassemblyProgress"_s);
    m_cancel->setObjectName(u"DisassemblyCancel"_s);
    m_goTo->setPlaceholderText(tr("Go to address or symbol"));
    m_goTo->setAccessibleName(m_goTo->placeholderText());
    m_goTo->setFixedWidth(240);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_progress->setMaximumWidth(120);
    m_cancel->setText(tr("Cancel"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(4, 2, 4, 2);
    row->addWidget(m_goTo);
    row->addSpacing(8);
    row->addWidget(m_message, 1);
    row->addWidget(m_progress);
    row->addWidget(m_cancel);
    endProgress();
    connect(m_goTo, &QLineEdit::returnPressed, this, [this] {
        if (const QString text = m_goTo->text().trimmed(); !text.isEmpty())
            Q_EMIT goToRequested(text);
    });
    connect(m_cancel, &QToolButton::clicked, this, &DisassemblerBar::cancelled);
}

void DisassemblerBar::setMessage(const QString &text)
{
    m_message->setText(text);
    m_message->setToolTip(text);
}

void DisassemblerBar::setProgress(int percent)
{
    m_progress->setValue(percent);
    m_progress->show();
    m_cancel->show();
}

void DisassemblerBar::endProgress()
{
    m_progress->hide();
    m_cancel->hide();
}

/// Return ends here: in the text it has another meaning.
void DisassemblerBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QWidget::keyPressEvent(event);
}
