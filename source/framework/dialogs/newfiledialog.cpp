#include "newfiledialog.h"
#include "callplugin.h"
#include "documenttemplate.h"
#include "messages.h"
#include "questions.h"
#include "ui_newfiledialogbase.h"
#include "workspace.h"
#include <QDir>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int DescriptionLines = 2;
constexpr int CharactersOfName = 17;       // in each line below a picture
constexpr int TemplateRole = Qt::UserRole; // the number of a template with text
} // namespace

NewFileDialog::NewFileDialog(const Workspace &workspace, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::NewFileDialogBase>()), m_workspace(workspace)
{
    m_ui->setupUi(this);
    setObjectName(name);
    const QFontMetrics metrics(font());
    m_ui->descriptionLabel->setFixedHeight(DescriptionLines * metrics.lineSpacing());
    m_ui->fileIconView->setGridSize({CharactersOfName * metrics.averageCharWidth(),
                                     m_ui->fileIconView->iconSize().height() + 3 * metrics.lineSpacing()});
    for (DocumentTemplate *each : workspace.templates()) {
        if (askPlugin<&DocumentTemplate::canCreate>(each))
            new QListWidgetItem(each->icon(), each->name(), m_ui->fileIconView);
    }
    setProjectOpen(false);
    connect(m_ui->fileIconView, &QListWidget::currentItemChanged, this, &NewFileDialog::updateTemplate);
    connect(m_ui->fileIconView, &QListWidget::itemDoubleClicked, this, &NewFileDialog::accept);
    connect(m_ui->nameEdit, &QLineEdit::textChanged, this, &NewFileDialog::filenameChanged);
    connect(m_ui->locationEdit, &QLineEdit::textChanged, this, &NewFileDialog::updateLocation);
    connect(m_ui->browseButton, &QPushButton::clicked, this, &NewFileDialog::browse);
    connect(m_ui->okButton, &QPushButton::clicked, this, &NewFileDialog::accept);
    connect(m_ui->cancelButton, &QPushButton::clicked, this, &NewFileDialog::reject);
    m_ui->fileIconView->setCurrentRow(0);
    updateTemplate();
}

NewFileDialog::~NewFileDialog() = default;

void NewFileDialog::addFileTemplates(const QList<FileTemplate> &templates, const Picture &picture)
{
    for (const FileTemplate &each : templates) {
        auto *item = new QListWidgetItem(picture(each), each.name, m_ui->fileIconView);
        item->setData(TemplateRole, m_fileTemplates.size());
        m_fileTemplates.append(each);
    }
}

void NewFileDialog::setLocation(const QString &directory)
{
    m_ui->locationEdit->setText(QDir::toNativeSeparators(directory));
}

void NewFileDialog::setProjectOpen(bool open)
{
    m_ui->addCheck->setEnabled(open);
    m_ui->addCheck->setChecked(open);
}

bool NewFileDialog::addToProject() const
{
    return m_ui->addCheck->isChecked();
}

/// The first kind with the name that is shown.
DocumentTemplate *NewFileDialog::documentTemplate() const
{
    const QListWidgetItem *item = m_ui->fileIconView->currentItem();
    if (!item || fileTemplate())
        return nullptr;
    const QList<DocumentTemplate *> &all = m_workspace.templates();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const DocumentTemplate *each) { return each->name() == item->text(); });
    return found == all.end() ? nullptr : *found;
}

std::optional<FileTemplate> NewFileDialog::fileTemplate() const
{
    const QListWidgetItem *item = m_ui->fileIconView->currentItem();
    const QVariant number = item ? item->data(TemplateRole) : QVariant();
    return number.isValid() ? std::optional(m_fileTemplates[number.toInt()]) : std::nullopt;
}

QString NewFileDialog::extension() const
{
    if (const std::optional<FileTemplate> chosen = fileTemplate())
        return chosen->extension;
    return askPlugin<&DocumentTemplate::extension>(documentTemplate());
}

QString NewFileDialog::location() const
{
    return QDir::fromNativeSeparators(m_ui->locationEdit->text());
}

void NewFileDialog::updateTemplate()
{
    const std::optional<FileTemplate> chosen = fileTemplate();
    const DocumentTemplate *kind = documentTemplate();
    m_ui->descriptionLabel->setText(chosen ? chosen->description : kind ? kind->description() : QString());
    updateLocation();
}

void NewFileDialog::updateLocation()
{
    QString name = m_ui->nameEdit->text();
    if (QFileInfo(name).suffix().isEmpty() && !extension().isEmpty())
        name += u'.' + extension();
    m_filePath = QDir(location()).filePath(name);
    m_ui->locationLabel->setText(tr("File will be created at %1").arg(QDir::toNativeSeparators(m_filePath)));
}

void NewFileDialog::filenameChanged()
{
    m_nameEdited = true;
    updateLocation();
}

void NewFileDialog::browse()
{
    const QString directory = askForDirectory(this, {u"getDirectory"_s, tr("Choose Directory"), location(), {}});
    if (!directory.isNull())
        m_ui->locationEdit->setText(QDir::toNativeSeparators(directory));
}

void NewFileDialog::accept()
{
    if (!m_nameEdited || m_ui->nameEdit->text().trimmed().isEmpty()) {
        showWarning(this, tr("Please enter a name for the new file."));
        m_ui->nameEdit->setFocus();
        m_ui->nameEdit->selectAll();
        return;
    }
    if (location().trimmed().isEmpty()) {
        showWarning(this, tr("Please enter a location for the new file."));
        m_ui->locationEdit->setFocus();
        return;
    }
    if (QFileInfo::exists(m_filePath)) {
        const QString question =
            tr("A file with that name already exist. Do you want to overwrite it with the new file?");
        if (showInformation(this, question, {QMessageBox::Yes, QMessageBox::No}) != QMessageBox::Yes)
            return;
    }
    QDialog::accept();
}
