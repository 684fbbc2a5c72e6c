#ifndef PEBBLETON_CONVERTER_H
#define PEBBLETON_CONVERTER_H

#include <string>
#include <vector>

namespace PEBBLETON
{

// Runs a program that reads iInput, a file, on standard input and writes its result to standard output, which is
// returned. iWords[0] is looked for in PATH; iPackage is Debian's package with it. Throws std::runtime_error with what
// the program said where it fails or is missing.
std::string convert(const std::vector<std::string>& iWords, const std::string& iInput, const std::string& iPackage);

} // namespace PEBBLETON

#endif
