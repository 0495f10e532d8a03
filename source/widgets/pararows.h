#pragma once
#include <optional>
#include <QCache>
#include <QDeadlineTimer>
#include <QObject>
#include <QStringList>
class IParaSource;

/// The lines of a source of paragraphs: fetched one paragraph at a time through a cache, and those on screen.
///
/// A source may do anything when it is asked, even delete the view and these rows with it. The functions that ask are
/// not const; check a QPointer after each of them.
///
/// Functions that scroll do not wait long for a source: they end at the first paragraph that it has not fetched yet,
/// and set isWaiting().
class ParaRows : public QObject
{
    Q_OBJECT
public:
    /// A line of a paragraph. In a paragraph without lines it stands for a gap.
    struct Row
    {
        int para = 0;
        int line = 0;
        QString text;
        bool isLast = true;
        bool isGap = false;
    };
    static constexpr int LongestGap = 256; ///< paragraphs without lines that are passed over

    /// @p source must outlive this object.
    explicit ParaRows(IParaSource *source);

    [[nodiscard]] int lastPara() const;          ///< 0 if there is none
    [[nodiscard]] QStringList linesOf(int para); ///< Waits until the source has them.
    [[nodiscard]] Row rowAt(int para, int line); ///< Waits as well.
    /// The lines of a paragraph; nothing if the source needs more time than is left, or if this object was deleted.
    [[nodiscard]] std::optional<QStringList> linesInTime(int para);
    /// How long the next functions may wait for the source together.
    void setPatience(int milliseconds);
    [[nodiscard]] bool isWaiting() const { return m_isWaiting; } ///< whether the time was over since setPatience()
    /// Moves to the next line, or the one before. Returns false at an end of the source, if this object was deleted,
    /// and if the source needs more time.
    bool step(Row &row, bool forward);
    void clearCache() { m_paras.clear(); }

    // The rows on screen
    [[nodiscard]] const Row &top() const { return m_top; }
    void setTop(const Row &top) { m_top = top; } ///< For the next load().
    /// What was paragraph n of the source is paragraph n + @p distance now: forgets all rows until the next load().
    void shift(qint64 distance);
    /// Fetches @p count rows from the top, or fewer at the end. While the source needs more time, the present rows stay
    /// if there are any. Returns false if this object was deleted.
    bool load(int count);
    [[nodiscard]] const QList<Row> &shown() const { return m_shown; }
    [[nodiscard]] int indexOf(int para, int line) const; ///< in shown(); -1 if the line is not on screen
    [[nodiscard]] int indexOfLast(int para) const;       ///< of a paragraph's last line
    [[nodiscard]] QString plainTexts() const;            ///< of the rows on screen, each with a line end

private:
    [[nodiscard]] static Row makeRow(int para, int line, const QStringList &lines);

    IParaSource *const m_source;
    QCache<int, QStringList> m_paras;
    QDeadlineTimer m_deadline;
    bool m_isWaiting = false;
    Row m_top;
    QList<Row> m_shown; ///< the last one perhaps visible in part only
};
