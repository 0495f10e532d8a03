#pragma once
#include "largetextsearch.h"
#include <QWidget>
class LargeTextDocument;
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QToolButton;

/// The row below a large file with the controls of a search, its progress and the number of matches.
class LargeTextFindBar : public QWidget
{
    Q_OBJECT
public:
    explicit LargeTextFindBar(LargeTextDocument *document, QWidget *parent = nullptr);

    /// Shows the row for a new search; @p text is proposed if it is not empty.
    void open(const QString &text);
    /// Shows the row with that pattern, without the focus.
    void prepare(const BytePattern &pattern);
    /// Shows the row for a search that has reached @p offset and then ran out of time.
    void offerToGoOn(const BytePattern &pattern, qint64 offset, bool forward);
    [[nodiscard]] bool hasText() const; ///< to search for
    [[nodiscard]] LargeTextSearch &search() { return m_search; }

Q_SIGNALS:
    /// The search is to begin: the receiver calls searchFrom(), which shows the row.
    void startRequested(bool forward);
    void found(qint64 offset, qint64 length);
    void closed(); ///< The user has closed the row, which has ended the search.

public Q_SLOTS:
    void searchFrom(qint64 offset, bool forward);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    void closeBar();
    void setRunning(bool running);
    void showWaiting(int percent);
    void showCount(qint64 matches, qint64 before, bool final);
    void goOn();
    void cancel();
    [[nodiscard]] BytePattern pattern() const;

    LargeTextDocument *const m_document;
    QLineEdit *m_text;
    QCheckBox *m_matchCase;
    QCheckBox *m_wholeWords;
    QToolButton *m_previous;
    QToolButton *m_next;
    QProgressBar *m_progress;
    QLabel *m_result;
    QToolButton *m_goOn;
    QToolButton *m_cancel;
    QToolButton *m_close;
    LargeTextSearch m_search;
    bool m_wrapped = false;
    qint64 m_resumeAt = -1; ///< where a search that ran out of time can go on
    bool m_resumeForward = true;
};
