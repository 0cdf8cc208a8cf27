#include "tiles/shard_report.h"

#include "run/clip_file.h"
#include "run/outcome.h"
#include "run/skipped_file.h"
#include "run/workspace_checks.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

#include <boost/filesystem/path.hpp>
#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

using Json = nlohmann::json;
namespace fs = boost::filesystem;

constexpr std::string_view pieceEnding = ".xyz";

/// A path of an attempt within a text.
struct PathInText {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t piece = 0;
};

/// Finds "./<folder>/<piece>.xyz".
std::optional<PathInText> findPiece(const std::string& text, std::string_view folder) {
    const std::string start = "./" + std::string(folder) + "/";
    for (std::size_t begin = text.find(start); begin != std::string::npos;
         begin = text.find(start, begin + 1)) {
        PathInText found;
        found.begin = begin;
        const char* const last = text.data() + text.size();
        const auto [end, error] =
            std::from_chars(text.data() + begin + start.size(), last, found.piece);
        found.end = static_cast<std::size_t>(end - text.data()) + pieceEnding.size();
        if (error == std::errc() && std::string_view(end, last).starts_with(pieceEnding)) {
            return found;
        }
    }
    return {};
}

/// Whether the message says that a piece is skipped for a reason for which one run skips it too.
bool isUsualSkip(const std::string& text, const Shard& shard) {
    const std::optional<PathInText> path = findPiece(text, inputFolder);
    if (!path || path->piece >= shard.size()) {
        return false;
    }
    const std::string start = skippedText(text.substr(path->begin, path->end - path->begin), "");
    return text.starts_with(start) &&
           (!text.substr(start.size()).starts_with(cannotBeReadBecause) ||
            !shard[path->piece].isReadable);
}

Json boundsJson(std::size_t piece, const TileBounds& tile) {
    Json json{piece, tile.isInput, tile.records};
    if (!tile.bounds.isEmpty()) {
        const BoundingBox& box = tile.bounds;
        json.insert(json.end(), {box.xMin, box.yMin, box.xMax, box.yMax});
    }
    return json;
}

std::pair<std::size_t, TileBounds> boundsFrom(const Json& json) {
    constexpr std::size_t sizeWithBox = 7;
    TileBounds tile;
    tile.isInput = json.at(1).get<bool>();
    tile.records = json.at(2).get<std::int64_t>();
    if (json.size() == sizeWithBox) {
        tile.bounds = {json.at(3).get<double>(), json.at(4).get<double>(), json.at(5).get<double>(),
                       json.at(6).get<double>()};
    }
    return {json.at(0).get<std::size_t>(), tile};
}

} // namespace

std::string pieceFile(std::size_t piece) {
    return std::to_string(piece).append(pieceEnding);
}

std::vector<RunMessage> readRunMessages(std::string_view lines) {
    std::vector<RunMessage> messages;
    while (!lines.empty()) {
        const std::size_t end = lines.find('\n');
        const Json json = Json::parse(lines.substr(0, end), nullptr, false);
        lines.remove_prefix(end == std::string_view::npos ? lines.size() : end + 1);
        if (json.is_object() && json.contains("text")) {
            messages.push_back(
                {json.value("kind", ""), json.value("code", 0), json.value("text", "")});
        }
    }
    return messages;
}

void judge(const std::vector<RunMessage>& said, const Shard& shard, ShardReport& report) {
    std::size_t skipped = 0;
    for (const RunMessage& message : said) {
        if (message.kind == "state") {
            if (message.text == clippingText) {
                ++report.clipped;
            } else if (message.text != startText) {
                report.messages.push_back(message);
                if (isUsualSkip(message.text, shard)) {
                    ++skipped;
                } else if (report.failure.empty()) {
                    report.failure = message.text;
                }
            }
        } else if (message.kind == "error" && message.text == noInputFilesText) {
            report.hadInput = false;
        } else if (message.kind == "error") {
            report.messages.push_back(message);
            report.failure = message.text;
        }
    }
    if (report.failure.empty() &&
        static_cast<std::size_t>(report.clipped) + skipped != shard.size()) {
        report.failure = "Veldtrim did not find all tiles of the shard";
    }
    // One run clips a tile once.
    report.clipped -= std::count_if(shard.begin(), shard.end(),
                                    [](const Piece& piece) { return piece.begin != 0; });
}

std::string withUsersPaths(const std::string& text, const Plan& plan, const Shard& shard) {
    for (const auto& [folder, directory] :
         {std::pair(inputFolder, plan.shownInput()), std::pair(outputFolder, plan.shownOutput())}) {
        const std::optional<PathInText> path = findPiece(text, folder);
        if (path && path->piece < shard.size()) {
            return text.substr(0, path->begin) +
                   (fs::path(directory) / shard[path->piece].name).string() +
                   text.substr(path->end);
        }
    }
    std::string result = text;
    const std::string link = std::string("./") + boundaryLink;
    const std::size_t at = text.find(link);
    return at == std::string::npos ? result : result.replace(at, link.size(), plan.order.boundary);
}

std::string reportText(const ShardReport& report) {
    Json json{{"total", report.total},     {"hadInput", report.hadInput},
              {"clipped", report.clipped}, {"failure", report.failure},
              {"final", report.isFinal},   {"partRecords", report.partRecords},
              {"files", Json::array()},    {"bounds", Json::array()},
              {"messages", Json::array()}};
    for (const ClippedPiece& file : report.files) {
        json["files"].push_back({file.piece, file.size});
    }
    for (const auto& [piece, tile] : report.bounds) {
        json["bounds"].push_back(boundsJson(piece, tile));
    }
    for (const RunMessage& message : report.messages) {
        json["messages"].push_back({message.kind, message.code, message.text});
    }
    // Texts of the system may be in any encoding.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

bool readReport(std::string_view text, ShardReport& report) {
    const Json json = Json::parse(text, nullptr, false);
    try {
        report.total = json.at("total").get<std::int64_t>();
        report.hadInput = json.at("hadInput").get<bool>();
        report.clipped = json.at("clipped").get<std::int64_t>();
        report.failure = json.at("failure").get<std::string>();
        report.isFinal = json.at("final").get<bool>();
        report.partRecords = json.at("partRecords").get<decltype(report.partRecords)>();
        for (const Json& file : json.at("files")) {
            report.files.push_back({file.at(0).get<std::size_t>(), file.at(1).get<std::int64_t>()});
        }
        for (const Json& tile : json.at("bounds")) {
            report.bounds.push_back(boundsFrom(tile));
        }
        for (const Json& message : json.at("messages")) {
            report.messages.push_back({message.at(0).get<std::string>(), message.at(1).get<int>(),
                                       message.at(2).get<std::string>()});
        }
        return true;
    } catch (const Json::exception&) {
        return false;
    }
}

} // namespace veldtrim
