#include <cstdlib>
#include <exception>
#include <iostream>
#include <stdexcept>

#include "Arguments.h"
#include "Inspection.h"
#include "Log.h"
#include "Make.h"
#include "Preview.h"
#include "Trial.h"

namespace
{

using PEBBLETON::Arguments;
using PEBBLETON::Command;
using PEBBLETON::FindingsC;
using PEBBLETON::InspectionC;

constexpr int wrongUsage = 2;

int report(const FindingsC& iFindings, bool iStrict)
{
    iFindings.PrintAll(std::cout);
    return iFindings.HasErrors() || (iStrict && iFindings.HasWarnings()) ? EXIT_FAILURE : EXIT_SUCCESS;
}

int check(const Arguments& iArguments)
{
    const InspectionC inspection(iArguments.input, iArguments.screen);
    return report(inspection.GetFindings(), iArguments.strict);
}

int make(const Arguments& iArguments)
{
    FindingsC findings(iArguments.input);
    const std::optional<std::string> theme = PEBBLETON::makeTheme(iArguments, findings);
    if (!theme) {
        return report(findings, false);
    }
    const InspectionC inspection(*theme, {}, iArguments.output);
    return report(inspection.GetFindings(), false);
}

int preview(const Arguments& iArguments)
{
    const InspectionC inspection(iArguments.input, iArguments.screen);
    inspection.GetFindings().PrintErrors(std::cerr);
    PEBBLETON::writePreview(inspection, iArguments);
    return inspection.GetFindings().HasErrors() ? EXIT_FAILURE : EXIT_SUCCESS;
}

int tryOut(const Arguments& iArguments)
{
    const InspectionC inspection(iArguments.input, iArguments.screen);
    inspection.GetFindings().PrintErrors(std::cerr);
    return PEBBLETON::tryTheme(inspection) ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run(const Arguments& iArguments)
{
    switch (iArguments.command) {
    case Command::Help:
        std::cout << PEBBLETON::describeUsage();
        return EXIT_SUCCESS;
    case Command::Version:
        std::cout << "pebbleton-theme " PEBBLETON_VERSION "\n";
        return EXIT_SUCCESS;
    case Command::Check:
        return check(iArguments);
    case Command::Make:
        return make(iArguments);
    case Command::Preview:
        return preview(iArguments);
    case Command::Try:
        return tryOut(iArguments);
    }
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char* argv[])
{
    // What the menu would log of a theme, the findings say.
    PEBBLETON::SetLogLevel(LOG_EMERG);
    try {
        const int status = run(PEBBLETON::readArguments(argc, argv));
        if (!std::cout.flush()) {
            throw std::runtime_error("standard output cannot be written");
        }
        return status;
    } catch (const PEBBLETON::UsageErrorC& error) {
        std::cerr << "pebbleton-theme: " << error.what() << "; see pebbleton-theme --help\n";
        return wrongUsage;
    } catch (const std::exception& error) {
        std::cerr << "pebbleton-theme: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
