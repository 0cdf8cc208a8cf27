#include "tiles/plan.h"

#include "run/workspace_checks.h"
#include "tiles/name_text.h"

#include <stdexcept>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <nlohmann/json.hpp>

namespace veldtrim {

namespace {

using Json = nlohmann::json;

/// The form of the files of a plan. A command refuses to go on with those of another form.
constexpr int planForm = 1;

RunDirectories directoriesOf(const Order& order) {
    const auto [workspace, input] = splitInputPath(order.scans);
    return runDirectories(workspace, input, order.output);
}

Json parse(std::string_view text) {
    try {
        return Json::parse(text);
    } catch (const Json::exception&) {
        throw std::runtime_error("the plan is damaged");
    }
}

Json pieceJson(const Piece& piece) {
    Json json{{"name", encodeName(piece.name)}, {"size", piece.size}, {"modified", piece.modified}};
    if (!piece.isReadable) {
        json["readable"] = false;
    }
    if (piece.isMeasured) {
        json["measured"] = true;
    }
    if (piece.isPart()) {
        json["begin"] = piece.begin;
        json["end"] = piece.end;
    }
    return json;
}

Piece pieceFrom(const Json& json) {
    Piece piece;
    piece.name = decodeName(json.at("name").get<std::string>());
    piece.size = json.at("size").get<std::int64_t>();
    piece.modified = json.at("modified").get<std::int64_t>();
    piece.isReadable = json.value("readable", true);
    piece.isMeasured = json.value("measured", false);
    piece.begin = json.value("begin", std::int64_t{0});
    piece.end = json.value("end", std::int64_t{0});
    return piece;
}

} // namespace

std::string Plan::shownInput() const {
    return directoriesOf(order).input;
}

std::string Plan::shownOutput() const {
    return directoriesOf(order).output;
}

std::string Plan::absolute(const std::string& path) const {
    return boost::filesystem::absolute(path, directory).string();
}

std::string planText(const Plan& plan) {
    const Json json{{"form", planForm},
                    {"scans", encodeName(plan.order.scans)},
                    {"output", encodeName(plan.order.output)},
                    {"boundary", encodeName(plan.order.boundary)},
                    {"tileIndex", encodeName(plan.tileIndex)},
                    {"clips", plan.clips},
                    {"leftOut", plan.leftOut},
                    {"directory", encodeName(plan.directory)},
                    {"boundarySize", plan.boundarySize},
                    {"boundaryModified", plan.boundaryModified},
                    {"shardSize", plan.shardSize},
                    {"shardBytes", plan.shardBytes}};
    return json.dump() + '\n';
}

Plan readPlan(std::string_view text) {
    const Json json = parse(text);
    try {
        if (json.at("form").get<int>() != planForm) {
            throw std::runtime_error("the plan is one of another version");
        }
        const auto name = [&](const char* key) {
            return decodeName(json.at(key).get<std::string>());
        };
        Plan plan;
        plan.order = {name("scans"), name("output"), name("boundary")};
        plan.tileIndex = name("tileIndex");
        plan.clips = json.at("clips").get<bool>();
        plan.leftOut = json.at("leftOut").get<std::int64_t>();
        plan.directory = name("directory");
        plan.boundarySize = json.at("boundarySize").get<std::int64_t>();
        plan.boundaryModified = json.at("boundaryModified").get<std::int64_t>();
        plan.shardSize = json.at("shardSize").get<std::int64_t>();
        plan.shardBytes = json.at("shardBytes").get<std::vector<std::int64_t>>();
        return plan;
    } catch (const Json::exception&) {
        throw std::runtime_error("the plan is damaged");
    }
}

std::string shardText(const Shard& shard) {
    std::string text;
    for (const Piece& piece : shard) {
        text += pieceJson(piece).dump() + '\n';
    }
    return text;
}

Shard readShard(std::string_view text) {
    Shard shard;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        try {
            shard.push_back(pieceFrom(parse(text.substr(0, end))));
        } catch (const Json::exception&) {
            throw std::runtime_error("the plan is damaged");
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return shard;
}

} // namespace veldtrim
