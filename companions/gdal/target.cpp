#include "gdal/target.h"

#include "gdal/source.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <cpl_vsi.h>

namespace veldtrim {

namespace {

[[noreturn]] void failToCreate(const std::string& name, std::errc reason) {
    throw std::system_error(std::make_error_code(reason), "cannot create " + name);
}

bool exists(const std::string& name) {
    VSIStatBufL status{};
    return VSIStatExL(name.c_str(), &status, VSI_STAT_EXISTS_FLAG) == 0;
}

/// Whether the file can be written but not renamed: a stream or a member of an archive.
bool isOnlyWritable(const std::string& name) {
    return name.starts_with("/vsistdout") || name.starts_with("/vsizip") ||
           name.starts_with("/vsigzip");
}

bool writeWhole(const std::string& name, const std::string& text) {
    VSILFILE* const file = VSIFOpenL(name.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    const bool isWritten = VSIFWriteL(text.data(), 1, text.size(), file) == text.size();
    return VSIFCloseL(file) == 0 && isWritten;
}

std::string unfinishedName(const std::string& name) {
    for (int number = 1;; ++number) {
        std::string unfinished = name + ".part-" + std::to_string(number);
        if (!exists(unfinished)) {
            return unfinished;
        }
    }
}

} // namespace

Target::Target(std::string name) : name_(std::move(name)) {
    if (!isVirtual(name_)) {
        file_.emplace(name_);
    } else if (exists(name_)) {
        failToCreate(name_, std::errc::file_exists);
    }
}

void Target::write(std::string_view bytes) {
    if (file_) {
        file_->write(bytes);
    } else {
        text_ += bytes;
    }
}

void Target::publish() {
    if (file_) {
        file_->publish();
        return;
    }
    if (exists(name_)) {
        failToCreate(name_, std::errc::file_exists);
    }
    const std::string written = isOnlyWritable(name_) ? name_ : unfinishedName(name_);
    if (!writeWhole(written, text_) ||
        (written != name_ && VSIRename(written.c_str(), name_.c_str()) != 0)) {
        static_cast<void>(VSIUnlink(written.c_str()));
        failToCreate(name_, std::errc::io_error);
    }
}

} // namespace veldtrim
