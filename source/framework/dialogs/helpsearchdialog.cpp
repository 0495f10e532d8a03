#include "helpsearchdialog.h"
#include "ui_helpsearchdialogbase.h"

HelpSearchDialog::HelpSearchDialog(const QString &text, QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::HelpSearchDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    const auto enable = [this] { m_ui->buttonOk->setEnabled(!this->text().isEmpty()); };
    connect(m_ui->TextEdit, &QLineEdit::textChanged, this, enable);
    m_ui->TextEdit->setText(text);
    m_ui->TextEdit->selectAll();
    enable();
}

HelpSearchDialog::~HelpSearchDialog() = default;

QString HelpSearchDialog::text() const
{
    return m_ui->TextEdit->text().trimmed();
}
