/// Status messages: what a program tells its user or its host while it runs.
///
/// Creating a text message sends it. Nothing here throws because a message could not be delivered,
/// and nothing a receiver does changes the run of the sender. One thread at a time.
#pragma once

#include <memory>
#include <string>

/// The one sender of the process.
class MessageSender {
public:
    /// Sets the form of delivery, once, early in the run: one JSON object per line for a host
    /// program where `pipeMode` is true, plain lines for a person otherwise. What was sent before
    /// is delivered now, in order.
    static MessageSender& Instance(bool pipeMode);

    MessageSender(const MessageSender&) = delete;
    MessageSender& operator=(const MessageSender&) = delete;

private:
    MessageSender() = default;
    ~MessageSender() = default;
};

/// Base of the four text messages; its life ends through them.
class Message {
public:
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;

protected:
    Message() = default;
    ~Message() = default;
};

/// What the program is doing now.
class StateMessage : public Message {
public:
    StateMessage(int code, const std::string& text, bool flag);
};

/// The run ended well.
class FinishMessage : public Message {
public:
    FinishMessage(int code, const std::string& text);
};

/// The run ended without its result.
class FailedMessage : public Message {
public:
    FailedMessage(int code, const std::string& text);
};

/// Something went wrong.
class ErrorMessage : public Message {
public:
    ErrorMessage(int code, const std::string& text);
};

/// One stretch of the run's progress, from `start` to `end` on a scale of 0 to 100, in `steps`
/// equal steps. Any numbers are accepted; where `steps` is not positive every step stands at
/// `start`.
class ProgressMessage {
public:
    ProgressMessage(double start, double end, int steps);
    ~ProgressMessage();
    ProgressMessage(const ProgressMessage&) = delete;
    ProgressMessage& operator=(const ProgressMessage&) = delete;

    /// The step with this number has been reached: the position is
    /// start + (end - start) * step / steps. Meant to be called for every record: it costs
    /// nanoseconds, and positions that are no news are not delivered.
    void OnProgress(int step, bool flag);

private:
    struct Stretch;
    std::unique_ptr<Stretch> stretch_;
};
