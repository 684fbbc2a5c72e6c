#include "Arguments.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <limits>
#include <vector>

#include <boost/program_options.hpp>

#include <directfb.h>
#include <directfb_strings.h>

namespace PEBBLETON
{

namespace
{

namespace options = boost::program_options;

// A decimal number without sign, not above iLargest.
std::optional<unsigned long> readNumber(const std::string& iText, unsigned long iLargest)
{
    const bool digits = !iText.empty() && iText.size() <= 10 &&
                        std::all_of(iText.begin(), iText.end(),
                                    [](char iDigit) { return std::isdigit(static_cast<unsigned char>(iDigit)) != 0; });
    if (!digits || std::stoul(iText) > iLargest) {
        return std::nullopt;
    }
    return std::stoul(iText);
}

Size readSize(const std::string& iText)
{
    const std::size_t separator = std::min(iText.find('x'), iText.size());
    const auto width = readNumber(iText.substr(0, separator), largestSide);
    const auto height = readNumber(iText.substr(std::min(separator + 1, iText.size())), largestSide);
    if (width.value_or(0) == 0 || height.value_or(0) == 0) {
        throw UsageErrorC("--screen takes WIDTHxHEIGHT, for example 800x480, not \"" + iText + '"');
    }
    return {static_cast<std::uint32_t>(*width), static_cast<std::uint32_t>(*height)};
}

std::uint32_t readCode(const std::string& iText)
{
    const auto code = readNumber(iText, std::numeric_limits<std::uint32_t>::max());
    if (!code) {
        throw UsageErrorC("--held takes the code of a push button, not \"" + iText + '"');
    }
    return static_cast<std::uint32_t>(*code);
}

Command readCommand(const std::string& iText)
{
    if (iText == "check") {
        return Command::Check;
    }
    if (iText == "make") {
        return Command::Make;
    }
    if (iText == "preview") {
        return Command::Preview;
    }
    if (iText == "try") {
        return Command::Try;
    }
    if (iText == "-h" || iText == "--help") {
        return Command::Help;
    }
    if (iText == "--version") {
        return Command::Version;
    }
    throw UsageErrorC("unknown command \"" + iText + '"');
}

options::options_description describeOptions(Command iCommand)
{
    options::options_description description;
    auto add = description.add_options();
    add("input", options::value<std::string>()->default_value(""));
    if (iCommand == Command::Check || iCommand == Command::Preview) {
        add("screen", options::value<std::string>());
    }
    if (iCommand == Command::Check) {
        add("strict", options::bool_switch());
    }
    if (iCommand == Command::Make || iCommand == Command::Preview) {
        add("output", options::value<std::string>()->default_value(""));
    }
    if (iCommand == Command::Make) {
        add("path", options::value<std::string>());
        add("skins", options::value<std::string>()->default_value("png"));
        add("pixel-format", options::value<std::string>());
    }
    if (iCommand == Command::Preview) {
        add("held", options::value<std::string>());
        add("plain", options::bool_switch());
    }
    return description;
}

options::variables_map parse(Command iCommand, const std::vector<std::string>& iWords)
{
    const options::options_description description = describeOptions(iCommand);
    options::positional_options_description positions;
    positions.add("input", 1);
    const int style = options::command_line_style::unix_style & ~options::command_line_style::allow_guessing;
    options::variables_map values;
    options::store(options::command_line_parser(iWords).options(description).positional(positions).style(style).run(),
                   values);
    options::notify(values);
    return values;
}

bool has(const options::variables_map& iValues, const char* iName)
{
    return iValues.count(iName) != 0 && iValues[iName].as<bool>();
}

std::string get(const options::variables_map& iValues, const char* iName)
{
    return iValues.count(iName) != 0 ? iValues[iName].as<std::string>() : "";
}

bool endsWith(const std::string& iText, const std::string& iEnd)
{
    return iText.size() > iEnd.size() && iText.compare(iText.size() - iEnd.size(), iEnd.size(), iEnd) == 0;
}

void checkPreview(Arguments& ioArguments)
{
    ioArguments.isPage = endsWith(ioArguments.output, ".html");
    if (!ioArguments.isPage && !endsWith(ioArguments.output, ".png")) {
        throw UsageErrorC("preview takes --output and a name that ends in .png or .html");
    }
    if (ioArguments.isPage && (ioArguments.held || ioArguments.plain)) {
        throw UsageErrorC("--held and --plain are for a .png: in a page, buttons are pressed by hand");
    }
}

SkinForm readForm(const std::string& iText)
{
    if (iText == "png") {
        return SkinForm::Png;
    }
    if (iText == "palette") {
        return SkinForm::Palette;
    }
    if (iText == "dfiff") {
        return SkinForm::Dfiff;
    }
    throw UsageErrorC("--skins takes png, palette or dfiff, not \"" + iText + '"');
}

bool isPixelFormat(const std::string& iText)
{
    static const DirectFBPixelFormatNames(names);
    return iText != "UNKNOWN" &&
           std::any_of(std::begin(names), std::end(names), [&](const auto& iFormat) { return iText == iFormat.name; });
}

void readMake(const options::variables_map& iValues, Arguments& ioArguments)
{
    ioArguments.skins = readForm(get(iValues, "skins"));
    ioArguments.path = get(iValues, "path");
    ioArguments.pixelFormat = get(iValues, "pixel-format");
    if (ioArguments.output.empty()) {
        throw UsageErrorC("make takes --output and a folder");
    }
    if (iValues.count("path") != 0 && ioArguments.path[0] != '/') {
        throw UsageErrorC("--path takes a folder on the device, from its root on, not \"" + ioArguments.path + '"');
    }
    if (ioArguments.skins != SkinForm::Dfiff && iValues.count("pixel-format") != 0) {
        throw UsageErrorC("--pixel-format is for --skins dfiff");
    }
    if (ioArguments.skins == SkinForm::Dfiff && !isPixelFormat(ioArguments.pixelFormat)) {
        throw UsageErrorC("--skins dfiff takes --pixel-format and the name that DirectFB has for that of the screen, "
                          "RGB16 or RGB32 as a rule" +
                          (ioArguments.pixelFormat.empty() ? "" : ", not \"" + ioArguments.pixelFormat + '"'));
    }
}

} // namespace

Arguments readArguments(int argc, const char* const argv[])
{
    if (argc < 2) {
        throw UsageErrorC("no command");
    }
    Arguments arguments = {readCommand(argv[1]), {}, {}, false, {}, {}, false, false, {}, SkinForm::Png, {}};
    if (arguments.command == Command::Help || arguments.command == Command::Version) {
        return arguments;
    }
    try {
        const auto values = parse(arguments.command, std::vector<std::string>(argv + 2, argv + argc));
        arguments.input = get(values, "input");
        if (values.count("screen") != 0) {
            arguments.screen = readSize(values["screen"].as<std::string>());
        }
        arguments.output = get(values, "output");
        if (values.count("held") != 0) {
            arguments.held = readCode(values["held"].as<std::string>());
        }
        arguments.plain = has(values, "plain");
        arguments.strict = has(values, "strict");
        if (arguments.command == Command::Make) {
            readMake(values, arguments);
        }
    } catch (const options::error& error) {
        throw UsageErrorC(error.what());
    }
    if (arguments.input.empty()) {
        throw UsageErrorC(arguments.command == Command::Make ? "no drawing" : "no theme");
    }
    if (arguments.command == Command::Preview) {
        checkPreview(arguments);
    }
    return arguments;
}

std::string describeUsage()
{
    return R"(Usage:
  pebbleton-theme make DRAWING.svg --output FOLDER [--path FOLDER] [--skins png|palette]
  pebbleton-theme make DRAWING.svg --output FOLDER [--path FOLDER] --skins dfiff --pixel-format FORMAT
  pebbleton-theme check THEME [--screen WxH] [--strict]
  pebbleton-theme preview THEME --output FILE.png [--screen WxH] [--held CODE] [--plain]
  pebbleton-theme preview THEME --output FILE.html [--screen WxH]
  pebbleton-theme try THEME
  pebbleton-theme --help | --version

make     makes a theme, two skins and their file, of one drawing, and says what check says of it
check    says what is wrong with the theme, one problem a line, and nothing of a sound one
preview  draws the screen with its buttons, or makes a page in which they can be pressed
try      runs the menu with the theme in a window

  --screen WxH    the size of the screen, if it is not that of the normal skin
  --strict        let a warning count as an error
  --output FILE   what to write, for make the folder; existing files are replaced
  --path FOLDER   where the folder will lie on the device, if not in the same place
  --skins FORM    png: PNG in true colour; palette: PNG of 256 colours; dfiff: DirectFB's own form
  --pixel-format  that of the device's screen, such as RGB16 or RGB32
  --held CODE     show the push button with this code held
  --plain         the screen alone, without outlines and codes

Exit status: 0 without errors, 1 with one, 2 for wrong usage.
)";
}

} // namespace PEBBLETON
