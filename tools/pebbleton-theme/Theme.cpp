#include "Theme.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "Application.h"
#include "ConfigHelper.h"
#include "ThemeFile.h"

namespace PEBBLETON
{

namespace
{

std::optional<std::string> readValue(const ConfigHelperC& iConfig, const char* iPath)
{
    std::string value;
    return iConfig.GetValue(iPath, value) ? std::optional<std::string>(value) : std::nullopt;
}

std::vector<Entry> readEntries(const ConfigHelperC& iConfig, const ThemeFileC& iFile, const char* iSection)
{
    std::vector<std::string> values(iConfig.GetCount(iSection, "button"));
    const std::size_t count = iConfig.GetValues(iSection, values);
    values.resize(count);
    std::vector<Entry> entries;
    auto child = count == 0 ? iFile.GetTree().end() : iFile.GetTree().get_child(iSection).begin();
    for (const std::string& value : values) {
        Entry entry = {iSection, child->first, value, false, 0, {}};
        entry.accepted = ReadButtonEntry(value, entry.code, entry.rectangle);
        entries.push_back(entry);
        ++child;
    }
    return entries;
}

std::vector<Entry> accepted(const std::vector<Entry>& iEntries)
{
    std::vector<Entry> result;
    std::copy_if(iEntries.begin(), iEntries.end(), std::back_inserter(result),
                 [](const Entry& iEntry) { return iEntry.accepted; });
    return result;
}

} // namespace

std::string describe(const Entry& iEntry)
{
    return iEntry.section + ": \"" + iEntry.name + (iEntry.value.empty() ? "" : " ") + iEntry.value + '"';
}

ThemeC::ThemeC(const ThemeFileC& iFile)
{
    const std::string path = iFile.GetTextPath();
    ConfigHelperC config(path.c_str());
    config.Init();
    mNormalPath = readValue(config, "image.normal");
    mPressedPath = readValue(config, "image.pressed");
    mLongPressEntries = readEntries(config, iFile, longPressSection);
    mPushEntries = readEntries(config, iFile, pushSection);
}

const std::optional<std::string>& ThemeC::GetNormalPath() const
{
    return mNormalPath;
}

const std::optional<std::string>& ThemeC::GetPressedPath() const
{
    return mPressedPath;
}

const std::vector<Entry>& ThemeC::GetLongPressEntries() const
{
    return mLongPressEntries;
}

const std::vector<Entry>& ThemeC::GetPushEntries() const
{
    return mPushEntries;
}

std::vector<Entry> ThemeC::GetPushButtons() const
{
    return accepted(mPushEntries);
}

std::vector<Entry> ThemeC::GetLongPressButtons() const
{
    return accepted(mLongPressEntries);
}

bool ThemeC::IsComplete() const
{
    return mNormalPath && mPressedPath && GetLongPressButtons().size() == mLongPressEntries.size() &&
           GetPushButtons().size() == mPushEntries.size();
}

} // namespace PEBBLETON
