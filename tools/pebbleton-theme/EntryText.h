#ifndef PEBBLETON_ENTRY_TEXT_H
#define PEBBLETON_ENTRY_TEXT_H

#include <cstddef>
#include <string>
#include <vector>

namespace PEBBLETON
{

// How the C library reads the text of an entry, number by number: made to explain what ReadButtonEntry has decided.
class EntryTextC
{
public:
    explicit EntryTextC(const std::string& iText);

    // The numbers that were read, as they stand in the text, with their signs; five at the most.
    const std::vector<std::string>& GetNumbers() const;

    // What stands behind the last number that was read.
    const std::string& GetRest() const;

private:
    std::vector<std::string> mNumbers;
    std::string mRest;
};

} // namespace PEBBLETON

#endif
