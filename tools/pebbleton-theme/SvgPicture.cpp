#include "SvgPicture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <stdexcept>

#include "Trace.h"

namespace PEBBLETON
{

namespace
{

constexpr double dotsPerInch = 96; // those of a CSS pixel

[[noreturn]] void fail(GError* iError)
{
    const std::unique_ptr<GError, void (*)(GError*)> error(iError, g_error_free);
    throw std::runtime_error(std::string("librsvg does not draw it: ") + error->message);
}

RsvgHandle* load(const std::string& iText, const std::string& iFileName)
{
    GFile* file = g_file_new_for_path(iFileName.c_str());
    GInputStream* stream =
        g_memory_input_stream_new_from_data(iText.data(), static_cast<gssize>(iText.size()), nullptr);
    GError* error = nullptr;
    RsvgHandle* handle = rsvg_handle_new_from_stream_sync(stream, file, RSVG_HANDLE_FLAGS_NONE, nullptr, &error);
    g_object_unref(stream);
    g_object_unref(file);
    if (handle == nullptr) {
        fail(error);
    }
    rsvg_handle_set_dpi(handle, dotsPerInch);
    return handle;
}

bool isWhole(gboolean iGiven, const RsvgLength& iLength)
{
    return iGiven == FALSE || (iLength.unit == RSVG_UNIT_PERCENT && iLength.length == 1);
}

RsvgRectangle findViewport(RsvgHandle* iHandle)
{
    RsvgRectangle viewport = {0, 0, 0, 0};
    if (rsvg_handle_get_intrinsic_size_in_pixels(iHandle, &viewport.width, &viewport.height) != FALSE) {
        return viewport;
    }
    gboolean given[3] = {FALSE, FALSE, FALSE};
    RsvgLength width = {};
    RsvgLength height = {};
    RsvgRectangle viewBox = {};
    rsvg_handle_get_intrinsic_dimensions(iHandle, &given[0], &width, &given[1], &height, &given[2], &viewBox);
    const bool whole = given[2] != FALSE && isWhole(given[0], width) && isWhole(given[1], height);
    return whole ? RsvgRectangle{0, 0, viewBox.width, viewBox.height} : RsvgRectangle{0, 0, 0, 0};
}

std::uint32_t roundUp(double iLength)
{
    return static_cast<std::uint32_t>(
        std::min(std::ceil(iLength), static_cast<double>(std::numeric_limits<std::uint32_t>::max())));
}

} // namespace

SvgPictureC::SvgPictureC(const std::string& iText, const std::string& iFileName)
    : mHandle(load(iText, iFileName)), mViewport(findViewport(mHandle))
{
}

SvgPictureC::~SvgPictureC()
{
    g_object_unref(mHandle);
}

std::optional<Size> SvgPictureC::GetSize() const
{
    if (!(mViewport.width > 0) || !(mViewport.height > 0)) {
        return std::nullopt;
    }
    return Size{roundUp(mViewport.width), roundUp(mViewport.height)};
}

void SvgPictureC::Draw(CanvasC& ioCanvas) const
{
    cairo_surface_t* surface = ioCanvas.CreateSurface();
    cairo_t* context = cairo_create(surface);
    GError* error = nullptr;
    rsvg_handle_render_document(mHandle, context, &mViewport, &error);
    cairo_destroy(context);
    cairo_surface_destroy(surface);
    if (error != nullptr) {
        fail(error);
    }
}

std::optional<Rectangle> SvgPictureC::Measure(const std::string& iId, const Size& iSize) const
{
    // By its geometry librsvg would count what is clipped or not visible, and no markers.
    TraceC trace(iSize);
    GError* error = nullptr;
    rsvg_handle_render_layer(mHandle, trace.GetContext(), ('#' + iId).c_str(), &mViewport, &error);
    if (error != nullptr) {
        fail(error);
    }
    const Area area = trace.FindDrawn();
    if (area.left >= area.right || area.top >= area.bottom) {
        return std::nullopt;
    }
    return Rectangle{static_cast<std::uint32_t>(area.left), static_cast<std::uint32_t>(area.top),
                     static_cast<std::uint32_t>(area.right - area.left),
                     static_cast<std::uint32_t>(area.bottom - area.top)};
}

bool SvgPictureC::HasPlace(const std::string& iId) const
{
    RsvgRectangle ink = {};
    RsvgRectangle logical = {};
    return GetGeometry(iId, ink, logical) && (logical.width > 0 || logical.height > 0);
}

bool SvgPictureC::GetGeometry(const std::string& iId, RsvgRectangle& ioInk, RsvgRectangle& ioLogical) const
{
    const RsvgRectangle viewport = {0, 0, std::max(mViewport.width, 1.0), std::max(mViewport.height, 1.0)};
    GError* error = nullptr;
    rsvg_handle_get_geometry_for_layer(mHandle, ('#' + iId).c_str(), &viewport, &ioInk, &ioLogical, &error);
    if (error != nullptr) {
        g_error_free(error);
        return false;
    }
    return true;
}

} // namespace PEBBLETON
