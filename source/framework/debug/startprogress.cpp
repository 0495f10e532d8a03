#include "startprogress.h"
#include "messages.h"
#include <algorithm>
#include <QProgressDialog>
#include <utility>

using namespace Qt::StringLiterals;

StartProgress::StartProgress(QWidget *parent)
    : InterfaceObject(0), m_dialog(new QProgressDialog(tr("Starting the debugger..."), tr("Cancel"), 0, 0, parent))
{
    constexpr int patience = 500; // milliseconds without a dialog
    m_dialog->setObjectName(u"startProgressDialog"_s);
    m_dialog->setWindowTitle(messageCaption());
    m_dialog->setWindowModality(Qt::NonModal);
    m_dialog->setAutoReset(false);
    m_dialog->setMinimumDuration(patience);
    m_dialog->setValue(0);
    connect(m_dialog, &QProgressDialog::canceled, this, [this] { m_cancelled = !m_finished; });
}

StartProgress::~StartProgress()
{
    delete m_dialog;
}

void StartProgress::progress(const QString &step, int percent)
{
    const auto show = [this, step, percent] {
        if (!m_dialog || m_finished)
            return;
        m_dialog->setLabelText(step);
        m_dialog->setMaximum(percent < 0 ? 0 : 100);
        m_dialog->setValue(std::clamp(percent, 0, 100));
        m_hasShown = true;
        Q_EMIT shown(step, std::min(percent, 100));
    };
    QMetaObject::invokeMethod(this, show); // from any thread
}

void StartProgress::finished(bool success, const QString &reason)
{
    const auto finish = [this, success, reason] {
        if (m_finished)
            return;
        m_finished = true;
        m_success = success;
        m_reason = reason;
        delete m_dialog;
    };
    QMetaObject::invokeMethod(this, finish);
}

void StartProgress::close()
{
    m_finished = true;
    delete m_dialog;
    if (std::exchange(m_hasShown, false))
        Q_EMIT shown({}, -1);
}
