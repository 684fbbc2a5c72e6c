#include "Options.h"

#include <iostream>

#include <boost/exception/diagnostic_information.hpp>
#include <boost/program_options.hpp>

#include "Log.h"

namespace PEBBLETON
{

namespace
{

namespace options = boost::program_options;

options::options_description describeOptions()
{
    const unsigned lineLength = options::options_description::m_default_line_length;
    options::options_description description("Allowed options", lineLength, lineLength / 2);
    auto add = description.add_options();
    add("help,h", "Print help message");
    add("configuration,c", options::value<std::string>()->default_value("/usr/lib/quillfen/theme/main_menu.conf"),
        "Quillfen configuration file.");
    return description;
}

} // namespace

bool ParseOptions(int argc, const char* const argv[], std::string& configurationPath)
{
    try {
        const options::options_description description = describeOptions();
        options::variables_map values;
        options::store(options::parse_command_line(argc, argv, description), values);
        options::notify(values);
        // Before the environment, so that help is to be had whatever stands there.
        if (values.count("help") != 0) {
            std::cout << description << std::endl;
            return false;
        }
        // The first value given stays: the command line goes before the environment, and both before the default.
        options::store(options::parse_environment(description, "PEBBLETON_"), values);
        options::notify(values);
        configurationPath = values["configuration"].as<std::string>();
        Log(LOG_INFO, "Configuration file: %s", configurationPath.c_str());
        return true;
    } catch (const boost::exception& error) {
        Log(LOG_INFO, "%s", boost::diagnostic_information(error).c_str());
        return false;
    }
}

} // namespace PEBBLETON
