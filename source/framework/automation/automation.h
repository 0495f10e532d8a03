#pragma once
#include <QtGlobal>
class ObjectModel;
class QSettings;
class QWidget;

/// Lets test drivers operate @p window and run the actions that @p model knows; both exist as long as the server. It is
/// a child of the window, and listens on @p port of the address that the settings name.
void startAutomation(quint16 port, QWidget *window, ObjectModel &model, const QSettings &settings);
