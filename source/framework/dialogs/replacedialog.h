#pragma once
#include <memory>
#include <QDialog>
#include <QPointer>
class TextView;
namespace Ui {
class ReplaceDialogBase;
}

/// Asks what to replace in a text view, and replaces it. Without a view, or when it is gone, nothing happens.
class ReplaceDialog : public QDialog
{
    Q_OBJECT
public:
    ReplaceDialog(QWidget *parent, const QString &name);
    ~ReplaceDialog() override;

    void setView(TextView *view);
    void setFindText(const QString &text);
    /// With a selection in the view, the selection becomes what is replaced in; else it cannot be chosen.
    void setHasSelection(bool hasSelection);
    /// Shows the dialog, ready to type the text, until the user closes it. One that is open already comes to the top.
    void run();

public Q_SLOTS:
    void findNext();
    void replace();
    void replaceAll();
    void selectionClicked();
    void findWhatComboActivated(const QString &text);
    void replaceWithComboActivated(const QString &text);

private:
    void tellNotFound(const QString &text);
    void rememberTexts();

    const std::unique_ptr<Ui::ReplaceDialogBase> m_ui;
    QPointer<TextView> m_view;
};
