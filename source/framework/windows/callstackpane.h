#pragma once
#include "icallstack.h"
#include "iexecutionenvironment.h"
#include "querypane.h"
#include <optional>
class ListViewItem;
class QTreeWidgetItem;

/// The threads of a paused program and their function calls, the innermost first. A program with one thread has only
/// rows of functions. The chosen thread and function, to which all windows refer, are bold.
///
/// The functions of other threads are read when their row is opened. Long stacks are read in portions: the last row of
/// an unfinished list reads the next one.
class CallStackPane : public QueryPane
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    static constexpr int Portion = 100; ///< functions that are read at a time

    explicit CallStackPane(QWidget *parent = nullptr);

    void setEnvironment(IExecutionEnvironment *environment); ///< Null for none.
    void releaseEnvironment() override;
    void setPaused(bool paused) override;
    /// The rows: "0 main main.c, 12" for a function, indented below "2 blink (waits)" for a thread.
    [[nodiscard]] QString text() const;

protected:
    void read() override;
    void clear() override;

private:
    void showThreads(const QList<ThreadInfo> &threads);
    void showThreadRows(const QList<ThreadInfo> &threads);
    void showThread(int index, const ThreadInfo &thread, bool opens);
    void opened(ListViewItem *row);
    void requestFrames(qint64 thread, int first, int count);
    void showFrames(qint64 thread, int first, const QList<StackFrame> &frames, bool more);
    void showFrame(QTreeWidgetItem *parent, qint64 thread, int index, const StackFrame &frame);
    void showFailure(qint64 thread, int first, const QString &reason);
    QTreeWidgetItem *addRow(QTreeWidgetItem *parent, int kind, const StackPlace &place, const QString &text);
    void activate(const QTreeWidgetItem *row);
    void choose(const StackPlace &place);
    void copy() const;
    [[nodiscard]] QTreeWidgetItem *parentOf(qint64 thread) const; ///< Null if the thread has no row any more.

    InterfacePtr<IExecutionEnvironment> m_environment; ///< null without one
    InterfacePtr<ICallStack> m_callStack;              ///< null if the environment does not offer it
    std::optional<StackPlace> m_current;               ///< the chosen place
    bool m_severalThreads = false;
    bool m_selectsCurrent = true; ///< the row of the chosen place becomes the selected one when it is read
};
