#include "TouchOptions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <iostream>
#include <iterator>
#include <system_error>

#include <boost/program_options.hpp>

#include "Log.h"
#include "Report.h"

namespace PEBBLETON
{

namespace
{

namespace options = boost::program_options;

options::options_description describeOptions()
{
    options::options_description description("Options");
    auto add = description.add_options();
    const auto text = [](const char* iName) { return options::value<std::string>()->value_name(iName); };
    add("help,h", "Print this and end");
    add("version", "Print the version and end");
    add("device", text("PATH|NAME"), "The panel, by its path or its exact name");
    add("screen", text("WxH"), "The screen's size in pixels, instead of that of /dev/fb0 or of the display");
    add("wait", text("SECONDS"), "How long to wait for a display that is not there yet, 60 if not given");
    add("range", text("X0:X1:Y0:Y1"), "What the panel reports at its edges, instead of what it says that it does");
    add("inverted-x", "The panel's x axis runs backwards");
    add("inverted-y", "The panel's y axis runs backwards");
    add("swapped-x-y", "The panel's axes are exchanged, after they are inverted");
    add("other-devices", "Let DirectFB open all input devices, not only the panel that this program makes");
    add("print", "Write each touch and its pixel to standard error");
    return description;
}

// Whether a word is an option whose value is the next word.
bool takesNext(const options::options_description& iDescription, const std::string& iWord)
{
    if (iWord.rfind("--", 0) != 0) {
        return false;
    }
    const options::option_description* option = iDescription.find_nothrow(iWord.substr(2), true);
    return option != nullptr && option->semantic()->min_tokens() > 0;
}

// Where the command begins: after the first "--", or at the first word that belongs to no option.
int findCommand(const options::options_description& iDescription, int argc, char* argv[], int& ioOptionsEnd)
{
    const auto isOption = [&](int iWord) {
        return iWord < argc && argv[iWord][0] == '-' && argv[iWord][1] != '\0' && std::strcmp(argv[iWord], "--") != 0;
    };
    int word = 1;
    while (isOption(word)) {
        // A value does not begin with two dashes: it would be the next option, or the end of them.
        const bool hasNext = word + 1 < argc && std::strncmp(argv[word + 1], "--", 2) != 0;
        word += hasNext && takesNext(iDescription, argv[word]) ? 2 : 1;
    }
    ioOptionsEnd = word < argc ? word : argc;
    return word < argc && std::strcmp(argv[word], "--") == 0 ? word + 1 : ioOptionsEnd;
}

// Reads so many numbers with the separator between them, and nothing else.
template <std::size_t Count>
bool readNumbers(const std::string& iText, char iSeparator, int (&ioNumbers)[Count])
{
    const char* next = iText.data();
    const char* const end = next + iText.size();
    for (int& number : ioNumbers) {
        if (&number != ioNumbers && (next == end || *next++ != iSeparator)) {
            return false;
        }
        const auto [after, error] = std::from_chars(next, end, number);
        if (error != std::errc()) {
            return false;
        }
        next = after;
    }
    return next == end;
}

ScreenSize toScreen(const std::string& iText)
{
    int pixels[2] = {};
    const auto isSize = [](int iPixels) { return iPixels >= 1 && iPixels <= mostPixels; };
    if (!readNumbers(iText, 'x', pixels) || !std::all_of(std::begin(pixels), std::end(pixels), isSize)) {
        throw options::error("--screen takes width and height in pixels, such as 800x480, not " + iText);
    }
    return {pixels[0], pixels[1]};
}

PanelRange toRange(const std::string& iText)
{
    int edges[4] = {};
    if (!readNumbers(iText, ':', edges) || edges[0] == edges[1] || edges[2] == edges[3]) {
        throw options::error("--range takes what the panel reports at its left, right, upper and lower edge, such as "
                             "0:4095:0:4095, not " +
                             iText);
    }
    return {{edges[0], edges[1]}, {edges[2], edges[3]}};
}

std::chrono::seconds toSeconds(const std::string& iText)
{
    int seconds[1] = {};
    if (!readNumbers(iText, ' ', seconds) || seconds[0] < 0) {
        throw options::error("--wait takes a number of seconds, such as 60, not " + iText);
    }
    return std::chrono::seconds(seconds[0]);
}

TouchOptions toOptions(const options::variables_map& iValues)
{
    TouchOptions chosen;
    const auto isGiven = [&](const char* iName) { return iValues.count(iName) != 0; };
    chosen.help = isGiven("help");
    chosen.version = isGiven("version");
    chosen.orientation = {isGiven("inverted-x"), isGiven("inverted-y"), isGiven("swapped-x-y")};
    chosen.otherDevices = isGiven("other-devices");
    chosen.print = isGiven("print");
    if (isGiven("device")) {
        chosen.device = iValues["device"].as<std::string>();
        if (chosen.device.empty() || chosen.device.rfind("--", 0) == 0) {
            throw options::error("--device takes the path or the name of a panel");
        }
    }
    if (isGiven("screen")) {
        chosen.screen = toScreen(iValues["screen"].as<std::string>());
    }
    if (isGiven("wait")) {
        chosen.wait = toSeconds(iValues["wait"].as<std::string>());
    }
    if (isGiven("range")) {
        chosen.range = toRange(iValues["range"].as<std::string>());
    }
    return chosen;
}

} // namespace

bool ParseTouchOptions(int argc, char* argv[], TouchOptions& ioOptions)
{
    try {
        const options::options_description description = describeOptions();
        int optionsEnd = 0;
        const int command = findCommand(description, argc, argv, optionsEnd);
        options::variables_map values;
        options::store(options::parse_command_line(optionsEnd, argv, description), values);
        ioOptions = toOptions(values);
        ioOptions.command = argv + command;
        if (command >= argc && !ioOptions.help && !ioOptions.version) {
            throw options::error("no command is given to be run");
        }
        return true;
    } catch (const options::error& error) {
        Report(LOG_ERR, "%s; see pebbleton-touch --help", error.what());
        return false;
    }
}

bool PrintTouchHelp()
{
    std::cout << "Usage: pebbleton-touch [OPTION...] [--] COMMAND [ARGUMENT...]\n"
                 "Runs a command with a touch panel that reports every touch whole and in pixels.\n\n"
              << describeOptions() << std::flush;
    return std::cout.good();
}

bool printTouchVersion()
{
    std::cout << "pebbleton-touch " PEBBLETON_VERSION "\n" << std::flush;
    return std::cout.good();
}

} // namespace PEBBLETON
