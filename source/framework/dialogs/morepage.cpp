#include "morepage.h"
#include "questions.h"
#include "ui_morepagebase.h"
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>
#include <QPointer>

using namespace Qt::StringLiterals;

MorePage::MorePage(const MoreOptions &options, QWidget *parent, const QString &name,
                   const QList<LanguageChoice> &languages)
    : QWidget(parent), m_ui(std::make_unique<Ui::MorePageBase>()), m_virtualEnvironment(options.virtualEnvironment)
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->MoreScrollArea->viewport()->setAutoFillBackground(false); // the background is that of the tab
    m_ui->MoreContents->setAutoFillBackground(false);
    m_ui->LineNumbersCheck->setChecked(options.lineNumbers);
    m_ui->CurrentLineCheck->setChecked(options.currentLine);
    m_ui->ZoomSpin->setValue(options.zoom);
    m_ui->VirtualEnvironmentEdit->setText(options.virtualEnvironment);
    connect(m_ui->VirtualEnvironmentButton, &QPushButton::clicked, this, &MorePage::chooseVirtualEnvironment);
    fillAddresses(options.automationAddress);
    fillLanguages(languages, options.language);
    m_ui->StartPageCheck->setChecked(options.startPage);
    m_ui->AskBeforeScriptsCheck->setChecked(options.askBeforeScripts);
    fillTrust(options);
}

MorePage::~MorePage() = default;

/// An address that was written into the settings by hand is offered as a further choice.
void MorePage::fillAddresses(const std::optional<QString> &current)
{
    m_addresses = {std::nullopt, u"127.0.0.1"_s};
    m_ui->AutomationCombo->addItems({tr("All computers"), tr("This computer only")});
    if (!m_addresses.contains(current)) {
        m_addresses.append(current);
        m_ui->AutomationCombo->addItem(tr("The network of \"%1\"").arg(*current));
    }
    m_ui->AutomationCombo->setCurrentIndex(int(m_addresses.indexOf(current)));
}

/// A language whose file is gone stays the chosen one until the user chooses another.
void MorePage::fillLanguages(const QList<LanguageChoice> &languages, const QString &current)
{
    for (const LanguageChoice &language : languages)
        m_ui->LanguageCombo->addItem(language.name, language.code);
    if (m_ui->LanguageCombo->findData(current) < 0)
        m_ui->LanguageCombo->addItem(current.isEmpty() ? u"English"_s : current, current);
    m_ui->LanguageCombo->setCurrentIndex(m_ui->LanguageCombo->findData(current));
}

void MorePage::fillTrust(const MoreOptions &options)
{
    QTreeWidget *tree = m_ui->TrustTree;
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    const auto add = [tree](const QString &directory, bool trusted) {
        auto *item = new QTreeWidgetItem(tree, {QDir::toNativeSeparators(directory), trusted ? tr("Yes") : tr("No")});
        item->setData(0, Qt::UserRole, directory);
        item->setData(1, Qt::UserRole, trusted);
        item->setToolTip(0, QDir::toNativeSeparators(directory));
    };
    for (const QString &directory : options.trustedDirectories)
        add(directory, true);
    for (const QString &directory : options.distrustedDirectories)
        add(directory, false);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &MorePage::enableForget);
    connect(m_ui->ForgetButton, &QPushButton::clicked, this, &MorePage::forgetSelected);
    enableForget();
}

void MorePage::forgetSelected()
{
    qDeleteAll(m_ui->TrustTree->selectedItems());
    enableForget();
}

void MorePage::enableForget()
{
    m_ui->ForgetButton->setEnabled(!m_ui->TrustTree->selectedItems().isEmpty());
}

QStringList MorePage::directories(bool trusted) const
{
    QStringList found;
    for (int i = 0; i < m_ui->TrustTree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = m_ui->TrustTree->topLevelItem(i);
        if (item->data(1, Qt::UserRole).toBool() == trusted)
            found.append(item->data(0, Qt::UserRole).toString());
    }
    return found;
}

void MorePage::chooseVirtualEnvironment()
{
    const QPointer<MorePage> self(this);
    const QString directory = askForDirectory(
        this, {u"virtualEnvironmentDialog"_s, tr("Virtual Environment"), m_ui->VirtualEnvironmentEdit->text(), {}});
    if (self && !directory.isEmpty())
        m_ui->VirtualEnvironmentEdit->setText(directory);
}

/// A stored directory that is gone does not prevent the user from changing other options.
QString MorePage::problem() const
{
    const QString directory = options().virtualEnvironment;
    if (directory.isEmpty() || directory == m_virtualEnvironment
        || QFileInfo::exists(QDir(directory).filePath(u"pyvenv.cfg"_s)))
        return {};
    return tr("\"%1\" is not a virtual environment of Python: it has no file pyvenv.cfg.")
        .arg(QDir::toNativeSeparators(directory));
}

void MorePage::showProblem()
{
    m_ui->VirtualEnvironmentEdit->setFocus();
    m_ui->VirtualEnvironmentEdit->selectAll();
}

MoreOptions MorePage::options() const
{
    return {.lineNumbers = m_ui->LineNumbersCheck->isChecked(),
            .currentLine = m_ui->CurrentLineCheck->isChecked(),
            .zoom = m_ui->ZoomSpin->value(),
            .virtualEnvironment = m_ui->VirtualEnvironmentEdit->text().trimmed(),
            .automationAddress = m_addresses[m_ui->AutomationCombo->currentIndex()],
            .language = m_ui->LanguageCombo->currentData().toString(),
            .startPage = m_ui->StartPageCheck->isChecked(),
            .askBeforeScripts = m_ui->AskBeforeScriptsCheck->isChecked(),
            .trustedDirectories = directories(true),
            .distrustedDirectories = directories(false)};
}
