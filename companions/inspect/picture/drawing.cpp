#include "inspect/picture/drawing.h"

namespace veldtrim {

namespace {

void selectFont(cairo_t* page, cairo_font_weight_t weight, double size) {
    cairo_select_font_face(page, "sans-serif", CAIRO_FONT_SLANT_NORMAL, weight);
    cairo_set_font_size(page, size);
}

double shareToTheLeft(Align align) {
    switch (align) {
    case Align::Left:
        return 0.0;
    case Align::Middle:
        return 0.5;
    case Align::Right:
        break;
    }
    return 1.0;
}

} // namespace

void setColour(cairo_t* page, const Colour& colour, double alpha) {
    cairo_set_source_rgba(page, colour.red, colour.green, colour.blue, alpha);
}

void drawText(cairo_t* page, const std::string& words, double x, double y, double size,
              Align align) {
    selectFont(page, CAIRO_FONT_WEIGHT_NORMAL, size);
    cairo_text_extents_t extents{};
    cairo_text_extents(page, words.c_str(), &extents);
    setColour(page, textColour);
    cairo_move_to(page, x - shareToTheLeft(align) * extents.x_advance, y);
    cairo_show_text(page, words.c_str());
}

void drawHeading(cairo_t* page, const std::string& words, double x, double y, double size) {
    selectFont(page, CAIRO_FONT_WEIGHT_BOLD, size);
    setColour(page, textColour);
    cairo_move_to(page, x, y);
    cairo_show_text(page, words.c_str());
}

} // namespace veldtrim
