#pragma once
#include <memory>
#include <QDialog>
namespace Ui {
class DebugActionDialogBase;
}

/// Asks which of two actions to take. It is accepted only by a choice.
class DebugActionDialog : public QDialog
{
    Q_OBJECT
public:
    enum Choice { First = 0, Second = 1, None = 3 };

    /// @p items are the texts of the two choices; further ones are not shown.
    DebugActionDialog(const QString &question, const QStringList &items, QWidget *parent);
    ~DebugActionDialog() override;

    [[nodiscard]] Choice choice() const { return m_choice; }
    [[nodiscard]] bool dontAskAgain() const;

private:
    void choose(Choice choice);

    const std::unique_ptr<Ui::DebugActionDialogBase> m_ui;
    Choice m_choice = None;
};
