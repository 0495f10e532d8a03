#include "viewmanager.h"
#include "callplugin.h"
#include "document.h"
#include "documenttemplate.h"
#include "textview.h"
#include "varnelassert.h"
#include "viewinterfaces.h"
#include <QGuiApplication>
#include <QKeyEvent>

namespace {
View *createView(Document *document)
{
    const auto create = [&] { return document->documentTemplate()->createView(document); };
    View *view = askPlugin("DocumentTemplate::createView", create);
    VARNEL_ASSERT_TEXT(view, "newView");
    return view;
}
} // namespace

ViewManager::ViewManager(QWidget *parent) : QWidget(parent) {}

ViewManager::~ViewManager()
{
    if (!m_views.isEmpty())
        qWarning("ViewManager::~ViewManager: Views still exist");
}

void ViewManager::addView(View *newView, bool)
{
    VARNEL_ASSERT(newView);
    if (!newView)
        return;
    VARNEL_ASSERT(m_views.find(newView) == -1);
    connect(newView, &View::viewClosed, this, &ViewManager::viewClosed);
    connect(newView, &View::viewActivated, this, &ViewManager::slotViewActivated);
    connect(newView, &View::viewTitleChanged, this, &ViewManager::viewTitleChanged);
    connect(newView, &View::undoAvailable, this, &ViewManager::undoAvailable);
    connect(newView, &View::redoAvailable, this, &ViewManager::redoAvailable);
    connect(newView, &View::copyAvailable, this, &ViewManager::copyAvailable);
    connect(newView, &View::cutAvailable, this, &ViewManager::cutAvailable);
    connect(newView, &View::pasteAvailable, this, &ViewManager::pasteAvailable);
    connect(newView, &View::backAvailable, this, &ViewManager::backAvailable);
    connect(newView, &View::forwardAvailable, this, &ViewManager::forwardAvailable);
    connect(newView, &View::previousAvailable, this, &ViewManager::previousAvailable);
    connect(newView, &View::nextAvailable, this, &ViewManager::nextAvailable);
    connect(newView, &View::cursorPositionChanged, this, &ViewManager::cursorPositionChanged);
    if (viewInterface<IViewWithMarkers>(newView)) // each kind of view with markers declares this signal; View does not
        connect(newView, SIGNAL(toggleBreakpoint(int)), this, SIGNAL(toggleBreakpoint(int)));
    connect(newView, &View::sourceChanged, this, &ViewManager::sourceChanged);
    m_views.append(newView);
    Q_EMIT viewActivated(newView);
}

void ViewManager::addViewInPlace(View *newView, bool activate)
{
    addView(newView, activate);
}

void ViewManager::slotViewActivated(View *view)
{
    if (!m_walking)
        moveToFront(view);
    Q_EMIT viewActivated(view);
}

void ViewManager::moveToFront(View *view)
{
    m_views.removeOne(view);
    m_views.prepend(view);
}

void ViewManager::viewClosed(View *view)
{
    Document *document = view->document();
    m_views.removeOne(view);
    const int left = renumber(document);
    delete view;
    if (left == 0)
        delete document;
    Q_EMIT viewActivated(currentView());
}

/// Numbers the views of @p document and returns how many there are.
int ViewManager::renumber(Document *document)
{
    ObjectList<View> views;
    std::copy_if(m_views.cbegin(), m_views.cend(), std::back_inserter(views),
                 [document](View *view) { return view->document() == document; });
    for (int i = 0; i < views.size(); ++i)
        views[i]->setIndex(views.size() == 1 ? 0 : i + 1);
    return int(views.size());
}

Document *ViewManager::currentDocument()
{
    View *view = currentView();
    return view ? view->document() : nullptr;
}

View *ViewManager::firstView(Document *document) const
{
    const auto shows = [document](View *view) { return view->document() == document; };
    const auto found = std::find_if(m_views.cbegin(), m_views.cend(), shows);
    return found == m_views.cend() ? nullptr : *found;
}

void ViewManager::activateDocument(Document *document, bool setFocus)
{
    View *view = firstView(document);
    VARNEL_ASSERT_TEXT(view, "it.current()");
    if (view)
        activateView(view, setFocus);
}

void ViewManager::closeCurrentView()
{
    if (View *view = currentView())
        view->close();
}

void ViewManager::closeCurrentDocument()
{
    if (Document *document = currentDocument())
        closeDocument(document);
}

void ViewManager::closeDocument(Document *document)
{
    for (const QPointer<View> &view : m_views.guarded()) {
        if (view && view->document() == document)
            view->close();
    }
}

void ViewManager::closeAll()
{
    for (const QPointer<View> &view : m_views.guarded()) {
        if (view)
            activateView(view, false);
        if (view)
            view->close();
    }
}

bool ViewManager::askBeforeClosingAll()
{
    for (const QPointer<View> &view : m_views.guarded()) {
        if (!view || !view->asksBeforeClosing())
            continue;
        activateView(view, false);
        if (view && !view->askBeforeClosing()) {
            forgetAnswers();
            return false;
        }
    }
    return true;
}

void ViewManager::newView()
{
    Document *document = currentDocument();
    if (!document)
        return;
    View *view = createView(document);
    if (!view)
        return;
    addView(view, true);
    renumber(document);
}

View *ViewManager::addFurtherViewInPlace(Document *document)
{
    const QPointer<View> view = createView(document);
    if (!view)
        return nullptr;
    addViewInPlace(view, true); // it may be closed while it is announced
    renumber(document);
    return view;
}

void ViewManager::nextView()
{
    activateNeighbour(1);
}

void ViewManager::previousView()
{
    activateNeighbour(-1);
}

void ViewManager::activateNeighbour(int step)
{
    if (QGuiApplication::keyboardModifiers() & Qt::ControlModifier)
        beginWalk();
    const int count = int(m_views.size());
    const int current = m_views.find(currentView());
    if (current >= 0)
        activateView(m_views[(current + step + count) % count], true);
}

void ViewManager::beginWalk()
{
    QCoreApplication::instance()->installEventFilter(this); // again if it is installed: it stays one
    m_walking = true;
}

void ViewManager::endWalk()
{
    m_walking = false;
    QCoreApplication::instance()->removeEventFilter(this);
    if (View *view = currentView())
        moveToFront(view);
}

/// The release of the key is lost when another program gets the focus.
bool ViewManager::eventFilter(QObject *object, QEvent *event)
{
    const bool released =
        event->type() == QEvent::KeyRelease && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Control;
    if (m_walking && (released || event->type() == QEvent::WindowDeactivate))
        endWalk();
    return QWidget::eventFilter(object, event);
}

void ViewManager::updateAllDocuments(bool full)
{
    for (const QPointer<View> &view : m_views.guarded()) {
        if (view)
            view->document()->notifyViews(nullptr, full);
    }
}

void ViewManager::gotoLine(int line, bool mark)
{
    const QPointer<View> current = currentView(); // functions of a plug-in's view may close views
    if (auto *navigation = viewInterface<ITextNavigation>(current))
        navigation->gotoLine(line);
    if (!mark)
        return;
    for (const QPointer<View> &view : m_views.guarded()) {
        if (auto *markers = viewInterface<IViewWithMarkers>(view))
            markers->clearMarkers(IViewWithMarkers::LookupMarker);
    }
    if (auto *markers = viewInterface<IViewWithMarkers>(current))
        markers->setMarker(line, IViewWithMarkers::LookupMarker, true, false);
}

void ViewManager::gotoColumn(int column)
{
    if (auto *view = qobject_cast<TextView *>(currentView()); view && column > 0)
        view->gotoColumn(column);
}

void ViewManager::indentCurrent()
{
    if (auto *source = viewInterface<ISourceView>(currentView()))
        source->indentSelection();
}

void ViewManager::insertInCurrent(const QString &text)
{
    if (auto *source = viewInterface<ISourceView>(currentView()))
        source->insertText(text);
}

void ViewManager::command(void (View::*operation)())
{
    if (View *view = currentView())
        (view->*operation)();
}

void ViewManager::split()
{
    command(&View::split);
}

void ViewManager::undo()
{
    command(&View::undo);
}

void ViewManager::redo()
{
    command(&View::redo);
}

void ViewManager::cut()
{
    command(&View::cut);
}

void ViewManager::copy()
{
    command(&View::copy);
}

void ViewManager::paste()
{
    command(&View::paste);
}

void ViewManager::remove()
{
    command(&View::remove);
}

void ViewManager::back()
{
    command(&View::back);
}

void ViewManager::forward()
{
    command(&View::forward);
}

void ViewManager::previous()
{
    command(&View::previous);
}

void ViewManager::next()
{
    command(&View::next);
}

void ViewManager::selectAll()
{
    command(&View::selectAll);
}
