#ifndef PEBBLETON_OUTLINES_H
#define PEBBLETON_OUTLINES_H

#include <string>
#include <vector>

#include <cairo.h>

#include "Canvas.h"
#include "Theme.h"

namespace PEBBLETON
{

// Draws the edge of each push button and its code, both to be seen on any skin.
class OutlinesC
{
public:
    // ioCanvas must outlive this object.
    explicit OutlinesC(CanvasC& ioCanvas);
    ~OutlinesC();
    OutlinesC(const OutlinesC&) = delete;
    OutlinesC& operator=(const OutlinesC&) = delete;

    void Draw(const std::vector<Entry>& iButtons);

private:
    struct Box {
        double x;
        double y;
        double width;
        double height;
    };

    void DrawEdge(const Rectangle& iRectangle);
    void DrawCode(const Entry& iButton);
    void FindRoom(Box& ioLabel) const;
    const Box* FindCovered(const Box& iLabel) const; // a label that it would cover; null: none

    Size mSize;
    cairo_surface_t* mSurface; // owned
    cairo_t* mContext;         // owned
    std::vector<Box> mLabels;  // that are drawn
};

} // namespace PEBBLETON

#endif
