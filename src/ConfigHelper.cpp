#include "ConfigHelper.h"

#include <locale>

#include <boost/exception/diagnostic_information.hpp>
#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/info_parser.hpp>

#include "Log.h"

namespace PEBBLETON
{

using boost::property_tree::ptree;

ConfigHelperC::ConfigHelperC(const char* iFileName) : mFileName(iFileName)
{
}

bool ConfigHelperC::Init()
{
    try {
        boost::property_tree::read_info(std::string(mFileName), mTree, std::locale());
        return true;
    } catch (const boost::exception& error) {
        Log(LOG_INFO, "Error while reading ConfigHelperC file: %s\n", boost::diagnostic_information(error).c_str());
        return false;
    }
}

bool ConfigHelperC::GetValue(const std::string& iPath, std::string& ioValue) const
{
    try {
        ioValue = GetNode(iPath).get_value<std::string>();
        return true;
    } catch (const boost::property_tree::ptree_error& error) {
        Log(LOG_ERR, "%s", boost::diagnostic_information(error).c_str());
        return false;
    }
}

std::size_t ConfigHelperC::GetCount(const std::string& iSection, const std::string& iName) const
{
    try {
        return GetNode(iSection).count(iName);
    } catch (const boost::property_tree::ptree_bad_path& error) {
        Log(LOG_ERR, "%s", boost::diagnostic_information(error).c_str());
        return 0;
    }
}

std::size_t ConfigHelperC::GetValues(const std::string& iSection, std::vector<std::string>& ioValues) const
{
    if (ioValues.empty()) {
        return 0;
    }
    try {
        std::size_t assigned = 0;
        for (const ptree::value_type& child : GetNode(iSection)) {
            if (assigned == ioValues.size()) {
                break;
            }
            ioValues[assigned++] = child.second.data();
        }
        return assigned;
    } catch (const boost::property_tree::ptree_bad_path& error) {
        Log(LOG_ERR, "%s", boost::diagnostic_information(error).c_str());
        return 0;
    }
}

const ptree& ConfigHelperC::GetNode(const std::string& iPath) const
{
    return mTree.get_child(ptree::path_type(iPath, '.'));
}

} // namespace PEBBLETON
