#include "FileSet.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace PEBBLETON
{

namespace
{

[[noreturn]] void fail(const std::string& iPath)
{
    throw std::runtime_error(iPath + ": " + std::strerror(errno));
}

bool writeAll(int iFile, const std::string& iContent)
{
    std::size_t done = 0;
    while (done < iContent.size()) {
        const ssize_t written = write(iFile, iContent.data() + done, iContent.size() - done);
        if (written < 0 && errno != EINTR) {
            return false;
        }
        done += written < 0 ? 0 : static_cast<std::size_t>(written);
    }
    return fsync(iFile) == 0;
}

} // namespace

FileSetC::FileSetC(std::string iFolder) : mFolder(std::move(iFolder)), mSignals()
{
    sigset_t waiting;
    sigemptyset(&waiting);
    for (const int signal : {SIGHUP, SIGINT, SIGPIPE, SIGTERM}) {
        sigaddset(&waiting, signal);
    }
    pthread_sigmask(SIG_BLOCK, &waiting, &mSignals);
}

FileSetC::~FileSetC()
{
    for (const File& file : mFiles) {
        for (const std::string& left : {file.written, file.before}) {
            if (!left.empty()) {
                std::remove(left.c_str());
            }
        }
    }
    pthread_sigmask(SIG_SETMASK, &mSignals, nullptr);
}

void FileSetC::Add(const std::string& iName, const std::string& iContent)
{
    std::error_code error;
    std::filesystem::create_directories(mFolder, error);
    if (error) {
        throw std::runtime_error(mFolder + ": " + error.message());
    }
    const std::string own = mFolder + "/." + iName + '.' + std::to_string(getpid());
    mFiles.push_back({mFolder + '/' + iName, own, ""});
    const int file = open(mFiles.back().written.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file == -1) {
        mFiles.back().written.clear();
        fail(mFiles.back().path);
    }
    const bool written = writeAll(file, iContent);
    const int reason = errno;
    close(file);
    if (!written) {
        errno = reason;
        fail(mFiles.back().path);
    }
}

void FileSetC::PutInPlace()
{
    try {
        for (File& file : mFiles) {
            KeepBefore(file);
            if (std::rename(file.written.c_str(), file.path.c_str()) != 0) {
                fail(file.path);
            }
            file.written.clear();
        }
    } catch (...) {
        TakeBack();
        throw;
    }
}

// A second name, so that the first one is never without a file; where none can be had, as for another user's file, the
// file is moved away for that moment.
void FileSetC::KeepBefore(File& ioFile)
{
    const std::string before = ioFile.written + ".before";
    if (link(ioFile.path.c_str(), before.c_str()) == 0) {
        ioFile.before = before;
    } else if (errno != ENOENT) {
        if (std::filesystem::is_directory(std::filesystem::symlink_status(ioFile.path))) {
            errno = EISDIR;
            fail(ioFile.path);
        }
        if (std::rename(ioFile.path.c_str(), before.c_str()) != 0) {
            fail(ioFile.path);
        }
        ioFile.before = before;
    }
}

void FileSetC::TakeBack()
{
    for (File& file : mFiles) {
        if (!file.before.empty()) {
            std::rename(file.before.c_str(), file.path.c_str());
            std::remove(file.before.c_str()); // still there where both names are of one file
            file.before.clear();
        } else if (file.written.empty()) {
            std::remove(file.path.c_str());
        }
    }
}

} // namespace PEBBLETON
