#include "filelistdialog.h"
#include "propertyfileitem.h"
#include "propertylist.h"
#include "smallicons.h"
#include <QHeaderView>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

FileListDialog::FileListDialog(const QString &caption, const QString &text, bool directories, QWidget *parent,
                               const QString &name)
    : QDialog(parent), m_directories(directories)
{
    setObjectName(name);
    setWindowTitle(caption);
    resize(400, 500);
    auto *layout = new QVBoxLayout(this);
    auto *tools = new QHBoxLayout;
    tools->setSpacing(0);
    layout->addLayout(tools);
    makeButtons();
    tools->addStretch();
    for (QToolButton *button : {m_newButton, m_removeButton, m_downButton, m_upButton})
        tools->addWidget(button);
    m_list = new PropertyList(QString(), directories ? tr("Directories") : tr("Files"), this);
    m_list->setObjectName(u"fileList"_s);
    m_list->setAccessibleName(m_list->headerItem()->text(1));
    m_list->setTreeStepSize(0);
    m_list->header()->resizeSection(0, 0);
    m_list->header()->setSectionResizeMode(0, QHeaderView::Fixed);
    layout->addWidget(m_list);
    layout->addLayout(makeDialogButtons());
    for (const QString &path : text.split(u';', Qt::SkipEmptyParts))
        addItem(path, lastItem());
    connect(m_list, &PropertyList::propertySelected, this, &FileListDialog::updateButtons);
    updateButtons();
}

void FileListDialog::makeButtons()
{
    m_newButton = makeButton(u"NewButton"_s, tr("Add item to list"), &FileListDialog::newItem);
    m_newButton->setIcon(plusIcon(palette()));
    m_removeButton = makeButton(u"RemoveButton"_s, tr("Remove item from list"), &FileListDialog::removeItem);
    m_removeButton->setIcon(crossIcon(palette()));
    m_downButton = makeButton(u"DownButton"_s, tr("Move item down"), &FileListDialog::moveDown);
    m_downButton->setArrowType(Qt::DownArrow);
    m_upButton = makeButton(u"UpButton"_s, tr("Move item up"), &FileListDialog::moveUp);
    m_upButton->setArrowType(Qt::UpArrow);
}

QToolButton *FileListDialog::makeButton(const QString &name, const QString &toolTip, void (FileListDialog::*slot)())
{
    auto *button = new QToolButton(this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setAutoRaise(true);
    connect(button, &QToolButton::clicked, this, slot);
    return button;
}

/// The same order of buttons as in all dialogs of the program, on every desktop.
QLayout *FileListDialog::makeDialogButtons()
{
    auto *ok = new QPushButton(tr("OK"), this);
    ok->setObjectName(u"OkButton"_s);
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &FileListDialog::accept);
    auto *cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName(u"CancelButton"_s);
    connect(cancel, &QPushButton::clicked, this, &FileListDialog::reject);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    return buttons;
}

PropertyItem *FileListDialog::addItem(const QString &path, ListViewItem *after)
{
    const auto mode = m_directories ? PropertyFileItem::Directory : PropertyFileItem::File;
    return new PropertyFileItem(QString(), path, mode, m_list, after);
}

ListViewItem *FileListDialog::lastItem() const
{
    return static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
}

QString FileListDialog::text() const
{
    QStringList paths;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        paths += static_cast<PropertyItem *>(m_list->topLevelItem(i))->value().toString();
    paths.removeAll(QString()); // rows that were added and not filled in
    return paths.join(u';');
}

void FileListDialog::setBaseDirectory(const QString &directory)
{
    m_list->setBaseDirectory(directory);
}

void FileListDialog::accept()
{
    m_list->endEdit();
    QDialog::accept();
}

void FileListDialog::newItem()
{
    PropertyItem *item = addItem(QString(), lastItem());
    m_list->setCurrentItem(item);
    if (!item->isEditing())
        item->showEditor();
    updateButtons();
}

void FileListDialog::removeItem()
{
    m_list->endEdit();
    delete m_list->currentItem();
    updateButtons();
}

void FileListDialog::moveDown()
{
    if (PropertyItem *item = m_list->currentItem())
        moveCurrent(item->itemBelow());
}

void FileListDialog::moveUp()
{
    PropertyItem *item = m_list->currentItem();
    ListViewItem *above = item ? item->itemAbove() : nullptr;
    if (above)
        moveCurrent(above->itemAbove());
}

/// Puts the current row behind @p after, or first for null.
void FileListDialog::moveCurrent(ListViewItem *after)
{
    m_list->endEdit();
    PropertyItem *item = m_list->currentItem();
    m_list->takeItem(item);
    m_list->insertItem(item, after);
    m_list->setCurrentItem(item);
    if (item->isEditing())
        item->editorClicked(QPoint());
    updateButtons();
}

void FileListDialog::updateButtons()
{
    const PropertyItem *item = m_list->currentItem();
    m_removeButton->setEnabled(item);
    m_downButton->setEnabled(item && item->itemBelow());
    m_upButton->setEnabled(item && item->itemAbove());
}
