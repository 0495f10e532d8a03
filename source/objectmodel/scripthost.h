#pragma once
#include "windowservices.h"
class EventHandlers;

/// What scripts reach of the main window: the services of its commands, and the event handlers.
class ScriptHost : public WindowServices
{
public:
    [[nodiscard]] virtual EventHandlers &eventHandlers() = 0;

protected:
    ~ScriptHost() = default;
};
