#include "geojson/place.h"

#include "explain/boundary_fault.h"
#include "platform/file.h"
#include "platform/standard_streams.h"

#include <array>
#include <stdexcept>
#include <system_error>

namespace veldtrim {

std::string readWhole(const std::string& argument) {
    if (isStandardStream(argument)) {
        return readStandardInput();
    }
    PlatformFile file = PlatformFile::openForReading(argument);
    if (!file.isOpen()) {
        throw std::system_error(file.openError(), "cannot read " + argument);
    }
    std::string text;
    std::array<char, 1U << 16U> piece{};
    while (const std::size_t got = file.read(piece.data(), piece.size())) {
        text.append(piece.data(), got);
    }
    return text;
}

Destination::Destination(const std::string& argument) : target_(argument) {
    if (isStandardStream(argument)) {
        return;
    }
    try {
        file_.emplace(argument);
    } catch (const std::system_error& error) {
        fail(error);
    }
}

void Destination::write(std::string_view text) {
    if (file_) {
        file_->write(text);
    } else {
        text_ += text;
    }
}

void Destination::publish() {
    if (!file_) {
        return writeToStandardOutput(text_);
    }
    try {
        file_->publish();
    } catch (const std::system_error& error) {
        fail(error);
    }
}

void Destination::fail(const std::system_error& error) const {
    if (error.code() == std::errc::file_exists) {
        throw std::runtime_error(
            target_ + " already exists and is not overwritten: remove it, or choose another name");
    }
    throw error;
}

} // namespace veldtrim
