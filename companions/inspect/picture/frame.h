/// The frame of a picture.
#pragma once

#include "inspect/picture/view.h"

#include <cairo.h>

namespace veldtrim {

/// Height of the text below the frame, in pixels.
constexpr double axisSpace = 34.0;

/// Draws a frame around `view`, the coordinates of its sides and a scale bar of a round length.
void drawFrame(cairo_t* page, const View& view);

} // namespace veldtrim
