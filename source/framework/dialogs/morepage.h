#pragma once
#include "optionvalues.h"
#include <memory>
#include <QWidget>
namespace Ui {
class MorePageBase;
}

/// The page of the options dialog with the settings that have no other place.
class MorePage : public QWidget
{
    Q_OBJECT
public:
    MorePage(const MoreOptions &options, QWidget *parent, const QString &name);
    ~MorePage() override;

    [[nodiscard]] MoreOptions options() const;
    /// What is wrong with the options that the user has changed, empty if nothing is.
    [[nodiscard]] QString problem() const;
    void showProblem(); ///< Selects the option that problem() is about.

private:
    void chooseVirtualEnvironment();
    void fillAddresses(const std::optional<QString> &current);
    void fillTrust(const MoreOptions &options);
    void forgetSelected();
    void enableForget();
    [[nodiscard]] QStringList directories(bool trusted) const;

    const std::unique_ptr<Ui::MorePageBase> m_ui;
    const QString m_virtualEnvironment;        ///< at first
    QList<std::optional<QString>> m_addresses; ///< as the combo box lists them
};
