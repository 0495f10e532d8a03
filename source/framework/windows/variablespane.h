#pragma once
#include "iexecutionenvironment.h"
#include "ivariables.h"
#include "querypane.h"
#include <QHash>
#include <QPersistentModelIndex>
#include <QSet>
class ListViewItem;
class QComboBox;
class QMenu;
class QTreeWidgetItem;
class VariableList;

/// The variables of the chosen function, as a tree of their members. Values that have changed are bold, and can be
/// edited.
///
/// Members are read when their row is opened, in portions; the last row of an unfinished list reads the next one. Rows
/// and formats are remembered by their path of names, so that they survive a step through another function.
class VariablesPane : public QueryPane
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text)
public:
    static constexpr int Portion = 100; ///< rows that are read at a time

    explicit VariablesPane(QWidget *parent = nullptr);

    void setEnvironment(IExecutionEnvironment *environment); ///< Null for none.
    void releaseEnvironment() override;
    void setPaused(bool paused) override;
    [[nodiscard]] QString text() const; ///< Lines "name = value"; those of members are indented.

protected:
    void read() override;
    void clear() override;

private:
    /// What a change of the text of a row means.
    enum class Marks {
        New,     ///< the program has run: the value has changed
        Further, ///< it is still paused: marks of other rows stay
        Kept     ///< the same value in another form
    };

    void createMenu();
    void fillFormatMenu(QMenu *menu, bool all);
    void showMenu(ListViewItem *row, const QPoint &point);
    void setFormat(bool all, int format);
    [[nodiscard]] int formatOf(const QTreeWidgetItem *row) const;
    void requestScope(int first, int count);
    void requestMembers(const QTreeWidgetItem *row, int first, int count);
    void requestValue(const QTreeWidgetItem *row);
    void showVariables(const QPersistentModelIndex &parent, int first, const QList<VariableInfo> &variables, bool more);
    void showVariable(QTreeWidgetItem *parent, int index, const VariableInfo &variable);
    QTreeWidgetItem *rowFor(QTreeWidgetItem *parent, int index, const VariableInfo &variable);
    void setMembers(QTreeWidgetItem *row, int children);
    void showValue(QTreeWidgetItem *row, const VariableInfo &variable);
    void addMoreRow(QTreeWidgetItem *parent, int first);
    void opened(QTreeWidgetItem *row);
    void activate(const QTreeWidgetItem *row);
    void assign(ListViewItem *row, const QString &text);
    void rememberValues();
    void forget();
    [[nodiscard]] QTreeWidgetItem *itemOf(const QPersistentModelIndex &index) const; ///< The root for an invalid one.

    VariableList *const m_variables;
    QComboBox *const m_scope;
    QMenu *m_menu = nullptr;
    InterfacePtr<IExecutionEnvironment> m_environment; ///< null without one
    InterfacePtr<IVariables> m_interface;              ///< null if the environment does not offer it
    StackPlace m_place;                                ///< whose variables are shown
    int m_formats = 0;                                 ///< that the environment offers
    int m_format = IVariables::Natural;                ///< of rows without one of their own
    QHash<QString, int> m_ownFormats;                  ///< by path
    QSet<QString> m_open;                              ///< paths of the rows that the user has opened
    QHash<QString, QString> m_lastValues;              ///< by variableKey(), when the program went on
    Marks m_marks = Marks::New;                        ///< of the values that are being read
    Marks m_nextMarks = Marks::New;                    ///< of the next call of read()
    int m_readings = 0;                                ///< number of calls of read()
};
