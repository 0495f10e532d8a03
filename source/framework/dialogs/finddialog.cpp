#include "finddialog.h"
#include "ui_finddialogbase.h"

FindDialog::FindDialog(QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::FindDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->FindWhatCombo->setAccelerator(Qt::Key_N);
    connect(m_ui->FindWhatCombo, &QComboBox::textActivated, this, &FindDialog::findWhatComboActivated);
    connect(m_ui->FindNextButton, &QPushButton::clicked, this, &FindDialog::findNext);
}

FindDialog::~FindDialog() = default;

void FindDialog::setFindText(const QString &text)
{
    m_ui->FindWhatCombo->setEditText(text);
}

void FindDialog::run()
{
    m_ui->FindWhatCombo->takeFocus();
    if (!isVisible()) {
        exec();
        return;
    }
    raise();
    activateWindow();
}

void FindDialog::findNext()
{
    const QString text = m_ui->FindWhatCombo->currentText();
    m_ui->FindWhatCombo->remember(text);
    Q_EMIT find(text, m_ui->MatchCaseCheck->isChecked(), m_ui->MatchWholeWordCheck->isChecked(),
                m_ui->DownRadio->isChecked(), true);
}

void FindDialog::findWhatComboActivated(const QString &text)
{
    m_ui->FindWhatCombo->remember(text);
}
