#include "nativeterminal.h"
#include <fcntl.h>
#include <pty.h>
#include <QSocketNotifier>
#include <termios.h>
#include <unistd.h>

NativeTerminal::NativeTerminal(QObject *parent) : QObject(parent)
{
    char name[128] = {};
    if (::openpty(&m_ours, &m_programs, name, nullptr, nullptr) != 0)
        return;
    ::fcntl(m_ours, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_programs, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_ours, F_SETFL, O_NONBLOCK);
    termios settings{};
    ::tcgetattr(m_programs, &settings);
    settings.c_oflag &= ~tcflag_t(OPOST); // no conversion of line ends
    settings.c_lflag &= ~tcflag_t(ECHO);  // the target console shows the input itself
    ::tcsetattr(m_programs, TCSANOW, &settings);
    m_name = QString::fromLocal8Bit(name);
    auto *notifier = new QSocketNotifier(m_ours, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &NativeTerminal::readAvailable);
}

NativeTerminal::~NativeTerminal()
{
    for (const int end : {m_ours, m_programs}) {
        if (end >= 0)
            ::close(end);
    }
}

void NativeTerminal::write(const QByteArray &bytes)
{
    if (m_ours < 0)
        return;
    const ssize_t written = ::write(m_ours, bytes.constData(), size_t(bytes.size()));
    if (written != bytes.size())
        Q_EMIT output(tr("[part of the input was lost]\n").toUtf8());
}

bool NativeTerminal::readAvailable()
{
    char buffer[4096];
    const ssize_t size = ::read(m_ours, buffer, sizeof buffer);
    if (size > 0)
        Q_EMIT output(QByteArray(buffer, qsizetype(size)));
    return size > 0;
}
