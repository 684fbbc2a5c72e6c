#include "Preview.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include "Canvas.h"
#include "Outlines.h"
#include "Page.h"

namespace PEBBLETON
{

namespace
{

void hold(const InspectionC& iInspection, std::uint32_t iCode, CanvasC& ioCanvas)
{
    const std::vector<Entry> buttons = iInspection.GetTheme()->GetPushButtons();
    const auto held =
        std::find_if(buttons.begin(), buttons.end(), [=](const Entry& iButton) { return iButton.code == iCode; });
    if (held == buttons.end()) {
        throw UsageErrorC("no push button has the code " + std::to_string(iCode));
    }
    if (iInspection.GetSurfaces().pressed) {
        ioCanvas.Show(*iInspection.GetSurfaces().pressed, held->rectangle);
    }
}

std::string makePicture(const InspectionC& iInspection, const Arguments& iArguments)
{
    const Surfaces& surfaces = iInspection.GetSurfaces();
    CanvasC canvas(*surfaces.screen);
    if (surfaces.normal) {
        canvas.Show(*surfaces.normal);
    }
    if (iArguments.held) {
        hold(iInspection, *iArguments.held, canvas);
    }
    if (!iArguments.plain) {
        OutlinesC(canvas).Draw(iInspection.GetTheme()->GetPushButtons());
    }
    return canvas.EncodePng();
}

} // namespace

void writePreview(const InspectionC& iInspection, const Arguments& iArguments)
{
    if (!iInspection.GetTheme()) {
        return;
    }
    if (!iInspection.GetSurfaces().screen) {
        throw std::runtime_error("without the normal skin the size of the screen is not known: give it with --screen");
    }
    const std::string content = iArguments.isPage ? makePage(iInspection) : makePicture(iInspection, iArguments);
    std::ofstream stream(iArguments.output, std::ios::binary);
    stream << content << std::flush;
    if (!stream) {
        throw std::runtime_error(iArguments.output + ": " + std::strerror(errno));
    }
}

} // namespace PEBBLETON
