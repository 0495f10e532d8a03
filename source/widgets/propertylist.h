#pragma once
#include "propertyitem.h"
class QMenu;

/// A grid of names and values, whose rows are PropertyItems and nothing else. The current row can be edited. It serves
/// options, registers and lists of files alike and holds many thousand rows.
///
/// The edit of a row ends, and its value is taken over, when another row becomes current, when the focus leaves the
/// list, and by Return. Escape ends it and leaves the value; F2 begins it again.
class PropertyList : public ListView
{
    Q_OBJECT
public:
    PropertyList(const QString &nameTitle, const QString &valueTitle, QWidget *parent = nullptr);
    ~PropertyList() override;

    [[nodiscard]] PropertyItem *currentItem() const;
    [[nodiscard]] PropertyItem *itemAt(const QPoint &position) const;
    [[nodiscard]] PropertyItem *firstChild() const;
    void clear();

    void setReadOnly(bool readOnly); ///< No row has an editor.
    [[nodiscard]] bool isReadOnly() const { return m_readOnly; }
    void setShowFocusRect(bool show) { m_showFocusRect = show; }
    /// Makes the first column as wide as the longest name in bold needs, but leaves room for values when the list is
    /// narrow. Ends when the user has moved the border between the columns.
    void fitNames();
    void setTreeStepSize(int pixels) { setIndentation(pixels); }
    [[nodiscard]] int treeStepSize() const { return indentation(); }
    /// Where file dialogs begin for a relative path.
    void setBaseDirectory(const QString &directory) { m_baseDirectory = directory; }
    [[nodiscard]] QString baseDirectory() const { return m_baseDirectory; }

    void endEdit(); ///< Stores what is being entered into the current row.
    [[nodiscard]] bool hasFocusInside() const;

    [[nodiscard]] QColor gridColor() const { return m_gridColor; }
    [[nodiscard]] QColor warningColor() const;

    // What rows need.
    [[nodiscard]] QRect valueRect(const PropertyItem *item) const; ///< The place of the editor, maybe off the screen.
    [[nodiscard]] static bool isFocusIn(const QWidget *widget);    ///< Windows that belong to @p widget count, too.
    void watchEditor(QWidget *editor);
    void takeFocus(); ///< The editor of the current row stays hidden.
    void forget(const PropertyItem *item);
    void repaintItem(const PropertyItem *item); ///< Null is ignored.

Q_SIGNALS:
    void valueChanged(PropertyItem *item);
    void propertySelected(PropertyItem *item); ///< It has become the current row.
    void helpText(const QString &text);        ///< Name and description of the current row, as rich text.
    /// The menu of the text that is being edited is about to be shown. Receivers add what belongs to the row.
    void editorMenuRequested(PropertyItem *item, QMenu *menu);

public Q_SLOTS:
    void itemPressed(ListViewItem *item, const QPoint &globalPosition, int column);
    void currentChanged(ListViewItem *item);
    void updateEditorSize();
    void itemDescriptionChanged(PropertyItem *item);

protected:
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void updateEditorGeometries() override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    void updateColors();
    void applyNamesWidth();
    void columnResized(int column);
    void leaveRow();
    void focusLeft();
    void expandedOrCollapsed();
    bool editorKey(QKeyEvent *event);
    bool leaveByTab(bool forward);
    bool showCutText(const QPoint &position, const QPoint &globalPosition);

    QColor m_firstColor;
    QColor m_alternateColor;
    QColor m_gridColor;
    bool m_showFocusRect = true;
    bool m_readOnly = false;
    bool m_takingFocus = false;
    bool m_inserting = false; ///< a row is being constructed and must not be laid out yet
    bool m_columnsMovedByUser = false;
    bool m_applyingWidth = false;
    int m_namesWidth = 0;              ///< what the names need; 0 while fitNames() was not called
    PropertyItem *m_current = nullptr; ///< the row whose editor may be shown
    QString m_baseDirectory;
};
