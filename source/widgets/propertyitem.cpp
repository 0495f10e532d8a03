#include "propertyitem.h"
#include "propertylist.h"
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int TextMargin = 2;
constexpr int BoxSize = 9;
constexpr int BoxX = 6;
constexpr int BoxMargin = 5; ///< between the box and the name

QString textOf(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool ? QString::number(value.toInt()) : value.toString();
}
} // namespace

PropertyItem::PropertyItem(const QString &name, const QVariant &value, PropertyList *list, ListViewItem *after)
    : ListViewItem(list, after, name), m_name(name), m_list(list)
{
    initialise(value);
    connect(this, &PropertyItem::descriptionChanged, list, &PropertyList::itemDescriptionChanged);
}

PropertyItem::PropertyItem(const QString &name, const QVariant &value, PropertyItem *parent, ListViewItem *after)
    : ListViewItem(parent, after, name), m_name(name), m_list(parent->propertyList())
{
    initialise(value);
}

void PropertyItem::initialise(const QVariant &value)
{
    m_value = value;
    setText(1, value.toString());
    if (m_list)
        connect(this, &PropertyItem::valueChanged, m_list, &PropertyList::valueChanged);
}

PropertyItem::~PropertyItem()
{
    dropEditor();
    if (m_list)
        m_list->forget(this);
    if (ListViewItem *above = parent())
        above->takeItem(this);
    else if (listView())
        listView()->takeItem(this); // before the base class is destroyed, since the list reads the row
}

PropertyList *PropertyItem::propertyList() const
{
    return m_list;
}

void PropertyItem::showEditor()
{
    if (m_readOnly || !m_list)
        return;
    if (!m_editor) {
        m_editor = createEditor();
        if (!m_editor)
            return;
        m_editor->hide();
        m_editor->setAccessibleName(editorName());
        if (QWidget *inner = m_editor->focusProxy())
            inner->setAccessibleName(editorName()); // the part that has the focus
        m_list->watchEditor(m_editor);
    }
    if (!isEditing())
        loadEditor();
    placeEditor();
    m_editor->show();
    if (m_list->hasFocusInside())
        m_editor->setFocus();
    editorClicked(QPoint(m_editor->width(), 0));
}

/// What a screen reader says; rows of plain lists have no names of their own.
QString PropertyItem::editorName() const
{
    return m_name.isEmpty() ? m_list->headerItem()->text(1) : m_name;
}

void PropertyItem::loadEditor()
{
    transferEditor(false);
    m_edited = false;
}

void PropertyItem::reloadEditor()
{
    if (isEditing() && !m_edited)
        loadEditor();
}

void PropertyItem::editorClicked(const QPoint &) {}

void PropertyItem::placeEditor()
{
    if (m_list->itemRect(this).isEmpty()) {
        m_list->ensureItemVisible(this);
        m_list->viewport()->update();
    }
    m_editor->setGeometry(m_list->valueRect(this));
}

void PropertyItem::setValue(const QVariant &value, bool notify)
{
    storeValue(value, value.toString(), notify);
}

void PropertyItem::storeValue(const QVariant &value, const QString &text, bool notify)
{
    setText(1, text);
    const bool wasUnknown = std::exchange(m_unknown, false);
    if (!wasUnknown && sameValue(value, m_value))
        return;
    m_value = value;
    reloadEditor();
    if (notify)
        Q_EMIT valueChanged(this);
}

void PropertyItem::setUnknown(const QString &text)
{
    m_unknown = true;
    setText(1, text);
    reloadEditor();
}

void PropertyItem::acceptEditor()
{
    if (!isEditing())
        return;
    const QPointer<PropertyItem> self(this); // a receiver of the new value may build all rows again
    if (m_edited)
        transferEditor(true);
    if (!self)
        return;
    m_edited = false;
    hideEditor();
}

QWidget *PropertyItem::createEditor()
{
    return nullptr;
}

void PropertyItem::transferEditor(bool) {}

void PropertyItem::hideEditor()
{
    if (!m_editor)
        return;
    if (m_list && m_list->isFocusIn(m_editor))
        m_list->takeFocus();
    m_editor->hide();
}

void PropertyItem::rejectEditor()
{
    m_edited = false;
    hideEditor();
}

void PropertyItem::dropEditor()
{
    PropertyItem::hideEditor();
    if (m_editor)
        m_editor->deleteLater();
    m_editor = nullptr;
}

/// An editor with the policy NoContextMenu has the menu of its row, although it has a text.
bool PropertyItem::showEditorMenu(const QPoint &globalPosition)
{
    if (!m_list || !isEditing() || QApplication::activePopupWidget())
        return false;
    auto *edit = m_editor->findChild<QLineEdit *>();
    QMenu *menu =
        edit && m_editor->contextMenuPolicy() != Qt::NoContextMenu ? edit->createStandardContextMenu() : nullptr;
    if (!menu) {
        Q_EMIT m_list->contextMenuRequested(this, globalPosition, 1);
        return true;
    }
    menu->setObjectName(u"editorMenu"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    Q_EMIT m_list->editorMenuRequested(this, menu);
    menu->popup(globalPosition);
    return true;
}

bool PropertyItem::isEditing() const
{
    return m_editor && !m_editor->isHidden();
}

void PropertyItem::setDescription(const QString &description)
{
    if (description == m_description)
        return;
    m_description = description;
    Q_EMIT descriptionChanged(this);
}

void PropertyItem::setChanged(bool changed)
{
    if (changed == m_changed)
        return;
    m_changed = changed;
    if (m_list)
        m_list->repaintItem(this);
}

void PropertyItem::setWarning(const QString &warning)
{
    if (warning == m_warning)
        return;
    m_warning = warning;
    if (m_list)
        m_list->repaintItem(this);
}

void PropertyItem::initStyleOption(QStyleOptionViewItem *option, int column) const
{
    option->font.setBold(column == 0 && m_changed);
}

void PropertyItem::paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const
{
    const bool isCurrent = m_list->currentItem() == this;
    const bool isHighlighted = isCurrent && m_list->hasFocusInside();
    const QPalette &palette = option.palette;
    QBrush background = option.backgroundBrush;
    if (isHighlighted)
        background = palette.highlight();
    else if (isCurrent && column == 0)
        background = palette.base();
    painter->fillRect(option.rect, background.color());
    if (column == 0)
        paintOpenBox(painter, option.rect);
    const bool isWarned = column == 1 && !m_warning.isEmpty();
    const QColor textColor = isHighlighted ? palette.color(QPalette::HighlightedText) : palette.color(QPalette::Text);
    painter->setPen(isWarned && !isHighlighted ? m_list->warningColor() : textColor);
    if (painter->font() != option.font)
        painter->setFont(option.font);
    const int indent = TextMargin + (column == 0 ? textIndent() : 0);
    const QRect rect = option.rect.adjusted(indent, 0, -TextMargin, 0);
    const QString text = this->text(column);
    if (!text.isEmpty())
        painter->drawText(rect, Qt::AlignVCenter | Qt::TextSingleLine,
                          QFontMetrics(option.font).elidedText(text, Qt::ElideRight, rect.width()));
    painter->setPen(m_list->gridColor());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->drawLine(option.rect.topRight(), option.rect.bottomRight());
}

QRect PropertyItem::openBox(const QRect &row) const
{
    if (childCount() == 0)
        return {};
    const int x = m_indent < 0 ? BoxX : m_indent - BoxSize - BoxMargin;
    return {row.x() + x, row.y() + (row.height() - BoxSize) / 2, BoxSize, BoxSize};
}

int PropertyItem::textIndent() const
{
    return m_indent < 0 ? m_list->treeStepSize() : m_indent;
}

void PropertyItem::paintOpenBox(QPainter *painter, const QRect &row) const
{
    const QRect box = openBox(row);
    if (box.isEmpty())
        return;
    const QPalette palette = m_list->palette();
    painter->setPen(palette.color(QPalette::Mid));
    painter->setBrush(palette.base());
    painter->drawRect(box.adjusted(0, 0, -1, -1));
    painter->setPen(palette.color(QPalette::Text));
    const QPoint centre = box.center();
    painter->drawLine(centre - QPoint(2, 0), centre + QPoint(2, 0));
    if (!isOpen())
        painter->drawLine(centre - QPoint(0, 2), centre + QPoint(0, 2));
}

bool sameValue(const QVariant &left, const QVariant &right)
{
    if (left.metaType() == right.metaType())
        return left == right; // bytes need not be a text
    return left.isValid() == right.isValid() && textOf(left) == textOf(right);
}

QString propertyHelp(const QString &name, const QString &description)
{
    return u"<p><b>%1</b></p><p>%2</p>"_s.arg(name.toHtmlEscaped(), description);
}
