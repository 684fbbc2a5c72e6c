#ifndef PEBBLETON_PAGE_H
#define PEBBLETON_PAGE_H

#include <string>

#include "Inspection.h"

namespace PEBBLETON
{

// The page in which the menu can be tried in a browser, complete in itself. The size of the screen is known.
std::string makePage(const InspectionC& iInspection);

} // namespace PEBBLETON

#endif
