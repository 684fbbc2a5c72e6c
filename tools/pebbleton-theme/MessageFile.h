#ifndef PEBBLETON_MESSAGE_FILE_H
#define PEBBLETON_MESSAGE_FILE_H

#include <string>
#include <vector>

namespace PEBBLETON
{

// A nameless file in memory that takes what another process writes, as much as it may be.
class MessageFileC
{
public:
    // Throws std::runtime_error.
    MessageFileC();
    ~MessageFileC();
    MessageFileC(const MessageFileC&) = delete;
    MessageFileC& operator=(const MessageFileC&) = delete;

    int GetFile() const;

    // All lines written so far.
    std::vector<std::string> GetLines() const;

private:
    int mFile;
};

} // namespace PEBBLETON

#endif
