#pragma once
#include <functional>
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

/// Answers dialogs in the order of the calls, and records their texts. An unexpected dialog is cancelled and recorded
/// as "unexpected".
class DialogAnswers : public QObject
{
public:
    DialogAnswers()
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogAnswers::answer);
        m_timer.start(1); // an idle loop must be able to become idle
    }

    void press(QMessageBox::StandardButton button)
    {
        m_answers.append([this, button](QDialog *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            if (!box || !box->button(button))
                return unexpected(dialog);
            shown.append(box->text());
            boxes.append({box->icon(), box->windowTitle(), box->standardButtons()});
            box->button(button)->click();
        });
    }

    void choose(const QStringList &files)
    {
        m_answers.append([this, files](QDialog *dialog) {
            auto *chooser = qobject_cast<QFileDialog *>(dialog);
            if (!chooser)
                return unexpected(dialog);
            shown.append(chooser->objectName() + u'|' + chooser->windowTitle() + u'|'
                         + chooser->nameFilters().join(QStringLiteral(";;")));
            directory = chooser->directory().path();
            QString names;
            for (const QString &file : files)
                names += u'"' + file + QStringLiteral("\" ");
            auto *edit = chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            for (auto *view : chooser->findChildren<QAbstractItemView *>())
                view->clearSelection(); // as typing does in a window that has the focus
            edit->setText(files.size() == 1 ? files.first() : names);
            if (files.isEmpty())
                dialog->reject();
            else
                QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it may show a question itself
        });
    }

    void type(const QString &text)
    {
        m_answers.append([this, text](QDialog *dialog) {
            auto *input = qobject_cast<QInputDialog *>(dialog);
            if (!input)
                return unexpected(dialog);
            shown.append(input->windowTitle() + u'|' + input->labelText());
            input->setTextValue(text);
            input->accept();
        });
    }

    /// Calls a function with the next dialog, before all other answers.
    void prepend(const std::function<void(QDialog *)> &use) { m_answers.prepend(use); }
    /// Calls a function with the next dialog, which must close it.
    void meet(const std::function<void(QDialog *)> &use) { m_answers.append(use); }

    [[nodiscard]] bool allGiven() const { return m_answers.isEmpty(); }

    struct Box
    {
        QMessageBox::Icon icon;
        QString caption;
        QMessageBox::StandardButtons buttons;
    };

    /// The last message as text: "information Varnel [Ok Cancel]".
    [[nodiscard]] QString lastBox() const
    {
        if (boxes.isEmpty())
            return {};
        const Box &box = boxes.last();
        const char *icons[] = {"no icon", "information", "warning", "critical", "question"};
        QStringList names;
        const std::pair<QMessageBox::StandardButton, const char *> buttons[] = {{QMessageBox::Ok, "Ok"},
                                                                                {QMessageBox::Yes, "Yes"},
                                                                                {QMessageBox::No, "No"},
                                                                                {QMessageBox::Cancel, "Cancel"}};
        for (const auto &[button, name] : buttons) {
            if (box.buttons.testFlag(button))
                names.append(QString::fromLatin1(name));
        }
        return QStringLiteral("%1 %2 [%3]").arg(QString::fromLatin1(icons[box.icon]), box.caption, names.join(u' '));
    }

    QStringList shown;
    QList<Box> boxes;
    QString directory; ///< the initial directory of the last file dialog

private:
    void answer()
    {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || dialog == m_last || !dialog->isVisible())
            return;
        m_last = dialog;
        if (m_answers.isEmpty())
            unexpected(dialog);
        else
            m_answers.takeFirst()(dialog);
    }

    void unexpected(QDialog *dialog)
    {
        const auto *box = qobject_cast<QMessageBox *>(dialog);
        shown.append(QStringLiteral("unexpected: ") + (box ? box->text() : dialog->objectName()));
        dialog->reject();
    }

    QList<std::function<void(QDialog *)>> m_answers;
    QPointer<QDialog> m_last;
    QTimer m_timer;
};
