#include "tiles/staging.h"

#include "platform/file.h"
#include "tiles/shard_report.h"

#include <stdexcept>
#include <system_error>
#include <vector>

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/exception.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>

namespace veldtrim {

namespace fs = boost::filesystem;

namespace {

constexpr std::string_view stagingEnding = ".staging";

/// Removes a file or directory in which a late attempt may still be creating files. Throws
/// fs::filesystem_error if something is left.
void removeAll(const fs::path& place) {
    for (int more = 3; more >= 0; --more) {
        boost::system::error_code error;
        fs::remove_all(place, error);
        if (!error) {
            break;
        }
        if (more == 0) {
            throw fs::filesystem_error("cannot remove", place, error);
        }
    }
}

} // namespace

Staging stagingFor(const std::string& outputDirectory) {
    std::string root = outputDirectory;
    while (root.size() > 1 && root.back() == '/') {
        root.pop_back();
    }
    return Staging(root.append(stagingEnding));
}

std::string outputDirectoryFor(const Staging& staging) {
    const std::string& root = staging.root();
    return root.ends_with(stagingEnding) ? root.substr(0, root.size() - stagingEnding.size())
                                         : std::string();
}

std::unique_ptr<FileLock> takeStaging(const Staging& staging) {
    for (;;) {
        if (!fs::create_directory(staging.root()) && !fs::exists(staging.lock()) &&
            !fs::is_empty(staging.root())) {
            throw std::runtime_error(staging.root() +
                                     " is in the way: it is not a staging directory");
        }
        std::unique_ptr<FileLock> lock;
        try {
            lock = std::make_unique<FileLock>(staging.lock());
        } catch (const std::system_error& error) {
            if (error.code() == std::errc::no_such_file_or_directory) {
                continue; // a command that has just ended removed the directory
            }
            throw;
        }
        if (!lock->isHeld()) {
            throw std::runtime_error("another command is at work in " + staging.root() +
                                     ": wait for its end, or stop it");
        }
        if (lock->isInPlace()) {
            return lock;
        }
    }
}

void removeResults(const Staging& staging) {
    removeAll(staging.joining());
    removeAll(staging.attempts());
    for (const fs::directory_entry& shard : fs::directory_iterator(staging.doneShards())) {
        removeAll(shard.path() / outputFolder);
    }
}

void removeStaging(const Staging& staging) {
    // The plan last: another one must not find the shards of this one.
    for (const std::string& place :
         {staging.attempts(), staging.doneShards(), staging.failures(), staging.engine(),
          staging.engineLog(), staging.slurm(), staging.merged(), staging.joining(), staging.plan(),
          staging.plan() + ".new"}) {
        removeAll(place);
    }
    fs::remove(staging.mergeLock());
    fs::remove(staging.lock());
    fs::remove(staging.publishing());
    fs::remove(staging.root());
}

void publishPlan(const Staging& staging, const Plan& plan, const std::vector<Shard>& shards) {
    const std::string folder = staging.plan() + ".new";
    fs::remove_all(folder);
    for (const std::string& each :
         {folder, staging.attempts(), staging.doneShards(), staging.failures()}) {
        fs::create_directory(each);
    }
    std::string numbers;
    for (std::size_t shard = 1; shard <= shards.size(); ++shard) {
        writeWhole(folder + '/' + std::to_string(shard), shardText(shards[shard - 1]));
        numbers += std::to_string(shard) + '\n';
    }
    writeWhole(folder + "/numbers", numbers);
    writeWhole(folder + "/plan.json", planText(plan));
    fs::rename(folder, staging.plan());
}

bool hasPlan(const Staging& staging) {
    return fs::exists(staging.plan());
}

bool hasPlan(const Staging& staging, const Plan& plan, const std::vector<Shard>& shards) {
    if (readWhole(staging.planFile()) != planText(plan)) {
        return false;
    }
    for (std::size_t shard = 1; shard <= shards.size(); ++shard) {
        if (readWhole(staging.shardFile(shard)) != shardText(shards[shard - 1])) {
            return false;
        }
    }
    return true;
}

Plan loadPlan(const Staging& staging) {
    const std::string text = readWhole(staging.planFile());
    if (text.empty()) {
        throw std::runtime_error("no plan in " + staging.root());
    }
    return readPlan(text);
}

Shard loadShard(const Staging& staging, std::size_t shard) {
    const std::string text = readWhole(staging.shardFile(shard));
    if (text.empty()) {
        throw std::runtime_error("no shard " + std::to_string(shard) + " in " + staging.root());
    }
    return readShard(text);
}

bool isDone(const Staging& staging, std::size_t shard) {
    return fs::exists(staging.done(shard));
}

std::string readWhole(const std::string& path) {
    PlatformFile file = PlatformFile::openForReading(path);
    std::string content;
    constexpr std::size_t blockSize = std::size_t{64} << 10;
    std::vector<char> block(blockSize);
    while (const std::size_t got = file.read(block.data(), block.size())) {
        content.append(block.data(), got);
    }
    return content;
}

void writeWhole(const std::string& path, std::string_view content) {
    PlatformFile file = PlatformFile::openForWriting(path);
    if (const std::error_code reason = file.openError()) {
        throw std::system_error(reason, "cannot write " + path);
    }
    file.write(content);
    file.close();
}

} // namespace veldtrim
