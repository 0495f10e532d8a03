#include "guardedview.h"
#include "callplugin.h"
#include "guardeddocument.h"
#include <QCloseEvent>
#include <QCoreApplication>
#include <QTimer>
#include <QVBoxLayout>

GuardedView::GuardedView(GuardedDocument *document, View *inner) : View(document), m_inner(inner)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inner);
    setFocusProxy(inner);
    setWindowIcon(inner->windowIcon());
    setObjectName(inner->objectName());
    passSignalsOn();
}

GuardedView::~GuardedView() = default;

void GuardedView::passSignalsOn()
{
    connect(m_inner, &View::viewActivated, this, [this] { Q_EMIT viewActivated(this); });
    connect(m_inner, &View::viewClosed, this, [this] { Q_EMIT viewClosed(this); });
    connect(m_inner, &View::undoAvailable, this, &View::undoAvailable);
    connect(m_inner, &View::redoAvailable, this, &View::redoAvailable);
    connect(m_inner, &View::copyAvailable, this, &View::copyAvailable);
    connect(m_inner, &View::cutAvailable, this, &View::cutAvailable);
    connect(m_inner, &View::pasteAvailable, this, &View::pasteAvailable);
    connect(m_inner, &View::backAvailable, this, &View::backAvailable);
    connect(m_inner, &View::forwardAvailable, this, &View::forwardAvailable);
    connect(m_inner, &View::previousAvailable, this, &View::previousAvailable);
    connect(m_inner, &View::nextAvailable, this, &View::nextAvailable);
    connect(m_inner, &View::cursorPositionChanged, this, &View::cursorPositionChanged);
    connect(m_inner, &View::sourceChanged, this, &View::sourceChanged);
    if (m_inner->metaObject()->indexOfSignal("toggleBreakpoint(int)") >= 0)
        connect(m_inner, SIGNAL(toggleBreakpoint(int)), this, SIGNAL(toggleBreakpoint(int)));
    // the number of a view among those of its document
    connect(this, &View::viewTitleChanged, this, [this] {
        const auto inUse = guardedDocument()->use();
        const auto number = [this] { m_inner->setIndex(index()); };
        if (m_inner)
            runPlugin("View::setIndex", number, m_inner);
    });
}

GuardedDocument *GuardedView::guardedDocument() const
{
    return static_cast<GuardedDocument *>(document());
}

template <auto Function>
void GuardedView::command()
{
    const auto inUse = guardedDocument()->use();
    runPlugin<Function>(m_inner.data());
}

void GuardedView::print()
{
    command<&View::print>();
}

bool GuardedView::queryInterface(const QString &name, void **out)
{
    const auto inUse = guardedDocument()->use();
    *out = nullptr;
    if (!askPlugin<&View::queryInterface>(m_inner.data(), name, out) || !*out)
        return false;
    const auto is = [&name](const char *interface) { return name == QLatin1StringView(interface); };
    if (is(IViewWithMarkers::Name))
        *out = static_cast<IViewWithMarkers *>(this);
    else if (is(ITextNavigation::Name))
        *out = static_cast<ITextNavigation *>(this);
    else if (is(ISourceView::Name))
        *out = static_cast<ISourceView *>(this);
    return true;
}

// Commands

void GuardedView::split()
{
    command<&View::split>();
}

void GuardedView::undo()
{
    command<&View::undo>();
}

void GuardedView::redo()
{
    command<&View::redo>();
}

void GuardedView::cut()
{
    command<&View::cut>();
}

void GuardedView::copy()
{
    command<&View::copy>();
}

void GuardedView::paste()
{
    command<&View::paste>();
}

void GuardedView::remove()
{
    command<&View::remove>();
}

void GuardedView::back()
{
    command<&View::back>();
}

void GuardedView::forward()
{
    command<&View::forward>();
}

void GuardedView::previous()
{
    command<&View::previous>();
}

void GuardedView::next()
{
    command<&View::next>();
}

void GuardedView::selectAll()
{
    command<&View::selectAll>();
}

void GuardedView::update(View *source, bool full)
{
    const auto *guarded = qobject_cast<GuardedView *>(source);
    View *innerSource = guarded ? guarded->m_inner.data() : source;
    const auto inUse = guardedDocument()->use();
    if (m_inner)
        runPlugin(
            "View::update", [&] { m_inner->update(innerSource, full); }, m_inner);
}

/// The plug-in's view asks about changes of its document, and may have a closeEvent() of its own. It is not closed by
/// QWidget::close(), which would not work again after an exception. In an event loop of one of their functions it is
/// closed later: the function still uses them.
void GuardedView::closeEvent(QCloseEvent *event)
{
    if (guardedDocument()->isInUse()) {
        event->ignore();
        QTimer::singleShot(AfterCallDelay, this, &QWidget::close);
        return;
    }
    const QPointer<GuardedView> self(this);
    QCloseEvent passedOn;
    const auto send = [&] {
        const auto inUse = guardedDocument()->use();
        QCoreApplication::sendEvent(m_inner, &passedOn);
    };
    if (m_inner)
        runPlugin("View::closeEvent", send, m_inner);
    if (!self)
        return; // the signal viewClosed() of the plug-in's view has deleted both
    if (passedOn.isAccepted())
        View::closeEvent(event); // the plug-in's view is gone, or has thrown an exception
    else
        event->ignore();
}

// The side interfaces

template <typename Interface>
Interface *GuardedView::offered() const
{
    void *found = nullptr;
    const bool offers = askPlugin<&View::queryInterface>(m_inner.data(), QString::fromLatin1(Interface::Name), &found);
    return offers ? static_cast<Interface *>(found) : nullptr;
}

void GuardedView::setMarker(int line, int mask, bool on, bool alternate)
{
    const auto inUse = guardedDocument()->use();
    runPlugin<&IViewWithMarkers::setMarker>(offered<IViewWithMarkers>(), line, mask, on, alternate);
}

void GuardedView::clearMarkers(int mask)
{
    const auto inUse = guardedDocument()->use();
    runPlugin<&IViewWithMarkers::clearMarkers>(offered<IViewWithMarkers>(), mask);
}

bool GuardedView::hasMarker(int line, int mask)
{
    const auto inUse = guardedDocument()->use();
    return askPlugin<&IViewWithMarkers::hasMarker>(offered<IViewWithMarkers>(), line, mask);
}

bool GuardedView::hasMarkerAtCursor(int mask)
{
    const auto inUse = guardedDocument()->use();
    return askPlugin<&IViewWithMarkers::hasMarkerAtCursor>(offered<IViewWithMarkers>(), mask);
}

void GuardedView::gotoLine(int line)
{
    const auto inUse = guardedDocument()->use();
    runPlugin<&ITextNavigation::gotoLine>(offered<ITextNavigation>(), line);
}

bool GuardedView::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    const auto inUse = guardedDocument()->use();
    return askPlugin<&ITextNavigation::find>(offered<ITextNavigation>(), text, caseSensitive, wholeWord, forward,
                                             fromCursor);
}

QString GuardedView::selectedText()
{
    const auto inUse = guardedDocument()->use();
    return askPlugin<&ITextNavigation::selectedText>(offered<ITextNavigation>());
}

void GuardedView::getCursorPosition(int *para, int *index)
{
    const auto inUse = guardedDocument()->use();
    *para = *index = 0;
    runPlugin<&ITextNavigation::getCursorPosition>(offered<ITextNavigation>(), para, index);
}

void GuardedView::indentSelection()
{
    const auto inUse = guardedDocument()->use();
    runPlugin<&ISourceView::indentSelection>(offered<ISourceView>());
}

void GuardedView::insertText(const QString &text)
{
    const auto inUse = guardedDocument()->use();
    runPlugin<&ISourceView::insertText>(offered<ISourceView>(), text);
}
