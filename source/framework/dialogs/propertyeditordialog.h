#pragma once
#include "modelpointer.h"
#include <memory>
#include <QDialog>
#include <QPointer>
class IBuildEnvironment;
class IExecutionEnvironment;
class Project;
class ProjectFile;
class ProjectProperties;
class PropertyEditor;
class QUnknownInterface;
namespace Ui {
class PropertyEditorDialogBase;
}

/// Edits the options of a project or of one of its files that the environments define: those of one configuration or of
/// all of them. Closes without saving when the project or the file goes away.
class PropertyEditorDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p file is null for the options of the project. The environments may be null.
    PropertyEditorDialog(Project *project, ProjectFile *file, IBuildEnvironment *build,
                         IExecutionEnvironment *execution, QWidget *parent, const QString &name);
    ~PropertyEditorDialog() override;

public Q_SLOTS:
    void accept() override; ///< Stays open if the changes cannot be saved.
    void configSelected(int index);

private:
    void fillCombo();
    void makeEditor();
    void addDefinitions(QUnknownInterface *environment, const QString &selector);
    void closeWithoutModel();
    [[nodiscard]] bool hasModel() const;
    [[nodiscard]] ProjectProperties *properties() const; ///< Only with a model.
    void load();
    void loadConfiguration();
    void loadAllConfigurations();
    void save();
    void saveTo(const QString &configuration);
    [[nodiscard]] bool isChanged() const;
    bool checkValues();
    bool checkConfigurations();
    bool saveOnRequest();

    const std::unique_ptr<Ui::PropertyEditorDialogBase> m_ui;
    const QPointer<Project> m_project;
    const bool m_isForFile;
    const ModelPointer<ProjectFile> m_file;
    PropertyEditor *m_editor = nullptr;
    QStringList m_configurations; ///< of the project, as the box shows them
    QString m_configuration;      ///< the one that is being edited; empty: all
    int m_index = 0;              ///< its row in the box
};
