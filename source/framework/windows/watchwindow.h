#pragma once
#include "debugpane.h"
#include "debugqueries.h"
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include <QSet>
class ListViewItem;
class LiveSwitch;
class PopupMenu;
class ProjectTreeItem;
class WatchListView;
class WatchMembers;

/// Expressions that the user follows, with the values that one execution environment gives for them. The last row is a
/// placeholder for a new expression. A bold expression marks a value that differs from the one before. Members of
/// structures and elements of arrays are rows below their watch.
class WatchWindow : public DebugPane
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(QString changed READ changed)
public:
    explicit WatchWindow(QWidget *parent = nullptr);
    ~WatchWindow() override;

    void setEnvironment(IExecutionEnvironment *environment); ///< Null for none. All watches are removed.
    void releaseEnvironment() override { setEnvironment(nullptr); }
    void setPaused(bool paused) override;
    [[nodiscard]] QStringList watches() const;       ///< The expressions.
    void setWatches(const QStringList &expressions); ///< A hidden pane evaluates them when it appears.
    [[nodiscard]] QString text() const;              ///< "expression = value", a line each; see gridText().
    [[nodiscard]] QString changed() const;           ///< The names of the rows that are marked, a line each.
    [[nodiscard]] bool menuFlag() const { return m_menuFlag; }

public Q_SLOTS:
    void update() override;
    void clicked(ListViewItem *item, const QPoint &point, int column);
    void itemRenamed(ListViewItem *item, int column, const QString &text);
    void contextMenuRequested(ListViewItem *item, const QPoint &point, int column);
    void removeWatch(); ///< Removes the watch of the current row, which may be a member.
    void updateMenu();
    void addItem(const QString &text); ///< Adds a watch.

Q_SIGNALS:
    void watchesChanged(); ///< By the user.

protected:
    void showEvent(QShowEvent *event) override;

private:
    void clear();
    void addPlaceholder();
    [[nodiscard]] bool isPlaceholder(const ListViewItem *item) const;
    [[nodiscard]] bool isBeingTyped(const ListViewItem *item) const;
    void finishPlaceholder(ListViewItem *item);
    void assign(ListViewItem *item);
    bool ask(const QString &expression, QString &value, bool *good = nullptr);
    void request(ListViewItem *item);
    void evaluate(ListViewItem *item);
    static void showValue(ListViewItem *item, const QString &value);
    void evaluateAll();
    void updateIfOutdated();
    bool prepare(const InterfacePtr<ILiveMemory> &live, const QString &expression);
    void prepareLive();
    void readLive();
    template <typename Call>
    void forEachWatch(const Call &call);
    void reportWrite();
    void reportRefusal(const QString &reason);

    WatchListView *const m_list;
    PopupMenu *const m_menu;
    LiveSwitch *const m_live;
    WatchMembers *const m_members;
    InterfacePtr<IExecutionEnvironment> m_environment; ///< null without one
    InterfacePtr<IEvaluationRequests> m_requests;      ///< null if expressions are evaluated at once
    DebugQueries m_queries;
    QSet<QString> m_prepared; ///< expressions: for live reading, with or without success
    int m_removals = 0;       ///< grows when rows are deleted
    bool m_menuFlag = true;   ///< inverted each time the menu is shown
    bool m_outdated = false;  ///< to be updated when it is shown
    bool m_reading = false;   ///< a plug-in is being asked, which may call back
    bool m_reporting = false; ///< other panes are refreshed; this one has its values
};

/// The expression that is assigned to when the user changes the value of @p watch: without the format behind the last
/// comma, as in "counter,x".
[[nodiscard]] QString assignedExpression(const QString &watch);
