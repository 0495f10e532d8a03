#pragma once
#include <QByteArray>
#include <QStringDecoder>
#include <QWidget>
class QLineEdit;
class QPlainTextEdit;

/// Shows the program's output to its serial port, its terminal or by semihosting, with a line for input.
class TargetConsole : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    explicit TargetConsole(QWidget *parent = nullptr);

    void append(const QByteArray &bytes); ///< UTF-8; the bytes of a character may come in two calls.
    void clear();
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    void entered(const QByteArray &line); ///< with its line end; the end of the input is the byte 4 alone

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void send();
    void sendEnd();

    QPlainTextEdit *m_text;
    QLineEdit *m_input;
    QStringDecoder m_decoder{QStringDecoder::Utf8};
};
