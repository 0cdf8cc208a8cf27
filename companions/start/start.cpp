#include "start/start.h"

#include "platform/process_setup.h"
#include "run/path_encoding.h"

#include <exception>
#include <iostream>
#include <new>

namespace veldtrim {

int startCompanion(Command command, int argc, char** argv) {
    setUpProcess();
    adoptPathEncoding();
    try {
        return command(argc, argv);
    } catch (const std::bad_alloc&) {
        std::cerr << "error: not enough memory" << std::endl;
    } catch (const std::exception& error) {
        std::cerr << "error: " << error.what() << std::endl;
    } catch (...) {
        std::cerr << "error: unknown failure" << std::endl;
    }
    return 1;
}

} // namespace veldtrim
