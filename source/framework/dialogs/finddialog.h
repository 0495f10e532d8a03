#pragma once
#include <memory>
#include <QDialog>
namespace Ui {
class FindDialogBase;
}

/// Asks what to find in the current view. It stays open from match to match and does not search by itself.
class FindDialog : public QDialog
{
    Q_OBJECT
public:
    FindDialog(QWidget *parent, const QString &name);
    ~FindDialog() override;

    void setFindText(const QString &text);
    /// Shows the dialog, ready to type the text, until the user closes it. One that is open already comes to the top.
    void run();

public Q_SLOTS:
    void findNext();
    void findWhatComboActivated(const QString &text);

Q_SIGNALS:
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);

private:
    const std::unique_ptr<Ui::FindDialogBase> m_ui;
};
