#pragma once
#include "view.h"

/// Interface of a view with a margin. Lines count from 1; `mask` is a set of marker bits.
class IViewWithMarkers
{
public:
    static constexpr const char *Name = "IViewWithMarkers";
    enum Marker {
        EnabledBreakpointMarker = 0x01,
        DisabledBreakpointMarker = 0x02,
        MultipleBreakpointMarker = 0x04,
        BreakpointMarkers = 0x07, ///< a line has at most one of the three
        CurrentLineMarker = 0x08,
        LookupMarker = 0x10,
        CallerMarker = 0x20,      ///< the next statement of a calling function
        ExecutionMarkers = 0x28,  ///< a program has one of the two
        AlternateMarker = 0x8000, ///< breakpoints of the line are drawn with their second picture
    };

    /// Sets or clears the bits of @p mask on @p line; a line after the end is ignored. @p alternate selects the second
    /// picture of a breakpoint.
    virtual void setMarker(int line, int mask, bool on, bool alternate) = 0;
    /// Clears the bits of @p mask on every line.
    virtual void clearMarkers(int mask) = 0;
    [[nodiscard]] virtual bool hasMarker(int line, int mask) = 0;
    /// Like hasMarker() for the cursor's line; false if that line is not completely visible.
    [[nodiscard]] virtual bool hasMarkerAtCursor(int mask) = 0;

protected:
    ~IViewWithMarkers() = default;
};

/// Interface of a view that supports cursor movement and search.
class ITextNavigation
{
public:
    static constexpr const char *Name = "ITextNavigation";

    /// Moves the cursor to the start of @p line, counted from 1, and makes it visible.
    virtual void gotoLine(int line) = 0;
    virtual bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) = 0;
    [[nodiscard]] virtual QString selectedText() = 0;
    /// Both count from 0.
    virtual void getCursorPosition(int *para, int *index) = 0;

protected:
    ~ITextNavigation() = default;
};

/// Interface of a view in which the user edits text.
class ISourceView
{
public:
    static constexpr const char *Name = "ISourceView";

    /// Indents each line of the selection, or the cursor's line, by the rules of its language. Events are processed
    /// during it.
    virtual void indentSelection() = 0;
    /// Replaces the selection by @p text, or inserts it at the cursor.
    virtual void insertText(const QString &text) = 0;

protected:
    ~ISourceView() = default;
};

/// The side interface T of @p view, which may be null; null if the view does not offer it.
template <typename T>
[[nodiscard]] T *viewInterface(View *view)
{
    void *found = nullptr;
    if (!view || !view->queryInterface(QString::fromLatin1(T::Name), &found))
        return nullptr;
    return static_cast<T *>(found);
}
