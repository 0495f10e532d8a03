#include "windowformats.h"
#include "debugpane.h"
#include "debugwindows.h"
#include "formatchoice.h"
#include "glyphwarmup.h"
#include "ideapplication.h"
#include "outputwindow.h"
#include "pythonoutputpanel.h"
#include "scripthost.h"
#include "viewmanager.h"
#include "zoomcommands.h"

using namespace Qt::StringLiterals;

namespace {
QDir configDirectory()
{
    return IDEApplication::instance()->path(PathConfig);
}
} // namespace

void WindowFormats::setDebugWindows(DebugWindows *windows)
{
    m_debugWindows = windows;
}

void WindowFormats::load()
{
    m_formats = chosenFormats(m_window.settings(), configDirectory());
    apply();
}

void WindowFormats::save()
{
    m_formats.saveToSettings(m_window.settings());
}

QFont WindowFormats::fontOf(const QString &section, const QString &format) const
{
    QFont font(m_formats.fontFamily(section, format), m_formats.fontSize(section, format));
    font.setStyleHint(QFont::TypeWriter);
    font.setBold(m_formats.bold(section, format));
    font.setItalic(m_formats.italic(section, format));
    return font;
}

void WindowFormats::apply()
{
    m_table = zoomedFormats(m_formats, readZoom(m_window.settings())).formatTable();
    m_window.viewManager()->updateAllDocuments(true);
    const QString section = m_formats.sections().value(1);
    const QString format = m_formats.formats(section).value(0);
    OutputWindow *output = m_window.outputWindow();
    output->setFont(fontOf(section, format));
    output->setTextColour(m_formats.fgColour(section, format));
    output->setPaperColour(m_formats.bgColour(section, format));
    applyToDebugWindows();
    if (!m_glyphs)
        m_glyphs = new GlyphWarmUp(m_window.viewManager());
    m_glyphs->start(m_table, m_window.viewManager()->devicePixelRatioF());
}

void WindowFormats::applyToDebugWindows()
{
    const QString section = u"Workspace"_s;
    const QString format = u"Normal text"_s;
    if (PythonOutputPanel *panel = m_window.pythonOutput())
        panel->setFont(fontOf(section, format));
    if (m_debugWindows)
        m_debugWindows->setAppearance(
            {fontOf(section, format), m_formats.fgColour(section, format), m_formats.bgColour(section, format)});
}

void WindowFormats::followPalette()
{
    if (!areProductFormats(m_formats, configDirectory()))
        return;
    m_formats = productFormats(configDirectory());
    apply();
}
