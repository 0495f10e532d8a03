#pragma once
#include <QDialog>
class ListViewItem;
class PropertyItem;
class PropertyList;
class QToolButton;

/// Edits a list of paths: adds, removes and moves them.
class FileListDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p text has the paths, separated by ";".
    FileListDialog(const QString &caption, const QString &text, bool directories, QWidget *parent, const QString &name);

    [[nodiscard]] QString text() const; ///< The paths, without empty ones, in the form of the constructor's text.
    void setBaseDirectory(const QString &directory); ///< Where file dialogs begin for a relative path.
    void accept() override;

public Q_SLOTS:
    void newItem();
    void removeItem();
    void moveDown();
    void moveUp();
    void updateButtons();

private:
    void makeButtons();
    [[nodiscard]] QLayout *makeDialogButtons();
    QToolButton *makeButton(const QString &name, const QString &toolTip, void (FileListDialog::*slot)());
    PropertyItem *addItem(const QString &path, ListViewItem *after);
    [[nodiscard]] ListViewItem *lastItem() const;
    void moveCurrent(ListViewItem *after);

    const bool m_directories;
    PropertyList *m_list = nullptr;
    QToolButton *m_newButton = nullptr;
    QToolButton *m_removeButton = nullptr;
    QToolButton *m_downButton = nullptr;
    QToolButton *m_upButton = nullptr;
};
