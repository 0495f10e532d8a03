#pragma once
#include "document.h"
#include "documenttemplate.h"
#include "viewinterfaces.h"
#include <functional>
#include <QFileInfo>
#include <QMap>
#include <QSet>

/// An empty document of any name.
class EmptyDocument : public Document
{
public:
    using Document::Document;
    bool open(const QString &filename) override
    {
        m_filename = filename;
        return true;
    }
    bool create(const QString &filename) override { return open(filename); }
    bool save() override { return true; }
    bool saveAs(const QString &filename) override { return open(filename); }
    QDateTime lastModified() override { return {}; }
    QString filename() override { return m_filename; }
    QString title() override { return QFileInfo(m_filename).fileName(); }

private:
    QString m_filename;
};

/// A view that has only a margin and a cursor.
class MarkedView : public View, public IViewWithMarkers, public ITextNavigation
{
    Q_OBJECT
public:
    using View::View;

    /// The markers, by line: "7=1 9=1* 12=8", where the asterisk stands for the second picture.
    [[nodiscard]] QString marks() const
    {
        QStringList texts;
        for (auto line = m_markers.cbegin(); line != m_markers.cend(); ++line) {
            if (const int shown = *line & ~AlternateMarker)
                texts.append(QStringLiteral("%1=%2").arg(line.key()).arg(shown)
                             + (*line & AlternateMarker ? QStringLiteral("*") : QString()));
        }
        return texts.join(u' ');
    }

    void print() override {}
    bool queryInterface(const QString &name, void **out) override
    {
        *out = nullptr;
        if (name == QLatin1String(IViewWithMarkers::Name))
            *out = static_cast<IViewWithMarkers *>(this);
        else if (name == QLatin1String(ITextNavigation::Name))
            *out = static_cast<ITextNavigation *>(this);
        return *out;
    }
    using View::update;
    void update(View *, bool) override { ++updates; }

    void setMarker(int line, int mask, bool on, bool alternate) override
    {
        int &markers = m_markers[line];
        markers = on ? markers | mask : markers & ~mask;
        if (mask & BreakpointMarkers)
            markers = alternate ? markers | AlternateMarker : markers & ~AlternateMarker;
    }
    void clearMarkers(int mask) override
    {
        for (int &markers : m_markers)
            markers &= ~mask;
    }
    bool hasMarker(int line, int mask) override { return m_markers.value(line) & mask; }
    bool hasMarkerAtCursor(int mask) override { return hasMarker(cursor, mask); }

    void gotoLine(int line) override { cursor = line; }
    bool find(const QString &, bool, bool, bool, bool) override { return false; }
    QString selectedText() override { return {}; }
    void getCursorPosition(int *para, int *index) override
    {
        *para = cursor - 1;
        *index = 0;
    }

    int cursor = 1; ///< its line, from 1
    int updates = 0;

Q_SIGNALS:
    void toggleBreakpoint(int line);

private:
    QMap<int, int> m_markers;
};

/// A view without any optional interface.
class BlankView : public View
{
public:
    using View::View;
    void print() override {}
    bool queryInterface(const QString &, void **out) override
    {
        *out = nullptr;
        return false;
    }
    using View::update;
    void update(View *, bool) override {}
};

/// Opens every name: "....blank" in a BlankView, others in a MarkedView.
class MarkedTemplate : public DocumentTemplate
{
public:
    MarkedTemplate() : DocumentTemplate({}, {}, {}) {}
    bool canOpen(const QString &filename) override { return !refuses || !filename.contains(QLatin1String(refuses)); }
    Document *createDocument() override { return new EmptyDocument(this); }
    View *createView(Document *document) override
    {
        if (document->filename().endsWith(QStringLiteral(".blank")))
            return new BlankView(document);
        return new MarkedView(document);
    }
    QString extension() override { return {}; }

    const char *refuses = nullptr; ///< names that contain this are not opened
};
