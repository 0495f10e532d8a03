#pragma once
#include <memory>
#include <QWidget>
class QComboBox;
namespace Ui {
class DebugOptionsPageBase;
}

/// The page of the options dialog with the action for each debug event, in the order run, pause, restart, wake-up and
/// breakpoint hit.
class DebugOptionsPage : public QWidget
{
    Q_OBJECT
public:
    /// @p texts are the choices for each event, @p actions the number of the one that holds.
    DebugOptionsPage(const QList<QStringList> &texts, const QList<int> &actions, QWidget *parent, const QString &name);
    ~DebugOptionsPage() override;

    /// The number of each choice. An action that is not among the choices stays until the user chooses one.
    [[nodiscard]] QList<int> actions() const;

private:
    [[nodiscard]] QList<QComboBox *> combos() const;

    const std::unique_ptr<Ui::DebugOptionsPageBase> m_ui;
    const QList<int> m_original;
};
