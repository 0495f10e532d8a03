#include "accessibleviews.h"
#include "markerwidget.h"
#include "textlineview.h"
#include "textparaview.h"
#include "timeplot.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(AccessibleViews)
};

void reportCursor(QWidget *view)
{
    if (!QAccessible::isActive())
        return; // the position is that in all the text on screen, which takes its time
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(view);
    if (!accessible || !accessible->textInterface())
        return;
    QAccessibleTextCursorEvent event(view, accessible->textInterface()->cursorPosition());
    QAccessible::updateAccessibility(&event);
}

class AccessibleLineView : public AccessibleLines
{
public:
    explicit AccessibleLineView(TextLineView *view) : AccessibleLines(view)
    {
        QObject::connect(view, &TextLineView::cursorPositionChanged, view, [view] { reportCursor(view); });
    }

protected:
    [[nodiscard]] QString visibleText() const override { return view()->visibleText(); }
    [[nodiscard]] RowPlace cursor() const override { return rowPlace(view()->cursorPlace()); }
    void moveCursor(const RowPlace &place) override { view()->setCursor(top() + place.row, place.column); }
    void select(const RowPlace &start, const RowPlace &end) override
    {
        view()->setSelection({top() + start.row, start.column}, {top() + end.row, end.column});
    }
    bool selected(RowPlace *start, RowPlace *end) const override
    {
        *start = rowPlace(view()->selectionStart());
        *end = rowPlace(view()->selectionEnd());
        return view()->hasSelection() && end->row >= 0;
    }
    [[nodiscard]] QSize characterSize() const override { return {view()->charWidth(), view()->lineHeight()}; }

private:
    [[nodiscard]] TextLineView *view() const { return static_cast<TextLineView *>(widget()); }
    [[nodiscard]] int top() const { return view()->heldLines().value(0); }
    [[nodiscard]] RowPlace rowPlace(const TextLineView::Place &place) const
    {
        return {place.line - top(), place.column};
    }
};

class AccessibleParaView : public AccessibleLines
{
public:
    explicit AccessibleParaView(TextParaView *view) : AccessibleLines(view)
    {
        QObject::connect(view, &TextParaView::cursorPositionChanged, view, [view] { reportCursor(view); });
    }

protected:
    [[nodiscard]] QString visibleText() const override { return view()->visibleText(); }
    [[nodiscard]] RowPlace cursor() const override
    {
        const TextParaView::Place place = view()->cursorPlace();
        for (int row = 0; row < view()->rowCount(); ++row) {
            int para = 0;
            int line = 0;
            if (view()->rowToPara(row, &para, &line) && para == place.para && line == place.line)
                return {row, place.column};
        }
        return {-1, 0};
    }
    void moveCursor(const RowPlace &place) override { view()->setCursor(paraPlace(place)); }
    void select(const RowPlace &start, const RowPlace &end) override
    {
        view()->setSelection(paraPlace(start), paraPlace(end));
    }
    bool selected(RowPlace * /*start*/, RowPlace * /*end*/) const override { return false; }
    [[nodiscard]] QSize characterSize() const override { return {view()->charWidth(), view()->lineHeight()}; }

private:
    [[nodiscard]] TextParaView *view() const { return static_cast<TextParaView *>(widget()); }
    [[nodiscard]] TextParaView::Place paraPlace(const RowPlace &place) const
    {
        TextParaView::Place result{0, 0, place.column};
        return view()->rowToPara(place.row, &result.para, &result.line) ? result : view()->cursorPlace();
    }
};

/// A plot: its value is what it shows.
class AccessiblePlot : public QAccessibleWidget
{
public:
    explicit AccessiblePlot(TimePlot *plot) : QAccessibleWidget(plot, QAccessible::Chart) {}

    [[nodiscard]] QString text(QAccessible::Text text) const override
    {
        return text == QAccessible::Value ? static_cast<TimePlot *>(widget())->text() : QAccessibleWidget::text(text);
    }
};

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    if (className == "MarkerWidget"_L1) {
        auto *margin = qobject_cast<MarkerWidget *>(object);
        return margin ? new AccessibleMargin(margin, [margin] { return margin->markers(); }) : nullptr;
    }
    if (className == "TextLineView"_L1) {
        auto *view = qobject_cast<TextLineView *>(object);
        return view ? new AccessibleLineView(view) : nullptr;
    }
    if (className == "TextParaView"_L1) {
        auto *view = qobject_cast<TextParaView *>(object);
        return view ? new AccessibleParaView(view) : nullptr;
    }
    if (className == "TimePlot"_L1) {
        auto *plot = qobject_cast<TimePlot *>(object);
        return plot ? new AccessiblePlot(plot) : nullptr;
    }
    return nullptr;
}

QString markNames(int bits)
{
    QStringList names;
    if (bits & MarkerWidget::MultipleBreakpoint)
        names.append(Text::tr("several breakpoints"));
    else if (bits & MarkerWidget::EnabledBreakpoint)
        names.append(Text::tr("breakpoint"));
    else if (bits & MarkerWidget::DisabledBreakpoint)
        names.append(Text::tr("disabled breakpoint"));
    if (bits & MarkerWidget::CurrentLine)
        names.append(Text::tr("next statement"));
    if (bits & MarkerWidget::Caller)
        names.append(Text::tr("calling function"));
    if (bits & MarkerWidget::Lookup)
        names.append(Text::tr("found line"));
    return names.join(u", "_s);
}
} // namespace

void installAccessibleViews()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

// Margins

AccessibleMargin::AccessibleMargin(QWidget *margin, Marks marks)
    : QAccessibleWidget(margin, QAccessible::Indicator, Text::tr("Margin")), m_marks(std::move(marks))
{}

QString AccessibleMargin::text(QAccessible::Text text) const
{
    return text == QAccessible::Value ? marksText(m_marks()) : QAccessibleWidget::text(text);
}

QString marksText(const QMap<int, int> &marks)
{
    QStringList lines;
    for (auto mark = marks.constBegin(); mark != marks.constEnd(); ++mark) {
        if (const QString names = markNames(*mark); !names.isEmpty())
            lines.append(Text::tr("Line %1: %2").arg(QString::number(mark.key()), names));
    }
    return lines.join(u"; "_s);
}

// Views of lines

AccessibleLines::AccessibleLines(QWidget *view) : QAccessibleWidget(view, QAccessible::EditableText) {}

QAccessible::State AccessibleLines::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

QString AccessibleLines::text(QAccessible::Text text) const
{
    return text == QAccessible::Value ? visibleText() : QAccessibleWidget::text(text);
}

void *AccessibleLines::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::TextInterface ? static_cast<QAccessibleTextInterface *>(this)
                                              : QAccessibleWidget::interface_cast(type);
}

QString AccessibleLines::text(int start, int end) const
{
    return visibleText().mid(start, end - start);
}

int AccessibleLines::cursorPosition() const
{
    return offsetOf(cursor());
}

void AccessibleLines::setCursorPosition(int position)
{
    moveCursor(placeOf(position));
}

void AccessibleLines::selection(int index, int *start, int *end) const
{
    RowPlace first;
    RowPlace last;
    const bool any = index == 0 && selected(&first, &last);
    *start = any ? std::max(0, offsetOf(first)) : 0;
    *end = any ? offsetOf(last) : 0;
}

int AccessibleLines::selectionCount() const
{
    RowPlace first;
    RowPlace last;
    return selected(&first, &last) ? 1 : 0;
}

void AccessibleLines::removeSelection(int /*index*/)
{
    select(cursor(), cursor());
}

void AccessibleLines::setSelection(int index, int start, int end)
{
    if (index == 0)
        select(placeOf(start), placeOf(end));
}

QRect AccessibleLines::characterRect(int offset) const
{
    const RowPlace place = placeOf(offset);
    const QSize size = characterSize();
    const QPoint corner(place.column * size.width(), place.row * size.height());
    return {widget()->mapToGlobal(corner), size};
}

int AccessibleLines::offsetAtPoint(const QPoint &point) const
{
    const QPoint inside = widget()->mapFromGlobal(point);
    const QSize size = characterSize();
    if (!widget()->rect().contains(inside) || size.isEmpty())
        return -1;
    return offsetOf({inside.y() / size.height(), inside.x() / size.width()});
}

QString AccessibleLines::attributes(int /*offset*/, int *start, int *end) const
{
    *start = 0;
    *end = characterCount();
    return {};
}

/// A column behind the end of its row stands for the end.
int AccessibleLines::offsetOf(const RowPlace &place) const
{
    if (place.row < 0)
        return -1;
    const QStringList rows = visibleText().split(u'\n');
    int offset = 0;
    for (int row = 0; row < rows.size(); ++row) {
        if (row == place.row)
            return offset + int(std::min<qsizetype>(place.column, rows[row].size()));
        offset += int(rows[row].size()) + 1;
    }
    return characterCount();
}

AccessibleLines::RowPlace AccessibleLines::placeOf(int offset) const
{
    const QString before = visibleText().left(std::max(0, offset));
    return {int(before.count(u'\n')), int(before.size() - before.lastIndexOf(u'\n') - 1)};
}
