#pragma once
#include <QPointer>
#include <QWidget>
class GdbSession;
class LocalsTree;
class QTreeWidgetItem;
struct MiRecord;

/// The parameters and variables of the selected frame. Variables with members can be expanded, values can be edited,
/// and changed values are bold.
class LocalsView : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    explicit LocalsView(GdbSession *session, QWidget *parent = nullptr);

    [[nodiscard]] QString
    text() const; ///< one line per expanded row: "name = value", members indented below their variable

protected:
    void showEvent(QShowEvent *event) override;

private:
    void update();
    void showVariables(const MiRecord &answer);
    void open(QTreeWidgetItem *item);
    void showMembers(const QString &path, const MiRecord &answer);
    void assign(QTreeWidgetItem *item, int column);
    QTreeWidgetItem *addRow(QTreeWidgetItem *parent, const QString &name, const QString &value,
                            const QString &expression, bool opens);
    QTreeWidgetItem *itemOf(const QString &path) const;

    QPointer<GdbSession> m_session;
    LocalsTree *m_tree;
    QHash<QString, QString> m_values; ///< by path, at the last stop
    QStringList m_open;               ///< paths of the expanded rows
    QStringList m_variables;          ///< variable objects in gdb, to be deleted at the next stop
};
