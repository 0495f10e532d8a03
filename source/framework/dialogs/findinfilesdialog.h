#pragma once
#include <memory>
#include <QDialog>
class HistoryCombo;
class QSettings;
namespace Ui {
class FindInFilesDialogBase;
}

/// Asks what to find in which files, with the last answers as defaults.
class FindInFilesDialog : public QDialog
{
    Q_OBJECT
public:
    /// Answers are stored in the group "/FindInFiles" of @p settings, which must outlive the dialog.
    FindInFilesDialog(QSettings *settings, QWidget *parent, const QString &name);
    enum Scope { Folder, CurrentProject, AllProjects, OpenDocuments };

    ~FindInFilesDialog() override;

    void setFindText(const QString &text);
    /// Names @p directory as the folder if the user has not named one before.
    void proposeFolder(const QString &directory);
    /// Without a project only a folder and open documents can be searched.
    void setProjectsAvailable(bool available);

    [[nodiscard]] QString findText() const;
    [[nodiscard]] Scope scope() const;
    [[nodiscard]] QString mask() const;
    [[nodiscard]] QString folder() const; ///< absolute
    [[nodiscard]] bool caseSensitive() const;
    [[nodiscard]] bool wholeWord() const;
    [[nodiscard]] bool recursive() const;
    [[nodiscard]] bool regExp() const;

public Q_SLOTS:
    void browse();
    void accept() override;

private:
    void load();
    void refresh();
    void showMask();
    void loadHistory(const QString &key, HistoryCombo *combo);
    void saveHistory(const QString &key, const HistoryCombo *combo);

    const std::unique_ptr<Ui::FindInFilesDialogBase> m_ui;
    QSettings *m_settings;
    QString m_otherMask;          ///< of folders while that of listed files is shown, or the reverse
    bool m_maskIsOfFolder = true; ///< the one that is shown
};
