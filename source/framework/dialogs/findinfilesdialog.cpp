#include "findinfilesdialog.h"
#include "ui_findinfilesdialogbase.h"
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QStandardItemModel>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int HistoryLength = 11; ///< number of entries of a box besides the current text
const auto EveryFile = u"*.*"_s;
const auto MaskKey = u"FileMask"_s;
const auto ListedMaskKey = u"ListedFileMask"_s;

/// Null if the user cancels.
QString askForDirectory(QWidget *parent, const QString &directory)
{
    QFileDialog dialog(parent, FindInFilesDialog::tr("Choose Directory"), directory);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setObjectName(u"getDirectory"_s);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}
} // namespace

FindInFilesDialog::FindInFilesDialog(QSettings *settings, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::FindInFilesDialogBase>()), m_settings(settings)
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->FileTypesCombo->addItems({u"*.c; *.h;*.asm"_s, u"*.txt"_s, EveryFile});
    m_ui->LookInCombo->lineEdit()->setPlaceholderText(QDir::toNativeSeparators(QDir::currentPath()));
    load();
    connect(m_ui->BrowseButton, &QPushButton::clicked, this, &FindInFilesDialog::browse);
    connect(m_ui->FindWhatCombo, &QComboBox::editTextChanged, this, &FindInFilesDialog::refresh);
    connect(m_ui->LookInCombo, &QComboBox::editTextChanged, this, &FindInFilesDialog::refresh);
    connect(m_ui->ScopeCombo, &QComboBox::currentIndexChanged, this, &FindInFilesDialog::refresh);
    refresh();
    m_ui->FindWhatCombo->takeFocus();
}

FindInFilesDialog::~FindInFilesDialog() = default;

void FindInFilesDialog::load()
{
    m_settings->beginGroup(u"/FindInFiles"_s);
    loadHistory(u"Match"_s, m_ui->FindWhatCombo);
    loadHistory(u"Folder"_s, m_ui->LookInCombo);
    const QString mask = m_settings->value(MaskKey).toString();
    if (!mask.isEmpty())
        m_ui->FileTypesCombo->setEditText(mask);
    m_ui->MatchCaseCheck->setChecked(m_settings->value(u"MatchCase"_s, false).toBool());
    m_ui->MatchWholeWordCheck->setChecked(m_settings->value(u"MatchWholeWord"_s, false).toBool());
    m_ui->SubfoldersCheck->setChecked(m_settings->value(u"LookInSubfolders"_s, false).toBool());
    m_ui->RegExpCheck->setChecked(m_settings->value(u"UseRegExp"_s, false).toBool());
    const int scope = m_settings->value(u"Scope"_s, int(Folder)).toInt();
    m_ui->ScopeCombo->setCurrentIndex(std::clamp(scope, int(Folder), int(OpenDocuments)));
    m_otherMask = m_settings->value(ListedMaskKey, EveryFile).toString();
    m_settings->endGroup();
    showMask();
}

/// The default for folders leaves out many of a project's sources, so each kind of scope has its own file types.
void FindInFilesDialog::showMask()
{
    const bool isOfFolder = scope() == Folder;
    if (isOfFolder == m_maskIsOfFolder)
        return;
    m_maskIsOfFolder = isOfFolder;
    const QString other = std::exchange(m_otherMask, mask());
    m_ui->FileTypesCombo->setEditText(other);
}

void FindInFilesDialog::loadHistory(const QString &key, HistoryCombo *combo)
{
    for (int i = 0;; ++i) {
        const QString text = m_settings->value(key + QString::number(i)).toString();
        if (text.isEmpty())
            return;
        combo->addItem(text);
    }
}

void FindInFilesDialog::saveHistory(const QString &key, const HistoryCombo *combo)
{
    const QString current = combo->currentText();
    int number = 0;
    if (!current.trimmed().isEmpty()) // an empty entry ends the history
        m_settings->setValue(key + QString::number(number++), current);
    for (int i = 0; i < std::min(combo->count(), HistoryLength); ++i) {
        if (combo->itemText(i) != current)
            m_settings->setValue(key + QString::number(number++), combo->itemText(i));
    }
}

/// What has no effect is disabled, and there must be something to search for, and somewhere to search.
void FindInFilesDialog::refresh()
{
    showMask();
    const bool inFolder = scope() == Folder;
    const std::initializer_list<QWidget *> ofFolder{m_ui->LookInCombo, m_ui->LookInLabel, m_ui->BrowseButton,
                                                    m_ui->SubfoldersCheck};
    for (QWidget *widget : ofFolder)
        widget->setEnabled(inFolder);
    const bool hasPlace = !inFolder || !m_ui->LookInCombo->currentText().trimmed().isEmpty();
    m_ui->FindButton->setEnabled(!findText().isEmpty() && hasPlace);
}

void FindInFilesDialog::proposeFolder(const QString &directory)
{
    if (m_ui->LookInCombo->currentText().isEmpty())
        m_ui->LookInCombo->setEditText(QDir::toNativeSeparators(directory));
}

void FindInFilesDialog::setFindText(const QString &text)
{
    m_ui->FindWhatCombo->setEditText(text);
    m_ui->FindWhatCombo->takeFocus();
}

void FindInFilesDialog::setProjectsAvailable(bool available)
{
    const auto *model = qobject_cast<const QStandardItemModel *>(m_ui->ScopeCombo->model());
    for (const Scope projects : {CurrentProject, AllProjects})
        model->item(projects)->setEnabled(available);
    if (!available && (scope() == CurrentProject || scope() == AllProjects))
        m_ui->ScopeCombo->setCurrentIndex(Folder);
}

FindInFilesDialog::Scope FindInFilesDialog::scope() const
{
    return Scope(m_ui->ScopeCombo->currentIndex());
}

void FindInFilesDialog::accept()
{
    if (!m_ui->FindButton->isEnabled())
        return;
    m_settings->beginGroup(u"/FindInFiles"_s);
    saveHistory(u"Match"_s, m_ui->FindWhatCombo);
    saveHistory(u"Folder"_s, m_ui->LookInCombo);
    m_settings->setValue(MaskKey, scope() == Folder ? mask() : m_otherMask);
    if (scope() != Folder)
        m_settings->setValue(ListedMaskKey, mask());
    m_settings->setValue(u"MatchCase"_s, caseSensitive());
    m_settings->setValue(u"MatchWholeWord"_s, wholeWord());
    m_settings->setValue(u"LookInSubfolders"_s, recursive());
    m_settings->setValue(u"UseRegExp"_s, regExp());
    m_settings->setValue(u"Scope"_s, int(scope()));
    m_settings->endGroup();
    QDialog::accept();
}

void FindInFilesDialog::browse()
{
    const QString directory = askForDirectory(this, folder());
    if (!directory.isNull())
        m_ui->LookInCombo->setEditText(QDir::toNativeSeparators(directory));
}

QString FindInFilesDialog::findText() const
{
    return m_ui->FindWhatCombo->currentText();
}

QString FindInFilesDialog::mask() const
{
    return m_ui->FileTypesCombo->currentText();
}

QString FindInFilesDialog::folder() const
{
    return QDir(QDir::fromNativeSeparators(m_ui->LookInCombo->currentText())).absolutePath();
}

bool FindInFilesDialog::caseSensitive() const
{
    return m_ui->MatchCaseCheck->isChecked();
}

bool FindInFilesDialog::wholeWord() const
{
    return m_ui->MatchWholeWordCheck->isChecked();
}

bool FindInFilesDialog::recursive() const
{
    return m_ui->SubfoldersCheck->isChecked();
}

bool FindInFilesDialog::regExp() const
{
    return m_ui->RegExpCheck->isChecked();
}
