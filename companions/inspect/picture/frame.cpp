#include "inspect/picture/frame.h"

#include "explain/wording.h"
#include "inspect/picture/drawing.h"

#include <cmath>

namespace veldtrim {

namespace {

constexpr double textSize = 11.0;

/// Returns the largest number up to `longest` that is 1, 2 or 5 times a power of ten.
double roundLength(double longest) {
    const double decade = std::pow(10.0, std::floor(std::log10(longest)));
    const double ratio = longest / decade;
    return decade * (ratio >= 5.0 ? 5.0 : ratio >= 2.0 ? 2.0 : 1.0);
}

void drawScaleBar(cairo_t* page, const View& view, double y) {
    const double length = roundLength(view.width / 4.0 / view.scale);
    const double middle = view.left + view.width / 2.0;
    const double half = length * view.scale / 2.0;
    setColour(page, textColour);
    cairo_set_line_width(page, 3.0);
    cairo_move_to(page, middle - half, y - 5.0);
    cairo_line_to(page, middle + half, y - 5.0);
    cairo_stroke(page);
    drawText(page, measure(length) + " units", middle, y + 11.0, textSize, Align::Middle);
}

} // namespace

void drawFrame(cairo_t* page, const View& view) {
    setColour(page, textColour, 0.6);
    cairo_set_line_width(page, 1.0);
    cairo_rectangle(page, view.left, view.top, view.width, view.height);
    cairo_stroke(page);
    const BoundingBox& shown = view.shown;
    const double below = view.bottom() + 15.0;
    const double inside = view.left + 4.0;
    drawText(page, "x " + measure(shown.xMin), view.left, below, textSize);
    drawText(page, measure(shown.xMax), view.right(), below, textSize, Align::Right);
    drawText(page, "y " + measure(shown.yMin), inside, view.bottom() - 6.0, textSize);
    drawText(page, "y " + measure(shown.yMax), inside, view.top + 14.0, textSize);
    drawScaleBar(page, view, below);
}

} // namespace veldtrim
