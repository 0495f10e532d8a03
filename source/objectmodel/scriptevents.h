#pragma once
#include <chrono>

/// Handles events for @p time, waiting for further ones; those that wait already if @p time is 0. Meanwhile threads of
/// the script get their turn. Raises what interrupts the script.
void handleEvents(std::chrono::milliseconds time);
