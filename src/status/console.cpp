#include "status/console.h"

#include <iostream>

namespace veldtrim {

void writeConsoleLine(std::string_view text) {
    std::cout << text << std::endl;
}

void writeConsoleText(std::string_view text) {
    std::cout << text;
}

} // namespace veldtrim
