#include "inspect/picture/legend.h"

#include "explain/wording.h"
#include "inspect/picture/drawing.h"
#include "inspect/picture/polygons.h"

#include <cmath>
#include <cstdint>
#include <string>

namespace veldtrim {

namespace {

constexpr double textSize = 13.0;

/// Writes a column of lines from top to bottom.
class Legend {
public:
    Legend(cairo_t* page, double x, double y) : page_(page), x_(x), y_(y) {}

    void heading(const std::string& words, double size) {
        drawHeading(page_, words, x_, y_, size);
        y_ += 20.0;
    }

    void line(const std::string& words) { drawText(page_, words, x_, y_, textSize); }

    /// Writes a line after a box in the colour that it explains.
    void entry(const std::string& words, const Colour& colour, double alpha, bool isOutlined) {
        constexpr double box = 13.0;
        setColour(page_, colour, alpha);
        cairo_rectangle(page_, x_, y_ - box + 2.0, box, box);
        cairo_fill_preserve(page_);
        setColour(page_, colour, isOutlined ? 1.0 : 0.0);
        cairo_set_line_width(page_, 1.5);
        cairo_stroke(page_);
        drawText(page_, words, x_ + box + 8.0, y_, textSize);
        y_ += 22.0;
    }

    void note(const std::string& words) {
        drawText(page_, words, x_ + 21.0, y_, 12.0);
        y_ += 18.0;
    }

    void skip(double space) { y_ += space; }

    [[nodiscard]] double x() const { return x_; }
    [[nodiscard]] double y() const { return y_; }

private:
    cairo_t* page_;
    double x_;
    double y_; ///< the base line of the next line
};

std::string groupedSize(std::size_t number) {
    return grouped(static_cast<std::int64_t>(number));
}

void writeCounts(Legend& legend, const Report& report) {
    const RecordCounts& counts = report.total;
    const double percent = counts.records > 0 ? 100.0 * static_cast<double>(counts.kept()) /
                                                    static_cast<double>(counts.records)
                                              : 0.0;
    legend.heading(report.wouldKeep() ? "A run keeps" : "A run keeps nothing", 14.0);
    legend.line(grouped(counts.kept()) + " of " + grouped(counts.records) + " records (" +
                measure(std::floor(percent * 10.0) / 10.0) + " %)");
    legend.skip(30.0);
    legend.entry("kept: " + grouped(counts.kept()), keptColour, 0.9, false);
    legend.note(grouped(counts.inside) + " inside");
    legend.note(grouped(counts.onBoundary) + " on an edge");
    legend.skip(6.0);
    legend.entry("outside: " + grouped(counts.outside), droppedColour, 0.9, false);
    legend.entry("polygons: " + groupedSize(report.polygons.size()), outlineColour, fillAlpha,
                 true);
    legend.skip(6.0);
    legend.note("not read: " + grouped(counts.unparsed) + " records");
    legend.note("files: " + groupedSize(takenFiles(report)) + " of " +
                groupedSize(report.files.size()) + " taken");
    legend.skip(14.0);
}

void drawOverview(cairo_t* page, Legend& legend, const Inspection& inspection, const View& view) {
    const BoundingBox whole = boundsOfEverything(inspection.report);
    const BoundingBox& shown = view.shown;
    if (whole.isEmpty() || shown.contains(whole)) {
        return;
    }
    drawHeading(page, "Where this is", legend.x(), legend.y(), textSize);
    View small = viewOf(whole, legendWidth - margin - 20.0, 60.0);
    small.left = legend.x();
    small.top = legend.y() + 10.0;
    cairo_save(page);
    cairo_rectangle(page, small.left, small.top, small.width, small.height);
    cairo_clip_preserve(page);
    setColour(page, textColour, 0.6);
    cairo_stroke(page);
    fillPolygons(page, inspection.model, small);
    outlinePolygons(page, inspection.model, small);
    cairo_rectangle(page, small.x(shown.xMin), small.y(shown.yMax),
                    (shown.xMax - shown.xMin) * small.scale,
                    (shown.yMax - shown.yMin) * small.scale);
    setColour(page, droppedColour);
    cairo_set_line_width(page, 2.0);
    cairo_stroke(page);
    cairo_restore(page);
}

} // namespace

void drawLegend(cairo_t* page, const Inspection& inspection, const View& view) {
    Legend legend(page, view.right() + margin, view.top + 14.0);
    writeCounts(legend, inspection.report);
    drawOverview(page, legend, inspection, view);
}

} // namespace veldtrim
