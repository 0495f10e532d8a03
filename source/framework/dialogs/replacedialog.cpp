#include "replacedialog.h"
#include "messages.h"
#include "textview.h"
#include "ui_replacedialogbase.h"

ReplaceDialog::ReplaceDialog(QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::ReplaceDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->FindWhatCombo->setAccelerator(Qt::Key_N);
    m_ui->ReplaceWithCombo->setAccelerator(Qt::Key_P);
    connect(m_ui->FindWhatCombo, &QComboBox::textActivated, this, &ReplaceDialog::findWhatComboActivated);
    connect(m_ui->ReplaceWithCombo, &QComboBox::textActivated, this, &ReplaceDialog::replaceWithComboActivated);
    connect(m_ui->FindNextButton, &QPushButton::clicked, this, &ReplaceDialog::findNext);
    connect(m_ui->ReplaceButton, &QPushButton::clicked, this, &ReplaceDialog::replace);
    connect(m_ui->ReplaceAllButton, &QPushButton::clicked, this, &ReplaceDialog::replaceAll);
    connect(m_ui->SelectionRadio, &QRadioButton::toggled, this, &ReplaceDialog::selectionClicked);
    setHasSelection(false);
}

ReplaceDialog::~ReplaceDialog() = default;

void ReplaceDialog::setView(TextView *view)
{
    m_view = view;
}

void ReplaceDialog::setFindText(const QString &text)
{
    m_ui->FindWhatCombo->setEditText(text);
}

void ReplaceDialog::setHasSelection(bool hasSelection)
{
    m_ui->SelectionRadio->setEnabled(hasSelection);
    (hasSelection ? m_ui->SelectionRadio : m_ui->WholeFileRadio)->setChecked(true);
}

void ReplaceDialog::run()
{
    m_ui->FindWhatCombo->takeFocus();
    if (!isVisible()) {
        exec();
        return;
    }
    raise();
    activateWindow();
}

void ReplaceDialog::findNext()
{
    auto *navigation = viewInterface<ITextNavigation>(m_view);
    if (!navigation)
        return;
    const QString text = m_ui->FindWhatCombo->currentText();
    if (!navigation->find(text, m_ui->MatchCaseCheck->isChecked(), m_ui->MatchWholeWordCheck->isChecked(), true, true))
        tellNotFound(text);
    m_ui->FindWhatCombo->remember(text);
}

void ReplaceDialog::replace()
{
    if (!m_view)
        return;
    const QString text = m_ui->FindWhatCombo->currentText();
    if (!m_view->replace(text, m_ui->ReplaceWithCombo->currentText(), m_ui->MatchCaseCheck->isChecked(),
                         m_ui->MatchWholeWordCheck->isChecked(), true, true, false))
        tellNotFound(text);
    rememberTexts();
}

void ReplaceDialog::replaceAll()
{
    if (!m_view)
        return;
    const QString text = m_ui->FindWhatCombo->currentText();
    const QString replacement = m_ui->ReplaceWithCombo->currentText();
    const bool matchCase = m_ui->MatchCaseCheck->isChecked();
    const bool wholeWord = m_ui->MatchWholeWordCheck->isChecked();
    const bool replaced = m_ui->SelectionRadio->isChecked()
                              ? m_view->replaceInSelection(text, replacement, matchCase, wholeWord)
                              : m_view->replace(text, replacement, matchCase, wholeWord, true, false, true);
    if (!replaced)
        tellNotFound(text);
    rememberTexts();
}

/// In a selection, only "Replace All" is possible.
void ReplaceDialog::selectionClicked()
{
    const bool inSelection = m_ui->SelectionRadio->isChecked();
    m_ui->FindNextButton->setEnabled(!inSelection);
    m_ui->ReplaceButton->setEnabled(!inSelection);
    (inSelection ? m_ui->ReplaceAllButton : m_ui->FindNextButton)->setDefault(true);
}

void ReplaceDialog::findWhatComboActivated(const QString &text)
{
    m_ui->FindWhatCombo->remember(text);
}

void ReplaceDialog::replaceWithComboActivated(const QString &text)
{
    m_ui->ReplaceWithCombo->remember(text);
}

void ReplaceDialog::tellNotFound(const QString &text)
{
    showInformation(this, tr("Cannot find the string '%1'").arg(text), {QMessageBox::Ok}, tr("Replace"));
}

void ReplaceDialog::rememberTexts()
{
    m_ui->FindWhatCombo->remember(m_ui->FindWhatCombo->currentText());
    m_ui->ReplaceWithCombo->remember(m_ui->ReplaceWithCombo->currentText());
}
