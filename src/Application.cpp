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

// Passes on whether a step was done, and logs the step's own message when it was not.
bool done(bool iResult, const char* iFailure)
{
    if (!iResult) {
        Log(LOG_ERR, "%s", iFailure);
    }
    return iResult;
}

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
    ConfigHelperC config(configPath.c_str());
    std::string normalImage;
    std::string pressedImage;
    return done(!configPath.empty(), "No skin file\n") && done(config.Init(), "Failed to initialize ConfigHelper\n") &&
           done(config.GetValue("image.normal", normalImage), "Failed to get normal image\n") &&
           done(config.GetValue("image.pressed", pressedImage), "Failed to get pressed image\n") &&
           done(mViewer.Init(normalImage.c_str(), pressedImage.c_str()), "Failed to initialize Viewer\n") &&
           done(CreateWidgets(config, longPressSection), "Failed to create widget\n") &&
           done(CreateWidgets(config, pushSection), "Failed to Create widget\n");
}

std::uint32_t ApplicationC::Run()
{
    for (;;) {
        // Anew before each wait: an input that means nothing leaves the type alone, and must not pass
        // for a repetition of the one before.
        InputEvent event = {0, 0, EventType::None};
        mViewer.WaitEvent(event);
        for (IWidget* widget : mWidgets) {
            if (widget->HandleEvent(event)) {
                return widget->GetExitCode();
            }
        }
    }
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
