#pragma once
#include <QString>
#include <QStringList>

/// Offers the lines of a text that is too long to be handed over as a whole.
class ILineSource
{
public:
    /// A line as rich text, with its line end if it has one; empty if @p index, which counts from 0, is out of range.
    [[nodiscard]] virtual QString line(int index) = 0;
    [[nodiscard]] virtual int lineCount() = 0;

protected:
    ~ILineSource() = default;
};

/// Offers a text in paragraphs of several lines.
class IParaSource
{
public:
    /// The lines of a paragraph as rich text. A paragraph may have none: it takes no room then.
    [[nodiscard]] virtual QStringList para(int index) = 0;
    [[nodiscard]] virtual int paraCount() = 0;
    /// Begins to fetch a paragraph and waits at most @p milliseconds for it. True if para() will not have to wait.
    virtual bool fetch(int /*index*/, int /*milliseconds*/) { return true; }

protected:
    ~IParaSource() = default;
};
