#pragma once

/// How often QApplication::beep() was called; the tests have a beep() of their own.
[[nodiscard]] int &beepCount();
