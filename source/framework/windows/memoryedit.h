#pragma once
#include "memorylayout.h"
#include <QTextCharFormat>
#include <QTextEdit>

/// Lines of memory as text, in which the digits of words can be overwritten and all else stays as it is.
///
/// Typed digits are reported and change only the text: the owner keeps the values.
class MemoryEdit : public QTextEdit
{
    Q_OBJECT
public:
    explicit MemoryEdit(QWidget *parent = nullptr);

    /// Replaces the text. The cursor stays in its line and column, and so does the selection if the text covers the
    /// same addresses as before.
    void showLines(const QList<MemoryLine> &lines, int addressDigits, int columns, int width);
    /// Marks characters of a line as changed.
    void markChanged(int para, int index, int length);
    void setReadOnly(bool readOnly);
    void setTextFont(QFont font);

    [[nodiscard]] int visibleLines() const;
    [[nodiscard]] int visibleCharacters() const; ///< Per line.
    [[nodiscard]] int cursorPara() const { return textCursor().blockNumber(); }
    [[nodiscard]] int cursorIndex() const { return textCursor().positionInBlock(); }
    /// Places of the text only; others go to the nearest one.
    void setCursorPosition(int para, int index);

Q_SIGNALS:
    void updateMemory(); ///< The user wants the changes to be written.
    /// The digit at that place was overwritten.
    void hexChanged(int para, int index, int value);
    void scrollPage(int direction); ///< By a page: -1 up, 1 down.
    void scrollLine(int direction);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void insertLines(const QList<MemoryLine> &lines, int addressDigits, int width);
    bool moveByKey(const QKeyEvent *event);
    void typeKey(QKeyEvent *event);
    void overwrite(const QKeyEvent *event);
    [[nodiscard]] bool isDigitAt(int index) const;
    void collapseSelection();
    [[nodiscard]] QColor onPaper(const QColor &colour) const;
    [[nodiscard]] QTextCharFormat addressFormat() const;
    [[nodiscard]] QTextCharFormat changedFormat() const;

    MemoryEditRange m_range;
    quint64 m_address = 0; ///< of the first line
    qsizetype m_lines = 0; ///< their number
};
