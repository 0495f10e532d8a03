#pragma once
#include "listview.h"
#include <QIcon>

/// A row that represents an object: with one picture for closed and one for open. Rows with a smaller rtti are sorted
/// first; rows of equal rtti keep their order or, if sortByText was given, are sorted by their text.
class ProjectTreeItem : public ListViewItem
{
public:
    using Deleter = void (*)(void *);
    /// The Deleter of a row that owns an object created by `new T`.
    template <typename T>
    static void destroy(void *data)
    {
        delete static_cast<T *>(data);
    }

    /// @p parent is a ListView or the row above. @p deleter is null if the row does not own @p data.
    template <typename Parent>
    ProjectTreeItem(Parent *parent, ListViewItem *after, const QString &text, void *data, Deleter deleter, int rtti,
                    bool sortByText, const QIcon &closedPixmap = {}, const QIcon &openPixmap = {})
        : ListViewItem(parent, after, text, rtti)
        , m_closedPixmap(closedPixmap)
        , m_openPixmap(openPixmap)
        , m_data(data)
        , m_deleter(deleter)
        , m_sortByText(sortByText)
    {
        setIcon(0, closedPixmap);
    }
    ~ProjectTreeItem() override;
    Q_DISABLE_COPY_MOVE(ProjectTreeItem)

    template <typename T>
    [[nodiscard]] T *object() const
    {
        return static_cast<T *>(m_data);
    }
    void setPixmap(const QIcon &closedPixmap);

    void setPaintBranches(bool paint) { m_paintBranches = paint; }     ///< See paintsBranches().
    void setGrid(bool grid) { m_grid = grid; }                         ///< Lines below and to the right of each cell.
    void setBold(bool bold) { m_bold = bold; }                         ///< Column 0 only.
    void setItalic(bool italic) { m_italic = italic; }                 ///< Column 0 only.
    void setBackground(bool background) { m_background = background; } ///< Whether backgroundColor() is used.
    /// A text behind that of column 0, which sorting and renaming do not see.
    void setMark(const QString &mark);
    [[nodiscard]] const QString &mark() const { return m_mark; }
    void setFaded(bool faded) { m_faded = faded; } ///< Column 0 in the colour of disabled text.
    [[nodiscard]] bool isBold() const { return m_bold; }
    [[nodiscard]] bool isItalic() const { return m_italic; }

    bool operator<(const QTreeWidgetItem &other) const override;
    void openChanged(bool open) override;
    void initStyleOption(QStyleOptionViewItem *option, int column) const override;
    void paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const override;
    [[nodiscard]] bool paintsBranches() const override { return m_paintBranches; }

protected:
    [[nodiscard]] virtual QColor backgroundColor() const; ///< That of the list, unless overridden.

private:
    QIcon m_closedPixmap;
    QIcon m_openPixmap; ///< null if the row looks the same open and closed
    void *m_data;
    Deleter m_deleter;
    bool m_sortByText;
    bool m_paintBranches = true;
    bool m_grid = false;
    bool m_bold = false;
    bool m_italic = false;
    bool m_background = false;
    bool m_faded = false;
    QString m_mark;
};
