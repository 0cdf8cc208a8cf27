/// Sends a message before `main`, the messages that its arguments name (see `perform`), and one
/// from the destructor of the last object.
#include "pulsenote.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace {

/// Created first and therefore destroyed last, after the sender has finished.
struct LastWords {
    ~LastWords() { const StateMessage message(0, "last", false); }
} lastWords;

const StateMessage firstWords(0, "first", false);

std::unique_ptr<ProgressMessage> stretch;
std::ofstream file;

void perform(const std::string& name, const std::string& value) {
    std::istringstream numbers(value);
    char comma = 0;
    if (name == "person" || name == "host") {
        MessageSender::Instance(name == "host");
    } else if (name == "state") {
        const StateMessage message(1, value, true);
    } else if (name == "finish") {
        const FinishMessage message(1, value);
    } else if (name == "failed") {
        const FailedMessage message(-1, value);
    } else if (name == "error") {
        const ErrorMessage message(2, value);
    } else if (name == "exit") {
        std::exit(std::stoi(value));
    } else if (name == "open") {
        file.open(value);
    } else if (name == "stretch") { // start,end,steps
        double start = 0;
        double end = 0;
        int steps = 0;
        numbers >> start >> comma >> end >> comma >> steps;
        stretch = std::make_unique<ProgressMessage>(start, end, steps);
    } else if (name == "reach") { // first,last
        int first = 0;
        int last = 0;
        numbers >> first >> comma >> last;
        for (int step = first; step <= last; ++step) {
            stretch->OnProgress(step, false);
        }
    } else {
        std::exit(99);
    }
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const std::size_t equals = argument.find('=');
        perform(argument.substr(0, equals),
                equals == std::string::npos ? "" : argument.substr(equals + 1));
    }
    return 0;
}
