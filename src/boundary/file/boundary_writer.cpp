#include "boundary/file/boundary_writer.h"

#include "platform/file.h"
#include "text/number_text.h"

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <utility>

namespace veldtrim {

BoundaryWriter::BoundaryWriter(Output output) : output_(std::move(output)) {
    for (const std::string_view line : {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<project>",
                                        "<TavelDGM>", "<group type=\"boundaries\">"}) {
        add(line);
        endLine();
    }
}

void BoundaryWriter::addPolygon(std::int32_t id, std::span<const BoundaryVertex> ring) {
    add("<polygon id=\"");
    add(std::to_string(id));
    add("\">");
    endLine();
    for (const BoundaryVertex& vertex : ring) {
        add("<point x=\"");
        add(numberText(vertex.x));
        add("\" y=\"");
        add(numberText(vertex.y));
        add("\" segmenttype=\"0\"/>");
        endLine();
    }
    add("</polygon>");
    endLine();
}

void BoundaryWriter::finish() {
    for (const std::string_view line : {"</group>", "</TavelDGM>", "</project>"}) {
        add(line);
        endLine();
    }
    send();
}

void BoundaryWriter::endLine() {
    constexpr std::size_t usualPiece = 1U << 16U;
    add(lineEnd);
    if (pending_.size() >= usualPiece) {
        send();
    }
}

void BoundaryWriter::send() {
    sent_ += pending_.size();
    constexpr auto mostBytes = static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max());
    if (sent_ > mostBytes) {
        throw std::length_error("the boundary file would have 2 GiB or more, which cannot be read: "
                                "divide the area among several files");
    }
    output_(pending_);
    pending_.clear();
}

} // namespace veldtrim
