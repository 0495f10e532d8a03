#pragma once
#include "unknown.h"
#include <QString>

/// One command of a plug-in in the host's "Build" or "Debug" menu.
struct ExtensionCommand
{
    QString id;        ///< the argument of execute()
    QString text;      ///< the menu text, translated
    QString whatsThis; ///< the help text, translated
    bool enabled = true;
    bool checked = false;
};

/// Optional interface of either environment: commands at the end of the "Build" menu (build) or the "Debug" menu
/// (execution).
class IExtensionCommands : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xd17144b7, 0xc14d, 0x4e92, 0xa7, 0xe7, 0xb8, 0x12, 0x62, 0xcc, 0x5a, 0x4a};

    /// The commands in menu order. Called each time the menu opens, and again before a command is executed by its
    /// position, so the order must not change in between.
    virtual QList<ExtensionCommand> commands() = 0;
    virtual void execute(const QString &id) = 0; ///< Called for enabled commands only.

protected:
    ~IExtensionCommands() = default;
};
