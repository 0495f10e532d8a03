#pragma once
#include "document.h"
#include "documenttemplate.h"
#include "viewinterfaces.h"
#include <functional>
#include <QEvent>
#include <stdexcept>

/// A document in memory that records the calls of its functions.
class FakeDocument : public Document
{
    Q_OBJECT
public:
    explicit FakeDocument(DocumentTemplate *docTemplate, QStringList *log) : Document(docTemplate), m_log(log) {}
    ~FakeDocument() override { note(QStringLiteral("delete")); }

    bool open(const QString &filename) override { return named(QStringLiteral("open"), filename); }
    bool create(const QString &filename) override { return named(QStringLiteral("create"), filename); }
    bool save() override
    {
        note(QStringLiteral("save"));
        if (whenSaved)
            whenSaved();
        if (saves)
            setModified(false);
        return saves;
    }
    bool saveAs(const QString &filename) override { return named(QStringLiteral("saveAs"), filename); }
    QDateTime lastModified() override { return {}; }
    QString filename() override { return m_filename; }
    bool isNewerOnDisk() override { return newerOnDisk; }
    QString title() override { return m_filename.section(QChar::fromLatin1('/'), -1); }

    bool saves = true;
    bool newerOnDisk = false;
    std::function<void()> whenSaved;
    bool throws = false;

private:
    bool named(const QString &what, const QString &filename)
    {
        if (throws)
            throw std::runtime_error("boom");
        m_filename = filename;
        note(what);
        return !filename.contains(QStringLiteral("bad"));
    }
    void note(const QString &what) { *m_log << what + QChar::fromLatin1(' ') + m_filename; }

    QString m_filename;
    QStringList *m_log;
};

/// A view that records its commands, and offers the side interfaces on request.
class FakeView : public View, public IViewWithMarkers, public ITextNavigation, public ISourceView
{
    Q_OBJECT
public:
    FakeView(Document *document, QStringList *log, bool offers) : View(document), m_log(log), m_offers(offers)
    {
        setFocusPolicy(Qt::StrongFocus);
    }

    void print() override { note("print"); }
    bool queryInterface(const QString &name, void **out) override
    {
        *out = nullptr;
        if (!m_offers)
            return false;
        if (name == QLatin1String(IViewWithMarkers::Name))
            *out = static_cast<IViewWithMarkers *>(this);
        if (name == QLatin1String(ITextNavigation::Name))
            *out = static_cast<ITextNavigation *>(this);
        if (name == QLatin1String(ISourceView::Name))
            *out = static_cast<ISourceView *>(this);
        return *out;
    }
    void split() override { note("split"); }
    void undo() override { note("undo"); }
    void redo() override { note("redo"); }
    void cut() override { note("cut"); }
    void copy() override { note("copy"); }
    void paste() override { note("paste"); }
    void remove() override { note("remove"); }
    void back() override { note("back"); }
    void forward() override { note("forward"); }
    void previous() override { note("previous"); }
    void next() override { note("next"); }
    void selectAll() override { note("selectAll"); }
    using View::update;
    void update(View *, bool full) override { note(full ? "update full" : "update"); }

    void setMarker(int line, int mask, bool on, bool alternate) override
    {
        *m_log << QStringLiteral("setMarker %1 %2 %3 %4").arg(line).arg(mask).arg(on).arg(alternate);
    }
    void clearMarkers(int mask) override { *m_log << QStringLiteral("clearMarkers %1").arg(mask); }
    bool hasMarker(int, int) override { return false; }
    bool hasMarkerAtCursor(int) override { return false; }
    void gotoLine(int line) override { *m_log << QStringLiteral("gotoLine %1").arg(line); }
    bool find(const QString &, bool, bool, bool, bool) override { return false; }
    QString selectedText() override { return {}; }
    void getCursorPosition(int *para, int *index) override { *para = *index = 0; }
    void indentSelection() override { note("indent"); }
    void insertText(const QString &text) override { *m_log << QStringLiteral("insert ") + text; }

Q_SIGNALS:
    void toggleBreakpoint(int line);

protected:
    void focusInEvent(QFocusEvent *) override { Q_EMIT viewActivated(this); }

private:
    void note(const char *what) { *m_log << QLatin1String(what); }

    QStringList *m_log;
    bool m_offers;
};

/// Opens names that end in one of its extensions; an empty list opens every name. The function named in "throwing"
/// throws an exception.
class FakeTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    FakeTemplate(const QStringList &extensions, QStringList *log)
        : DocumentTemplate(QStringLiteral("Fake"), QStringLiteral("A fake"), {}), m_extensions(extensions), m_log(log)
    {}

    bool canOpen(const QString &filename) override
    {
        throwIn("canOpen");
        return opens
               && (m_extensions.isEmpty()
                   || m_extensions.contains(filename.section(QChar::fromLatin1('.'), -1).toLower()));
    }
    Document *createDocument() override
    {
        throwIn("createDocument");
        auto *document = givesDocument ? new FakeDocument(this, m_log) : nullptr;
        if (document && throwing == "open")
            document->throws = true;
        return document;
    }
    View *createView(Document *document) override
    {
        throwIn("createView");
        return givesView ? new FakeView(document, m_log, offers) : nullptr;
    }
    QString extension() override { return m_extensions.value(0); }

    bool opens = true;
    bool givesDocument = true;
    bool givesView = true;
    bool offers = true;
    QByteArray throwing;

protected:
    void throwIn(const char *function) const
    {
        if (throwing == function)
            throw std::runtime_error("boom");
    }

    QStringList m_extensions;
    QStringList *m_log;
};
