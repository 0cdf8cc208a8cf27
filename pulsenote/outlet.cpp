#include "outlet.h"

#include "platform/process_setup.h"
#include "platform/standard_error.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <exception>
#include <new>
#include <utility>

namespace veldtrim::pulsenote {

Outlet::Outlet() noexcept : hasReceiver_(standardErrorIsOpen()) {
    ignorePipeSignal();
}

void Outlet::setForm(Form form) noexcept {
    if (state_ != State::FormUnknown) {
        return;
    }
    state_ = form == Form::Host ? State::ForHost : State::ForPerson;
    showsProgress_ = form == Form::Person && hasReceiver_ && standardErrorIsTerminal();
    for (const auto& message : std::exchange(waiting_, {})) {
        if (const auto* text = std::get_if<Text>(&message)) {
            deliver(text->kind, text->code, text->text, text->flag);
        } else if (const auto* progress = std::get_if<Progress>(&message)) {
            deliver(progress->position, progress->flag);
        }
    }
}

void Outlet::sendText(MessageKind kind, int code, const std::string& text, bool flag) noexcept {
    if (state_ != State::FormUnknown) {
        deliver(kind, code, text, flag);
        return;
    }
    try {
        waiting_.emplace_back(Text{kind, code, text, flag});
    } catch (const std::exception&) { // Out of memory: the message is lost, the run continues.
    }
}

void Outlet::beginStretch(double start, double end, int steps) noexcept {
    terminalProgress_.beginStretch(start, end, steps, std::chrono::steady_clock::now());
}

void Outlet::sendProgress(double position, bool flag) noexcept {
    if (state_ != State::FormUnknown) {
        deliver(position, flag);
        return;
    }
    try {
        waiting_.emplace_back(Progress{position, flag});
    } catch (const std::exception&) { // As above.
    }
}

void Outlet::finish() noexcept {
    setForm(Form::Person);
    if (!showsProgress_) {
        return;
    }
    try {
        writeToStandardError(terminalProgress_.erase(standardErrorWidth()));
    } catch (const std::exception&) { // As above.
    }
}

void Outlet::deliver(MessageKind kind, int code, const std::string& text, bool flag) noexcept {
    if (!hasReceiver_) {
        return;
    }
    try {
        if (state_ == State::ForHost) {
            writeToStandardError(hostLine(kind, code, text, flag));
        } else {
            const bool goesOn = kind == MessageKind::State || kind == MessageKind::Error;
            const std::size_t width = showsProgress_ ? standardErrorWidth() : usualTerminalWidth;
            std::string lines = terminalProgress_.erase(width) + personLine(kind, text);
            if (goesOn) {
                lines += terminalProgress_.restore(width);
            }
            writeToStandardError(lines);
        }
    } catch (const std::exception&) { // As above.
    }
}

void Outlet::deliver(double position, bool flag) noexcept {
    if (!hasReceiver_) {
        return;
    }
    try {
        if (state_ == State::ForHost) {
            writeToStandardError(hostProgressLine(position, flag));
        } else if (showsProgress_) {
            const std::size_t width = standardErrorWidth();
            const auto now = std::chrono::steady_clock::now();
            // At the end, the line is no longer needed, and other programs may use the terminal.
            writeToStandardError(position >= 100.0 ? terminalProgress_.end(width)
                                                   : terminalProgress_.draw(position, now, width));
        }
    } catch (const std::exception&) { // As above.
    }
}

Outlet& outlet() noexcept {
    // Never destroyed, because static objects can still send messages from their destructors.
    alignas(Outlet) static std::array<std::byte, sizeof(Outlet)> storage;
    // NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): one for the process
    static auto* const theOutlet = ::new (storage.data()) Outlet;

    struct AtEnd {
        AtEnd() = default;
        AtEnd(const AtEnd&) = delete;
        AtEnd& operator=(const AtEnd&) = delete;
        ~AtEnd() { theOutlet->finish(); }
    };
    static const AtEnd atEnd;
    return *theOutlet;
}

} // namespace veldtrim::pulsenote
