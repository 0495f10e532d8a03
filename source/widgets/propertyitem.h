#pragma once
#include "listview.h"
#include <QVariant>
class PropertyList;

/// A row of a PropertyList: a name and a value, which is painted as text. Only the current row of the list has a
/// widget to edit it, over the value's cell; it exists as long as the row is the current one.
///
/// A subclass for a kind of value creates the editor, copies the value to it and back, and returns the text that is
/// shown.
class PropertyItem : public QObject, public ListViewItem
{
    Q_OBJECT
public:
    PropertyItem(const QString &name, const QVariant &value, PropertyList *list, ListViewItem *after);
    PropertyItem(const QString &name, const QVariant &value, PropertyItem *parent, ListViewItem *after);
    ~PropertyItem() override;
    using ListViewItem::parent;

    virtual void showEditor();
    virtual void editorClicked(const QPoint &position); ///< A mouse press at @p position in it has opened the editor.
    virtual void placeEditor();                         ///< Puts the editor over the cell, which is scrolled into view.
    virtual void setValue(const QVariant &value, bool notify); ///< Nothing happens if the value is known and the same.

public Q_SLOTS:
    /// Ends the edit: takes over what the user has entered and hides the editor.
    virtual void acceptEditor();

public:
    [[nodiscard]] virtual QWidget *createEditor(); ///< Null if the row cannot be edited.
    virtual void transferEditor(bool toValue);     ///< Copies the value to the editor, or back.
    virtual void hideEditor();

    void rejectEditor(); ///< Ends the edit and leaves the value as it is.
    void dropEditor();   ///< Hides the editor and deletes it as soon as no event of it is being handled.
    /// Shows the menu of the text that is being edited, or else requests that of the row. False if a list is open.
    bool showEditorMenu(const QPoint &globalPosition);

    [[nodiscard]] PropertyList *propertyList() const;
    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QVariant value() const { return m_value; }
    /// Shows @p text in place of a value that is not known, until the next value is set. The editor opens empty, and
    /// what the user enters is a new value even if it equals the one stored before.
    void setUnknown(const QString &text);
    [[nodiscard]] bool isUnknown() const { return m_unknown; }
    [[nodiscard]] QWidget *editor() const { return m_editor; }
    [[nodiscard]] bool isEditing() const;                    ///< The editor is shown.
    [[nodiscard]] bool isEdited() const { return m_edited; } ///< The editor holds something else than the value.
    [[nodiscard]] bool acceptsOnFocusOut() const { return m_acceptOnFocusOut; }
    [[nodiscard]] QString key() const { return m_key.isNull() ? m_name : m_key; }
    void setKey(const QString &key) { m_key = key; }
    [[nodiscard]] QString description() const { return m_description; }
    void setDescription(const QString &description);
    [[nodiscard]] bool isChanged() const { return m_changed; } ///< The name is painted bold.
    void setChanged(bool changed);
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }
    void setReadOnly(bool readOnly) { m_readOnly = readOnly; }
    /// Where the name begins in its cell, in pixels, with the box to open the row before it. Without a call it is the
    /// tree step of the list.
    void setIndent(int pixels) { m_indent = pixels; }
    [[nodiscard]] QString warning() const { return m_warning; }
    /// The reason why the value is invalid; it is painted in red then. Empty for a valid value.
    void setWarning(const QString &warning);

    void initStyleOption(QStyleOptionViewItem *option, int column) const override;
    void paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const override;
    [[nodiscard]] virtual QRect openBox(const QRect &row) const; ///< The plus or minus; empty without rows below.
    [[nodiscard]] virtual int textIndent() const;                ///< Where the name begins in its cell.

Q_SIGNALS:
    void valueChanged(PropertyItem *item);
    void descriptionChanged(PropertyItem *item);

protected:
    /// For setValue(): stores a value, if it is another one, and shows @p text for it.
    void storeValue(const QVariant &value, const QString &text, bool notify);
    /// For the signals of editors: the user has changed the contents.
    void setEdited() { m_edited = true; }
    void reloadEditor(); ///< Shows the value in the editor again, unless it holds something that the user has typed.
    void setAcceptOnFocusOut(bool accept) { m_acceptOnFocusOut = accept; }
    void paintOpenBox(QPainter *painter, const QRect &row) const;

private:
    void initialise(const QVariant &value);
    [[nodiscard]] QString editorName() const;
    void loadEditor();

    const QString m_name;
    QPointer<PropertyList> m_list;
    QPointer<QWidget> m_editor;
    bool m_acceptOnFocusOut = true; ///< false while the row has a dialog open
    QVariant m_value;
    QString m_description;
    QString m_key;          ///< null: the name
    bool m_unknown = false; ///< a text is shown instead of the value
    bool m_changed = false;
    bool m_readOnly = false;
    bool m_edited = false;
    QString m_warning;
    int m_indent = -1; ///< negative: the tree step of the list
};

/// Whether two values mean the same, as the one from a file, a text, and the one from an editor, maybe a number.
/// An invalid value, which stands for several ones, only equals another invalid one.
[[nodiscard]] bool sameValue(const QVariant &left, const QVariant &right);

/// The text that explains a property. Descriptions are rich text, names are plain.
[[nodiscard]] QString propertyHelp(const QString &name, const QString &description);
