#pragma once
#include "target.h"
class NativeTerminal;

/// A program of this computer, started by gdb with its own terminal, or attached to.
class NativeTarget : public Target
{
    Q_OBJECT
public:
    NativeTarget(const TargetOptions &options, const Program &program);
    ~NativeTarget() override;

    [[nodiscard]] QString title() const override;
    bool bringUp(QString *error) override;
    bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) override;
    [[nodiscard]] bool canRewind(QString *reason) const override;
    bool rewind(MiConnection *gdb, QString *error) override;
    [[nodiscard]] QByteArray startCommand(bool toFunction) const override;
    [[nodiscard]] bool isCreatedByStartCommand() const override { return true; }
    void end(MiConnection *gdb) override;
    [[nodiscard]] RegionTable regions(MiConnection *gdb) const override;
    [[nodiscard]] bool readsWhileRunning() const override { return true; }
    [[nodiscard]] bool stopsAtItsEnd() const override { return true; }
    void writeInput(const QByteArray &bytes) override;
    bool readOutput() override;
    [[nodiscard]] bool endsWithConnection() const override { return true; }

private:
    void setEnvironment(MiConnection *gdb) const;

    std::unique_ptr<NativeTerminal> m_terminal;
    bool m_attached = false;
};
