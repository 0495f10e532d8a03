#pragma once
#include "target.h"
class QemuMachine;

/// A board emulated by a QEMU process, which is started again for each restart: a reset would not clear all state.
class QemuTarget : public Target
{
    Q_OBJECT
public:
    QemuTarget(const TargetOptions &options, const Program &program);
    ~QemuTarget() override;

    [[nodiscard]] QString title() const override { return m_options.machine; }
    bool bringUp(QString *error) override;
    bool connectGdb(MiConnection *gdb, bool attachOnly, QString *error) override;
    bool rewind(MiConnection *gdb, QString *error) override;
    [[nodiscard]] QByteArray startCommand(bool toFunction) const override;
    void end(MiConnection *gdb) override;
    [[nodiscard]] bool severalCores() const override { return !m_options.secondImage.isEmpty(); }
    [[nodiscard]] RegionTable regions(MiConnection *gdb) const override;
    [[nodiscard]] bool readsDirectly() const override { return true; }
    bool readDirectly(quint64 address, int length, QByteArray *bytes) override;
    bool writeDirectly(quint64 address, const QByteArray &bytes) override;
    [[nodiscard]] bool canWakeUp() const override;
    void wakeUp() override;
    void writeInput(const QByteArray &bytes) override;
    bool readOutput() override;
    [[nodiscard]] bool isEmulated() const override { return true; }
    [[nodiscard]] bool endsWithConnection() const override { return true; }
    [[nodiscard]] qint64 processId() const;

private:
    bool connectSecondCore(MiConnection *gdb, QString *error);

    std::unique_ptr<QemuMachine> m_machine;
};
