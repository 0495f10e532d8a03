#pragma once
#include "windowservices.h"
class EventHandlers;

/// The part of the main window for scripts: the services of its commands, and the event handlers.
class ScriptHost : public WindowServices
{
public:
    [[nodiscard]] virtual EventHandlers &eventHandlers() = 0;

protected:
    ~ScriptHost() = default;
};
