#include "gdal/source.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>

#include <cpl_vsi.h>

namespace veldtrim {

namespace {

struct FileCloser {
    void operator()(VSILFILE* file) const { static_cast<void>(VSIFCloseL(file)); }
};

std::string_view startOf(const GDALOpenInfo& file) {
    const auto* const bytes = reinterpret_cast<const char*>(file.pabyHeader); // NOLINT: characters
    return {bytes, static_cast<std::size_t>(std::max(file.nHeaderBytes, 0))};
}

bool beginsWithTag(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) {
        text.remove_prefix(byteOrderMark.size());
    }
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return text.starts_with('<');
}

bool isSameLetter(char a, char b) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    };
    return lower(a) == lower(b);
}

bool holdsModelTag(std::string_view text) {
    constexpr std::string_view tag = "<TavelDGM";
    const auto* at = text.begin();
    for (;;) {
        at = std::search(at, text.end(), tag.begin(), tag.end(), isSameLetter);
        if (at == text.end()) {
            return false;
        }
        at += tag.size();
        if (at == text.end() || std::string_view(" \t\r\n>/").find(*at) != std::string_view::npos) {
            return true;
        }
    }
}

/// Returns the bytes of a file whose size may be unknown. `tooLong` tells whether it goes on.
std::string readVirtual(VSILFILE& file, bool& tooLong) {
    constexpr std::size_t mostBytes = std::numeric_limits<std::int32_t>::max();
    constexpr std::size_t firstPiece = std::size_t{1} << 20U;
    std::string text;
    std::size_t filled = 0;
    for (std::size_t size = firstPiece;; size = std::min(size * 2, mostBytes)) {
        text.resize(size);
        filled += VSIFReadL(text.data() + filled, 1, size - filled, &file);
        if (filled < size || size == mostBytes) {
            tooLong = filled == mostBytes;
            text.resize(filled);
            return text;
        }
    }
}

} // namespace

bool looksLikeBoundary(GDALOpenInfo& file) {
    constexpr int usualStart = 1024;
    constexpr int longestStart = 65536;
    if (!beginsWithTag(startOf(file))) {
        return false;
    }
    if (holdsModelTag(startOf(file))) {
        return true;
    }
    return file.nHeaderBytes >= usualStart && file.TryToIngest(longestStart) != 0 &&
           holdsModelTag(startOf(file));
}

bool isVirtual(const std::string& name) {
    return name.starts_with("/vsi");
}

std::string readSource(const std::string& name, BoundaryFeatures& features) {
    if (!isVirtual(name)) {
        return features.readFile(name) ? "" : features.failure();
    }
    const std::unique_ptr<VSILFILE, FileCloser> file(VSIFOpenL(name.c_str(), "rb"));
    if (!file) {
        return "cannot be read";
    }
    bool tooLong = false;
    const std::string text = readVirtual(*file, tooLong);
    if (tooLong) {
        return "has 2 GiB or more, which cannot be read";
    }
    return features.readText(text) ? "" : features.failure();
}

} // namespace veldtrim
