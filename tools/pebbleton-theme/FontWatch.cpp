#include "FontWatch.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>

#include <fontconfig/fontconfig.h>
#include <pango/pangofc-fontmap.h>

namespace PEBBLETON
{

namespace
{

constexpr const char* seenKey = "pebbleton-seen";

PangoFontMapClass* originalClass = nullptr;

PangoFontset* seeFont(PangoFontMap* iFonts, PangoContext* iContext, const PangoFontDescription* iFont,
                      PangoLanguage* iLanguage)
{
    auto* seen = static_cast<std::set<std::string>*>(g_object_get_data(G_OBJECT(iFonts), seenKey));
    const char* families = pango_font_description_get_family(iFont);
    if (seen != nullptr && families != nullptr) {
        seen->insert(families);
    }
    return originalClass->load_fontset(iFonts, iContext, iFont, iLanguage);
}

void initializeClass(void* ioClass, void* /*iData*/)
{
    originalClass = static_cast<PangoFontMapClass*>(g_type_class_peek_parent(ioClass));
    static_cast<PangoFontMapClass*>(ioClass)->load_fontset = seeFont;
}

// The type of Pango's own font map, with a look at each font that is asked for.
GType watchingType()
{
    static const GType type = [] {
        PangoFontMap* original = pango_cairo_font_map_new();
        GTypeQuery query = {};
        g_type_query(G_OBJECT_TYPE(original), &query);
        g_object_unref(original);
        return g_type_register_static_simple(query.type, "PebbletonFontMap", static_cast<guint>(query.class_size),
                                             initializeClass, static_cast<guint>(query.instance_size), nullptr,
                                             static_cast<GTypeFlags>(0));
    }();
    return type;
}

// Whatever font such a name stands for is meant.
bool isGeneric(std::string iFamily)
{
    std::transform(iFamily.begin(), iFamily.end(), iFamily.begin(),
                   [](unsigned char iLetter) { return static_cast<char>(std::tolower(iLetter)); });
    constexpr const char* names[] = {"serif", "sans-serif", "sans",    "monospace",
                                     "mono",  "cursive",    "fantasy", "system-ui"};
    return std::find(std::begin(names), std::end(names), iFamily) != std::end(names);
}

bool isInstalled(const std::string& iFamily)
{
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(iFamily.c_str()));
    FcObjectSet* objects = FcObjectSetCreate();
    FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
    const bool found = fonts != nullptr && fonts->nfont > 0;
    FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    return found;
}

bool isMissing(const std::string& iFamilies)
{
    std::istringstream stream(iFamilies);
    std::string family;
    while (std::getline(stream, family, ',')) {
        if (isGeneric(family) || isInstalled(family)) {
            return false;
        }
    }
    return true;
}

} // namespace

// Pango reads fontconfig's settings in a thread of its own. In a process that is forked while a thread looks up a
// symbol the C library may wait for that thread for ever, so it is to have nothing to do, and to be at its end.
FontWatchC::FontWatchC() : mFonts(nullptr)
{
    FcInit();
    mFonts = static_cast<PangoFontMap*>(g_object_new(watchingType(), nullptr));
    pango_fc_font_map_get_config(PANGO_FC_FONT_MAP(mFonts)); // waits for it
    g_object_set_data(G_OBJECT(mFonts), seenKey, &mSeen);
    pango_cairo_font_map_set_default(PANGO_CAIRO_FONT_MAP(mFonts));
}

FontWatchC::~FontWatchC()
{
    g_object_set_data(G_OBJECT(mFonts), seenKey, nullptr);
    pango_cairo_font_map_set_default(nullptr);
    g_object_unref(mFonts);
}

std::set<std::string> FontWatchC::TakeMissing()
{
    std::set<std::string> missing;
    std::copy_if(mSeen.begin(), mSeen.end(), std::inserter(missing, missing.end()), isMissing);
    mSeen.clear();
    return missing;
}

} // namespace PEBBLETON
