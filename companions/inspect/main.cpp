#include "inspect/command_line.h"
#include "start/start.h"

int main(int argc, char** argv) {
    return veldtrim::startCompanion(veldtrim::inspectCommand, argc, argv);
}
