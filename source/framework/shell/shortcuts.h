#pragma once
#include "shortcutkeys.h"
#include <functional>
#include <QObject>
class QAction;
class QSettings;
class QWidget;

/// Commands that are no actions, such as those of plug-ins, but can have keys. Their names begin with the prefix.
struct OfferedCommands
{
    static constexpr QLatin1StringView Prefix{"plugin_"};

    std::function<QList<ShortcutCommand>()> commands = {}; ///< those that exist now
    std::function<void(const QString &name)> execute = {}; ///< if the command exists when its keys are pressed
};

/// The keys of all commands of a window: those of its actions, changed by a set and by the user. The choice is stored
/// in the settings below "/Shortcuts".
class Shortcuts : public QObject
{
    Q_OBJECT
public:
    /// Both outlive this object; without a window there are no commands. @p file declares the sets. Actions that have a
    /// name when they are added to the window later get their keys then.
    Shortcuts(QWidget *window, QSettings &settings, const QString &file, QObject *parent = nullptr);

    void setOffered(const OfferedCommands &offered);
    [[nodiscard]] ShortcutChoices choices() const;
    [[nodiscard]] ShortcutOptions options() const { return m_options; }
    void setOptions(const ShortcutOptions &options); ///< Applies and stores them.

protected:
    /// Keys of the user's and the first stroke of a longer sequence are commands also where an editor would take them.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addOffered(QList<ShortcutCommand> &commands) const;
    void makeOfferedActions();
    void apply(QAction *action);
    void applyAll();
    [[nodiscard]] bool isChangedCommand(const QKeySequence &stroke) const;

    QWidget *const m_window; ///< null if there is none
    QSettings &m_settings;
    QList<KeySet> m_sets;
    ShortcutOptions m_options;
    OfferedCommands m_offered;
};

/// The sets that @p file declares; none if it is missing. A broken file is reported on the warning channel.
[[nodiscard]] QList<KeySet> readKeySets(const QString &file);
[[nodiscard]] ShortcutOptions readShortcutOptions(QSettings &settings);
void writeShortcutOptions(QSettings &settings, const ShortcutOptions &options);
