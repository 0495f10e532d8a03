#pragma once
#include "syntaxhighlighter.h"
#include "textformats.h"
#include <QPointer>
class DebugWindows;
class GlyphWarmUp;
class ScriptHost;

/// The fonts and colours of the text in all windows: those of the user, or those of the product.
class WindowFormats
{
public:
    /// @p window outlives this object.
    explicit WindowFormats(ScriptHost &window) : m_window(window) {}

    void setDebugWindows(DebugWindows *windows);

    [[nodiscard]] TextFormats &formats() { return m_formats; }
    [[nodiscard]] const FormatTable *table() const { return &m_table; } ///< Used by the editors for painting.

    void load();
    void save();
    void apply(); ///< Applies the present formats() to all windows.
    /// To be called when the desktop's palette has changed: adapts colours that the user has not chosen.
    void followPalette();

private:
    [[nodiscard]] QFont fontOf(const QString &section, const QString &format) const;
    void applyToDebugWindows();

    ScriptHost &m_window;
    QPointer<DebugWindows> m_debugWindows;
    TextFormats m_formats;
    FormatTable m_table;
    QPointer<GlyphWarmUp> m_glyphs;
};
