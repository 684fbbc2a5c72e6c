#include "Converter.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

#include "Child.h"
#include "MessageFile.h"

namespace PEBBLETON
{

namespace
{

constexpr int notRun = 127; // as a shell reports it

int execute(const std::vector<std::string>& iWords, int iInput, int iOutput)
{
    std::vector<char*> words;
    words.reserve(iWords.size() + 1);
    for (const std::string& word : iWords) {
        words.push_back(const_cast<char*>(word.c_str()));
    }
    words.push_back(nullptr);
    dup2(iInput, STDIN_FILENO);
    dup2(iOutput, STDOUT_FILENO);
    close(iOutput);
    execvp(words[0], words.data());
    std::fprintf(stderr, "%s\n", std::strerror(errno));
    return notRun;
}

std::string join(const std::vector<std::string>& iLines)
{
    std::string result;
    for (const std::string& line : iLines) {
        result += line.empty() ? "" : ": " + line;
    }
    return result;
}

} // namespace

std::string convert(const std::vector<std::string>& iWords, const std::string& iInput, const std::string& iPackage)
{
    const MessageFileC input;
    std::ofstream stream("/proc/self/fd/" + std::to_string(input.GetFile()), std::ios::binary);
    stream << iInput << std::flush;
    if (!stream) {
        throw std::runtime_error("there is no memory for the input of " + iWords[0]);
    }
    ChildEnd end = runChild([&](int iOutput) { return execute(iWords, input.GetFile(), iOutput); });
    if (end.signal != 0) {
        throw std::runtime_error(iWords[0] + " was ended by signal " + std::to_string(end.signal));
    }
    if (end.status == notRun) {
        throw std::runtime_error(iWords[0] + " cannot be run" + join(end.messages) + ": install the package " +
                                 iPackage);
    }
    if (end.status != EXIT_SUCCESS) {
        throw std::runtime_error(iWords[0] + " failed" + join(end.messages));
    }
    if (end.output.empty()) {
        throw std::runtime_error(iWords[0] + " wrote nothing" + join(end.messages));
    }
    return end.output;
}

} // namespace PEBBLETON
