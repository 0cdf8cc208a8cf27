#include "inspect/command_line.h"
#include "platform/process_setup.h"
#include "run/path_encoding.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    veldtrim::setUpProcess();
    veldtrim::adoptPathEncoding();
    try {
        return veldtrim::inspectCommand(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << std::endl;
    } catch (...) {
        std::cerr << "error: unknown failure" << std::endl;
    }
    return 1;
}
