#ifndef PEBBLETON_STRUCTURE_CHECK_H
#define PEBBLETON_STRUCTURE_CHECK_H

#include <set>
#include <string>
#include <vector>

#include <boost/property_tree/ptree.hpp>

#include "Findings.h"
#include "ThemeFile.h"

namespace PEBBLETON
{

// Looks for names that the menu misses, does not know, or reads as something else.
class StructureCheckC
{
public:
    // Both must outlive the check; iFile is loaded.
    StructureCheckC(const ThemeFileC& iFile, FindingsC& ioFindings);

    void Run();

private:
    using Node = boost::property_tree::ptree;
    using Child = Node::value_type;

    // A name that the menu asks for, and what follows where there is none.
    struct Known {
        std::string name;
        bool required;
        std::string consequence;
    };

    void CheckNames(const Node& iNode, const std::string& iPrefix, const std::vector<Known>& iKnown);
    void CheckMissing(const Node& iNode, const std::string& iPrefix, const Known& iWanted,
                      const std::vector<Known>& iKnown);
    void CheckTornPaths(const Node& iImage);
    void ExplainRest(Node::const_iterator iFirst, Node::const_iterator iEnd, std::string iText);
    void CheckSection(const std::string& iSection);
    void CheckBraces(const std::string& iSection);
    void CheckButtonCount();
    void ReportLost(const std::string& iSection, const Child& iStray, const Child& iLost);
    void ReportIgnored(const std::string& iSection, const Child& iStray);
    void Report(bool iError, const std::string& iText);

    const ThemeFileC& mFile;
    FindingsC& mFindings;
    std::set<const Child*> mExplained; // strays of which a finding tells already
};

} // namespace PEBBLETON

#endif
