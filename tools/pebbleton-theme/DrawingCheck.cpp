#include "DrawingCheck.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include <gio/gio.h>

namespace PEBBLETON
{

namespace
{

constexpr const char* linkNamespace = "http://www.w3.org/1999/xlink";
constexpr const char* unnamedFont = "Times New Roman"; // librsvg's own

std::string describeMissing(const std::string& iFont)
{
    return "is in the font \"" + iFont + "\"" + (iFont == unnamedFont ? ", as where none is named," : ",") +
           " which is not installed, so that another one is drawn: install it, name another one, or turn the text "
           "into a path";
}

std::string take(char* iText)
{
    std::string text = iText == nullptr ? "" : iText;
    g_free(iText);
    return text;
}

std::string findReference(const xmlNode* iImage)
{
    const std::string plain = DrawingC::GetAttribute(iImage, "href");
    return plain.empty() ? DrawingC::GetAttribute(iImage, "href", linkNamespace) : plain;
}

// Has librsvg load the same reference from the same folder: alone, so that nothing else decides whether it is seen.
bool isLoaded(const std::string& iReference, const std::string& iDrawing)
{
    const std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"1\" height=\"1\"><image id=\"image\" "
                             "width=\"1\" height=\"1\" href=\"" +
                             take(g_markup_escape_text(iReference.c_str(), -1)) + "\"/></svg>";
    return SvgPictureC(text, iDrawing).HasPlace("image");
}

bool startsWith(const std::string& iText, const char* iStart)
{
    return iText.compare(0, std::strlen(iStart), iStart) == 0;
}

std::string folderOf(const std::string& iFileName)
{
    GFile* file = g_file_new_for_path(iFileName.c_str());
    GFile* folder = g_file_get_parent(file);
    const std::string path = folder == nullptr ? "/" : take(g_file_get_path(folder));
    if (folder != nullptr) {
        g_object_unref(folder);
    }
    g_object_unref(file);
    return path + '/';
}

// Why librsvg does not load it.
std::string explain(const std::string& iReference, const std::string& iDrawing)
{
    const std::string folder = folderOf(iDrawing);
    const std::string base = take(g_filename_to_uri(folder.c_str(), nullptr, nullptr));
    const std::string address =
        take(g_uri_resolve_relative(base.c_str(), iReference.c_str(), G_URI_FLAGS_NONE, nullptr));
    if (startsWith(address, "data:")) {
        return "it is no picture that librsvg reads";
    }
    const std::string path = take(g_filename_from_uri(address.substr(0, address.find('#')).c_str(), nullptr, nullptr));
    if (path.empty()) {
        return "only files are loaded: embed it";
    }
    if (!std::ifstream(path)) {
        return path + ": " + std::strerror(errno);
    }
    return startsWith(path, folder.c_str())
               ? path + " is no picture that librsvg reads"
               : path + " does not lie in the drawing's folder or below it: embed it, or copy it there";
}

std::string shorten(const std::string& iReference)
{
    constexpr std::size_t longest = 80;
    return iReference.size() <= longest ? iReference : iReference.substr(0, longest) + "...";
}

} // namespace

DrawingCheckC::DrawingCheckC(const DrawingC& iDrawing, FontWatchC& ioFonts, FindingsC& ioFindings)
    : mDrawing(iDrawing), mFonts(ioFonts), mFindings(ioFindings)
{
}

void DrawingCheckC::CheckImages()
{
    for (const xmlNode* element : mDrawing.GetElements()) {
        if (DrawingC::IsSvg(element, "image") || DrawingC::IsSvg(element, "feImage")) {
            CheckImage(element);
        }
    }
}

void DrawingCheckC::CheckTexts(const SvgPictureC& iPicture)
{
    mFonts.TakeMissing();
    for (const xmlNode* element : mDrawing.GetElements()) {
        if (!DrawingC::IsSvg(element, "text")) {
            continue;
        }
        iPicture.HasPlace(DrawingC::GetAttribute(element, "id"));
        for (const std::string& font : mFonts.TakeMissing()) {
            if (mMissing.emplace(element, font).second) {
                mDrawing.AddError(element, mDrawing.Describe(element) + ' ' + describeMissing(font), mFindings);
            }
        }
    }
}

void DrawingCheckC::CheckDrawn()
{
    for (const std::string& font : mFonts.TakeMissing()) {
        const bool known = std::any_of(mMissing.begin(), mMissing.end(),
                                       [&](const auto& iMissing) { return iMissing.second == font; });
        if (!known) {
            mMissing.emplace(nullptr, font);
            mFindings.AddError("a text that is drawn by reference " + describeMissing(font));
        }
    }
}

void DrawingCheckC::CheckImage(const xmlNode* iImage)
{
    const std::string reference = findReference(iImage);
    const bool isElement = startsWith(reference, "#"); // of the drawing itself
    if (isElement || (!reference.empty() && isLoaded(reference, mDrawing.GetName()))) {
        return;
    }
    mDrawing.AddError(iImage,
                      mDrawing.Describe(iImage) + " shows nothing: " +
                          (reference.empty() ? "it names no picture"
                                             : '"' + shorten(reference) + "\" cannot be loaded (" +
                                                   explain(reference, mDrawing.GetName()) + ')'),
                      mFindings);
}

} // namespace PEBBLETON
