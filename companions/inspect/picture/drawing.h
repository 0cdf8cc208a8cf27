/// Colours and text on a page.
#pragma once

#include <cairo.h>

#include <string>

namespace veldtrim {

struct Colour {
    double red;
    double green;
    double blue;
};
constexpr Colour keptColour{0.05, 0.45, 0.25};
constexpr Colour droppedColour{0.90, 0.45, 0.10};
constexpr Colour outlineColour{0.10, 0.20, 0.55};
constexpr Colour textColour{0.15, 0.15, 0.15};

/// The opacity of the interior of polygons.
constexpr double fillAlpha = 0.16;

/// The distance between the parts of the page, in pixels.
constexpr double margin = 24.0;

/// Sets the colour of what is drawn next. An `alpha` of 1 is opaque.
void setColour(cairo_t* page, const Colour& colour, double alpha = 1.0);

/// The part of a text that is placed at the given x.
enum class Align { Left, Middle, Right };

/// Writes `words` with their base line at `y`. `size` is in pixels.
void drawText(cairo_t* page, const std::string& words, double x, double y, double size,
              Align align = Align::Left);

/// Writes `words` in bold, beginning at `x`.
void drawHeading(cairo_t* page, const std::string& words, double x, double y, double size);

} // namespace veldtrim
