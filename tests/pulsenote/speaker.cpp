/// Sends the messages that its arguments name, one after the other; see `perform`.
#include "pulsenote.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

/// Dies, and speaks, after every object that is created while `main` runs.
struct LastWords {
    std::string text;
    ~LastWords() {
        if (!text.empty()) {
            const StateMessage message(1, text, false);
        }
    }
} lastWords;

/// Sent before `main` where the environment asks for it.
struct FirstWords {
    FirstWords() {
        if (const char* const text = std::getenv("SPEAKER_FIRST_WORDS")) {
            const StateMessage message(1, text, true);
        }
    }
} firstWords;

std::map<std::string, std::unique_ptr<ProgressMessage>> stretches;
std::ofstream file;

/// `a..b` or a single number.
void performSteps(ProgressMessage& stretch, const std::string& range) {
    const std::size_t dots = range.find("..");
    const int first = std::stoi(range);
    const int last = dots == std::string::npos ? first : std::stoi(range.substr(dots + 2));
    const int direction = first <= last ? 1 : -1;
    for (int step = first;; step += direction) {
        stretch.OnProgress(step, false);
        if (step == last) {
            return;
        }
    }
}

void perform(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
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
    } else if (name == "late") {
        lastWords.text = value;
    } else if (name == "A" || name == "B") { // A=start,end,steps begins this stretch
        const std::string end = value.substr(value.find(',') + 1);
        stretches[name] = std::make_unique<ProgressMessage>(
            std::stod(value), std::stod(end), std::stoi(end.substr(end.find(',') + 1)));
    } else if (name == "a" || name == "b") { // a=step or a=first..last reports steps of A
        performSteps(*stretches.at(name == "a" ? "A" : "B"), value);
    } else {
        throw std::invalid_argument(argument);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        for (int i = 1; i < argc; ++i) {
            perform(argv[i]);
        }
        return 0;
    } catch (const std::exception&) {
        return 99;
    }
}
