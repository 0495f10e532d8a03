#pragma once
#include <memory>
#include <QDialog>
namespace Ui {
class HelpSearchDialogBase;
}

/// Asks for the words to search for in the help.
class HelpSearchDialog : public QDialog
{
    Q_OBJECT
public:
    HelpSearchDialog(const QString &text, QWidget *parent, const QString &name);
    ~HelpSearchDialog() override;

    [[nodiscard]] QString text() const;

private:
    const std::unique_ptr<Ui::HelpSearchDialogBase> m_ui;
};
