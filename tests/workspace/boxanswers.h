#pragma once
#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <QTest>
#include <QTimer>

/// Every warning fails the test, except those that the offscreen platform prints for windows.
inline void failOnWarnings()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support )")));
}

/// Answers the message boxes of one test in order, and records their texts. An unexpected box fails the test.
class BoxAnswers : public QObject
{
public:
    explicit BoxAnswers(QList<QMessageBox::StandardButton> answers) : m_answers(std::move(answers))
    {
        connect(&m_timer, &QTimer::timeout, this, &BoxAnswers::answer);
        m_timer.start(1);
    }

    ~BoxAnswers() override
    {
        if (!m_answers.isEmpty())
            QTest::qFail("fewer message boxes than answers", __FILE__, __LINE__);
    }

    QStringList texts;
    QStringList captions;
    QList<QList<QMessageBox::StandardButton>> buttons;
    QList<QMessageBox::Icon> icons;

private:
    void answer()
    {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts << box->text();
        captions << box->windowTitle();
        icons << box->icon();
        QList<QMessageBox::StandardButton> shown;
        for (QAbstractButton *button : box->buttons())
            shown << box->standardButton(button);
        std::sort(shown.begin(), shown.end());
        buttons << shown;
        if (m_answers.isEmpty()) {
            QTest::qFail(qPrintable(QString::fromLatin1("unforeseen box: ") + box->text()), __FILE__, __LINE__);
            box->reject();
            return;
        }
        box->button(m_answers.takeFirst())->click();
    }

    QList<QMessageBox::StandardButton> m_answers;
    QTimer m_timer;
};
