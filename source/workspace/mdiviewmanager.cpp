#include "mdiviewmanager.h"
#include "mdiworkspace.h"
#include <QHBoxLayout>
#include <QPointer>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
constexpr int CascadeStep = 20;
const auto MaximisedKey = u"Editor/MDIMaximised"_s;
} // namespace

QRect cascadeRect(const QRect &workspace, int &i)
{
    const int w = workspace.right() - workspace.left();
    const int h = workspace.bottom() - workspace.top();
    const int n = std::min(w, h) * 6 / 10 / CascadeStep;
    if (i >= n)
        i = 0;
    const int offset = i * CascadeStep;
    if (++i >= n)
        i = 0;
    return {QPoint(offset, offset), QPoint(offset - n * CascadeStep + w + CascadeStep - 1, h - 1)};
}

MDIViewManager::MDIViewManager(QSettings *settings, QWidget *parent)
    : ViewManager(parent)
    , m_settings(settings)
    , m_workspace(new MDIWorkspace)
    , m_maximised(settings->value(MaximisedKey, 1).toInt() != 0)
{
    m_workspace->setObjectName(u"mdiWorkspace"_s);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_workspace);
    connect(m_workspace, &MDIWorkspace::titleBarClicked, this, &MDIViewManager::titleBarClicked);
}

MDIViewManager::~MDIViewManager()
{
    m_settings->setValue(MaximisedKey, m_maximised ? 1 : 0);
}

/// Stores whether the current frame, if there is one, fills the area.
void MDIViewManager::readMaximised()
{
    if (View *view = currentView())
        m_maximised = MDIWorkspace::frameOf(view)->isMaximized();
}

void MDIViewManager::addView(View *newView, bool activate)
{
    readMaximised();
    if (!newView) {
        ViewManager::addView(newView, activate);
        return;
    }
    MDIFrame *frame = m_workspace->addFrame(newView);
    const QPointer<View> kept(newView);
    ViewManager::addView(newView, activate);
    if (!kept)
        return; // it may be closed while it is announced
    if (m_maximised) {
        frame->showMaximized();
    } else {
        frame->setGeometry(cascadeRect(m_workspace->rect(), m_cascade));
        frame->show();
    }
    m_workspace->setActiveSubWindow(frame);
    if (activate)
        newView->setFocus();
}

void MDIViewManager::addViewInPlace(View *newView, bool activate)
{
    if (!m_replacedRect || !newView) {
        addView(newView, activate);
        return;
    }
    MDIFrame *frame = m_workspace->addFrame(newView);
    const QPointer<View> kept(newView);
    ViewManager::addView(newView, activate);
    if (!kept)
        return; // it may be closed while it is announced
    frame->setGeometry(*m_replacedRect);
    m_replacedRect.reset();
    if (m_maximised)
        frame->showMaximized();
    else
        frame->show();
    m_workspace->setActiveSubWindow(frame);
    if (activate)
        newView->setFocus();
}

void MDIViewManager::viewClosed(View *view)
{
    readMaximised();
    MDIFrame *frame = MDIWorkspace::frameOf(view);
    m_replacedRect = frame->geometry();
    m_workspace->removeSubWindow(frame);
    frame->deleteLater(); // its close event may be running now
    ViewManager::viewClosed(view);
}

View *MDIViewManager::currentView()
{
    return m_workspace->activeView();
}

void MDIViewManager::activateView(View *view, bool setFocus)
{
    MDIFrame *frame = MDIWorkspace::frameOf(view);
    if (frame->isMinimized())
        frame->showNormal();
    m_workspace->setActiveSubWindow(frame);
    if (setFocus)
        view->setFocus();
    Q_EMIT viewActivated(view);
}

void MDIViewManager::titleBarClicked()
{
    View *view = currentView();
    if (!view)
        return;
    view->setFocus();
    Q_EMIT viewActivated(view);
}

void MDIViewManager::cascade()
{
    m_workspace->cascadeSubWindows();
    m_maximised = false;
}

void MDIViewManager::tile()
{
    m_workspace->tileSubWindows();
    m_maximised = false;
}
