#pragma once
#include <QComboBox>

/// A line to type into, with the texts that were used before.
class HistoryCombo : public QComboBox
{
    Q_OBJECT
public:
    explicit HistoryCombo(QWidget *parent = nullptr);

    /// Puts @p text on top of the list, unless it is empty or the list has it already, compared exactly.
    void remember(const QString &text);
    /// Takes the focus, with the line selected, so that typing replaces it.
    void takeFocus();
    /// Alt and @p key take the focus here.
    void setAccelerator(Qt::Key key);
};
