#include "morepage.h"
#include "ui_morepagebase.h"

using namespace Qt::StringLiterals;

MorePage::MorePage(const MoreOptions &options, QWidget *parent, const QString &name)
    : QWidget(parent), m_ui(std::make_unique<Ui::MorePageBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->LineNumbersCheck->setChecked(options.lineNumbers);
    m_ui->CurrentLineCheck->setChecked(options.currentLine);
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

MoreOptions MorePage::options() const
{
    return {.lineNumbers = m_ui->LineNumbersCheck->isChecked(),
            .currentLine = m_ui->CurrentLineCheck->isChecked(),
            .automationAddress = m_addresses[m_ui->AutomationCombo->currentIndex()]};
}
