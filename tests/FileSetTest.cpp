#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "FileSet.h"

namespace
{

bool noSecondNames = false;
volatile std::sig_atomic_t interrupted = 0;

} // namespace

// As where the file is another user's, or the file system knows no second names.
extern "C" int link(const char* iPath, const char* iNewPath) noexcept
{
    if (noSecondNames && access(iPath, F_OK) == 0) {
        errno = EPERM;
        return -1;
    }
    return linkat(AT_FDCWD, iPath, AT_FDCWD, iNewPath, 0);
}

namespace PEBBLETON
{

namespace
{

namespace fs = std::filesystem;

class FileSetTest : public testing::Test
{
protected:
    FileSetTest()
    {
        std::string name = testing::TempDir() + "file-set-XXXXXX";
        mFolder = mkdtemp(name.data());
    }

    ~FileSetTest() override
    {
        fs::remove_all(mFolder);
    }

    void Write(const std::string& iName, const std::string& iContent) const
    {
        std::ofstream(mFolder / iName) << iContent;
    }

    // What lies in the folder, by its name.
    std::map<std::string, std::string> Read() const
    {
        std::map<std::string, std::string> files;
        for (const fs::directory_entry& entry : fs::directory_iterator(mFolder)) {
            std::ifstream stream(entry.path());
            files[entry.path().filename()] = std::string(std::istreambuf_iterator<char>(stream), {});
        }
        return files;
    }

    // Takes away what is written for a file that is not in its place yet.
    void Lose(const std::string& iName) const
    {
        for (const fs::directory_entry& entry : fs::directory_iterator(mFolder)) {
            if (entry.path().filename().string().rfind('.' + iName, 0) == 0) {
                fs::remove(entry.path());
                return;
            }
        }
        FAIL() << "nothing is written for " << iName;
    }

    fs::path mFolder;
};

using Files = std::map<std::string, std::string>;

TEST_F(FileSetTest, ReplacesAllAtOnce)
{
    Write("a", "old");
    {
        FileSetC files(mFolder);
        files.Add("a", "new a");
        files.Add("b", std::string(100000, 'b'));
        EXPECT_EQ(Read()["a"], "old");
        EXPECT_EQ(Read().count("b"), 0U);
        files.PutInPlace();
    }
    EXPECT_EQ(Read(), (Files{{"a", "new a"}, {"b", std::string(100000, 'b')}}));
}

TEST_F(FileSetTest, LeavesNothingOfFilesThatAreNotPutInPlace)
{
    Write("a", "old");
    {
        FileSetC files(mFolder);
        files.Add("a", "new");
        files.Add("b", "new");
    }
    EXPECT_EQ(Read(), (Files{{"a", "old"}}));
}

TEST_F(FileSetTest, TakesBackWhatIsInPlaceWhenOneCannotBe)
{
    for (const bool noNames : {false, true}) {
        noSecondNames = noNames;
        Write("a", "old a");
        Write("c", "old c");
        {
            FileSetC files(mFolder);
            for (const char* name : {"a", "b", "c"}) {
                files.Add(name, "new");
            }
            Lose("c");
            EXPECT_THROW(files.PutInPlace(), std::runtime_error);
        }
        EXPECT_EQ(Read(), (Files{{"a", "old a"}, {"c", "old c"}}));
        FileSetC files(mFolder);
        files.Add("a", "new");
        files.PutInPlace();
        EXPECT_EQ(Read()["a"], "new");
    }
    noSecondNames = false;
    EXPECT_EQ(Read(), (Files{{"a", "new"}, {"c", "old c"}}));
}

TEST_F(FileSetTest, IsNotInterruptedOnTheWay)
{
    std::signal(SIGINT, [](int) { interrupted = 1; });
    {
        const FileSetC files(mFolder);
        std::raise(SIGINT);
        EXPECT_EQ(interrupted, 0);
    }
    EXPECT_EQ(interrupted, 1);
    std::signal(SIGINT, SIG_DFL);
}

} // namespace

} // namespace PEBBLETON
