#ifndef PEBBLETON_TRIAL_H
#define PEBBLETON_TRIAL_H

#include "Inspection.h"

namespace PEBBLETON
{

// Runs the menu, the pebbleton in PATH, with the theme in a window, and says on standard output how it ended. True: a
// button fired or the window was closed; false: the menu failed. Throws std::runtime_error when there can be no window.
bool tryTheme(const InspectionC& iInspection);

} // namespace PEBBLETON

#endif
