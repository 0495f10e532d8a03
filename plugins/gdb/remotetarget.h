#pragma once
#include "target.h"
class DebugServer;

/// A debug server for gdb's remote protocol: gdbserver, the server of a debug probe, a simulator. It runs already, or
/// is started and ended with the session.
class RemoteTarget : public Target
{
    Q_OBJECT
public:
    RemoteTarget(const TargetOptions &options, const Program &program);
    ~RemoteTarget() override;

    [[nodiscard]] QString title() const override { return m_address; }
    bool bringUp(QString *error) override;
    bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) override;
    [[nodiscard]] bool canRewind(QString *reason) const override;
    bool rewind(MiConnection *gdb, QString *error) override;
    void end(MiConnection *gdb) override;
    [[nodiscard]] RegionTable regions(MiConnection *gdb) const override;
    [[nodiscard]] bool endsWithConnection() const override { return m_server != nullptr; }
    [[nodiscard]] bool isPausedToEnd() const override { return true; }

    bool readOutput() override;

private:
    void prepareServer();
    bool connectServer(MiConnection *gdb, QString *error);
    bool load(MiConnection *gdb, QString *error);
    bool reset(MiConnection *gdb, QString *error);
    bool loads() const;

    QString m_address;
    std::unique_ptr<DebugServer> m_server; ///< null if the server runs already
};
