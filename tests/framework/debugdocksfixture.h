#pragma once
#include "debugcontents.h"
#include "debugfixture.h"
#include "debugwindows.h"
#include "dockwindow.h"
#include <QMainWindow>
#include <QMenu>

/// The debugger's docks in a window, connected with the real control of sessions.
class DebugDocksFixture : protected DebugFixture
{
protected:
    void setUp()
    {
        DebugFixture::setUp();
        m_mainWindow = std::make_unique<QMainWindow>();
        auto *menu = new QMenu(m_window.get());
        menu->setObjectName(QStringLiteral("debugWindowsMenu"));
        m_windows = std::make_unique<DebugWindows>(*m_activity, static_cast<WindowServices &>(*this));
        addDebugContents(*m_windows, *m_activity);
        QObject::connect(m_control.get(), &DebugControl::updateDataWindows, m_windows.get(), &DebugWindows::updateData);
        QObject::connect(m_control.get(), &DebugControl::updateRegisterWindow, m_windows.get(),
                         &DebugWindows::updateRegisters);
        QObject::connect(m_windows.get(), &DebugWindows::placeChosen, m_control.get(), &DebugControl::showPlace);
        m_mainWindow->resize(900, 700);
        m_mainWindow->show();
    }

    void tearDown()
    {
        dropWorkspace();
        m_windows.reset();
        m_mainWindow.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        DebugFixture::tearDown();
    }

    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area) override
    {
        auto *dock = new DockWindow(objectName, caption, m_mainWindow.get());
        m_mainWindow->addDockWidget(area, dock);
        return dock;
    }

    /// The program runs, and is paused again.
    void pause()
    {
        m_activity->setState(StateRunning);
        m_activity->setState(StatePaused);
    }

    std::unique_ptr<QMainWindow> m_mainWindow;
    std::unique_ptr<DebugWindows> m_windows;
};
