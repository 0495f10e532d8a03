#pragma once
#include <memory>
#include <QDialog>
namespace Ui {
class FindDialogBase;
}

/// Asks what to find in the current view. It stays open during the search, which the receiver of find() performs.
class FindDialog : public QDialog
{
    Q_OBJECT
public:
    FindDialog(QWidget *parent, const QString &name);
    ~FindDialog() override;

    void setFindText(const QString &text);
    /// Shows the dialog with the focus in the text until the user closes it. If it is open, brings it to the front.
    void run();

public Q_SLOTS:
    void findNext();
    void findWhatComboActivated(const QString &text);

Q_SIGNALS:
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);

private:
    const std::unique_ptr<Ui::FindDialogBase> m_ui;
};
