#ifndef PEBBLETON_FINDINGS_H
#define PEBBLETON_FINDINGS_H

#include <ostream>
#include <string>
#include <vector>

namespace PEBBLETON
{

// The text with each byte of a control character, of one that is not seen, and of what is no UTF-8 as \x and two
// digits: nothing that a theme holds does anything to a terminal or hides in it.
std::string printable(const std::string& iText);

// What is wrong with a theme, in the order in which it was found.
//
// An error ends or crashes the menu or leaves it unusable; with a warning it runs, but hardly as meant. Each finding is
// printed as one line, made printable.
class FindingsC
{
public:
    // iFileName is the theme file as the user named it.
    explicit FindingsC(std::string iFileName);

    void AddError(const std::string& iText);
    void AddWarning(const std::string& iText);

    // An error in one line of a file, which may be one that the theme includes.
    void AddErrorAt(const std::string& iFileName, unsigned long iLine, const std::string& iText);

    bool HasErrors() const;
    bool HasWarnings() const;

    // The lines of the errors alone.
    std::vector<std::string> GetErrors() const;

    void PrintAll(std::ostream& ioStream) const;
    void PrintErrors(std::ostream& ioStream) const;

private:
    struct Finding {
        bool isError;
        std::string line;
    };

    bool Has(bool iErrors) const;

    std::string mFileName;
    std::vector<Finding> mFindings;
};

} // namespace PEBBLETON

#endif
