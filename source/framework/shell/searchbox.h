#pragma once
#include <QComboBox>

/// The box of a tool bar in which the user types a text to find. It keeps the last ten texts.
class SearchBox : public QComboBox
{
    Q_OBJECT
public:
    explicit SearchBox(QWidget *parent);

Q_SIGNALS:
    void find(const QString &text);      ///< The text was changed.
    void findAgain(const QString &text); ///< Return was pressed, or an older text was chosen.

private:
    void pressReturn();
    void keepLast(const QString &text);
};
