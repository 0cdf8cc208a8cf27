#include "start/start.h"
#include "tiles/command_line.h"

int main(int argc, char** argv) {
    return veldtrim::startCompanion(veldtrim::tilesCommand, argc, argv);
}
