#pragma once
#include "optionvalues.h"
#include <memory>
#include <QDialog>
class DebugOptionsPage;
class MorePage;
class QComboBox;
class ShortcutsPage;
class ToolsDialog;
namespace Ui {
class OptionsDialogBase;
}

/// Edits the settings of the program. It works on a copy of the values and gives it back when it is accepted.
class OptionsDialog : public QDialog
{
    Q_OBJECT
public:
    OptionsDialog(const OptionValues &values, OptionChoices choices, QWidget *parent, const QString &name);
    ~OptionsDialog() override;

    [[nodiscard]] OptionValues values() const; ///< as the dialog was accepted
    [[nodiscard]] ToolsDialog *toolsPage() const { return m_toolsPage; }
    void addPage(QWidget *page, const QString &title); ///< A page whose values are not among those of this dialog.
    void showPage(const QString &objectName);          ///< Another name does nothing.

public Q_SLOTS:
    void accept() override;
    void reject() override;
    void formatSectionChanged();
    void formatItemChanged();
    void applyTextFormat(); ///< Stores the values of the format tab in the copy.
    void updateSampleText();
    void updateColourButtons();
    void loadFormatDefaults();
    void selectBackgroundColour();
    void selectForegroundColour();

private:
    void setupFormatTab();
    void fillFontCombo(qsizetype first = 0);
    void loadEditorTab(const EditorOptions &editor);
    [[nodiscard]] EditorOptions editorOptions() const;
    void addPages(const OptionValues &values);
    void selectColour(QColor &colour);
    bool checkMorePage();

    const std::unique_ptr<Ui::OptionsDialogBase> m_ui;
    const OptionChoices m_choices;
    TextFormats m_formats; ///< the working copy
    QString m_currentSection;
    QString m_currentItem;
    QColor m_foreground;
    QColor m_background;
    ToolsDialog *m_toolsPage = nullptr;
    DebugOptionsPage *m_debugPage = nullptr;
    MorePage *m_morePage = nullptr;
    ShortcutsPage *m_shortcutsPage = nullptr;
};
