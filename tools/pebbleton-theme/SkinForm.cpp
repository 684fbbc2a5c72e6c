#include "SkinForm.h"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <vector>

#include <png.h>

#include "Converter.h"

namespace PEBBLETON
{

namespace
{

// A picture whose pixels are places in a palette.
struct PalettePicture {
    png_image image;
    std::vector<std::uint8_t> palette;
    std::vector<std::uint8_t> pixels;
};

[[noreturn]] void fail(const png_image& iImage)
{
    throw std::runtime_error(std::string("the picture cannot be encoded: ") + iImage.message);
}

PalettePicture decode(const std::string& iPng)
{
    PalettePicture picture = {};
    png_image& image = picture.image;
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&image, iPng.data(), iPng.size()) == 0) {
        fail(image);
    }
    image.format = PNG_FORMAT_RGB_COLORMAP;
    picture.palette.resize(PNG_IMAGE_COLORMAP_SIZE(image));
    picture.pixels.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, picture.palette.data()) == 0) {
        fail(image);
    }
    return picture;
}

// iRow rows from the top, as many as the image of iPicture is high.
std::string encode(PalettePicture& ioPicture, std::size_t iRow)
{
    png_image& image = ioPicture.image;
    const std::uint8_t* pixels = ioPicture.pixels.data() + iRow * image.width;
    png_alloc_size_t size = 0;
    if (png_image_write_to_memory(&image, nullptr, &size, 0, pixels, 0, ioPicture.palette.data()) == 0) {
        fail(image);
    }
    std::string png(size, '\0');
    if (png_image_write_to_memory(&image, png.data(), &size, 0, pixels, 0, ioPicture.palette.data()) == 0) {
        fail(image);
    }
    png.resize(size);
    return png;
}

std::string encodeBoth(CanvasC& ioNormal, CanvasC& ioPressed)
{
    const Size& size = ioNormal.GetSize();
    CanvasC both({size.width, 2 * size.height});
    cairo_surface_t* target = both.CreateSurface();
    cairo_t* context = cairo_create(target);
    std::uint32_t y = 0;
    for (CanvasC* half : {&ioNormal, &ioPressed}) {
        cairo_surface_t* source = half->CreateSurface();
        cairo_set_source_surface(context, source, 0, y);
        cairo_paint(context);
        cairo_surface_destroy(source);
        y += size.height;
    }
    cairo_destroy(context);
    cairo_surface_destroy(target);
    return both.EncodePng();
}

// With a palette each, the background around a button would change its colour, if only by a shade, whenever the button
// is held; so would dithering.
std::pair<std::string, std::string> quantise(CanvasC& ioNormal, CanvasC& ioPressed)
{
    PalettePicture both = decode(
        convert({"pngquant", "--nofs", "--speed", "1", "256", "-"}, encodeBoth(ioNormal, ioPressed), "pngquant"));
    both.image.height /= 2;
    both.image.flags |= PNG_IMAGE_FLAG_COLORSPACE_NOT_sRGB;
    std::string normal = encode(both, 0);
    return {std::move(normal), encode(both, both.image.height)};
}

std::string makeDfiff(CanvasC& ioSkin, const std::string& iPixelFormat)
{
    return convert({"mkdfiff", "-f", iPixelFormat, "/dev/stdin"}, ioSkin.EncodePng(), "libdirectfb-bin");
}

} // namespace

std::pair<std::string, std::string> encodeSkins(CanvasC& ioNormal, CanvasC& ioPressed, SkinForm iForm,
                                                const std::string& iPixelFormat)
{
    switch (iForm) {
    case SkinForm::Palette:
        return quantise(ioNormal, ioPressed);
    case SkinForm::Dfiff:
        return {makeDfiff(ioNormal, iPixelFormat), makeDfiff(ioPressed, iPixelFormat)};
    case SkinForm::Png:
        break;
    }
    return {ioNormal.EncodePng(), ioPressed.EncodePng()};
}

} // namespace PEBBLETON
