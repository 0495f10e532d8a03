#include "textloading.h"
#include <QDeadlineTimer>
#include <QTextCursor>
#include <QTextDocument>
#include <utility>

namespace {
constexpr qsizetype FirstPart = 32'000;  ///< bytes; more than the lines of a large screen
constexpr qsizetype Part = 64'000;       ///< bytes that are added between two looks at the clock
constexpr qsizetype LargePart = 500'000; ///< bytes, instead of Part, when the whole text is needed at once
constexpr int Slice = 8;                 ///< milliseconds
constexpr int FirstDelay = 20;           ///< milliseconds, in which the first screen is painted
} // namespace

TextLoading::TextLoading(QTextDocument *text, QObject *parent) : QObject(parent), m_text(text)
{
    connect(&m_timer, &QTimer::timeout, this, &TextLoading::addSlice);
}

void TextLoading::start(TextSource source, qsizetype size)
{
    setActive(false);
    m_source = std::move(source);
    const QString first = m_source.take(size > LargestAtOnce ? FirstPart : size);
    setActive(!m_source.atEnd());
    m_text->setPlainText(first);
}

void TextLoading::finish()
{
    growWhile([] { return true; }, LargePart);
}

void TextLoading::loadTo(int line)
{
    growWhile([this, line] { return m_text->blockCount() <= line; }, Part);
}

void TextLoading::addSlice()
{
    m_timer.start(0);
    const QDeadlineTimer deadline(Slice);
    growWhile([&deadline] { return !deadline.hasExpired(); }, Part);
}

/// Highlighters and others react to each part; those who are called by them do not get more of the text then.
template <typename Condition>
void TextLoading::growWhile(Condition condition, qsizetype slice)
{
    if (!m_active || m_growing || !condition())
        return;
    m_growing = true;
    Q_EMIT aboutToGrow();
    QTextCursor end(m_text);
    do {
        const bool modified = m_text->isModified();
        end.movePosition(QTextCursor::End);
        end.insertText(m_source.take(slice));
        m_text->setModified(modified);
    } while (!m_source.atEnd() && condition());
    m_growing = false;
    Q_EMIT grown();
    if (m_source.atEnd())
        setActive(false);
}

void TextLoading::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    m_text->setUndoRedoEnabled(!active);
    if (active) {
        m_timer.start(FirstDelay);
    } else {
        m_timer.stop();
        m_source = {};
    }
    Q_EMIT activeChanged(active);
}
