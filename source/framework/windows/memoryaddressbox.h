#pragma once
#include <QComboBox>

/// The box for the address of a memory window. Its list has the addresses that the user has typed.
class MemoryAddressBox : public QComboBox
{
    Q_OBJECT
public:
    explicit MemoryAddressBox(QWidget *parent = nullptr);

    void showAddress(const QString &text);
    [[nodiscard]] const QString &shownAddress() const { return m_shown; } ///< As it was shown last.
    /// Keeps the shown address in the list, once and in the form that is shown.
    void remember();

private:
    QString m_shown;
};
