#pragma once
#include <QComboBox>

/// A line edit with a list of the texts that were used before.
class HistoryCombo : public QComboBox
{
    Q_OBJECT
public:
    explicit HistoryCombo(QWidget *parent = nullptr);

    /// Adds @p text at the top of the list, unless it is empty or in the list already (exact comparison). The arrow
    /// keys then go on from it.
    void remember(const QString &text);
    /// Sets the focus and selects the text, so that typing replaces it.
    void takeFocus();
    /// Alt and @p key set the focus here.
    void setAccelerator(Qt::Key key);
};
