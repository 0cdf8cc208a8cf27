#include "inspect/report_json.h"

#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

using Json = nlohmann::ordered_json;

Json json(const BoundingBox& box) {
    if (box.isEmpty()) {
        return {};
    }
    return {{"xMin", box.xMin}, {"yMin", box.yMin}, {"xMax", box.xMax}, {"yMax", box.yMax}};
}

Json json(const RecordCounts& counts) {
    return {{"total", counts.records},         {"notRead", counts.unparsed},
            {"kept", counts.kept()},           {"inside", counts.inside},
            {"onBoundary", counts.onBoundary}, {"outside", counts.outside}};
}

Json json(const FileReport& file) {
    Json object{{"name", file.name}, {"taken", file.taken}};
    if (!file.reason.empty()) {
        object["reason"] = file.reason;
    }
    if (file.failed) {
        object["failed"] = true;
    }
    object["advice"] = file.advice;
    if (!file.taken || file.failed) {
        return object;
    }
    object["format"] = file.header.format == 'x' ? "xyz" : "node";
    object["columns"] = file.header.columns() > 0 ? Json(file.header.columns()) : Json();
    object["separator"] =
        file.header.hasSeparator() ? Json(std::string(1, file.header.separator)) : Json();
    object["lineEnds"] = {{"lf", file.lineFeeds}, {"crLf", file.carriageReturnLineFeeds}};
    object["records"] = json(file.counts);
    object["bounds"] = json(file.bounds);
    object["firstNotRead"] = Json::array();
    for (const UnparsedLine& line : file.firstUnparsed) {
        object["firstNotRead"].push_back({{"line", line.number}, {"reason", line.reason}});
    }
    object["decimalCommas"] = !file.decimalComma.empty();
    object["lastLineUnread"] = file.lastLineUnread;
    return object;
}

Json json(const PolygonReport& polygon) {
    return {{"id", polygon.id},
            {"vertices", polygon.vertices},
            {"bounds", polygon.vertices > 0 ? json(polygon.bounds) : Json()},
            {"area", polygon.area},
            {"holds", polygon.held},
            {"remarks", polygon.remarks}};
}

} // namespace

std::string jsonOf(const Report& report, bool all) {
    Json object{{"inputDirectory", report.inputDirectory},
                {"boundaryFile", report.boundaryFile},
                {"wouldKeep", report.wouldKeep()},
                {"failure", report.failure.empty() ? Json() : Json(report.failure)},
                {"hints", report.hints},
                {"records", json(report.total)},
                {"pointBounds", json(report.pointBounds)},
                {"boundaryBounds", json(report.modelBounds)},
                {"polygonCount", report.polygons.size()},
                {"polygons", Json::array()},
                {"fileCounts", Json::object()},
                {"files", Json::array()}};
    for (const PolygonReport& polygon : report.polygons) {
        if (isListed(polygon, report, all)) {
            object["polygons"].push_back(json(polygon));
        }
    }
    for (const auto& [outcome, count] : countByOutcome(report)) {
        object["fileCounts"][outcome] = count;
    }
    for (const FileReport& file : report.files) {
        if (all || hasProblem(file)) {
            object["files"].push_back(json(file));
        }
    }
    return object.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace veldtrim
