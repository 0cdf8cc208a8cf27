/// Files as bytes, and all that differs between the platforms in reading and writing them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldtrim {

/// The line end of text files on this platform.
#ifdef _WIN32
inline constexpr std::string_view lineEnd = "\r\n";
#else
inline constexpr std::string_view lineEnd = "\n";
#endif

/// One file, opened for reading or for writing, closed with the object.
///
/// Bytes pass as they are: nothing translates line ends, no byte ends a file early. A file that
/// could not be opened reads as empty and takes what is written without keeping it. On Windows that
/// includes the names of devices.
class PlatformFile {
public:
    static PlatformFile openForReading(const std::string& path);

    /// Creates the file, or empties the one that is there.
    static PlatformFile openForWriting(const std::string& path);

    PlatformFile(PlatformFile&& other) noexcept;
    PlatformFile(const PlatformFile&) = delete;
    PlatformFile& operator=(const PlatformFile&) = delete;
    PlatformFile& operator=(PlatformFile&&) = delete;
    ~PlatformFile();

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

    /// Reads up to `size` bytes to `to` and returns their number, 0 at the end of the file.
    /// Throws std::system_error, which names the file and the reason, when the system fails.
    std::size_t read(char* to, std::size_t size);

    /// Appends `bytes`, in one write of the system unless that takes only a part. Throws
    /// std::system_error, which names the file and the reason, when the system fails; what was
    /// written of `bytes` is then cut off again, so that the file ends where it ended before.
    void write(std::string_view bytes);

    /// Closes the file. Throws std::system_error when the system reports that what was written
    /// did not arrive; the file is closed all the same.
    void close();

private:
    PlatformFile(int descriptor, std::string path);

    int descriptor_;
    std::int64_t written_ = 0;
    std::string path_;
};

} // namespace veldtrim
