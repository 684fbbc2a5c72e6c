#ifndef PEBBLETON_CONFIG_HELPER_H
#define PEBBLETON_CONFIG_HELPER_H

#include <cstddef>
#include <string>
#include <vector>

#include <boost/property_tree/ptree.hpp>

namespace PEBBLETON
{

// The theme file, read once into memory, and the questions that are asked of it.
//
// A node is named by its path: the names from the top level down, separated by full stops. Where siblings share a name,
// the first in file order is the one that a path finds. What goes wrong is logged here in full; the caller learns of it
// by a false or a 0.
class ConfigHelperC
{
public:
    // Keeps the pointer: the caller keeps the name, which is not empty, alive as long as this object.
    explicit ConfigHelperC(const char* iFileName);
    ConfigHelperC(const ConfigHelperC&) = delete;
    ConfigHelperC& operator=(const ConfigHelperC&) = delete;

    // Reads the file. False: it cannot be opened or is not valid; then nothing else may be asked.
    bool Init();

    // Writes the value of the node at iPath to ioValue. False: there is no such node (logged), and ioValue is
    // unchanged.
    bool GetValue(const std::string& iPath, std::string& ioValue) const;

    // The number of children named iName under the node at iSection; 0 also when there is no such node (logged).
    std::size_t GetCount(const std::string& iSection, const std::string& iName) const;

    // Writes the values of the first children of the node at iSection, whatever their names, to the elements of
    // ioValues, whose size says how many are wanted and is not changed. Returns how many were written; 0 also when
    // there is no such node (logged).
    std::size_t GetValues(const std::string& iSection, std::vector<std::string>& ioValues) const;

private:
    const boost::property_tree::ptree& GetNode(const std::string& iPath) const;

    boost::property_tree::ptree mTree;
    const char* mFileName; // not owned
};

} // namespace PEBBLETON

#endif
