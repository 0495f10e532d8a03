#include "shortcutspage.h"
#include <QComboBox>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
enum Column { CommandColumn, MenuColumn, KeysColumn, ConflictColumn, ColumnCount };

QLabel *labelFor(QWidget *widget, const QString &text)
{
    auto *label = new QLabel(text);
    label->setBuddy(widget);
    return label;
}

/// Whether all words of the search are in the row.
bool matches(const QTreeWidgetItem &row, const QStringList &words)
{
    const QString text = row.text(CommandColumn) + u' ' + row.text(MenuColumn) + u' ' + row.text(KeysColumn);
    for (const QString &word : words) {
        if (!text.contains(word, Qt::CaseInsensitive))
            return false;
    }
    return true;
}
} // namespace

ShortcutsPage::ShortcutsPage(const ShortcutOptions &options, ShortcutChoices choices, QWidget *parent,
                             const QString &name)
    : QWidget(parent), m_options(options), m_choices(std::move(choices))
{
    setObjectName(name);
    setWindowTitle(tr("Keyboard"));
    auto *layout = new QVBoxLayout(this);
    addSetRow(layout);
    addTree(layout);
    addKeyRow(layout);
    refresh();
    m_tree->setCurrentItem(m_tree->topLevelItem(0));
    updateButtons();
}

/// The field for keys loses the focus when it is deleted, and changes its text then.
ShortcutsPage::~ShortcutsPage()
{
    m_keys->findChild<QLineEdit *>()->disconnect(this);
    m_tree->disconnect(this);
}

void ShortcutsPage::addSetRow(QVBoxLayout *layout)
{
    auto *sets = new QComboBox;
    sets->setObjectName(u"setCombo"_s);
    sets->addItem(tr("Keys of Varnel"), QString());
    for (const KeySet &set : m_choices.sets)
        sets->addItem(set.text, set.name);
    sets->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    sets->setMinimumContentsLength(12);
    sets->setCurrentIndex(std::max(0, sets->findData(m_options.set)));
    connect(sets, &QComboBox::activated, this, &ShortcutsPage::chooseSet);
    m_search = new QLineEdit;
    m_search->setObjectName(u"searchEdit"_s);
    m_search->setPlaceholderText(tr("Command, menu or keys"));
    connect(m_search, &QLineEdit::textChanged, this, &ShortcutsPage::showMatches);
    auto *row = new QHBoxLayout;
    row->addWidget(labelFor(sets, tr("&Set:")));
    row->addWidget(sets, 1);
    row->addWidget(labelFor(m_search, tr("S&earch:")));
    row->addWidget(m_search, 1);
    layout->addLayout(row);
}

void ShortcutsPage::addTree(QVBoxLayout *layout)
{
    m_tree = new QTreeWidget;
    m_tree->setObjectName(u"commandTree"_s);
    m_tree->setAccessibleName(tr("Commands"));
    m_tree->setRootIsDecorated(false);
    m_tree->setUniformRowHeights(true);
    m_tree->setAllColumnsShowFocus(true);
    m_tree->setColumnCount(ColumnCount);
    m_tree->setHeaderLabels({tr("Command"), tr("Menu"), tr("Keys"), tr("In conflict with")});
    for (const ShortcutCommand &command : m_choices.commands)
        new QTreeWidgetItem(m_tree, {command.text, command.menu});
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &ShortcutsPage::updateButtons);
    connect(m_tree, &QTreeWidget::itemActivated, this, [this] { m_keys->setFocus(Qt::OtherFocusReason); });
    layout->addWidget(m_tree, 1);
}

void ShortcutsPage::addKeyRow(QVBoxLayout *layout)
{
    m_keys = new QKeySequenceEdit;
    m_keys->setObjectName(u"keysEdit"_s);
    m_keys->setAccessibleName(tr("New keys"));
    m_keys->setToolTip(tr("Press the new keys, up to four one after the other. Tab leaves the field."));
    // Its own signal comes only when the user has paused for a second.
    connect(m_keys->findChild<QLineEdit *>(), &QLineEdit::textChanged, this, &ShortcutsPage::updateButtons);
    m_conflict = new QLabel;
    m_conflict->setObjectName(u"conflictLabel"_s);
    m_conflict->setTextFormat(Qt::PlainText);
    m_conflict->setWordWrap(true);
    auto *row = new QHBoxLayout;
    row->addWidget(labelFor(m_keys, tr("New &keys:")));
    row->addWidget(m_keys, 1);
    m_keyButtons = {addButton(row, u"replaceButton"_s, tr("&Replace"), &ShortcutsPage::replaceKeys),
                    addButton(row, u"addButton"_s, tr("&Add"), &ShortcutsPage::addKeys)};
    layout->addLayout(row);
    layout->addWidget(m_conflict);
    auto *last = new QHBoxLayout;
    m_removeButton = addButton(last, u"removeButton"_s, tr("Re&move Keys"), &ShortcutsPage::removeKeys);
    m_resetButton = addButton(last, u"resetButton"_s, tr("Rese&t Command"), &ShortcutsPage::resetCommand);
    m_resetAllButton = addButton(last, u"resetAllButton"_s, tr("Reset A&ll"), &ShortcutsPage::resetAll);
    last->addStretch();
    layout->addLayout(last);
}

QPushButton *ShortcutsPage::addButton(QLayout *layout, const QString &objectName, const QString &text,
                                      void (ShortcutsPage::*clicked)())
{
    auto *button = new QPushButton(text);
    button->setObjectName(objectName);
    button->setAutoDefault(false); // Return in another field presses "OK"
    connect(button, &QPushButton::clicked, this, clicked);
    layout->addWidget(button);
    return button;
}

// What is shown

void ShortcutsPage::chooseSet(int index)
{
    m_options.set = index > 0 ? m_choices.sets[index - 1].name : QString();
    refresh();
}

void ShortcutsPage::showMatches(const QString &text)
{
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    QTreeWidgetItem *first = nullptr;
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = m_tree->topLevelItem(row);
        item->setHidden(!matches(*item, words));
        if (!first && !item->isHidden())
            first = item;
    }
    if (!m_tree->currentItem() || m_tree->currentItem()->isHidden())
        m_tree->setCurrentItem(first);
}

void ShortcutsPage::refresh()
{
    for (int row = 0; row < m_tree->topLevelItemCount(); ++row) {
        const ShortcutCommand &command = m_choices.commands[row];
        const QList<QKeySequence> keys = keysOf(command, m_choices, m_options);
        QTreeWidgetItem *item = m_tree->topLevelItem(row);
        item->setText(KeysColumn, keysText(keys));
        item->setText(ConflictColumn, othersWithKeys(keys, command.name, m_choices, m_options).join(u", "_s));
        QFont font = m_tree->font();
        font.setBold(m_options.own.contains(command.name));
        item->setFont(KeysColumn, font);
    }
    for (int column = 0; column < ConflictColumn; ++column)
        m_tree->resizeColumnToContents(column);
    updateButtons();
}

void ShortcutsPage::updateButtons()
{
    const ShortcutCommand *command = currentCommand();
    const QKeySequence keys = m_keys->keySequence();
    for (QPushButton *button : std::as_const(m_keyButtons))
        button->setEnabled(command && !keys.isEmpty());
    m_removeButton->setEnabled(command && !keysOf(*command, m_choices, m_options).isEmpty());
    m_resetButton->setEnabled(command && m_options.own.contains(command->name));
    m_resetAllButton->setEnabled(!m_options.own.isEmpty());
    const QStringList others = keys.isEmpty()
                                   ? QStringList()
                                   : othersWithKeys({keys}, command ? command->name : QString(), m_choices, m_options);
    m_conflict->setText(others.isEmpty() ? QString() : tr("These keys are used by: %1").arg(others.join(u", "_s)));
}

const ShortcutCommand *ShortcutsPage::currentCommand() const
{
    const int row = m_tree->indexOfTopLevelItem(m_tree->currentItem());
    return row < 0 ? nullptr : &m_choices.commands[row];
}

// Changes

void ShortcutsPage::replaceKeys()
{
    setKeys({m_keys->keySequence()});
}

void ShortcutsPage::addKeys()
{
    if (!currentCommand())
        return;
    QList<QKeySequence> keys = keysOf(*currentCommand(), m_choices, m_options);
    keys.removeAll(m_keys->keySequence());
    keys.append(m_keys->keySequence());
    setKeys(keys);
}

void ShortcutsPage::removeKeys()
{
    setKeys({});
}

void ShortcutsPage::resetCommand()
{
    if (const ShortcutCommand *command = currentCommand())
        setKeys(keysOfSet(*command, m_choices, m_options.set));
}

void ShortcutsPage::resetAll()
{
    m_options.own.clear();
    refresh();
}

/// Keys that the command has in the set anyhow are no change of the user's.
void ShortcutsPage::setKeys(const QList<QKeySequence> &keys)
{
    const ShortcutCommand *command = currentCommand();
    if (!command)
        return;
    if (keys == keysOfSet(*command, m_choices, m_options.set))
        m_options.own.remove(command->name);
    else
        m_options.own.insert(command->name, keys);
    m_keys->clear();
    refresh();
}
