#pragma once
#include <QPointer>
#include <QWidget>
class GdbSession;
class MiValue;
class QComboBox;
class QTreeWidget;
class QTreeWidgetItem;
struct MiRecord;

/// The call stack, innermost function first, and the thread or core that it belongs to. A double click selects the
/// frame for expressions, variables and registers.
class CallStackView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    explicit CallStackView(GdbSession *session, QWidget *parent = nullptr);

    [[nodiscard]] QString text() const; ///< one line per function: "0 main main.c, 12"

protected:
    void showEvent(QShowEvent *event) override;

private:
    void update();
    void showThreads(const MiRecord &answer);
    void showFrames(const MiRecord &answer);
    void selectFrame(const QTreeWidgetItem *item);
    void selectThread(int index);

    QPointer<GdbSession> m_session;
    QComboBox *m_threads;
    QTreeWidget *m_frames;
};

/// A frame as a row: level, function or address, file and line.
[[nodiscard]] QStringList frameColumns(const MiValue &frame);
