#include "DrmDisplay.h"

#include <fstream>
#include <vector>

#include <glob.h>

namespace PEBBLETON
{

namespace
{

// The folders of what displays are connected to, sorted.
std::vector<std::string> listConnectors(const std::string& iFolder)
{
    glob_t found = {};
    std::vector<std::string> paths;
    if (glob((iFolder + "/card[0-9]*-*").c_str(), 0, nullptr, &found) == 0) {
        paths.assign(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    }
    globfree(&found);
    return paths;
}

bool isConnected(const std::string& iConnector)
{
    std::string status;
    return std::getline(std::ifstream(iConnector + "/status"), status) && status == "connected";
}

// The preferred mode is the first: "800x480", or "1920x1080i" for an interlaced one.
std::optional<ScreenSize> readFirstMode(const std::string& iConnector)
{
    ScreenSize size = {};
    char times = '\0';
    const auto isSize = [](int iPixels) { return iPixels >= 1 && iPixels <= mostPixels; };
    std::ifstream modes(iConnector + "/modes");
    if (modes >> size.width >> times >> size.height && times == 'x' && isSize(size.width) && isSize(size.height)) {
        return size;
    }
    return std::nullopt;
}

// The connector card1-HDMI-A-1 is one of card1.
std::string cardOf(const std::string& iConnector)
{
    const std::string name = iConnector.substr(iConnector.rfind('/') + 1);
    return "/dev/dri/" + name.substr(0, name.find('-'));
}

} // namespace

std::optional<Display> ReadDrmDisplay(const std::string& iFolder, bool iProbe)
{
    const std::vector<std::string> connectors = listConnectors(iFolder);
    for (const bool isToLook : {false, true}) {
        for (const std::string& connector : connectors) {
            if (isToLook && iProbe) {
                std::ofstream(connector + "/status") << "detect";
            }
            const std::optional<ScreenSize> size = isConnected(connector) ? readFirstMode(connector) : std::nullopt;
            if (size) {
                return Display{*size, cardOf(connector)};
            }
        }
    }
    return std::nullopt;
}

} // namespace PEBBLETON
