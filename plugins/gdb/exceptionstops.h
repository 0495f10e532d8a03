#pragma once
#include <array>
#include <QObject>
#include <QStringList>
class GdbSession;

/// Stops a C++ program where an exception is thrown or caught, and shows that place instead of the run-time library.
class ExceptionStops : public QObject
{
    Q_OBJECT
public:
    explicit ExceptionStops(GdbSession *session, QObject *parent = nullptr);

    /// @p id is "throw" or "catch". The choice stays for later sessions.
    void toggle(const QString &id);
    [[nodiscard]] bool isOn(const QString &id) const;

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    struct Kind
    {
        QString id;
        QString function; ///< of the run-time library, in which the program is stopped
        bool isOn = false;
        int number = 0; ///< of the breakpoint in gdb; 0 if it is not inserted
    };

    Kind *find(const QString &id);
    void arm();
    void insert(Kind *kind);
    void check();

    GdbSession *const m_session;
    std::array<Kind, 2> m_kinds;
    int m_checked = -1; ///< the number of the stop that was looked at last
};
