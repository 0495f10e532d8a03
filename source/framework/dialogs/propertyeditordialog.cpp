#include "propertyeditordialog.h"
#include "callplugin.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "ipropertydefinitions.h"
#include "messages.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h" // its type is an argument of a signal
#include "propertyeditor.h"
#include "ui_propertyeditordialogbase.h"

using namespace Qt::StringLiterals;

namespace {
/// All after the first dot, as it is written.
QString selectorOf(const ProjectFile *file)
{
    return file ? file->name().section(u'.', 1) : u"project"_s;
}
} // namespace

PropertyEditorDialog::PropertyEditorDialog(Project *project, ProjectFile *file, IBuildEnvironment *build,
                                           IExecutionEnvironment *execution, QWidget *parent, const QString &name)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::PropertyEditorDialogBase>())
    , m_project(project)
    , m_isForFile(file)
    , m_file(file)
{
    m_ui->setupUi(this);
    setObjectName(name);
    if (file)
        setWindowTitle(tr("File Properties - %1  [%2]").arg(file->name(), project->absolutePath(file->path())));
    else
        setWindowTitle(tr("Project Properties: %1").arg(project->displayName()));
    m_configuration = project->currentConfiguration();
    fillCombo();
    makeEditor();
    addDefinitions(build, selectorOf(file));
    addDefinitions(execution, selectorOf(file));
    connect(m_ui->ConfigurationsCombo, &QComboBox::activated, this, &PropertyEditorDialog::configSelected);
    connect(m_ui->OkButton, &QPushButton::clicked, this, &PropertyEditorDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &PropertyEditorDialog::reject);
    connect(project, &QObject::destroyed, this, &PropertyEditorDialog::closeWithoutModel);
    // Files are deleted only after these signals.
    const auto later = [this] {
        QMetaObject::invokeMethod(this, &PropertyEditorDialog::closeWithoutModel, Qt::QueuedConnection);
    };
    connect(project, &Project::fileRemoved, this, later);
    connect(project, &Project::folderRemoved, this, later);
    load();
}

PropertyEditorDialog::~PropertyEditorDialog() = default;

void PropertyEditorDialog::fillCombo()
{
    m_configurations = m_project->properties()->configurations();
    m_ui->ConfigurationsCombo->addItem(tr("Active (%1)").arg(m_project->currentConfiguration()));
    m_ui->ConfigurationsCombo->addItems(m_configurations);
    m_ui->ConfigurationsCombo->addItem(tr("All configurations"));
}

void PropertyEditorDialog::makeEditor()
{
    auto *layout = new QHBoxLayout(m_ui->EditorFrame);
    layout->setContentsMargins(0, 0, 0, 0);
    m_editor = new PropertyEditor(m_ui->EditorFrame);
    m_editor->setObjectName(u"PropertyEditor"_s);
    m_editor->setBaseDirectory(m_project->basePath());
    layout->addWidget(m_editor);
    m_editor->setTabOrderBetween(m_ui->ConfigurationsCombo, m_ui->OkButton);
    setTabOrder(m_ui->OkButton, m_ui->CancelButton);
}

void PropertyEditorDialog::addDefinitions(QUnknownInterface *environment, const QString &selector)
{
    const auto definitions = queryPlugin<IPropertyDefinitions>(environment);
    if (!definitions)
        return;
    const QString text = askPlugin<&IPropertyDefinitions::propertyDefinitions>(definitions);
    if (!text.isEmpty())
        m_editor->setPropertyDefinitions(text, selector);
}

bool PropertyEditorDialog::hasModel() const
{
    return m_project && (!m_isForFile || m_file);
}

/// Also the questions that the dialog asks at this moment.
void PropertyEditorDialog::closeWithoutModel()
{
    if (hasModel())
        return;
    for (QDialog *dialog : findChildren<QDialog *>())
        dialog->reject();
    reject();
}

ProjectProperties *PropertyEditorDialog::properties() const
{
    return m_isForFile ? m_file->properties() : m_project->properties();
}

void PropertyEditorDialog::load()
{
    m_editor->clearValues();
    if (m_configuration.isEmpty())
        loadAllConfigurations();
    else
        loadConfiguration();
}

void PropertyEditorDialog::loadConfiguration()
{
    if (!properties()->configurations().contains(m_configuration))
        return; // asking for its keys would create it
    for (const QString &key : properties()->propertyKeys(m_configuration))
        m_editor->setValue(key, properties()->property(key, m_configuration, false));
}

void PropertyEditorDialog::loadAllConfigurations()
{
    const QStringList configurations = properties()->configurations();
    if (configurations.isEmpty())
        return;
    for (const QString &key : m_editor->keys()) {
        const QString value = properties()->property(key, configurations.first(), false);
        const bool allAgree = std::ranges::all_of(configurations, [&](const QString &configuration) {
            return properties()->property(key, configuration, false) == value;
        });
        if (!allAgree)
            m_editor->setValue(key, QVariant());
        else if (!value.isEmpty())
            m_editor->setValue(key, value);
    }
}

void PropertyEditorDialog::save()
{
    if (!m_configuration.isEmpty())
        return saveTo(m_configuration);
    for (const QString &configuration : properties()->configurations())
        saveTo(configuration);
}

void PropertyEditorDialog::saveTo(const QString &configuration)
{
    for (const QString &key : m_editor->keys()) {
        bool isChanged = false;
        const QVariant value = m_editor->value(key, &isChanged);
        if (m_editor->isReset(key))
            properties()->removeProperty(key, configuration);
        else if (isChanged)
            properties()->setProperty(key, value.toString(), configuration);
    }
}

bool PropertyEditorDialog::isChanged() const
{
    bool isChanged = false;
    for (const QString &key : m_editor->keys()) {
        (void)m_editor->value(key, &isChanged);
        if (isChanged)
            return true;
    }
    return false;
}

/// False, after a message, at a changed value that its definition forbids. The user is led there.
bool PropertyEditorDialog::checkValues()
{
    const std::optional<QString> key = m_editor->firstInvalidKey();
    if (!key)
        return true;
    showWarning(this, m_editor->problem(*key));
    if (hasModel())
        m_editor->showProperty(*key);
    return false;
}

/// False, after a message, if there are changes and no configuration to write them to.
bool PropertyEditorDialog::checkConfigurations()
{
    if (!m_configuration.isEmpty() || properties()->hasConfigurations() || !isChanged())
        return true;
    showWarning(this, m_isForFile
                          ? tr("The changes cannot be saved in \"All configurations\", because this file has no "
                               "values of its own yet. Choose one configuration.")
                          : tr("The changes cannot be saved, because the project has no configuration."));
    return false;
}

/// Saves what was changed if the user wants that. False if the configuration must stay.
bool PropertyEditorDialog::saveOnRequest()
{
    const QString question = tr("Do you want to save the changes you have made?");
    if (showInformation(this, question, {QMessageBox::Yes, QMessageBox::No}) != QMessageBox::Yes)
        return true;
    if (!hasModel() || !checkValues() || !checkConfigurations())
        return false;
    save();
    return true;
}

void PropertyEditorDialog::configSelected(int index)
{
    m_editor->endEdit();
    if (!hasModel())
        return reject();
    if (isChanged() && !saveOnRequest()) {
        m_ui->ConfigurationsCombo->setCurrentIndex(m_index);
        return;
    }
    if (!hasModel())
        return;
    m_index = index;
    if (index == 0)
        m_configuration = m_project->currentConfiguration();
    else
        m_configuration = m_configurations.value(index - 1); // none for the last row
    load();
}

void PropertyEditorDialog::accept()
{
    m_ui->OkButton->setFocus(); // ends a running edit
    m_editor->endEdit();        // also without the focus
    if (!hasModel())
        return reject();
    if (!checkValues() || !checkConfigurations())
        return;
    save();
    QDialog::accept();
}
