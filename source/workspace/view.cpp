#include "view.h"
#include "document.h"
#include "lostfile.h"
#include "messages.h"
#include "newerfile.h"
#include "varnelassert.h"
#include <QCloseEvent>
#include <QDir>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr const char *GivenUp = "changesGivenUp"; ///< the user does not want to save the document
}

View::View(Document *document, QWidget *parent) : QWidget(parent), m_document(document)
{
    VARNEL_ASSERT(document);
    if (!document)
        return;
    connect(document, &Document::documentModified, this, &View::documentModified);
    connect(document, &Document::updateViews, this, qOverload<View *, bool>(&View::update));
    updateTitle();
}

void View::setIndex(int index)
{
    if (m_index == index)
        return;
    m_index = index;
    updateTitle();
}

void View::updateTitle()
{
    m_title = m_document->title();
    if (m_index != 0)
        m_title += u':' + QString::number(m_index);
    if (hasLostFile(m_document))
        m_title += tr(" (deleted)");
    if (m_document->modified())
        m_title += u" *"_s;
    setWindowTitle(m_title);
    Q_EMIT viewTitleChanged(this);
}

void View::documentModified(bool)
{
    updateTitle();
}

/// Returns whether the view may close.
bool View::askToSave()
{
    const QString question = hasLostFile(m_document)
                                 ? tr("%1 was deleted outside of the editor.\n\nDo you want to save the text again?")
                                 : tr("%1 has changed.\n\nDo you want to save the changes?");
    const QString text = question.arg(QDir::toNativeSeparators(m_document->filename()));
    const QPointer<View> self(this);
    const auto answer = showInformation(window(), text, {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel},
                                        window()->windowTitle());
    if (!self || answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::No)
        return true;
    const bool agreed = maySave(window(), m_document);
    return self && agreed && m_document->save();
}

bool View::asksBeforeClosing() const
{
    noticeLostFile(m_document); // its text may be the only copy left
    return m_document->modified() && !m_document->property(GivenUp).toBool();
}

bool View::askBeforeClosing()
{
    const QPointer<View> self(this);
    if (!askToSave())
        return false;
    if (self)
        m_document->setProperty(GivenUp, m_document->modified());
    return true;
}

void View::forgetAnswer()
{
    m_document->setProperty(GivenUp, false);
}

void View::closeEvent(QCloseEvent *event)
{
    const QPointer<View> self(this);
    if (m_index == 0 && asksBeforeClosing() && !askToSave()) {
        event->ignore();
        return;
    }
    if (!self)
        return;
    QWidget::closeEvent(event);
    Q_EMIT viewClosed(this); // deletes this view
}
