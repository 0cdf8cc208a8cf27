#include <veldtrim/xml_reader.h>

#include <iostream>
#include <string>

int main(int argc, char** argv) {
    veldtrim::XMLReader reader;
    if (argc != 2 || !reader.setFile(argv[1])) {
        std::cerr << "cannot read the file\n";
        return 1;
    }
    double x = 0.0;
    std::string type;
    if (reader.getString("TavelDGM/group/@type", type) &&
        reader.getDouble("TavelDGM/group/polygon/point/@x", x)) {
        std::cout << type << " from x = " << x << '\n';
    }
    return 0;
}
