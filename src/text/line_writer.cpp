#include "text/line_writer.h"

namespace veldtrim {

LineWriter::LineWriter(const std::string& path) : file_(PlatformFile::openForWriting(path)) {}

void LineWriter::write(const Line& line) {
    if (line.raw.size() == line.text.size() + lineEnd.size() && line.raw.ends_with(lineEnd)) {
        file_.write(line.raw); // the line already has the platform's line end
        return;
    }
    assembled_ = line.text;
    assembled_ += lineEnd;
    file_.write(assembled_);
}

} // namespace veldtrim
