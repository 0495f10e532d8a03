#include "searchbox.h"
#include <QLineEdit>

using namespace Qt::StringLiterals;

SearchBox::SearchBox(QWidget *parent) : QComboBox(parent)
{
    setObjectName(u"searchBox"_s);
    setEditable(true);
    setCompleter(nullptr); // it would search for text that the user has not typed
    setMaxCount(10);
    setInsertPolicy(NoInsert); // a full combo box ignores the Return key
    setMinimumWidth(150);
    setAccessibleName(tr("Find"));
    lineEdit()->setAccessibleName(tr("Find"));
    lineEdit()->setPlaceholderText(tr("Find"));
    disconnect(lineEdit(), &QLineEdit::editingFinished, this,
               nullptr); // a known text would be found when the focus goes
    connect(lineEdit(), &QLineEdit::returnPressed, this, &SearchBox::pressReturn);
    connect(this, &QComboBox::editTextChanged, this, [this](const QString &text) {
        if (!text.isEmpty())
            Q_EMIT find(text);
    });
    connect(this, &QComboBox::textActivated, this, &SearchBox::findAgain);
}

void SearchBox::pressReturn()
{
    const QString text = currentText();
    if (text.isEmpty())
        return;
    keepLast(text);
    Q_EMIT findAgain(text);
}

/// Makes @p text the newest of the kept texts.
void SearchBox::keepLast(const QString &text)
{
    const QSignalBlocker blocker(this); // the text is the same afterwards
    if (const int known = findText(text, Qt::MatchFixedString); known >= 0)
        removeItem(known);
    else if (count() == maxCount())
        removeItem(0);
    addItem(text);
    setCurrentIndex(count() - 1);
    setEditText(text);
}
