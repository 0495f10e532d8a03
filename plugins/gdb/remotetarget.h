#pragma once
#include "target.h"
class DebugServer;
class OpenOcdPort;

/// A debug server for gdb's remote protocol: gdbserver, the server of a debug probe, a simulator. It runs already, or
/// is started and ended with the session. gdb reads no memory while the program runs; OpenOCD is asked itself then.
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

    [[nodiscard]] bool readsDirectly() const override;
    bool readDirectly(quint64 address, int length, QByteArray *bytes) override;
    bool writeDirectly(quint64 address, const QByteArray &bytes) override;
    void readLater(quint64 address, int length, const std::function<void(const QByteArray &bytes)> &done) override;
    void writeLater(quint64 address, const QByteArray &bytes, const std::function<void(bool success)> &done) override;
    [[nodiscard]] int largestAccess() const override { return 1024; } ///< A slow probe needs some 100 ms for it.

    bool readOutput() override;

private:
    void prepareServer();
    bool connectServer(MiConnection *gdb, QString *error);
    void openMemory();
    bool load(MiConnection *gdb, QString *error);
    bool reset(MiConnection *gdb, QString *error);
    bool loads() const;

    QString m_address;
    int m_tclPort;                         ///< of OpenOCD; 0 for none
    std::unique_ptr<DebugServer> m_server; ///< null if the server runs already
    std::unique_ptr<OpenOcdPort> m_memory; ///< null if the server is no OpenOCD
};
