#include "replacedialog.h"
#include "messages.h"
#include "searchoptions.h"
#include "textview.h"
#include "ui_replacedialogbase.h"

ReplaceDialog::ReplaceDialog(QWidget *parent, const QString &name)
    : QDialog(parent), m_ui(std::make_unique<Ui::ReplaceDialogBase>())
{
    m_ui->setupUi(this);
    setObjectName(name);
    m_ui->FindWhatCombo->setAccelerator(m_ui->FindWhatLabel->text());
    m_ui->ReplaceWithCombo->setAccelerator(m_ui->ReplaceWithLabel->text());
    connect(m_ui->FindWhatCombo, &QComboBox::textActivated, this, &ReplaceDialog::findWhatComboActivated);
    connect(m_ui->ReplaceWithCombo, &QComboBox::textActivated, this, &ReplaceDialog::replaceWithComboActivated);
    connect(m_ui->FindNextButton, &QPushButton::clicked, this, &ReplaceDialog::findNext);
    connect(m_ui->ReplaceButton, &QPushButton::clicked, this, &ReplaceDialog::replace);
    connect(m_ui->ReplaceAllButton, &QPushButton::clicked, this, &ReplaceDialog::replaceAll);
    connect(m_ui->SelectionRadio, &QRadioButton::toggled, this, &ReplaceDialog::selectionClicked);
    connect(m_ui->FindWhatCombo, &QComboBox::editTextChanged, this, &ReplaceDialog::refresh);
    for (const QCheckBox *box : {m_ui->MatchCaseCheck, m_ui->MatchWholeWordCheck, m_ui->RegExpCheck})
        connect(box, &QCheckBox::toggled, this, &ReplaceDialog::refresh);
    setHasSelection(false);
    refresh();
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

void ReplaceDialog::setHasSelection(bool hasSelection, bool limit)
{
    (hasSelection && limit ? m_ui->SelectionRadio : m_ui->WholeFileRadio)->setChecked(true);
    setSelectionAvailable(hasSelection);
}

/// The choice is the user's: it does not change to the whole file by itself.
void ReplaceDialog::setSelectionAvailable(bool available)
{
    m_hasSelection = available;
    m_ui->SelectionRadio->setEnabled(available || m_ui->SelectionRadio->isChecked());
    selectionClicked();
}

void ReplaceDialog::run()
{
    m_ui->FindWhatCombo->takeFocus();
    show();
    raise();
    activateWindow();
}

TextPattern ReplaceDialog::pattern() const
{
    return patternOf(m_ui->FindWhatCombo, m_ui->MatchCaseCheck, m_ui->MatchWholeWordCheck, m_ui->RegExpCheck);
}

void ReplaceDialog::showCount(const QString &text)
{
    m_ui->CountLabel->setText(text);
}

void ReplaceDialog::refresh()
{
    selectionClicked();
    Q_EMIT patternChanged();
}

void ReplaceDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    Q_EMIT patternChanged();
}

void ReplaceDialog::hideEvent(QHideEvent *event)
{
    QDialog::hideEvent(event);
    Q_EMIT patternChanged();
}

void ReplaceDialog::findNext()
{
    auto *navigation = viewInterface<ITextNavigation>(m_view);
    if (!navigation)
        return;
    const TextPattern wanted = pattern();
    const SearchOptions options = wanted.options();
    const bool found = wanted.options().regExp
                           ? m_view->find(wanted, true, true)
                           : navigation->find(wanted.text(), options.caseSensitive, options.wholeWord, true, true);
    if (found)
        Q_EMIT matchSelected();
    else
        tellNotFound(wanted);
    m_ui->FindWhatCombo->remember(wanted.text());
}

/// Replaces one match and selects the next one. That there is no further match is no failure.
void ReplaceDialog::replace()
{
    if (!m_view)
        return;
    const TextPattern wanted = pattern();
    const SearchOptions options = wanted.options();
    const QString replacement = m_ui->ReplaceWithCombo->currentText();
    const bool more = wanted.options().regExp ? m_view->replace(wanted, replacement, false)
                                              : m_view->replace(wanted.text(), replacement, options.caseSensitive,
                                                                options.wholeWord, true, true, false);
    if (more)
        Q_EMIT matchSelected();
    else if (m_view->replacedCount() == 0)
        tellNotFound(wanted);
    rememberTexts();
}

void ReplaceDialog::replaceAll()
{
    if (!m_view)
        return;
    const TextPattern wanted = pattern();
    const bool found = replaceMatches(wanted, m_ui->ReplaceWithCombo->currentText());
    if (found)
        Q_EMIT replaced(m_view->replacedCount());
    if (!found || wanted.hasGivenUp())
        tellNotFound(wanted);
    rememberTexts();
}

bool ReplaceDialog::replaceMatches(const TextPattern &pattern, const QString &replacement)
{
    const SearchOptions options = pattern.options();
    const bool inSelection = m_ui->SelectionRadio->isChecked();
    if (pattern.options().regExp)
        return inSelection ? m_view->replaceInSelection(pattern, replacement)
                           : m_view->replace(pattern, replacement, true);
    return inSelection
               ? m_view->replaceInSelection(pattern.text(), replacement, options.caseSensitive, options.wholeWord)
               : m_view->replace(pattern.text(), replacement, options.caseSensitive, options.wholeWord, true, false,
                                 true);
}

/// In a selection, only "Replace All" is possible.
void ReplaceDialog::selectionClicked()
{
    const bool inSelection = m_ui->SelectionRadio->isChecked();
    const bool canMatch = pattern().canMatch();
    m_ui->FindNextButton->setEnabled(canMatch && !inSelection);
    m_ui->ReplaceButton->setEnabled(canMatch && !inSelection);
    m_ui->ReplaceAllButton->setEnabled(canMatch && (!inSelection || m_hasSelection));
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

void ReplaceDialog::tellNotFound(const TextPattern &pattern)
{
    const QString text = pattern.hasGivenUp() ? tr("The search for '%1' was given up: the expression takes too long")
                                              : tr("Cannot find the string '%1'");
    showInformation(this, text.arg(pattern.text()), {QMessageBox::Ok}, tr("Replace"));
}

void ReplaceDialog::rememberTexts()
{
    m_ui->FindWhatCombo->remember(m_ui->FindWhatCombo->currentText());
    m_ui->ReplaceWithCombo->remember(m_ui->ReplaceWithCombo->currentText());
}
