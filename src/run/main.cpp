#include "run/command_line.h"
#include "run/process_setup.h"

int main(int argc, char* argv[]) {
    veldtrim::setUpProcess();
    return veldtrim::runCommandLine(argc, argv);
}
