/// Sends a message before `main`, the messages that its arguments name, and one from the destructor
/// of the last object.
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

/// Takes the arguments of `name` from `script`.
void perform(const std::string& name, std::istream& script) {
    std::string text;
    double start = 0;
    double end = 0;
    int step = 0;
    int last = 0;
    if (name == "person" || name == "host") {
        MessageSender::Instance(name == "host");
    } else if (name == "stretch" && script >> start >> end >> last) {
        stretch = std::make_unique<ProgressMessage>(start, end, last);
    } else if (name == "reach" && script >> step >> last) {
        for (; step <= last; ++step) {
            stretch->OnProgress(step, false);
        }
    } else if (name == "exit" && script >> last) {
        std::exit(last);
    } else if (script >> text; name == "state") {
        const StateMessage message(1, text, true);
    } else if (name == "finish") {
        const FinishMessage message(1, text);
    } else if (name == "failed") {
        const FailedMessage message(-1, text);
    } else if (name == "error") {
        const ErrorMessage message(2, text);
    } else if (name == "open") {
        file.open(text);
    } else {
        std::exit(99);
    }
}

} // namespace

int main(int argc, char** argv) {
    std::stringstream script;
    for (int i = 1; i < argc; ++i) {
        script << argv[i] << ' ';
    }
    for (std::string name; script >> name;) {
        perform(name, script);
    }
    return 0;
}
