#pragma once
#include <functional>
#include <memory>
#include <QByteArrayView>
#include <QString>

/// A search for a regular expression in the bytes of a UTF-8 text, with the rules of SearchPattern; "\r\n" and "\r" end
/// lines as well. Nothing is decoded.
/// An object is used by one thread at a time.
class ExpressionSearch
{
public:
    /// Called often during a long search, which ends without a match soon after it has returned false.
    using GoOn = std::function<bool()>;

    ExpressionSearch(const QString &expression, bool caseSensitive);
    ~ExpressionSearch();
    Q_DISABLE_COPY_MOVE(ExpressionSearch)

    /// The offset of the first match at or after @p from, or -1. @p utf8 must be valid UTF-8. Unless @p isStart and @p
    /// isEnd, the bytes are not the whole text, and their ends are no ends of lines by themselves.
    [[nodiscard]] qsizetype find(QByteArrayView utf8, qsizetype from, bool isStart, bool isEnd, const GoOn &goOn) const;
    /// Whether the expression needed too many steps in the last find(): it then has no match from there on.
    [[nodiscard]] bool hitStepLimit() const;

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};
