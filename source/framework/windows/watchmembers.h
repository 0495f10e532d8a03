#pragma once
#include "iexecutionenvironment.h"
#include "ivariables.h"
#include <QHash>
#include <QObject>
#include <QPersistentModelIndex>
class ListView;
class ListViewItem;

/// The rows below watches: members of structures and elements of arrays, from an environment that offers IVariables.
/// They are read when a row is opened, in portions; the last row of an unfinished list reads the next one. A watch
/// whose value is and stays a decimal number is asked for members once only.
///
/// The environment answers later. Answers to questions of an older refresh() are ignored.
class WatchMembers : public QObject
{
    Q_OBJECT
public:
    static constexpr int Portion = 100; ///< rows that are read at a time

    /// The top rows of @p list are watches, and the last one is no watch. It outlives this object.
    explicit WatchMembers(ListView *list);
    ~WatchMembers() override;

    void setEnvironment(IExecutionEnvironment *environment); ///< Null for none.
    [[nodiscard]] bool areOffered() const { return m_variables != nullptr; }
    void refresh();                    ///< Reads again which watches have members, and the members of open rows.
    void refresh(ListViewItem *watch); ///< Of one watch, whose expression is new.
    void clicked(ListViewItem *row, int column); ///< A row below a watch.
    /// The user has typed a value for a row below a watch.
    void assign(ListViewItem *row);

Q_SIGNALS:
    void written();                      ///< A value that the user has typed has been assigned, or was refused.
    void refused(const QString &reason); ///< Before that.

private:
    class Replies;
    enum class Kind { Value, Children, Assignment };
    struct Question
    {
        Kind kind = Kind::Value;
        QPersistentModelIndex row; ///< invalid if the row is gone
        int first = 0;
    };

    [[nodiscard]] DebugRequest ask(Kind kind, const ListViewItem *row, int first = 0);
    void requestChildren(ListViewItem *row, int first, int count);
    void opened(ListViewItem *row);
    [[nodiscard]] ListViewItem *rowOf(const DebugRequest &request, Question *question);
    void showValue(const DebugRequest &request, const VariableInfo &info);
    void showChildren(const DebugRequest &request, const QList<VariableInfo> &children, bool more);
    void showFailure(const DebugRequest &request, const QString &reason);
    void showChild(ListViewItem *parent, int index, const VariableInfo &info);
    void setOpenable(ListViewItem *row, int children);
    [[nodiscard]] static QString expressionOf(const ListViewItem *row);
    [[nodiscard]] static int formatOf(const ListViewItem *row);

    ListView *const m_list;
    InterfacePtr<IVariables> m_variables; ///< null if the environment does not offer it
    InterfacePtr<Replies> m_replies;
    QHash<quint64, Question> m_questions; ///< without an answer, by number
    quint64 m_lastQuestion = 0;
    quint64 m_generation = 0; ///< of the refreshes
};

/// The format that the letter behind a watch selects.
[[nodiscard]] int watchFormat(const QString &watch);
