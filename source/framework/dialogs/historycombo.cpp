#include "historycombo.h"
#include <QLineEdit>
#include <QShortcut>

HistoryCombo::HistoryCombo(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(NoInsert);
    setCompleter(nullptr); // it would complete to texts that the user has not typed
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(24);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void HistoryCombo::remember(const QString &text)
{
    if (text.isEmpty())
        return;
    const int known = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (known < 0)
        insertItem(0, text);
    const QString shown = currentText(); // of another text than the current one, if a script calls
    setCurrentIndex(std::max(known, 0));
    setEditText(shown);
}

void HistoryCombo::takeFocus()
{
    setFocus(Qt::ShortcutFocusReason);
    lineEdit()->selectAll();
}

void HistoryCombo::setAccelerator(Qt::Key key)
{
    connect(new QShortcut(Qt::ALT | key, this), &QShortcut::activated, this, &HistoryCombo::takeFocus);
}
