#pragma once
#include "filetemplate.h"
#include <functional>
#include <memory>
#include <optional>
#include <QDialog>
#include <QIcon>
class DocumentTemplate;
class Workspace;
namespace Ui {
class NewFileDialogBase;
}

/// Asks for the kind, the name and the place of a new file. The kinds are those of new documents, then the templates
/// with text.
class NewFileDialog : public QDialog
{
    Q_OBJECT
public:
    /// Loads the picture of a template.
    using Picture = std::function<QIcon(const FileTemplate &)>;

    /// @p workspace outlives the dialog.
    NewFileDialog(const Workspace &workspace, QWidget *parent, const QString &name);
    ~NewFileDialog() override;

    void addFileTemplates(const QList<FileTemplate> &templates, const Picture &picture);
    void setLocation(const QString &directory);
    void setProjectOpen(bool open);
    [[nodiscard]] bool addToProject() const;
    [[nodiscard]] QString filePath() const { return m_filePath; }   ///< As typed, possibly relative.
    [[nodiscard]] DocumentTemplate *documentTemplate() const;       ///< Null if a template with text is chosen.
    [[nodiscard]] std::optional<FileTemplate> fileTemplate() const; ///< Nothing if a kind of document is chosen.

public Q_SLOTS:
    void accept() override;
    void updateTemplate();
    void updateLocation();
    void browse();
    void filenameChanged();

private:
    [[nodiscard]] QString extension() const;
    [[nodiscard]] QString location() const;

    const std::unique_ptr<Ui::NewFileDialogBase> m_ui;
    const Workspace &m_workspace;
    QList<FileTemplate> m_fileTemplates;
    QString m_filePath;
    bool m_nameEdited = false;
};
