#include "searchbox.h"
#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

SearchBox::SearchBox(QWidget *parent) : QComboBox(parent)
{
    setObjectName(u"searchBox"_s);
    setEditable(true);
    setCompleter(nullptr); // it would search for text that the user has not typed
    setMaxCount(10);
    setMinimumWidth(150);
    setAccessibleName(tr("Find"));
    lineEdit()->setAccessibleName(tr("Find"));
    lineEdit()->setPlaceholderText(tr("Find"));
    connect(this, &QComboBox::editTextChanged, this, &SearchBox::find);
    connect(this, &QComboBox::textActivated, this, &SearchBox::findAgain);
}

void SearchBox::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        makeRoom();
    QComboBox::keyPressEvent(event);
}

/// Removes the oldest text before a new one is added: a full box would ignore the Return key.
void SearchBox::makeRoom()
{
    const QString text = currentText();
    if (count() < maxCount() || findText(text, Qt::MatchFixedString) >= 0)
        return;
    const QSignalBlocker blocker(this);
    removeItem(0);
    setEditText(text);
}
