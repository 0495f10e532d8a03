#pragma once
#include <QtGlobal>
class QSettings;
class QWidget;
class UiConfig;

/// Lets test drivers operate @p window and the actions of @p ui, which both live as long as the server. It is a child
/// of the window, and listens on @p port of the address that the settings name.
void startAutomation(quint16 port, QWidget *window, const UiConfig &ui, const QSettings &settings);
