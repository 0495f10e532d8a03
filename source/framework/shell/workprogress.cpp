#include "workprogress.h"
#include "messages.h"
#include <QApplication>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace {
constexpr int ShowDelay = 500; // milliseconds
constexpr int Interval = 30;   // milliseconds between two looks at the events
} // namespace

WorkProgress::WorkProgress(QWidget *parent, const QString &text) : m_parent(parent), m_hasParent(parent), m_text(text)
{
    m_start.start();
    m_last.start();
}

WorkProgress::~WorkProgress()
{
    end();
}

void WorkProgress::end()
{
    delete m_dialog;
}

bool WorkProgress::update(int percent)
{
    if (!parentIsGone() && m_last.hasExpired(Interval))
        refresh(percent);
    return !parentIsGone() && !(m_dialog && m_dialog->wasCanceled());
}

void WorkProgress::refresh(int percent)
{
    if (isCovered()) {
        if (m_dialog)
            m_dialog->deleteLater();
        m_dialog = nullptr; // it comes again half a second after the other one has closed
        m_start.start();
        return;
    }
    if (!m_dialog && m_start.hasExpired(ShowDelay))
        show();
    if (m_dialog && percent >= 0) {
        m_dialog->setMaximum(100);
        m_dialog->setValue(std::min(percent, 99)); // at the maximum the dialog would close itself
    }
    // Without the dialog, which is modal, nothing but painting may happen during the work.
    QCoreApplication::processEvents(m_dialog ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    m_last.start();
}

/// Whether the work itself, a script, shows a dialog and serves the events.
bool WorkProgress::isCovered() const
{
    const QWidget *dialog = QApplication::activeModalWidget();
    return dialog && dialog != m_dialog;
}

void WorkProgress::show()
{
    m_dialog = new QProgressDialog(m_text, QProgressDialog::tr("Cancel"), 0, 0, m_parent);
    m_dialog->setObjectName(u"workProgressDialog"_s);
    m_dialog->setWindowTitle(messageCaption());
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(0);
    m_dialog->show();
}
