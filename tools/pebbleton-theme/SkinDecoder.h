#ifndef PEBBLETON_SKIN_DECODER_H
#define PEBBLETON_SKIN_DECODER_H

#include <cstdint>
#include <string>
#include <vector>

#include <directfb.h>

namespace PEBBLETON
{

// Loads one picture with the calls that the menu loads its skins with, on DirectFB's headless system.
//
// For a process that does nothing else: it may crash, it writes to standard error, and nothing is released. Settings of
// DirectFB in the environment and in the user's home do not count.
class SkinDecoderC
{
public:
    // Where the menu would end, if it ends, and with what.
    enum class Step : std::uint32_t
    {
        Start,
        Open,
        Allocate,
        Done
    };

    struct Result {
        Step step;          // the one that failed, or Done
        DFBResult result;   // of that step
        DFBResult rendered; // whether the whole picture came out
        std::uint32_t odd;  // pixels that the picture's format cannot have produced: they were not decoded, or wrongly
        bool transparent;
        std::uint32_t width;
        std::uint32_t height;
    };

    SkinDecoderC();

    Result Decode(const std::string& iPath);

    // 0xAARRGGBB, row by row; what the alpha bits hold means nothing.
    const std::vector<std::uint32_t>& GetPixels() const;

private:
    DFBResult Start();
    DFBResult Render(DFBSurfacePixelFormat iFormat, Result& ioResult, std::vector<std::uint32_t>& ioPixels);
    void Judge(Result& ioResult);

    IDirectFB* mDirectfb;
    IDirectFBImageProvider* mProvider;
    std::vector<std::uint32_t> mPixels;
};

} // namespace PEBBLETON

#endif
