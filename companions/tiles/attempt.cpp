#include "tiles/attempt.h"

#include "platform/new_name.h"
#include "platform/posix/child_process.h"
#include "platform/posix/file_state.h"
#include "platform/posix/own_program.h"
#include "platform/posix/stop_signals.h"
#include "run/total_file.h"
#include "tiles/cutting.h"
#include "tiles/tile_bounds.h"

#include <charconv>
#include <optional>
#include <stdexcept>
#include <system_error>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

constexpr const char* log = "log";
constexpr const char* scansLink = "scans";

/// Returns the path of Veldtrim: beside this program, or where the system finds it.
std::string clippingProgram() {
    const fs::path beside = fs::path(ownProgram()).parent_path() / "Veldtrim";
    return fs::exists(beside) ? beside.string() : "Veldtrim";
}

/// Creates a directory that did not exist before.
std::string newDirectory(const fs::path& start) {
    for (;;) {
        std::string path = randomName(start.string());
        if (fs::create_directory(path)) {
            return path;
        }
    }
}

/// Reads a line with a number, as a run writes its total.
std::optional<std::int64_t> readTotal(const std::string& path) {
    const std::string text = readWhole(path);
    std::int64_t total = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), total);
    if (error != std::errc() || std::string_view(end, text.data() + text.size()) != "\n") {
        return {};
    }
    return total;
}

} // namespace

Attempt::Attempt(const Staging& staging, const Plan& plan, std::size_t number, const Shard& shard)
    : staging_(staging), plan_(plan), number_(number), shard_(shard),
      directory_(newDirectory(fs::path(staging.attempts()) / std::to_string(number))) {}

Attempt::~Attempt() {
    boost::system::error_code ignored;
    fs::remove_all(directory_, ignored);
}

ShardReport Attempt::run() {
    ShardReport report;
    presentPieces(report);
    if (!report.failure.empty()) {
        return report;
    }
    measurePieces(report);
    if (!report.failure.empty() || !plan_.clips) {
        return report;
    }
    const int exitCode = runProgram(report);
    if (!report.failure.empty()) {
        return report;
    }
    judge(readRunMessages(readWhole(messages_.path())), shard_, report);
    if (report.failure.empty() && report.hadInput && exitCode != 0) {
        report.failure = "Veldtrim ended with exit code " + std::to_string(exitCode);
    }
    if (report.failure.empty() && report.hadInput) {
        readResults(report);
    }
    return report;
}

void Attempt::presentPieces(ShardReport& report) {
    fs::create_directory(in(inputFolder));
    if (plan_.clips) {
        fs::create_symlink(plan_.absolute(plan_.order.boundary), in(boundaryLink));
    }
    // Through this link the links to tiles are short. Many file systems then need no block for
    // them.
    fs::create_symlink(plan_.absolute(plan_.shownInput()), in(scansLink));
    for (std::size_t i = 0; i < shard_.size(); ++i) {
        if (stopRequested()) {
            report.failure = "interrupted";
            return;
        }
        if (shard_[i].isPart()) {
            copyPart(i, report);
        } else if (plan_.clips) {
            fs::create_symlink(fs::path("..") / scansLink / shard_[i].name,
                               fs::path(in(inputFolder)) / pieceFile(i));
        }
    }
}

void Attempt::measurePieces(ShardReport& report) {
    for (std::size_t i = 0; i < shard_.size(); ++i) {
        if (stopRequested()) {
            report.failure = "interrupted";
            return;
        }
        if (shard_[i].isMeasured) {
            report.bounds.emplace_back(i, measureTile(pathOf(i)));
        }
    }
}

std::string Attempt::pathOf(std::size_t piece) const {
    return shard_[piece].isPart() ? copies_.at(piece).path()
                                  : (fs::path(in(scansLink)) / shard_[piece].name).string();
}

void Attempt::copyPart(std::size_t index, ShardReport& report) {
    const Piece& piece = shard_[index];
    copies_.emplace(index, UnnamedFile::in(fs::temp_directory_path().string()));
    const std::string source = (fs::path(in(scansLink)) / piece.name).string();
    const std::string copy = pathOf(index);
    const std::int64_t records = veldtrim::copyPart(source, piece.begin, piece.end, copy);
    // After the copy: what was read is then what the plan is about.
    const FileState state = fileState(source);
    if (state.size != piece.size || state.modified != piece.modified) {
        report.failure = "./" + std::string(inputFolder) + '/' + pieceFile(index) +
                         " has changed since the plan was made";
        report.messages.push_back({"error", 0, report.failure});
    }
    report.partRecords.emplace_back(index, records);
    fs::create_symlink(copy, fs::path(in(inputFolder)) / pieceFile(index));
}

int Attempt::runProgram(ShardReport& report) {
    ChildCommand command;
    command.words = {clippingProgram(), "./" + std::string(inputFolder), outputFolder,
                     "./" + std::string(boundaryLink), "-pipe"};
    command.directory = directory_;
    command.output = log;
    command.errors = messages_.path();
    ChildProcess program(command);
    constexpr int patience = 200; // milliseconds until a signal that was just missed is noticed
    for (;;) {
        if (const std::optional<ChildEnd> end = program.waitFor(patience)) {
            if (end->signal != 0) {
                report.failure = "Veldtrim ended with " + end->text();
            }
            return end->exitCode;
        }
        if (stopRequested()) {
            program.stop();
            program.wait();
            report.failure = "interrupted";
            return 1;
        }
    }
}

void Attempt::readResults(ShardReport& report) {
    const fs::path output(in(outputFolder));
    const std::optional<std::int64_t> total = readTotal((output / totalFileName).string());
    if (!total) {
        report.failure = "the run over the shard left no readable total";
        return;
    }
    report.total = *total;
    for (std::size_t i = 0; i < shard_.size(); ++i) {
        const FileState state = fileState((output / pieceFile(i)).string());
        if (state.exists) {
            report.files.push_back({i, state.size});
        }
    }
}

bool Attempt::publish(const ShardReport& report) {
    fs::remove_all(in(inputFolder)); // the merge would have to remove the links of all shards
    writeWhole(in(reportFile), reportText(report));
    const std::error_code error = renameToNewName(directory_, staging_.done(number_));
    if (error && error != std::errc::file_exists) {
        throw std::system_error(error, "cannot publish " + directory_);
    }
    return !error;
}

void Attempt::leaveFailure(const ShardReport& report) {
    fs::remove_all(in(outputFolder)); // the disk may be full
    if (fs::exists(in(log))) {
        // What the run said belongs with it.
        writeWhole(in(log), readWhole(in(log)) + readWhole(messages_.path()));
        fs::rename(in(log), staging_.failureLog(number_));
    }
    writeWhole(in(reportFile), reportText(report));
    fs::rename(in(reportFile), staging_.failure(number_));
}

} // namespace veldtrim
