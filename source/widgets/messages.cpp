#include "messages.h"
#include <algorithm>
#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
QMessageBox::StandardButton escapeButton(const QList<QMessageBox::StandardButton> &buttons)
{
    for (const auto button : {QMessageBox::Cancel, QMessageBox::No, QMessageBox::Ok}) {
        if (buttons.contains(button))
            return button;
    }
    return buttons.last();
}
} // namespace

QString messageCaption()
{
    return u"Varnel"_s;
}

QWidget *messageParent()
{
    if (QWidget *active = QApplication::activeWindow())
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto main = std::ranges::find_if(windows, [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QMainWindow *>(window);
    });
    return main == windows.end() ? nullptr : *main;
}

QMessageBox::StandardButton showMessage(QMessageBox::Icon icon, QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons, const QString &caption,
                                        QMessageBox::StandardButton preferred)
{
    // On the heap, since the parent may be deleted while the box is open, and the box with it.
    const QPointer<QMessageBox> box = new QMessageBox(icon, caption, text, QMessageBox::NoButton, parent);
    box->setObjectName(u"messageBox"_s);
    box->setTextFormat(Qt::PlainText); // the texts contain names of files and projects
    for (const auto button : buttons)
        box->addButton(button);
    box->setDefaultButton(buttons.contains(preferred) ? preferred : buttons.first());
    box->setEscapeButton(escapeButton(buttons));
    box->exec();
    if (!box)
        return escapeButton(buttons);
    const auto answer = box->clickedButton() ? box->standardButton(box->clickedButton()) : escapeButton(buttons);
    delete box;
    return answer;
}

QMessageBox::StandardButton showInformation(QWidget *parent, const QString &text,
                                            const QList<QMessageBox::StandardButton> &buttons, const QString &caption)
{
    return showMessage(QMessageBox::Information, parent, text, buttons, caption);
}

QMessageBox::StandardButton showWarning(QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons)
{
    return showMessage(QMessageBox::Warning, parent, text, buttons);
}
