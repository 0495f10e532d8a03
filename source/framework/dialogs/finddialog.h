#pragma once
#include <memory>
#include <QDialog>
class TextPattern;
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
    [[nodiscard]] TextPattern pattern() const;
    [[nodiscard]] bool forward() const;
    /// Whether the current view can be searched for regular expressions.
    void setExpressionsAvailable(bool available);
    void showCount(const QString &text); ///< of the matches, or why there can be none
    /// Shows the dialog with the focus in the text until the user closes it. If it is open, brings it to the front.
    void run();

public Q_SLOTS:
    void findNext();
    void findWhatComboActivated(const QString &text);

Q_SIGNALS:
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor);
    void patternChanged(); ///< Also when the dialog was shown or hidden.

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void refresh();

    const std::unique_ptr<Ui::FindDialogBase> m_ui;
};
