#ifndef PEBBLETON_FILE_SET_H
#define PEBBLETON_FILE_SET_H

#include <csignal>
#include <string>
#include <vector>

namespace PEBBLETON
{

// Files of one folder that replace what had their names, all of them or none. While this object lives, the signals by
// which a user ends a program wait.
class FileSetC
{
public:
    // The folder is made, if it is not there, by the first Add.
    explicit FileSetC(std::string iFolder);

    // What was not put in place is gone.
    ~FileSetC();
    FileSetC(const FileSetC&) = delete;
    FileSetC& operator=(const FileSetC&) = delete;

    // Writes a file, under another name for the time being. Throws std::runtime_error.
    void Add(const std::string& iName, const std::string& iContent);

    // Gives all files their names. Throws std::runtime_error when that is not possible, and then nothing has changed.
    void PutInPlace();

private:
    struct File {
        std::string path;
        std::string written; // where it lies for the time being; empty: in its place
        std::string before;  // another name of what had its name; empty: nothing had it
    };

    static void KeepBefore(File& ioFile);
    void TakeBack();

    std::string mFolder;
    std::vector<File> mFiles;
    sigset_t mSignals; // that waited before
};

} // namespace PEBBLETON

#endif
