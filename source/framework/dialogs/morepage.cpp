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

/// An address that was stored by hand is one more choice.
void MorePage::fillAddresses(const QString &current)
{
    QComboBox *combo = m_ui->AutomationCombo;
    combo->addItem(tr("All computers"), QString());
    combo->addItem(tr("This computer only"), u"127.0.0.1"_s);
    if (combo->findData(current) < 0)
        combo->addItem(tr("The network of %1").arg(current), current);
    combo->setCurrentIndex(combo->findData(current));
}

MoreOptions MorePage::options() const
{
    return {.lineNumbers = m_ui->LineNumbersCheck->isChecked(),
            .currentLine = m_ui->CurrentLineCheck->isChecked(),
            .automationAddress = m_ui->AutomationCombo->currentData().toString()};
}
