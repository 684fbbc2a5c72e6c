#ifndef PEBBLETON_OPTIONS_H
#define PEBBLETON_OPTIONS_H

#include <string>

namespace PEBBLETON
{

// Finds the path of the theme file: on the command line, else in the environment, else the default.
//
// True: configurationPath holds it, and the program is to go on. False: the help was asked for and stands on standard
// output, or the command line or the environment was rejected and the log says why; configurationPath is unchanged.
bool ParseOptions(int argc, const char* const argv[], std::string& configurationPath);

} // namespace PEBBLETON

#endif
