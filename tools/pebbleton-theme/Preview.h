#ifndef PEBBLETON_PREVIEW_H
#define PEBBLETON_PREVIEW_H

#include "Arguments.h"
#include "Inspection.h"

namespace PEBBLETON
{

// Writes the picture or the page that the arguments ask for, as far as there is something to be seen of the theme.
// Throws UsageErrorC when they ask for a button that is not there, std::runtime_error when the file cannot be written.
void writePreview(const InspectionC& iInspection, const Arguments& iArguments);

} // namespace PEBBLETON

#endif
