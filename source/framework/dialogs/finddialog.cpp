#include "finddialog.h"
#include "searchoptions.h"
#include "ui_finddialogbase.h"

FindDialog::FindDialog(QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::FindDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->FindWhatCombo->setAccelerator(Qt::Key_N);
    connect(m_ui->FindWhatCombo, &QComboBox::textActivated, this, &FindDialog::findWhatComboActivated);
    connect(m_ui->FindNextButton, &QPushButton::clicked, this, &FindDialog::findNext);
    connect(m_ui->FindWhatCombo, &QComboBox::editTextChanged, this, &FindDialog::refresh);
    for (const QCheckBox *box : {m_ui->MatchCaseCheck, m_ui->MatchWholeWordCheck, m_ui->RegExpCheck})
        connect(box, &QCheckBox::toggled, this, &FindDialog::refresh);
    refresh();
}

FindDialog::~FindDialog() = default;

void FindDialog::setFindText(const QString &text)
{
    m_ui->FindWhatCombo->setEditText(text);
}

void FindDialog::run()
{
    m_ui->FindWhatCombo->takeFocus();
    show();
    raise();
    activateWindow();
}

TextPattern FindDialog::pattern() const
{
    return patternOf(m_ui->FindWhatCombo, m_ui->MatchCaseCheck, m_ui->MatchWholeWordCheck, m_ui->RegExpCheck);
}

bool FindDialog::forward() const
{
    return m_ui->DownRadio->isChecked();
}

void FindDialog::setExpressionsAvailable(bool available)
{
    if (m_ui->RegExpCheck->isEnabled() == available)
        return;
    m_ui->RegExpCheck->setEnabled(available);
    refresh();
}

void FindDialog::showCount(const QString &text)
{
    m_ui->CountLabel->setText(text);
}

void FindDialog::refresh()
{
    m_ui->FindNextButton->setEnabled(pattern().canMatch());
    Q_EMIT patternChanged();
}

void FindDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    Q_EMIT patternChanged();
}

void FindDialog::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    Q_EMIT patternChanged();
}

void FindDialog::findNext()
{
    const QString text = m_ui->FindWhatCombo->currentText();
    m_ui->FindWhatCombo->remember(text);
    Q_EMIT find(text, m_ui->MatchCaseCheck->isChecked(), m_ui->MatchWholeWordCheck->isChecked(), forward(), true);
}

void FindDialog::findWhatComboActivated(const QString &text)
{
    m_ui->FindWhatCombo->remember(text);
}
