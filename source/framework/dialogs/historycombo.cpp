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
    if (!text.isEmpty() && findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        insertItem(0, text);
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
