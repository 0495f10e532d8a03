#include "largetextfindbar.h"
#include "largetextdocument.h"
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QProgressBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
QToolButton *button(const QString &name, const QString &text)
{
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    return button;
}
} // namespace

LargeTextFindBar::LargeTextFindBar(LargeTextDocument *document, QWidget *parent)
    : QWidget(parent)
    , m_document(document)
    , m_text(new QLineEdit)
    , m_matchCase(new QCheckBox(tr("Match &case")))
    , m_wholeWords(new QCheckBox(tr("&Whole words")))
    , m_previous(button(u"LargeTextPrevious"_s, tr("Previous")))
    , m_next(button(u"LargeTextNext"_s, tr("Next")))
    , m_progress(new QProgressBar)
    , m_result(new QLabel)
    , m_goOn(button(u"LargeTextGoOn"_s, tr("Go on")))
    , m_cancel(button(u"LargeTextCancel"_s, tr("Cancel")))
    , m_close(button(u"LargeTextClose"_s, tr("Close")))
{
    layOut();
    connect(m_next, &QToolButton::clicked, this, [this] { Q_EMIT startRequested(true); });
    connect(m_previous, &QToolButton::clicked, this, [this] { Q_EMIT startRequested(false); });
    connect(m_goOn, &QToolButton::clicked, this, &LargeTextFindBar::goOn);
    connect(m_cancel, &QToolButton::clicked, this, &LargeTextFindBar::cancel);
    connect(m_close, &QToolButton::clicked, this, &LargeTextFindBar::closeBar);
    connect(&m_search, &LargeTextSearch::progress, m_progress, &QProgressBar::setValue);
    connect(&m_search, &LargeTextSearch::waiting, this, &LargeTextFindBar::showWaiting);
    connect(&m_search, &LargeTextSearch::counted, this, &LargeTextFindBar::showCount);
    connect(&m_search, &LargeTextSearch::notFound, this, [this] {
        setRunning(false);
        m_result->setText(tr("Not found"));
    });
    connect(&m_search, &LargeTextSearch::found, this, [this](qint64 offset, qint64 length, bool wrapped) {
        m_wrapped = wrapped;
        m_result->setText(tr("Counting..."));
        Q_EMIT found(offset, length);
    });
    connect(m_document, &LargeTextDocument::reloaded, this, &LargeTextFindBar::cancel);
    setRunning(false);
}

void LargeTextFindBar::layOut()
{
    setBackgroundRole(QPalette::Window); // the space around documents is darker
    setAutoFillBackground(true);
    m_text->setObjectName(u"LargeTextFindWhat"_s);
    m_text->setPlaceholderText(tr("Find in the file"));
    m_text->setAccessibleName(m_text->placeholderText());
    m_text->setMinimumWidth(80);
    m_matchCase->setObjectName(u"LargeTextMatchCase"_s);
    m_wholeWords->setObjectName(u"LargeTextWholeWords"_s);
    m_progress->setObjectName(u"LargeTextProgress"_s);
    m_result->setObjectName(u"LargeTextResult"_s);
    m_progress->setMaximumWidth(120);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(m_text, 1);
    for (QWidget *widget : std::initializer_list<QWidget *>{m_previous, m_next, m_matchCase, m_wholeWords, m_progress,
                                                            m_result, m_goOn, m_cancel, m_close})
        layout->addWidget(widget);
}

void LargeTextFindBar::open(const QString &text)
{
    if (!m_search.isRunning() && m_resumeAt < 0)
        m_result->clear();
    if (!text.isEmpty())
        m_text->setText(text);
    show();
    m_text->selectAll();
    m_text->setFocus();
}

void LargeTextFindBar::closeBar()
{
    cancel();
    hide();
    Q_EMIT closed();
}

void LargeTextFindBar::prepare(const BytePattern &pattern)
{
    cancel();
    m_text->setText(pattern.text);
    m_matchCase->setChecked(pattern.caseSensitive);
    m_wholeWords->setChecked(pattern.wholeWord);
    m_result->clear();
    show();
}

void LargeTextFindBar::offerToGoOn(const BytePattern &pattern, qint64 offset, bool forward)
{
    prepare(pattern);
    m_resumeAt = offset;
    m_resumeForward = forward;
    const qint64 size = std::max<qint64>(1, m_document->size());
    const qint64 done = forward ? offset : size - offset;
    showWaiting(int(done * 100 / size));
}

bool LargeTextFindBar::hasText() const
{
    return !m_text->text().isEmpty();
}

BytePattern LargeTextFindBar::pattern() const
{
    return {m_text->text(), m_matchCase->isChecked(), m_wholeWords->isChecked()};
}

void LargeTextFindBar::searchFrom(qint64 offset, bool forward)
{
    if (m_text->text().isEmpty() || !m_document->file())
        return;
    show();
    m_resumeAt = -1;
    setRunning(true);
    m_result->setText(tr("Searching..."));
    m_search.start(m_document->file(), m_document->size(), pattern(), offset, forward);
}

void LargeTextFindBar::goOn()
{
    const qint64 from = m_resumeAt;
    if (from >= 0)
        searchFrom(from, m_resumeForward);
    if (!m_search.isRunning())
        return;
    setRunning(true);
    m_result->setText(tr("Searching..."));
    m_search.goOn();
}

void LargeTextFindBar::cancel()
{
    const bool wasRunning = m_search.isRunning() || m_resumeAt >= 0;
    m_search.cancel();
    m_resumeAt = -1;
    setRunning(false);
    if (wasRunning)
        m_result->setText(tr("Cancelled"));
}

void LargeTextFindBar::setRunning(bool running)
{
    m_progress->setVisible(running);
    m_cancel->setVisible(running);
    m_goOn->hide();
    if (!running)
        m_progress->reset();
}

void LargeTextFindBar::showWaiting(int percent)
{
    setRunning(true);
    m_progress->setValue(percent);
    m_result->setText(tr("Not found so far"));
    m_goOn->show();
}

void LargeTextFindBar::showCount(qint64 matches, qint64 before, bool final)
{
    const QLocale locale;
    if (final) {
        setRunning(false);
        const QString counted = tr("%1 of %2").arg(locale.toString(before + 1), locale.toString(matches));
        m_result->setText(m_wrapped ? tr("%1, past the end of the file").arg(counted) : counted);
    } else {
        m_result->setText(tr("%1 so far").arg(locale.toString(matches)));
    }
}

void LargeTextFindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT startRequested(!(event->modifiers() & Qt::ShiftModifier));
    else if (event->key() == Qt::Key_Escape)
        closeBar();
    else
        QWidget::keyPressEvent(event); // the view repeats the search
}
