#pragma once
#include <memory>
#include <QDialog>
#include <QPointer>
class TextPattern;
class TextView;
namespace Ui {
class ReplaceDialogBase;
}

/// Asks what to replace in a text view, and replaces it. Does nothing without a view.
class ReplaceDialog : public QDialog
{
    Q_OBJECT
public:
    ReplaceDialog(QWidget *parent, const QString &name);
    ~ReplaceDialog() override;

    void setView(TextView *view);
    void setFindText(const QString &text);
    [[nodiscard]] TextPattern pattern() const;
    void showCount(const QString &text); ///< of the matches, or why there can be none
    /// Whether the view has a selection. If so, replacement is limited to it at first if @p limit is true; otherwise
    /// that cannot be chosen.
    void setHasSelection(bool hasSelection, bool limit = true);
    /// Whether the selection still exists. A replacement that was limited to it is not possible meanwhile.
    void setSelectionAvailable(bool available);
    /// Shows the dialog with the focus in the text until the user closes it. If it is open, brings it to the front.
    void run();

public Q_SLOTS:
    void findNext();
    void replace();
    void replaceAll();
    void selectionClicked();
    void findWhatComboActivated(const QString &text);
    void replaceWithComboActivated(const QString &text);

Q_SIGNALS:
    void patternChanged();    ///< Also when the dialog was shown or hidden.
    void matchSelected();     ///< in the view
    void replaced(int count); ///< all matches at once

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void refresh();
    bool replaceMatches(const TextPattern &pattern, const QString &replacement);
    void tellNotFound(const TextPattern &pattern);
    void rememberTexts();

    const std::unique_ptr<Ui::ReplaceDialogBase> m_ui;
    QPointer<TextView> m_view;
    bool m_hasSelection = false;
};
