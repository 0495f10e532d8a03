#include "tabbedviewmanager.h"
#include "document.h"
#include "varnelassert.h"
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QIconEngine>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QStackedWidget>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
/// A small cross, drawn in the requested size and colour.
class CrossIcon : public QIconEngine
{
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const double inset = rect.width() * 0.28;
        const QRectF cross = QRectF(rect).adjusted(inset, inset, -inset, -inset);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen({QGuiApplication::palette().color(group, QPalette::ButtonText), rect.width() / 10.0});
        painter->drawLine(cross.topLeft(), cross.bottomRight());
        painter->drawLine(cross.topRight(), cross.bottomLeft());
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine *clone() const override { return new CrossIcon; }
};
} // namespace

TabbedViewManager::TabbedViewManager(QWidget *parent)
    : ViewManager(parent), m_tabBar(new QTabBar), m_closeButton(new QToolButton), m_stack(new QStackedWidget)
{
    m_tabBar->setObjectName(u"viewManagerTabBar"_s);
    m_tabBar->setAccessibleName(tr("Open windows"));
    m_tabBar->setExpanding(false);
    m_tabBar->setUsesScrollButtons(true);
    m_tabBar->setTabsClosable(true);
    m_tabBar->setMovable(true);
    m_tabBar->installEventFilter(this);
    m_closeButton->setAutoRaise(true);
    m_closeButton->setEnabled(false);
    m_closeButton->hide(); // until there is a view
    m_closeButton->setIcon(QIcon(new CrossIcon));
    m_closeButton->setToolTip(tr("Close"));
    m_closeButton->setAccessibleName(tr("Close"));

    auto *row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(m_tabBar, 1);
    row->addWidget(m_closeButton);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(row);
    column->addWidget(m_stack, 1);

    connect(m_tabBar, &QTabBar::currentChanged, this, [this](int tab) { tabClicked(m_tabBar->tabData(tab).toInt()); });
    connect(m_tabBar, &QTabBar::tabCloseRequested, this, &TabbedViewManager::closeTab);
    connect(m_closeButton, &QToolButton::clicked, this, &TabbedViewManager::closeButtonClicked);
}

void TabbedViewManager::addView(View *newView, bool activate)
{
    insertView(newView, activate, m_tabBar->count());
}

void TabbedViewManager::addViewInPlace(View *newView, bool activate)
{
    insertView(newView, activate, m_replacePending ? m_removedTab : m_tabBar->count());
    m_replacePending = false;
}

void TabbedViewManager::insertView(View *newView, bool activate, int tab)
{
    const QPointer<View> kept(newView);
    ViewManager::addView(newView, activate);
    if (!kept)
        return;                           // it may be closed while it is announced
    const QSignalBlocker quiet(m_tabBar); // the focus is set below, and only if it was requested
    tab = m_tabBar->insertTab(tab, QString());
    m_tabBar->setTabData(tab, m_nextId);
    nameCloseButton(tab);
    m_tabs.insert(newView, m_nextId++);
    viewTitleChanged(newView);
    m_tabBar->setCurrentIndex(tab);
    m_stack->setCurrentIndex(m_stack->addWidget(newView));
    if (activate)
        newView->setFocus();
    connect(newView, &View::viewTitleChanged, this, &TabbedViewManager::viewTitleChanged);
    m_closeButton->setEnabled(true);
    m_closeButton->show();
}

void TabbedViewManager::nameCloseButton(int tab)
{
    for (const QTabBar::ButtonPosition side : {QTabBar::LeftSide, QTabBar::RightSide}) {
        if (QWidget *button = m_tabBar->tabButton(tab, side)) // the style chooses the side
            button->setAccessibleName(tr("Close"));
    }
}

/// Hides the signal of the base class, which passes on the titles of all views.
void TabbedViewManager::viewTitleChanged(View *view)
{
    QString text = view->title();
    m_tabBar->setTabText(tabOf(view), text.replace(u'&', u"&&"_s));
    m_tabBar->setTabToolTip(tabOf(view), QDir::toNativeSeparators(view->document()->filename()));
}

int TabbedViewManager::tabOf(View *view) const
{
    const int id = m_tabs.value(view, -1);
    for (int tab = 0; tab < m_tabBar->count(); ++tab) {
        if (m_tabBar->tabData(tab).toInt() == id)
            return tab;
    }
    return -1;
}

void TabbedViewManager::tabClicked(int id)
{
    View *view = m_tabs.key(id);
    if (!view)
        return;
    m_stack->setCurrentWidget(view);
    view->setFocus();
    Q_EMIT viewActivated(view);
}

void TabbedViewManager::viewClosed(View *view)
{
    {
        const QSignalBlocker quiet(m_tabBar);
        m_removedTab = tabOf(view);
        m_replacePending = true;
        m_tabBar->removeTab(m_removedTab);
        m_stack->removeWidget(view);
        m_tabs.remove(view);
    }
    m_closeButton->setEnabled(m_tabBar->count() > 0);
    m_closeButton->setVisible(m_tabBar->count() > 0);
    tabClicked(m_tabBar->tabData(m_tabBar->currentIndex()).toInt());
    ViewManager::viewClosed(view);
}

void TabbedViewManager::activateView(View *view, bool setFocus)
{
    const QSignalBlocker quiet(m_tabBar);
    m_tabBar->setCurrentIndex(tabOf(view));
    m_stack->setCurrentWidget(view);
    if (setFocus)
        view->setFocus();
    Q_EMIT viewActivated(view);
}

QList<View *> TabbedViewManager::arrangedViews() const
{
    QList<View *> arranged;
    for (int tab = 0; tab < m_tabBar->count(); ++tab)
        arranged.append(m_tabs.key(m_tabBar->tabData(tab).toInt()));
    return arranged;
}

View *TabbedViewManager::currentView()
{
    return static_cast<View *>(m_stack->currentWidget());
}

void TabbedViewManager::closeButtonClicked()
{
    VARNEL_ASSERT(currentView());
    closeCurrentView();
}

/// A view that may ask whether to save its document is shown before. There is no tab -1, beside the tabs.
void TabbedViewManager::closeTab(int tab)
{
    View *view = m_tabs.key(m_tabBar->tabData(tab).toInt());
    if (!view)
        return;
    if (view->document()->modified())
        activateView(view, true);
    view->close();
}

/// A press on the tab of the current view changes no tab, but activates the view.
bool TabbedViewManager::eventFilter(QObject *object, QEvent *event)
{
    if (object == m_tabBar && event->type() == QEvent::MouseButtonRelease) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        if (mouse->button() == Qt::MiddleButton)
            closeTab(m_tabBar->tabAt(mouse->position().toPoint()));
    }
    if (object == m_tabBar && event->type() == QEvent::MouseButtonPress) {
        if (View *view = currentView()) {
            view->setFocus();
            Q_EMIT viewActivated(view);
        }
    }
    return ViewManager::eventFilter(object, event);
}
