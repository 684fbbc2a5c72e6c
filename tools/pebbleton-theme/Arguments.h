#ifndef PEBBLETON_ARGUMENTS_H
#define PEBBLETON_ARGUMENTS_H

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "Size.h"
#include "SkinForm.h"

namespace PEBBLETON
{

enum class Command
{
    Help,
    Version,
    Check,
    Make,
    Preview,
    Try
};

// Thrown for a command line that asks for nothing that can be done; what() says why, for the user.
class UsageErrorC : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// What the command line asks for.
struct Arguments {
    Command command;
    std::string input;          // the theme or, for Make, the drawing as it was named; empty for Help and Version
    std::string output;         // Preview: the file to write; Make: the folder
    bool isPage;                // Preview alone: the output is a page, not a picture
    std::optional<Size> screen; // none: the size of the normal skin
    std::optional<std::uint32_t> held; // Preview alone: the code of the push button that is shown held
    bool plain;                        // Preview alone: without outlines
    bool strict;                       // Check alone: a warning counts as an error
    std::string path;                  // Make alone: the folder on the device; empty: the output
    SkinForm skins;                    // Make alone
    std::string pixelFormat;           // Make alone: with SkinForm::Dfiff a name of DirectFB's, else empty
};

// Reads the command line; throws UsageErrorC.
Arguments readArguments(int argc, const char* const argv[]);

// The help text.
std::string describeUsage();

} // namespace PEBBLETON

#endif
