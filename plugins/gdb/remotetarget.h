#pragma once
#include "target.h"

/// A running debug server for gdb's remote protocol: gdbserver, the server of a debug probe, a simulator.
class RemoteTarget : public Target
{
    Q_OBJECT
public:
    RemoteTarget(const TargetOptions &options, const Program &program);

    [[nodiscard]] QString title() const override { return m_options.address; }
    bool bringUp(QString *error) override;
    bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) override;
    bool rewind(MiConnection *gdb, QString *error) override;
    void end(MiConnection *gdb) override;
    [[nodiscard]] RegionTable regions(MiConnection *gdb) const override;

private:
    bool load(MiConnection *gdb, QString *error);
    bool reset(MiConnection *gdb, QString *error);
    bool loads() const;
};
