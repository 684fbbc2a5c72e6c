#include "Application.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

#include "Button.h"
#include "ConfigHelper.h"
#include "Log.h"
#include "LongPressButton.h"

namespace PEBBLETON
{

namespace
{

constexpr const char* longPressSection = "button_long_press";
constexpr const char* pushSection = "button_normal";

} // namespace

bool ReadButtonEntry(const std::string& iEntry, std::uint32_t& ioCode, Rectangle& ioRectangle)
{
    return std::sscanf(iEntry.c_str(), "%u:%u:%u:%u:%u", &ioCode, &ioRectangle.x, &ioRectangle.y, &ioRectangle.width,
                       &ioRectangle.height) == 5;
}

ApplicationC::ApplicationC(const char* iConfigPath) : mConfigPath(iConfigPath)
{
}

ApplicationC::~ApplicationC()
{
    for (const IWidget* widget : mWidgets) {
        delete widget;
    }
}

bool ApplicationC::Init()
{
    const std::string configPath(mConfigPath);
    if (configPath.empty()) {
        Log(LOG_ERR, "No skin file\n");
        return false;
    }
    ConfigHelperC config(configPath.c_str());
    if (!config.Init()) {
        Log(LOG_ERR, "Failed to initialize ConfigHelper\n");
        return false;
    }
    return ShowSkin(config) && CreateAllWidgets(config);
}

std::uint32_t ApplicationC::Run()
{
    for (;;) {
        // Anew before each wait: an input that means nothing leaves the type alone, and must not pass for a repetition
        // of the one before.
        InputEvent event = {0, 0, EventType::None};
        mViewer.WaitEvent(event);
        for (IWidget* widget : mWidgets) {
            if (widget->HandleEvent(event)) {
                return widget->GetExitCode();
            }
        }
    }
}

bool ApplicationC::ShowSkin(const ConfigHelperC& iConfig)
{
    std::string normalImage;
    if (!iConfig.GetValue("image.normal", normalImage)) {
        Log(LOG_ERR, "Failed to get normal image\n");
        return false;
    }
    std::string pressedImage;
    if (!iConfig.GetValue("image.pressed", pressedImage)) {
        Log(LOG_ERR, "Failed to get pressed image\n");
        return false;
    }
    if (!mViewer.Init(normalImage.c_str(), pressedImage.c_str())) {
        Log(LOG_ERR, "Failed to initialize Viewer\n");
        return false;
    }
    return true;
}

bool ApplicationC::CreateAllWidgets(const ConfigHelperC& iConfig)
{
    if (!CreateWidgets(iConfig, longPressSection)) {
        Log(LOG_ERR, "Failed to create widget\n");
        return false;
    }
    if (!CreateWidgets(iConfig, pushSection)) {
        Log(LOG_ERR, "Failed to Create widget\n");
        return false;
    }
    return true;
}

bool ApplicationC::CreateWidgets(const ConfigHelperC& iConfig, const char* iSection)
{
    std::vector<std::string> entries(iConfig.GetCount(iSection, "button"));
    const std::size_t count = iConfig.GetValues(iSection, entries);
    mWidgets.reserve(mWidgets.size() + count); // so that no widget is lost between its making and the list
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t code = 0;
        Rectangle rectangle = {};
        if (!ReadButtonEntry(entries[i], code, rectangle)) {
            Log(LOG_ERR, "Invalid configuration file: <%s> . \n", mConfigPath);
            return false;
        }
        mWidgets.push_back(CreateWidget(iSection, code, rectangle));
    }
    return true;
}

IWidget* ApplicationC::CreateWidget(const char* iSection, std::uint32_t iCode, const Rectangle& iRectangle)
{
    if (std::strcmp(iSection, longPressSection) == 0) {
        return new LongPressButtonC(iCode, iRectangle);
    }
    return new ButtonC(iCode, &mViewer, iRectangle);
}

} // namespace PEBBLETON
