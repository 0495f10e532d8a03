#pragma once
#include <QLineEdit>

/// A line edit whose text filters a list. Down and Return lead to the list, Escape clears the text.
class FilterEdit : public QLineEdit
{
    Q_OBJECT
public:
    explicit FilterEdit(QWidget *parent = nullptr);

Q_SIGNALS:
    void listRequested(); ///< The user wants to go on in the list.

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void drawClearButton();
};
