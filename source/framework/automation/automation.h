#pragma once
#include <QtGlobal>
class QSettings;
class QWidget;
class UiConfig;

/// Lets test drivers operate @p window and the actions of @p ui, which must both outlive the server. It is a child of
/// the window, and listens on @p port of the address in the settings.
void startAutomation(quint16 port, QWidget *window, const UiConfig &ui, const QSettings &settings);
