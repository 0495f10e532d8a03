#include "toolsdialog.h"
#include "questions.h"
#include "ui_toolsdialogbase.h"
#include <algorithm>
#include <QMenu>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

ToolsDialog::ToolsDialog(const QList<ToolEntry> &tools, QWidget *parent, const QString &name)
    : QWidget(parent), m_ui(std::make_unique<Ui::ToolsDialogBase>()), m_original(tools), m_tools(tools)
{
    m_ui->setupUi(this);
    setObjectName(name);
    connect(m_ui->ToolsListBox, &QListWidget::currentRowChanged, this, &ToolsDialog::toolChanged);
    connect(m_ui->NewButton, &QPushButton::clicked, this, &ToolsDialog::newClicked);
    connect(m_ui->RemoveButton, &QPushButton::clicked, this, &ToolsDialog::removeClicked);
    connect(m_ui->UpButton, &QPushButton::clicked, this, &ToolsDialog::upClicked);
    connect(m_ui->DownButton, &QPushButton::clicked, this, &ToolsDialog::downClicked);
    connect(m_ui->BrowseButton, &QToolButton::clicked, this, &ToolsDialog::browseClicked);
    connect(m_ui->Macro1Button, &QToolButton::clicked, this, &ToolsDialog::macro1Clicked);
    connect(m_ui->Macro2Button, &QToolButton::clicked, this, &ToolsDialog::macro2Clicked);
    connect(m_ui->StopButton, &QPushButton::clicked, this, [this] { Q_EMIT stopRequested(m_tools[m_current].id); });
    refresh();
}

ToolsDialog::~ToolsDialog() = default;

void ToolsDialog::apply()
{
    storeEdits();
    m_current = -1;
}

void ToolsDialog::revert()
{
    m_tools = m_original;
    m_current = -1;
}

void ToolsDialog::setRunning(int id, bool running)
{
    if (running)
        m_running.insert(id);
    else
        m_running.remove(id);
    updateButtons();
}

// Showing -----------------------------------------------------------------

/// Fills the list again, with its first tool as the current one.
void ToolsDialog::refresh()
{
    const QSignalBlocker quiet(m_ui->ToolsListBox);
    m_ui->ToolsListBox->clear();
    for (const ToolEntry &tool : std::as_const(m_tools))
        m_ui->ToolsListBox->addItem(tool.name);
    m_current = m_tools.isEmpty() ? -1 : 0;
    m_ui->ToolsListBox->setCurrentRow(m_current);
    loadEdits();
    for (QWidget *control : {static_cast<QWidget *>(m_ui->RemoveButton), static_cast<QWidget *>(m_ui->NameEdit),
                             static_cast<QWidget *>(m_ui->CommandEdit), static_cast<QWidget *>(m_ui->ArgumentsEdit),
                             static_cast<QWidget *>(m_ui->InitialDirEdit), static_cast<QWidget *>(m_ui->BrowseButton),
                             static_cast<QWidget *>(m_ui->Macro1Button), static_cast<QWidget *>(m_ui->Macro2Button)})
        control->setEnabled(!m_tools.isEmpty());
    updateButtons();
}

void ToolsDialog::loadEdits()
{
    const ToolEntry tool = m_tools.value(m_current);
    m_ui->NameEdit->setText(tool.name);
    m_ui->CommandEdit->setText(tool.command);
    m_ui->ArgumentsEdit->setText(tool.arguments);
    m_ui->InitialDirEdit->setText(tool.initialDir);
}

void ToolsDialog::storeEdits()
{
    if (m_current < 0)
        return;
    ToolEntry &tool = m_tools[m_current];
    tool.name = m_ui->NameEdit->text();
    tool.command = m_ui->CommandEdit->text();
    tool.arguments = m_ui->ArgumentsEdit->text();
    tool.initialDir = m_ui->InitialDirEdit->text();
}

/// The move buttons and the stop button depend on the current tool.
void ToolsDialog::updateButtons()
{
    m_ui->UpButton->setEnabled(m_current > 0);
    m_ui->DownButton->setEnabled(m_current >= 0 && m_current < m_tools.size() - 1);
    m_ui->StopButton->setEnabled(m_running.contains(m_tools.value(m_current).id));
}

void ToolsDialog::toolChanged()
{
    storeEdits();
    if (m_current >= 0) {
        const QSignalBlocker quiet(m_ui->ToolsListBox);
        m_ui->ToolsListBox->item(m_current)->setText(m_tools[m_current].name);
    }
    m_current = m_ui->ToolsListBox->currentRow();
    loadEdits();
    updateButtons();
}

// Changing the list -------------------------------------------------------

void ToolsDialog::newClicked()
{
    storeEdits();
    m_tools.append({.name = tr("New Tool")});
    refresh();
    selectRow(m_tools.size() - 1);
    m_ui->NameEdit->setFocus();
    m_ui->NameEdit->selectAll();
}

void ToolsDialog::removeClicked()
{
    const int row = m_current;
    if (row < 0)
        return;
    m_tools.removeAt(row);
    refresh();
    selectRow(row);
}

void ToolsDialog::upClicked()
{
    move(-1);
}

void ToolsDialog::downClicked()
{
    move(1);
}

void ToolsDialog::move(int step)
{
    const int row = m_current;
    if (row < 0 || row + step < 0 || row + step >= m_tools.size())
        return;
    storeEdits();
    m_tools.swapItemsAt(row, row + step);
    refresh();
    selectRow(row + step);
}

/// Selects @p row, or the last one before it that there is.
void ToolsDialog::selectRow(qsizetype row)
{
    m_ui->ToolsListBox->setCurrentRow(int(std::min(row, m_tools.size() - 1)));
}

// Help with typing --------------------------------------------------------

void ToolsDialog::browseClicked()
{
    const QString file =
        askForOpenFile(this, {.objectName = u"chooseFileDialog"_s,
                              .caption = tr("Browse"),
                              .directory = m_ui->CommandEdit->text(),
                              .filter = tr("Executable Files (*.exe *.com *.bat);;All Files (*.*)"),
                              .selectedFilter = tr("All Files (*.*)")}); // programs have no suffix here
    if (!file.isNull())
        m_ui->CommandEdit->setText(file);
}

void ToolsDialog::macro1Clicked()
{
    popUpMacros(m_ui->Macro1Button, m_ui->ArgumentsEdit);
}

void ToolsDialog::macro2Clicked()
{
    popUpMacros(m_ui->Macro2Button, m_ui->InitialDirEdit);
}

void ToolsDialog::popUpMacros(QWidget *button, QLineEdit *edit)
{
    auto *menu = new QMenu(this);
    menu->setObjectName(u"macroMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const QString &name :
         {u"ProjectDir"_s, u"ProjectName"_s, QString(), u"FilePath"_s, u"FileDir"_s, u"FileName"_s, u"FileExt"_s}) {
        if (name.isEmpty())
            menu->addSeparator();
        else
            menu->addAction(name, edit, [edit, name] { edit->insert(u"$(%1)"_s.arg(name)); });
    }
    menu->popup(button->mapToGlobal(button->rect().topRight()));
}
