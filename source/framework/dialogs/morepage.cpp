#include "morepage.h"
#include "questions.h"
#include "ui_morepagebase.h"
#include <QPointer>

using namespace Qt::StringLiterals;

MorePage::MorePage(const MoreOptions &options, QWidget *parent, const QString &name)
    : QWidget(parent), m_ui(std::make_unique<Ui::MorePageBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->LineNumbersCheck->setChecked(options.lineNumbers);
    m_ui->CurrentLineCheck->setChecked(options.currentLine);
    m_ui->ZoomSpin->setValue(options.zoom);
    m_ui->VirtualEnvironmentEdit->setText(options.virtualEnvironment);
    connect(m_ui->VirtualEnvironmentButton, &QPushButton::clicked, this, &MorePage::chooseVirtualEnvironment);
    fillAddresses(options.automationAddress);
}

MorePage::~MorePage() = default;

/// What was stored by hand is one more choice.
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

void MorePage::chooseVirtualEnvironment()
{
    const QPointer<MorePage> self(this);
    const QString directory = askForDirectory(
        this, {u"virtualEnvironmentDialog"_s, tr("Virtual Environment"), m_ui->VirtualEnvironmentEdit->text(), {}});
    if (self && !directory.isEmpty())
        m_ui->VirtualEnvironmentEdit->setText(directory);
}

MoreOptions MorePage::options() const
{
    return {.lineNumbers = m_ui->LineNumbersCheck->isChecked(),
            .currentLine = m_ui->CurrentLineCheck->isChecked(),
            .zoom = m_ui->ZoomSpin->value(),
            .virtualEnvironment = m_ui->VirtualEnvironmentEdit->text().trimmed(),
            .automationAddress = m_addresses[m_ui->AutomationCombo->currentIndex()]};
}
