#pragma once
#include "viewmanager.h"
#include <QMap>
class QStackedWidget;
class QTabBar;
class QToolButton;

/// Shows one view at a time, with tabs for the others above it.
class TabbedViewManager : public ViewManager
{
    Q_OBJECT
public:
    explicit TabbedViewManager(QWidget *parent = nullptr);

    void addView(View *newView, bool activate) override;
    void addViewInPlace(View *newView, bool activate) override;
    [[nodiscard]] View *currentView() override;
    [[nodiscard]] QList<View *> arrangedViews() const override;
    void activateView(View *view, bool setFocus) override;
    void viewClosed(View *view) override;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private Q_SLOTS:
    void viewTitleChanged(View *view);
    void tabClicked(int id);
    void closeButtonClicked();

private:
    void insertView(View *newView, bool activate, int tab);
    void closeTab(int tab);
    void nameCloseButton(int tab);
    [[nodiscard]] int tabOf(View *view) const;

    QTabBar *m_tabBar;
    QToolButton *m_closeButton;
    QStackedWidget *m_stack;
    QMap<View *, int> m_tabs; ///< identifiers: positions change when tabs come and go
    int m_nextId = 1;         ///< never 0, the data of no tab
    bool m_replacePending = false;
    int m_removedTab = 0; ///< the position of the tab that was removed last
};
