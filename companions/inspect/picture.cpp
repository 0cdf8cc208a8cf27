#include "inspect/picture.h"

#include "geometry/tolerance.h"
#include "inspect/report_text.h"

#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace veldtrim {

namespace {

constexpr double margin = 24.0;
constexpr double axisSpace = 34.0;
constexpr double legendWidth = 270.0;
constexpr double longestSide = 860.0;
constexpr double shortestSide = 330.0;

struct Colour {
    double red;
    double green;
    double blue;
};
constexpr Colour keptColour{0.05, 0.45, 0.25};
constexpr Colour droppedColour{0.90, 0.45, 0.10};
constexpr Colour outlineColour{0.10, 0.20, 0.55};
constexpr Colour textColour{0.15, 0.15, 0.15};
constexpr double fillAlpha = 0.16;

struct ContextEnd {
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
struct SurfaceEnd {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, SurfaceEnd>;

void check(cairo_status_t status, const std::string& path) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot write the picture " + path + ": " +
                                 cairo_status_to_string(status));
    }
}

/// From the coordinates of the workspace to those of the page.
struct View {
    double left = 0.0;
    double top = 0.0;
    double width = 0.0;
    double height = 0.0;
    BoundingBox shown; ///< of the workspace
    double scale = 1.0;

    [[nodiscard]] double x(double value) const { return left + (value - shown.xMin) * scale; }
    [[nodiscard]] double y(double value) const { return top + (shown.yMax - value) * scale; }
};

bool isDrawable(double value) {
    return std::fabs(value) <= largestCoordinate;
}

bool isDrawable(const PointBounds& bounds) {
    const BoundingBox& box = bounds.box;
    return !bounds.isEmpty() && isDrawable(box.xMin) && isDrawable(box.xMax) &&
           isDrawable(box.yMin) && isDrawable(box.yMax);
}

/// What is to be seen as a whole.
PointBounds everything(const Report& report) {
    PointBounds all;
    for (const PointBounds& bounds : {report.modelBounds, report.pointBounds}) {
        if (isDrawable(bounds)) {
            all.add(bounds.box);
        }
    }
    return all;
}

/// The points, where boundaries are among them: what the polygons do elsewhere does not matter.
/// Else everything.
PointBounds whatMatters(const Report& report) {
    const BoundingBox& points = report.pointBounds.box;
    const BoundingBox& model = report.modelBounds.box;
    const bool meet = isDrawable(report.pointBounds) && isDrawable(report.modelBounds) &&
                      points.xMin <= model.xMax && model.xMin <= points.xMax &&
                      points.yMin <= model.yMax && model.yMin <= points.yMax;
    return meet ? report.pointBounds : everything(report);
}

/// A view of `bounds` with an edge around it, whose longer side is `longest` on the page and whose
/// shorter one is at least `shortest`.
View viewOf(const PointBounds& bounds, double longest, double shortest) {
    View view;
    view.shown = bounds.isEmpty() ? BoundingBox{0.0, 0.0, 1.0, 1.0} : bounds.box;
    BoundingBox& box = view.shown;
    const double extent =
        std::max({box.xMax - box.xMin, box.yMax - box.yMin, std::fabs(box.xMin) * 1e-9, 1e-9});
    const double edge = extent * 0.06;
    box = {box.xMin - edge, box.yMin - edge, box.xMax + edge, box.yMax + edge};
    view.scale = longest / std::max(box.xMax - box.xMin, box.yMax - box.yMin);
    const auto widen = [&](double& low, double& high) {
        const double missing = std::max(0.0, shortest / view.scale - (high - low));
        low -= missing / 2.0;
        high += missing / 2.0;
    };
    widen(box.xMin, box.xMax);
    widen(box.yMin, box.yMax);
    view.left = margin;
    view.top = margin;
    view.width = (box.xMax - box.xMin) * view.scale;
    view.height = (box.yMax - box.yMin) * view.scale;
    return view;
}

class Painter {
public:
    Painter(cairo_t* context, Inspection& inspection, const View& view)
        : context_(context), inspection_(inspection), report_(inspection.report), view_(view) {}

    void draw(double pageWidth, double pageHeight) {
        cairo_set_source_rgb(context_, 1.0, 1.0, 1.0);
        cairo_rectangle(context_, 0.0, 0.0, pageWidth, pageHeight);
        cairo_fill(context_);
        cairo_save(context_);
        cairo_rectangle(context_, view_.left, view_.top, view_.width, view_.height);
        cairo_clip(context_);
        fillPolygons(view_);
        drawPoints();
        outlinePolygons(view_);
        cairo_restore(context_);
        drawFrame();
        drawLegend();
    }

private:
    void colour(const Colour& colour, double alpha) {
        cairo_set_source_rgba(context_, colour.red, colour.green, colour.blue, alpha);
    }

    /// Each by itself: where two overlap, their points are kept all the same, and it is darker.
    void fillPolygons(const View& view) {
        cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
        colour(outlineColour, fillAlpha);
        for (const BoundaryPolygon& polygon : inspection_.model.polygons()) {
            tracePolygon(polygon, view);
            cairo_fill(context_);
        }
    }

    void outlinePolygons(const View& view) {
        colour(outlineColour, 1.0);
        cairo_set_line_width(context_, 1.5);
        cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
        for (const BoundaryPolygon& polygon : inspection_.model.polygons()) {
            tracePolygon(polygon, view);
            cairo_stroke(context_);
        }
    }

    void tracePolygon(const BoundaryPolygon& polygon, const View& view) {
        cairo_new_path(context_);
        const auto& vertices = inspection_.model.vertices();
        for (const std::int32_t index : polygon.vertexIndices) {
            const BoundaryVertex& vertex = vertices[static_cast<std::size_t>(index)];
            if (isDrawable(vertex.x) && isDrawable(vertex.y)) {
                cairo_line_to(context_, view.x(vertex.x), view.y(vertex.y));
            }
        }
        cairo_close_path(context_);
    }

    void drawPoints() {
        Density& density = *inspection_.density;
        if (!density.hasAllPoints()) {
            density.coarsen();
            drawImage();
        } else if (!density.points().empty()) {
            const BoundingBox& box = report_.pointBounds.box;
            const double area = (box.xMax - box.xMin) * (box.yMax - box.yMin);
            const auto count = static_cast<double>(density.points().size());
            const double spacing = std::sqrt(area / count) * view_.scale;
            const double size = std::clamp(spacing * 0.6, 1.5, 6.0);
            drawDots(droppedColour, size, Density::Dropped);
            drawDots(keptColour, size, Density::Kept);
        }
    }

    void drawDots(const Colour& dots, double size, Density::Kind kind) {
        colour(dots, 1.0);
        for (const Density::Point& point : inspection_.density->points()) {
            if (point.kind == kind) {
                cairo_rectangle(context_, view_.x(point.x) - size / 2.0,
                                view_.y(point.y) - size / 2.0, size, size);
            }
        }
        cairo_fill(context_);
    }

    /// The densities as an image with a pixel a cell, scaled to the view.
    void drawImage() {
        const Density& density = *inspection_.density;
        std::uint32_t most = 1;
        forEachCell([&](std::int64_t, std::int64_t, const Density::Counts& cell) {
            most = std::max({most, cell[Density::Kept], cell[Density::Dropped]});
        });
        const auto side = static_cast<int>(Density::side);
        const Surface image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, side, side));
        cairo_surface_flush(image.get());
        unsigned char* const pixels = cairo_image_surface_get_data(image.get());
        if (pixels == nullptr) {
            return;
        }
        const int stride = cairo_image_surface_get_stride(image.get());
        forEachCell([&](std::int64_t column, std::int64_t row, const Density::Counts& cell) {
            const std::int64_t line = Density::side - 1 - row;
            const std::uint32_t pixel = pixelOf(cell, most);
            unsigned char* const at = pixels + line * stride + column * 4;
            std::memcpy(at, &pixel, sizeof pixel);
        });
        cairo_surface_mark_dirty(image.get());
        const double size = density.cellSize() * view_.scale;
        cairo_save(context_);
        cairo_translate(context_, view_.x(density.xMin()),
                        view_.y(density.yMin()) - size * static_cast<double>(Density::side));
        cairo_scale(context_, size, size);
        cairo_set_source_surface(context_, image.get(), 0.0, 0.0);
        cairo_pattern_set_filter(cairo_get_source(context_),
                                 size >= 1.0 ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
        cairo_paint(context_);
        cairo_restore(context_);
    }

    template <typename Visit>
    void forEachCell(Visit visit) const {
        for (std::int64_t row = 0; row < Density::side; ++row) {
            for (std::int64_t column = 0; column < Density::side; ++column) {
                const Density::Counts& cell = inspection_.density->at(column, row);
                if (cell[Density::Kept] != 0 || cell[Density::Dropped] != 0) {
                    visit(column, row, cell);
                }
            }
        }
    }

    /// The mixture of both colours, the more opaque the denser; as cairo keeps it, premultiplied.
    static std::uint32_t pixelOf(const Density::Counts& cell, std::uint32_t most) {
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

    void text(const std::string& words, double x, double y, double size, bool bold = false,
              double align = 0.0) {
        cairo_select_font_face(context_, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(context_, size);
        cairo_text_extents_t extents{};
        cairo_text_extents(context_, words.c_str(), &extents);
        colour(textColour, 1.0);
        cairo_move_to(context_, x - align * extents.x_advance, y);
        cairo_show_text(context_, words.c_str());
    }

    /// The frame, with the coordinates of its corners, and a bar of a round length.
    void drawFrame() {
        colour(textColour, 0.6);
        cairo_set_line_width(context_, 1.0);
        cairo_rectangle(context_, view_.left, view_.top, view_.width, view_.height);
        cairo_stroke(context_);
        const double below = view_.top + view_.height + 15.0;
        constexpr double size = 11.0;
        text("x " + coordinate(view_.shown.xMin), view_.left, below, size);
        text(coordinate(view_.shown.xMax), view_.left + view_.width, below, size, false, 1.0);
        text("y " + coordinate(view_.shown.yMin), view_.left + 4.0, view_.top + view_.height - 6.0,
             size);
        text("y " + coordinate(view_.shown.yMax), view_.left + 4.0, view_.top + 14.0, size);

        const double longest = view_.width / 4.0 / view_.scale;
        const double decade = std::pow(10.0, std::floor(std::log10(longest)));
        const double length = decade * (longest / decade >= 5.0   ? 5.0
                                        : longest / decade >= 2.0 ? 2.0
                                                                  : 1.0);
        const double middle = view_.left + view_.width / 2.0;
        const double half = length * view_.scale / 2.0;
        colour(textColour, 1.0);
        cairo_set_line_width(context_, 3.0);
        cairo_move_to(context_, middle - half, below - 5.0);
        cairo_line_to(context_, middle + half, below - 5.0);
        cairo_stroke(context_);
        text(coordinate(length) + " units", middle, below + 11.0, size, false, 0.5);
    }

    void legendLine(const Colour& swatch, double alpha, bool outlined, const std::string& words) {
        constexpr double box = 13.0;
        colour(swatch, alpha);
        cairo_rectangle(context_, legendX(), legendY_ - box + 2.0, box, box);
        cairo_fill_preserve(context_);
        colour(swatch, outlined ? 1.0 : 0.0);
        cairo_set_line_width(context_, 1.5);
        cairo_stroke(context_);
        text(words, legendX() + box + 8.0, legendY_, 13.0);
        legendY_ += 22.0;
    }

    void legendNote(const std::string& words) {
        text(words, legendX() + 21.0, legendY_, 12.0);
        legendY_ += 18.0;
    }

    [[nodiscard]] double legendX() const { return view_.left + view_.width + margin; }

    void drawLegend() {
        const RecordCounts& counts = report_.total;
        legendY_ = view_.top + 14.0;
        const double share = counts.records > 0 ? 100.0 * static_cast<double>(counts.kept()) /
                                                      static_cast<double>(counts.records)
                                                : 0.0;
        text(report_.wouldKeep() ? "A run keeps" : "A run keeps nothing", legendX(), legendY_, 14.0,
             true);
        legendY_ += 20.0;
        text(grouped(counts.kept()) + " of " + grouped(counts.records) + " records (" +
                 coordinate(std::floor(share * 10.0) / 10.0) + " %)",
             legendX(), legendY_, 13.0);
        legendY_ += 30.0;
        legendLine(keptColour, 0.9, false, "kept: " + grouped(counts.kept()));
        legendNote(grouped(counts.inside) + " inside");
        legendNote(grouped(counts.onBoundary) + " on an edge");
        legendY_ += 6.0;
        legendLine(droppedColour, 0.9, false, "outside: " + grouped(counts.outside));
        legendLine(outlineColour, fillAlpha, true,
                   "polygons: " + grouped(static_cast<std::int64_t>(report_.polygons.size())));
        legendY_ += 6.0;
        legendNote("not read: " + grouped(counts.unparsed) + " records");
        legendNote("files: " + grouped(static_cast<std::int64_t>(takenFiles(report_))) + " of " +
                   grouped(static_cast<std::int64_t>(report_.files.size())) + " taken");
        legendY_ += 14.0;
        drawOverview();
    }

    /// Where the picture lies in the whole of the boundaries.
    void drawOverview() {
        const BoundingBox whole = everything(report_).box;
        const BoundingBox& shown = view_.shown;
        if (everything(report_).isEmpty() ||
            (shown.xMin <= whole.xMin && whole.xMax <= shown.xMax && shown.yMin <= whole.yMin &&
             whole.yMax <= shown.yMax)) {
            return;
        }
        text("Where this is", legendX(), legendY_, 13.0, true);
        View small = viewOf(everything(report_), legendWidth - margin - 20.0, 60.0);
        small.left = legendX();
        small.top = legendY_ + 10.0;
        cairo_save(context_);
        cairo_rectangle(context_, small.left, small.top, small.width, small.height);
        cairo_clip_preserve(context_);
        colour(textColour, 0.6);
        cairo_stroke(context_);
        fillPolygons(small);
        outlinePolygons(small);
        cairo_rectangle(context_, small.x(shown.xMin), small.y(shown.yMax),
                        (shown.xMax - shown.xMin) * small.scale,
                        (shown.yMax - shown.yMin) * small.scale);
        colour(droppedColour, 1.0);
        cairo_set_line_width(context_, 2.0);
        cairo_stroke(context_);
        cairo_restore(context_);
    }

    cairo_t* context_;
    Inspection& inspection_;
    const Report& report_;
    const View& view_;
    double legendY_ = 0.0;
};

} // namespace

void drawPicture(Inspection& inspection, const std::string& path) {
    // A narrow strip of points gets room on both sides.
    const View view = viewOf(whatMatters(inspection.report), longestSide, shortestSide);
    constexpr double legendHeight = 540.0;
    const double width = view.left + view.width + margin + legendWidth;
    const double height = view.top + std::max(view.height, legendHeight) + axisSpace + 8.0;
    const bool isSvg = std::string_view(path).ends_with(".svg");
    const Surface surface(isSvg ? cairo_svg_surface_create(path.c_str(), width, height)
                                : cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                                             static_cast<int>(width),
                                                             static_cast<int>(height)));
    check(cairo_surface_status(surface.get()), path);
    {
        const std::unique_ptr<cairo_t, ContextEnd> context(cairo_create(surface.get()));
        Painter(context.get(), inspection, view).draw(width, height);
        check(cairo_status(context.get()), path);
    }
    if (!isSvg) {
        check(cairo_surface_write_to_png(surface.get(), path.c_str()), path);
    }
    cairo_surface_finish(surface.get());
    check(cairo_surface_status(surface.get()), path);
}

} // namespace veldtrim
