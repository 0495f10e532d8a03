#include "newprojectdialog.h"
#include "messages.h"
#include "projecttreeitem.h"
#include "questions.h"
#include "ui_newprojectdialogbase.h"
#include <QDir>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int DescriptionLines = 4;
constexpr int CharactersOfName = 17; // in each line below a picture

/// The directory of a folder's row; null for the row of the templates that were used last.
QString directoryOf(QTreeWidgetItem *item)
{
    const auto *directory = static_cast<ProjectTreeItem *>(item)->object<QString>();
    return directory ? *directory : QString();
}

/// Whether the files of a project, and its folder, can have its name.
bool isFileName(const QString &name)
{
    const auto isImpossible = [](QChar c) { return c == u'/' || c.category() == QChar::Other_Control; };
    return name != "."_L1 && name != ".."_L1 && std::none_of(name.begin(), name.end(), isImpossible);
}

/// Creates the levels of @p path that do not exist, from the top down. A level that cannot be created ends it; the
/// project's folder fails then as well.
void createDirectories(const QString &path)
{
    QStringList missing;
    for (QString level = QDir::cleanPath(QDir(path).absolutePath()); !QFileInfo::exists(level);
         level = QFileInfo(level).path())
        missing.prepend(level);
    for (const QString &level : missing) {
        if (!QDir().mkdir(level))
            return;
    }
}
} // namespace

NewProjectDialog::NewProjectDialog(NewProjectChoices choices, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::NewProjectDialogBase>()), m_choices(std::move(choices))
{
    m_ui->setupUi(this);
    setObjectName(name);
    const QFontMetrics metrics(font());
    m_ui->DescriptionLabel->setFixedHeight(DescriptionLines * metrics.lineSpacing());
    m_ui->TemplateIconView->setGridSize({CharactersOfName * metrics.averageCharWidth(),
                                         m_ui->TemplateIconView->iconSize().height() + 4 * metrics.lineSpacing()});
    m_ui->TemplateSplitter->setSizes({240, 420});
    m_ui->LocationLineEdit->setText(QDir::toNativeSeparators(m_choices.location));

    connect(m_ui->TemplateListView, &QTreeWidget::currentItemChanged, this, &NewProjectDialog::templateFolderChanged);
    connect(m_ui->TemplateIconView, &QListWidget::currentItemChanged, this, &NewProjectDialog::selectCurrent);
    connect(m_ui->TemplateIconView, &QListWidget::itemSelectionChanged, this,
            [this] { templateChanged(m_ui->TemplateIconView->selectedItems().value(0)); });
    connect(m_ui->TemplateIconView, &QListWidget::itemDoubleClicked, this, &NewProjectDialog::accept);
    connect(m_ui->NameLineEdit, &QLineEdit::textChanged, this, &NewProjectDialog::projectPathChanged);
    connect(m_ui->LocationLineEdit, &QLineEdit::textChanged, this, &NewProjectDialog::updateLocation);
    connect(m_ui->ProjectFolderCheckBox, &QCheckBox::toggled, this, &NewProjectDialog::updateLocation);
    connect(m_ui->BrowseButton, &QPushButton::clicked, this, &NewProjectDialog::browse);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &NewProjectDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &NewProjectDialog::reject);
    setWorkspaceChoiceEnabled(false);
    fillTree();
    updateLocation();
}

NewProjectDialog::~NewProjectDialog() = default;

void NewProjectDialog::setWorkspaceChoiceEnabled(bool enabled)
{
    m_ui->CreateWorkspaceRadio->setEnabled(enabled);
    m_ui->AddWorkspaceRadio->setEnabled(enabled);
    if (!enabled)
        m_ui->CreateWorkspaceRadio->setChecked(true);
}

bool NewProjectDialog::addToWorkspace() const
{
    return m_ui->AddWorkspaceRadio->isChecked();
}

QString NewProjectDialog::projectName() const
{
    return m_ui->NameLineEdit->text();
}

QString NewProjectDialog::location() const
{
    return QDir::fromNativeSeparators(m_ui->LocationLineEdit->text());
}

// The tree of folders -----------------------------------------------------

void NewProjectDialog::fillTree()
{
    addRecent();
    ListViewItem *last = m_ui->TemplateListView->firstChild();
    for (const TemplateFolder &folder : m_choices.folders)
        last = addFolder(folder, nullptr, last);
    if (!last) {
        auto *row = new ProjectTreeItem(m_ui->TemplateListView, nullptr, tr("No templates installed"), nullptr, nullptr,
                                        QTreeWidgetItem::Type, false);
        row->setItalic(true);
        row->setDisabled(true);
        m_ui->OKButton->setEnabled(false);
        return;
    }
    m_ui->TemplateListView->setCurrentItem(m_ui->TemplateListView->firstChild());
}

void NewProjectDialog::addRecent()
{
    if (m_choices.recent.isEmpty())
        return;
    new ProjectTreeItem(m_ui->TemplateListView, nullptr, tr("Recently used"), new QString,
                        ProjectTreeItem::destroy<QString>, QTreeWidgetItem::Type, false,
                        m_choices.picture({}, {}, u"treefolder.png"_s));
}

ProjectTreeItem *NewProjectDialog::addFolder(const TemplateFolder &folder, ListViewItem *parent, ListViewItem *after)
{
    const ProjectTemplate &info = folder.info;
    const QIcon closed = m_choices.picture(info.directory, info.icon, u"treefolder.png"_s);
    const QIcon open = m_choices.picture(info.directory, info.openIcon, u"treefolderopen.png"_s);
    const auto make = [&](auto *owner) {
        return new ProjectTreeItem(owner, after, info.name(), new QString(info.directory),
                                   ProjectTreeItem::destroy<QString>, QTreeWidgetItem::Type, false, closed, open);
    };
    ProjectTreeItem *item = parent ? make(parent) : make(m_ui->TemplateListView);
    ListViewItem *last = nullptr;
    for (const TemplateFolder &child : folder.folders)
        last = addFolder(child, item, last);
    return item;
}

// The templates of a folder -----------------------------------------------

void NewProjectDialog::templateFolderChanged(QTreeWidgetItem *item)
{
    m_templateDir.clear();
    m_templates.clear();
    m_ui->TemplateIconView->clear();
    if (!item)
        return;
    const QString directory = directoryOf(item);
    showTemplates(directory.isEmpty() ? m_choices.recent : templatesIn(directory));
    showDescription(directory.isEmpty() ? QString() : readTemplate(directory).description);
}

void NewProjectDialog::showTemplates(const QList<ProjectTemplate> &templates)
{
    for (const ProjectTemplate &each : templates) {
        auto *item = new QListWidgetItem(m_choices.picture(each.directory, each.icon, u"projecttemplate.png"_s),
                                         each.name(), m_ui->TemplateIconView);
        m_templates.insert(item, each);
    }
}

/// A template that the keyboard has moved to is chosen as by a click.
void NewProjectDialog::selectCurrent(QListWidgetItem *item)
{
    if (item)
        item->setSelected(true);
}

void NewProjectDialog::templateChanged(QListWidgetItem *item)
{
    const ProjectTemplate chosen = m_templates.value(item);
    m_templateDir = chosen.directory;
    if (item)
        showDescription(chosen.description.isNull() ? tr("%1 project template").arg(item->text()) : chosen.description);
}

void NewProjectDialog::showDescription(const QString &text)
{
    m_ui->DescriptionLabel->setText(text);
    m_ui->DescriptionLabel->setToolTip(text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped());
}

// Name and place ----------------------------------------------------------

void NewProjectDialog::updateLocation()
{
    const bool folder = m_ui->ProjectFolderCheckBox->isChecked();
    m_projectPath = folder ? QDir(location()).filePath(projectName()) : location();
    m_ui->LocationLabel->setText(tr("Project will be created at %1").arg(QDir::toNativeSeparators(m_projectPath)));
}

void NewProjectDialog::projectPathChanged()
{
    m_nameEdited = true;
    updateLocation();
}

void NewProjectDialog::browse()
{
    const QString directory = askForDirectory(this, {u"getDirectory"_s, tr("Choose Directory"), location(), {}});
    if (!directory.isNull())
        m_ui->LocationLineEdit->setText(QDir::toNativeSeparators(directory));
}

void NewProjectDialog::askAgainFor(QWidget *edit)
{
    edit->setFocus();
    if (auto *line = qobject_cast<QLineEdit *>(edit))
        line->selectAll();
}

/// Why the name cannot be used; null if it can.
QString NewProjectDialog::problemOfName() const
{
    if (!m_nameEdited || projectName().trimmed().isEmpty())
        return tr("Please enter a name for the new project.");
    if (!isFileName(projectName()))
        return tr("The name of a project cannot be '.' or '..', and cannot contain '/' or control characters.");
    if (m_ui->ProjectFolderCheckBox->isChecked() && QFileInfo::exists(m_projectPath))
        return tr("A folder with that name already exists.");
    return {};
}

void NewProjectDialog::accept()
{
    if (m_templateDir.isEmpty()) {
        showWarning(this, tr("Please select a project type."));
        m_ui->TemplateIconView->setFocus();
        return;
    }
    if (const QString problem = problemOfName(); !problem.isNull()) {
        showWarning(this, problem);
        return askAgainFor(m_ui->NameLineEdit);
    }
    if (!locationExists()) {
        m_ui->LocationLineEdit->setFocus();
        return;
    }
    if (m_ui->ProjectFolderCheckBox->isChecked())
        createProjectFolder();
    QDialog::accept();
}

/// Creates the location if the user agrees. True if accepting may go on.
bool NewProjectDialog::locationExists()
{
    if (location().trimmed().isEmpty()) {
        showWarning(this, tr("Please enter a location for the new project."));
        return false;
    }
    if (QFileInfo::exists(location()))
        return true;
    const QString question = tr("The folder does not exist:\n\n%1\n\nDo you want to create it?");
    if (showInformation(this, question.arg(m_ui->LocationLineEdit->text()), {QMessageBox::Ok, QMessageBox::Cancel})
        != QMessageBox::Ok)
        return false;
    createDirectories(location());
    return true;
}

void NewProjectDialog::createProjectFolder()
{
    if (QDir().mkdir(m_projectPath))
        return;
    showWarning(this, tr("Could not create the project folder '%1'.").arg(QDir::toNativeSeparators(m_projectPath)));
    m_ui->LocationLineEdit->setFocus();
}
