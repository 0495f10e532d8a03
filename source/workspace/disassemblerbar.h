#pragma once
#include <QWidget>
class QLabel;
class QLineEdit;
class QProgressBar;
class QToolButton;

/// The row below a disassembly: the field to go to an address or symbol, messages, and the progress of a search.
class DisassemblerBar : public QWidget
{
    Q_OBJECT
public:
    explicit DisassemblerBar(QWidget *parent = nullptr);

    void setMessage(const QString &text);
    void setProgress(int percent); ///< Of a search that is running.
    void endProgress();

protected:
    void keyPressEvent(QKeyEvent *event) override;

Q_SIGNALS:
    void goToRequested(const QString &text);
    void cancelled(); ///< The user has cancelled the search.

private:
    QLineEdit *m_goTo;
    QLabel *m_message;
    QProgressBar *m_progress;
    QToolButton *m_cancel;
};
