#include "inspect/picture/points.h"

#include "inspect/picture/drawing.h"
#include "inspect/picture/surface.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace veldtrim {

namespace {

void drawDots(cairo_t* page, const Density& density, Density::Kind kind, const Colour& colour,
              double size, const View& view) {
    setColour(page, colour);
    for (const Density::Point& point : density.points()) {
        if (point.kind == kind) {
            cairo_rectangle(page, view.x(point.x) - size / 2.0, view.y(point.y) - size / 2.0, size,
                            size);
        }
    }
    cairo_fill(page);
}

void drawDots(cairo_t* page, const Density& density, const BoundingBox& box, const View& view) {
    if (density.points().empty()) {
        return;
    }
    const double area = (box.xMax - box.xMin) * (box.yMax - box.yMin);
    const auto count = static_cast<double>(density.points().size());
    const double spacing = std::sqrt(area / count) * view.scale;
    const double size = std::clamp(spacing * 0.6, 1.5, 6.0);
    drawDots(page, density, Density::Dropped, droppedColour, size, view);
    drawDots(page, density, Density::Kept, keptColour, size, view);
}

/// Returns a mixture of both colours, which is more opaque the more points the cell contains. Cairo
/// expects channels premultiplied by the opacity.
std::uint32_t pixelOf(const Density::Counts& cell, std::uint32_t most) {
    const double kept = cell[Density::Kept];
    const double dropped = cell[Density::Dropped];
    const double share = kept / (kept + dropped);
    const double level = std::log1p(kept + dropped) / std::log1p(2.0 * most);
    const double alpha = std::min(1.0, 0.45 + 0.55 * level);
    const auto channel = [&](double ofKept, double ofDropped) {
        const double value = (share * ofKept + (1.0 - share) * ofDropped) * alpha;
        return static_cast<std::uint32_t>(std::lround(value * 255.0));
    };
    return static_cast<std::uint32_t>(std::lround(alpha * 255.0)) << 24U |
           channel(keptColour.red, droppedColour.red) << 16U |
           channel(keptColour.green, droppedColour.green) << 8U |
           channel(keptColour.blue, droppedColour.blue);
}

/// Returns an image with one pixel per cell, the top row first, or null if memory runs out.
Surface imageOf(const Density& density) {
    std::uint32_t most = 1;
    density.forEachFilledCell([&](std::int64_t, std::int64_t, const Density::Counts& cell) {
        most = std::max({most, cell[Density::Kept], cell[Density::Dropped]});
    });
    const auto side = static_cast<int>(Density::side);
    Surface image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side));
    cairo_surface_flush(image.get());
    unsigned char* const pixels = cairo_image_surface_get_data(image.get());
    if (pixels == nullptr) {
        return nullptr;
    }
    const int stride = cairo_image_surface_get_stride(image.get());
    density.forEachFilledCell(
        [&](std::int64_t column, std::int64_t row, const Density::Counts& cell) {
            const std::uint32_t pixel = pixelOf(cell, most);
            const std::int64_t line = Density::side - 1 - row;
            std::memcpy(pixels + line * stride + column * 4, &pixel, sizeof pixel);
        });
    cairo_surface_mark_dirty(image.get());
    return image;
}

void drawImage(cairo_t* page, const Density& density, const View& view) {
    const Surface image = imageOf(density);
    if (!image) {
        return;
    }
    const double size = density.cellSize() * view.scale; // of a cell, in pixels
    cairo_save(page);
    cairo_translate(page, view.x(density.xMin()),
                    view.y(density.yMin()) - size * static_cast<double>(Density::side));
    cairo_scale(page, size, size);
    cairo_set_source_surface(page, image.get(), 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(page),
                             size >= 1.0 ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
    cairo_paint(page);
    cairo_restore(page);
}

} // namespace

void drawPoints(cairo_t* page, const Density& density, const BoundingBox& bounds,
                const View& view) {
    if (density.hasAllPoints()) {
        drawDots(page, density, bounds, view);
    } else {
        drawImage(page, density.coarsened(), view);
    }
}

} // namespace veldtrim
