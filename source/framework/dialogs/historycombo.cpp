#include "historycombo.h"
#include <QLineEdit>
#include <QRegularExpression>
#include <QShortcut>

using namespace Qt::StringLiterals;

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

void HistoryCombo::setAccelerator(const QString &label)
{
    static const QRegularExpression underlined(u"<u>(\\w)</u>"_s);
    const QString letter = underlined.match(label).captured(1);
    connect(new QShortcut(QKeySequence(u"Alt+"_s + letter), this), &QShortcut::activated, this,
            &HistoryCombo::takeFocus);
}
