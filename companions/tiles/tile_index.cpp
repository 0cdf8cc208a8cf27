#include "tiles/tile_index.h"

#include "geometry/tolerance.h"
#include "platform/file.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/stop_signals.h"
#include "text/line_reader.h"
#include "tiles/name_text.h"
#include "tiles/staging.h"

#include <chrono>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

namespace fs = boost::filesystem;
namespace bg = boost::geometry;
using Json = nlohmann::json;
using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;

constexpr std::string_view firstLine = "{\"type\":\"FeatureCollection\",\"features\":[";
constexpr std::string_view lastLine = "]}\n";

Json featureOf(const std::string& directory, const std::string& name, const IndexedTile& tile) {
    // Numbers of this size are rounded in many programs, but texts are not.
    Json feature{{"type", "Feature"},
                 {"properties",
                  {{"location", (fs::path(directory) / name).string()},
                   {"tile", encodeName(name)},
                   {"size", tile.size},
                   {"modified", std::to_string(tile.modified)},
                   {"records", tile.content.records},
                   {"input", tile.content.isInput}}},
                 {"geometry", nullptr}};
    const BoundingBox& box = tile.content.bounds;
    if (!box.isEmpty()) {
        feature["bbox"] = {box.xMin, box.yMin, box.xMax, box.yMax};
        const auto position = [](double x, double y) { return Json::array({x, y}); };
        const Json ring = Json::array({position(box.xMin, box.yMin), position(box.xMax, box.yMin),
                                       position(box.xMax, box.yMax), position(box.xMin, box.yMax),
                                       position(box.xMin, box.yMin)});
        feature["geometry"] = {{"type", "Polygon"}, {"coordinates", Json::array({ring})}};
    }
    return feature;
}

/// Reads a feature. Throws Json::exception if it is no tile's, and what decodeName and stoll throw.
void addFeature(const Json& feature, TileIndex& index) {
    const Json& properties = feature.at("properties");
    IndexedTile tile;
    tile.size = properties.at("size").get<std::int64_t>();
    tile.modified = std::stoll(properties.at("modified").get<std::string>());
    tile.content.records = properties.at("records").get<std::int64_t>();
    tile.content.isInput = properties.at("input").get<bool>();
    if (feature.contains("bbox")) {
        const auto box = feature.at("bbox").get<std::vector<double>>();
        tile.content.bounds = {box.at(0), box.at(1), box.at(2), box.at(3)};
    }
    index[decodeName(properties.at("tile").get<std::string>())] = tile;
}

/// Creates and locks the file that becomes the index, so that commands bring it up to date one
/// after the other. One that was killed may have left it.
std::unique_ptr<FileLock> lockUnfinished(const std::string& unfinished) {
    constexpr std::chrono::milliseconds pause{20};
    for (;;) {
        auto lock = std::make_unique<FileLock>(unfinished);
        if (lock->isHeld() && lock->isInPlace()) {
            return lock;
        }
        if (stopRequested()) {
            throw std::runtime_error(interruptedText);
        }
        std::this_thread::sleep_for(pause);
    }
}

/// Writes a FeatureCollection with one feature on each line.
void writeFeatures(const std::string& path, const std::string& directory, const TileIndex& index) {
    PlatformFile file = PlatformFile::openForWriting(path);
    if (const std::error_code reason = file.openError()) {
        throw std::system_error(reason, "cannot write " + path);
    }
    constexpr std::size_t blockSize = std::size_t{64} << 10;
    std::string text(firstLine);
    const char* separator = "\n";
    for (const auto& [name, tile] : index) {
        text.append(separator).append(
            featureOf(directory, name, tile).dump(-1, ' ', false, Json::error_handler_t::replace));
        separator = ",\n";
        if (text.size() > blockSize) {
            file.write(text);
            text.clear();
        }
    }
    file.write(text.append("\n").append(lastLine));
    file.close();
}

} // namespace

TileIndex readIndex(const std::string& path) {
    TileIndex index;
    if (!fs::exists(fs::symlink_status(path))) {
        return index;
    }
    const auto refuse = [&] {
        throw std::runtime_error(path +
                                 " is not a tile index of veldtrim-tiles, or cannot be read");
    };
    if (!fs::is_regular_file(path)) {
        refuse(); // reading a pipe could block
    }
    LineReader lines(path);
    Line line;
    if (!lines.next(line) || line.text != firstLine) {
        refuse();
    }
    while (lines.next(line) && line.raw != lastLine) {
        std::string_view text = line.text;
        if (text.ends_with(',')) {
            text.remove_suffix(1);
        }
        try {
            addFeature(Json::parse(text), index);
        } catch (const std::exception&) {
            refuse();
        }
    }
    return index;
}

bool isIndexed(const TileIndex& index, const Piece& tile) {
    const auto found = index.find(tile.name);
    return found != index.end() && found->second.size == tile.size &&
           found->second.modified == tile.modified;
}

void markUnknown(std::vector<Piece>& tiles, const TileIndex& index) {
    for (Piece& tile : tiles) {
        tile.isMeasured = tile.isReadable && !isIndexed(index, tile);
    }
}

void updateIndex(const std::string& path, const std::string& directory,
                 const std::vector<Piece>& tiles, const TileIndex& known) {
    const std::string unfinished = path + ".part";
    const std::unique_ptr<FileLock> lock = lockUnfinished(unfinished);
    try {
        const TileIndex before = readIndex(path);
        TileIndex index;
        for (const Piece& tile : tiles) {
            if (const auto found = known.find(tile.name); found != known.end()) {
                index.insert(*found);
            } else if (isIndexed(before, tile)) {
                index.insert(*before.find(tile.name));
            }
        }
        writeFeatures(unfinished, directory, index);
        fs::rename(unfinished, path);
    } catch (...) {
        boost::system::error_code ignored;
        fs::remove(unfinished, ignored); // the disk may be full
        throw;
    }
}

std::int64_t leaveOut(std::vector<Piece>& tiles, const TileIndex& index,
                      const BoundaryModel& model) {
    std::vector<Box> boxes;
    for (const BoundaryPolygon& polygon : model.polygons()) {
        const BoundingBox box = polygon.bounds.widenedBy(pretestTolerance);
        boxes.emplace_back(Point(box.xMin, box.yMin), Point(box.xMax, box.yMax));
    }
    const bg::index::rtree<Box, bg::index::quadratic<16>> polygons(boxes);
    const auto canBeLeftOut = [&](const Piece& tile) {
        if (!tile.isReadable || !isIndexed(index, tile)) {
            return false;
        }
        const TileBounds& content = index.at(tile.name).content;
        if (!content.isInput || content.records > std::numeric_limits<std::int32_t>::max()) {
            return false;
        }
        const BoundingBox& box = content.bounds;
        const Box bounds(Point(box.xMin, box.yMin), Point(box.xMax, box.yMax));
        return box.isEmpty() || polygons.qbegin(bg::index::intersects(bounds)) == polygons.qend();
    };
    return static_cast<std::int64_t>(std::erase_if(tiles, canBeLeftOut));
}

} // namespace veldtrim
