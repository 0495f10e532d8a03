#pragma once
#include "shortcutkeys.h"
#include <QWidget>
class QComboBox;
class QKeySequenceEdit;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

/// The page of the options dialog that lists all commands with their keys, and changes them.
class ShortcutsPage : public QWidget
{
    Q_OBJECT
public:
    ShortcutsPage(const ShortcutOptions &options, ShortcutChoices choices, QWidget *parent, const QString &name);
    ~ShortcutsPage() override;

    [[nodiscard]] ShortcutOptions options() const { return m_options; }

private:
    void addSetRow(QVBoxLayout *layout);
    void addTree(QVBoxLayout *layout);
    void addKeyRow(QVBoxLayout *layout);
    QPushButton *addButton(QLayout *layout, const QString &objectName, const QString &text,
                           void (ShortcutsPage::*clicked)());
    void chooseSet(int index);
    void showMatches(const QString &text);
    void refresh(); ///< Shows the keys of all commands, and those that are in conflict.
    void updateButtons();
    [[nodiscard]] const ShortcutCommand *currentCommand() const; ///< Null for none.
    void replaceKeys();
    void addKeys();
    void removeKeys();
    void resetCommand();
    void resetAll();
    void setKeys(const QList<QKeySequence> &keys);

    ShortcutOptions m_options;
    const ShortcutChoices m_choices;
    QLineEdit *m_search = nullptr;
    QTreeWidget *m_tree = nullptr;
    QKeySequenceEdit *m_keys = nullptr;
    QLabel *m_conflict = nullptr;
    QList<QPushButton *> m_keyButtons; ///< those that need keys
    QPushButton *m_removeButton = nullptr;
    QPushButton *m_resetButton = nullptr;
    QPushButton *m_resetAllButton = nullptr;
};
