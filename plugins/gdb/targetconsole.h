#pragma once
#include <QByteArray>
#include <QStringDecoder>
#include <QWidget>
class QLineEdit;
class QPlainTextEdit;

/// What the program writes to its serial port, its terminal or by semihosting, and a line to send something back.
class TargetConsole : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    explicit TargetConsole(QWidget *parent = nullptr);

    void append(const QByteArray &bytes); ///< UTF-8; a letter may come in two parts.
    void clear();
    [[nodiscard]] QString text() const;

Q_SIGNALS:
    void entered(const QByteArray &line); ///< with its end

private:
    void send();

    QPlainTextEdit *m_text;
    QLineEdit *m_input;
    QStringDecoder m_decoder{QStringDecoder::Utf8};
};
