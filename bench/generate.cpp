// Writes the files that the benchmarks read: the same bytes on every machine.

#include "records.h"
#include "shapes.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace veldtrim::bench;

void writeRecords(std::ofstream& file, std::size_t count) {
    file << recordHeader;
    RecordSource records;
    constexpr std::size_t recordsPerBlock = 40'000;
    std::vector<char> block(recordsPerBlock * recordSize);
    while (count > 0) {
        const std::size_t now = std::min(count, recordsPerBlock);
        for (std::size_t i = 0; i < now; ++i) {
            records.write(&block[i * recordSize]);
        }
        file.write(block.data(), static_cast<std::streamsize>(now * recordSize));
        count -= now;
    }
}

std::string coordinates(const char* format, const veldtrim::BoundaryVertex& vertex) {
    char text[128];
    const int size = std::snprintf(text, sizeof text, format, vertex.x, vertex.y);
    return {text, static_cast<std::size_t>(size)};
}

void writeBoundaryFile(std::ofstream& file, const std::vector<Outline>& outlines) {
    file << "<project>\n <TavelDGM>\n  <group type=\"boundaries\">\n";
    int id = 0;
    for (const Outline& outline : outlines) {
        file << "   <polygon id=\"" << ++id << "\">\n";
        for (const veldtrim::BoundaryVertex& vertex : outline) {
            file << coordinates("      <point x=\"%.3f\" y=\"%.3f\" segmenttype=\"0\"/>\n", vertex);
        }
        file << "   </polygon>\n";
    }
    file << "  </group>\n </TavelDGM>\n</project>\n";
}

/// The same polygons as a table of points, for programs that read no XML.
void writeTable(std::ofstream& file, const std::vector<Outline>& outlines) {
    for (const Outline& outline : outlines) {
        file << ">\n";
        for (const veldtrim::BoundaryVertex& vertex : outline) {
            file << coordinates("%.3f %.3f\n", vertex);
        }
        file << coordinates("%.3f %.3f\n", outline.front());
    }
}

void generate(const std::string& what, const std::string& which, const std::string& path) {
    std::ofstream file;
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file.open(path, std::ios::binary);
    if (what == "records") {
        writeRecords(file, std::stoul(which));
    } else if (what == "boundary") {
        writeBoundaryFile(file, makeShape(which));
    } else if (what == "table") {
        writeTable(file, makeShape(which));
    } else {
        throw std::invalid_argument("cannot generate " + what);
    }
    file.close();
}

} // namespace

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr
            << "Usage: generate records COUNT FILE | boundary SHAPE FILE | table SHAPE FILE\n";
        return 2;
    }
    try {
        generate(argv[1], argv[2], argv[3]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "generate: " << error.what() << '\n';
        return 1;
    }
}
