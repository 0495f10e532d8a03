#pragma once
#include <QComboBox>
#include <utility>

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
    /// Whether Return was pressed, so that the user wants the address even if it is the shown one. True once for each.
    [[nodiscard]] bool takeReturn() { return std::exchange(m_returned, false); }

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_shown;
    bool m_returned = false;
};
