/// Writes boundary files.
#pragma once

#include "boundary/boundary_segment.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace veldtrim {

/// Writes the text of a boundary file: one group of boundaries, in the form that readin_b_XML
/// describes, with the platform's line ends.
///
/// The coordinates read back to the last bit. Each `segmenttype` is 0. Rings are written as they
/// are given; a file needs no point that repeats the first one of its ring.
///
/// Each operation throws std::length_error once the text is too long for the reader, which refuses
/// 2 GiB or more, and passes on what `output` throws. The text is then incomplete.
class BoundaryWriter {
public:
    /// Receives the text in pieces of any size.
    using Output = std::function<void(std::string_view)>;

    /// Sends the beginning of the file to `output`.
    explicit BoundaryWriter(Output output);

    /// Appends a polygon. The coordinates must be finite and in the units of the file.
    void addPolygon(std::int32_t id, std::span<const BoundaryVertex> ring);

    /// Sends the rest of the file. Without this call, the text is incomplete.
    void finish();

private:
    void add(std::string_view text) { pending_ += text; }
    void endLine();
    void send();

    Output output_;
    std::size_t sent_ = 0; ///< bytes
    std::string pending_;  ///< text that has not been sent
};

} // namespace veldtrim
