// Clips one file and writes to standard output how many records it had and how often the pass over
// it asked for memory.

#include "elevation/record_count.h"
#include "run/clip_file.h"
#include "shapes.h"

#include <cstddef>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

namespace {
std::size_t allocations = 0;
}

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "Usage: count_allocations SHAPE INPUT OUTPUT\n";
        return 2;
    }
    try {
        veldtrim::BoundaryModel model =
            veldtrim::bench::makeModel(veldtrim::bench::makeShape(argv[1]));
        const std::size_t before = allocations;
        const std::int32_t records = veldtrim::countRecords(argv[2]);
        const std::int32_t kept =
            veldtrim::clipFile(model, argv[2], argv[3], records, 0.0, 100.0 / records);
        std::cout << records << ' ' << kept << ' ' << allocations - before << '\n';
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "count_allocations: " << error.what() << '\n';
        return 1;
    }
}
