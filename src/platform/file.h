/// Reading and writing files as bytes, in the same way on all platforms.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace veldtrim {

/// The line end of text files on this platform.
#ifdef _WIN32
inline constexpr std::string_view lineEnd = "\r\n";
#else
inline constexpr std::string_view lineEnd = "\n";
#endif

/// A file that is open for reading or for writing. Destroying the object closes it.
///
/// Bytes are never translated, and no byte ends a file early. A file that could not be opened reads
/// as empty and discards what is written to it. On Windows, devices count as such files.
class PlatformFile {
public:
    static PlatformFile openForReading(const std::string& path);

    /// Creates the file, or empties it if it exists.
    static PlatformFile openForWriting(const std::string& path);

    /// Creates the file. Does not open a file that exists.
    static PlatformFile createForWriting(const std::string& path);

    /// Opens an existing file, cuts it off after `size` bytes, and writes from there on. A shorter
    /// file is filled up with zero bytes.
    static PlatformFile openToContinue(const std::string& path, std::int64_t size);

    PlatformFile(PlatformFile&& other) noexcept;
    PlatformFile(const PlatformFile&) = delete;
    PlatformFile& operator=(const PlatformFile&) = delete;
    PlatformFile& operator=(PlatformFile&&) = delete;
    ~PlatformFile();

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

    /// Why the file could not be opened; no error if it could.
    [[nodiscard]] std::error_code openError() const { return openError_; }

    /// Reads up to `size` bytes to `to` and returns their number, 0 at the end of the file. If the
    /// system fails, throws std::system_error, which names the file and the reason.
    std::size_t read(char* to, std::size_t size);

    /// Makes the next read begin `offset` bytes after the start of the file. Throws
    /// std::system_error, which names the file and the reason, if the system fails.
    void moveTo(std::int64_t offset);

    /// Appends `bytes` in one system write, or in several if the system accepts only a part. If the
    /// system fails, cuts off the part of `bytes` that was written, so that the file ends where it
    /// ended before, and throws std::system_error, which names the file and the reason.
    void write(std::string_view bytes);

    /// Waits until all bytes are stored on the device. Throws std::system_error, which names the
    /// file and the reason, if they are not.
    void synchronize();

    /// Closes the file. Throws std::system_error if the system reports that written bytes were
    /// lost; the file is closed even then.
    void close();

private:
    PlatformFile(const std::string& path, int flags);

    std::string path_;
    int descriptor_;
    std::error_code openError_;
    std::int64_t written_ = 0;
};

} // namespace veldtrim
