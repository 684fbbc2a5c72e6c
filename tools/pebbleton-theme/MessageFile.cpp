#include "MessageFile.h"

#include <fstream>
#include <stdexcept>

#include <sys/mman.h>
#include <unistd.h>

namespace PEBBLETON
{

MessageFileC::MessageFileC() : mFile(memfd_create("messages", MFD_CLOEXEC))
{
    if (mFile == -1) {
        throw std::runtime_error("there is no memory for the messages of another process");
    }
}

MessageFileC::~MessageFileC()
{
    close(mFile);
}

int MessageFileC::GetFile() const
{
    return mFile;
}

std::vector<std::string> MessageFileC::GetLines() const
{
    std::ifstream stream("/proc/self/fd/" + std::to_string(mFile));
    std::vector<std::string> lines;
    std::string line;
    while (std::getline(stream, line)) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace PEBBLETON
