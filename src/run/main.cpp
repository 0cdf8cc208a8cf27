#include "platform/process_setup.h"
#include "run/command_line.h"
#include "run/path_encoding.h"

int main(int argc, char* argv[]) {
    veldtrim::setUpProcess();
    veldtrim::adoptPathEncoding();
    return veldtrim::runCommandLine(argc, argv);
}
