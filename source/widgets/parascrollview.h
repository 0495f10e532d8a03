#pragma once
#include "pararows.h"
#include "rowpainter.h"
#include "scrollview.h"
#include <QTimer>
class IParaSource;
class ParaScrollBar;

/// The part of a TextParaView that fetches the lines on screen and scrolls.
///
/// It scrolls by lines, although only the number of paragraphs is known and not the number of all lines. Paragraphs
/// without lines take no row; only very many of them in succession are shown as one row with dots. Paragraphs are
/// fetched before they are painted, because a source may do anything when it is asked.
///
/// If the source needs time, the lines on screen stay as they are, and what was wanted is done as soon as the source
/// has the paragraphs for it. Anything that moves the view meanwhile replaces it.
class ParaScrollView : public ScrollView
{
    Q_OBJECT
public:
    static constexpr int Columns = 160; ///< of the contents
    static constexpr int LongestGap = ParaRows::LongestGap;
    static constexpr int Patience = 30; ///< milliseconds that the event loop waits for the source

    /// @p paraSource must outlive the view.
    explicit ParaScrollView(IParaSource *paraSource, QWidget *parent = nullptr);

    [[nodiscard]] int lineHeight() const { return m_painter.lineHeight(); }
    [[nodiscard]] int charWidth() const { return m_painter.charWidth(); }
    [[nodiscard]] int topPara() const { return m_rows.top().para; }
    [[nodiscard]] int topLine() const { return m_rows.top().line; }
    [[nodiscard]] QString visibleText() const { return m_rows.plainTexts(); } ///< the lines on screen

    /// The paragraph and line in a row of the screen; false below the last one.
    bool rowToPara(int row, int *para, int *line) const;
    [[nodiscard]] bool isLastLine(int row) const; ///< whether the row shows the last line of its paragraph
    /// The row of a paragraph's last line; -1 if it is not on screen.
    [[nodiscard]] int rowOf(int para) const { return m_rows.indexOfLast(para); }
    [[nodiscard]] bool hasText() const; ///< whether a paragraph on screen has lines
    [[nodiscard]] int rowCount() const { return int(m_rows.shown().size()); }

    /// Fetches all paragraphs on screen from the source again.
    void reload();
    /// What was paragraph n of the source is paragraph n + @p distance now, if there is such a paragraph. The
    /// paragraphs on screen are fetched later, or by reload().
    virtual void shiftParas(qint64 distance);
    /// The source's lines of a paragraph, through a cache that reload() empties. Waits until the source has them.
    [[nodiscard]] QStringList linesOf(int para) { return m_rows.linesOf(para); }
    /// The same; nothing if the source needs more than @p milliseconds, or if the view was deleted.
    [[nodiscard]] std::optional<QStringList> linesInTime(int para, int milliseconds = Patience);
    [[nodiscard]] bool isWaiting() const { return m_waitTimer.isActive(); } ///< for the source

public Q_SLOTS:
    void nextLine();
    void prevLine();
    void nextPage();
    void prevPage();
    void gotoPara(int para); ///< Makes its first line the top one.

Q_SIGNALS:
    void rowsLoaded(); ///< The rows on screen are others, or may have other texts.
    void waitsLong();  ///< The source has not fetched what is to be shown for a while.
    void loaded();     ///< What the view has waited for is on screen.

protected:
    /// What is to be done when the source has fetched more.
    struct Pending
    {
        int para = -1; ///< to be shown
        int lines = 0; ///< to scroll
        int row = -1;  ///< of the screen, for the cursor
    };

    /// The rows on screen are there: does what has waited for them.
    virtual void finish(const Pending &pending);
    void setWaiting(bool waiting);
    void stay(); ///< Gives up what has waited for other rows than those on screen.
    void moveTop(const ParaRows::Row &top);
    bool scrollLines(int lines);
    [[nodiscard]] int pageRows() const;
    [[nodiscard]] bool isWhole(int row) const; ///< whether it is on screen and not cut off

    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;

    mutable RowPainter m_painter;
    ParaRows m_rows;
    Pending m_pending;

private:
    void fontChanged();
    void updateBar();
    void loadRows();
    void loadRowsWithin(int milliseconds);
    void loadRowsLater();
    void goOn();

    ParaScrollBar *const m_bar;
    QTimer m_waitTimer; ///< runs while the source fetches what is wanted
    int m_waits = 0;    ///< how often it has run out
    int m_wheel = 0;    ///< part of a turn of the wheel that is not enough for a line
};
