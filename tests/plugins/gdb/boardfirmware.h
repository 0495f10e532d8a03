#pragma once
#include "livesession.h"

/// The firmware with which tests run an emulated board, and places in its source.
class BoardFirmware
{
protected:
    Programs m_programs;
    QString m_image; ///< empty until it is built

    [[nodiscard]] bool build()
    {
        m_image = m_programs.firmware(u"firmware.elf"_s);
        return !m_image.isEmpty();
    }
    [[nodiscard]] QString option(const QString &more = {}) const
    {
        return u"qemu:mps2-an385;image="_s + m_image + more;
    }
    [[nodiscard]] static int line(const QString &text) { return Programs::lineOf(u"firmware.c"_s, text); }
    [[nodiscard]] static QString at(const QString &text) { return u"firmware.c, %1"_s.arg(line(text)); }
    [[nodiscard]] static QString atMain() { return u"firmware.c, %1"_s.arg(line(u"UART_BAUDDIV = 16"_s) - 1); }
    [[nodiscard]] static QString file() { return Programs::source(u"firmware.c"_s); }
};
