#ifndef PEBBLETON_BENCH_REPAINT_H
#define PEBBLETON_BENCH_REPAINT_H

#include <cstdint>
#include <vector>

#include <directfb.h>

#include "DirectfbPainter.h"
#include "LongPressButton.h"

namespace PEBBLETON
{

// The real DirectFB, opened as the program opens it, and the ways to bring a rectangle of a skin to the screen. The
// environment (DFBARGS) chooses the screen, of which a skin has the size and the pixel format. Any failure ends the
// process.
class RepaintC
{
public:
    // The rectangle to be repainted, at the screen's origin.
    RepaintC(std::uint32_t iWidth, std::uint32_t iHeight);
    ~RepaintC();
    RepaintC(const RepaintC&) = delete;
    RepaintC& operator=(const RepaintC&) = delete;

    int GetBitsPerPixel() const;
    std::size_t GetByteCount() const;

    // What the program does.
    void ByPainter();

    // Read, Write and Flip alone, through a buffer that is there already.
    void ByBareCalls();

    // The same, with what the painter is bound to do anew each time: it asks for the pixel format and makes a zeroed
    // buffer.
    void ByBareCallsAnew();

    // One copy of as many bytes from memory to memory.
    void ByMemcpy();

private:
    void ReadWriteFlip(std::uint8_t* ioPixels);

    IDirectFB* mDirectfb;
    IDirectFBSurface* mPrimarySurface;
    IDirectFBSurface* mSkinSurface;
    int mBytesPerPixel;
    DFBRectangle mArea;
    LongPressButtonC mWidget;
    DirectfbPainterC* mPainter; // owned
    std::vector<std::uint8_t> mPixels;
    std::vector<std::uint8_t> mCopy;
};

} // namespace PEBBLETON

#endif
