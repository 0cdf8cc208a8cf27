/// Status messages: what a program tells its user or its host while it runs.
///
/// Creating a text message sends it. A message that cannot be delivered never throws, and nothing
/// that the receiver does changes the run. Not thread-safe.
#pragma once

#include <memory>
#include <string>

/// The sender of all messages of the process.
class MessageSender {
public:
    /// Sets the form of delivery: one JSON object per line for a host program if `pipeMode` is
    /// true, otherwise plain lines for a person. Delivers, in order, the messages that were sent
    /// before. Call this once, early in the run.
    static MessageSender& Instance(bool pipeMode);

    MessageSender(const MessageSender&) = delete;
    MessageSender& operator=(const MessageSender&) = delete;

private:
    MessageSender() = default;
    ~MessageSender() = default;
};

/// Base class of the four text messages. It cannot be created or deleted by itself.
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

/// The run succeeded.
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
/// equal steps. Any numbers are accepted. If `steps` is not positive, every step is at `start`.
class ProgressMessage {
public:
    ProgressMessage(double start, double end, int steps);
    ~ProgressMessage();
    ProgressMessage(const ProgressMessage&) = delete;
    ProgressMessage& operator=(const ProgressMessage&) = delete;

    /// Reports that the step with this number has been reached, at the position
    /// start + (end - start) * step / steps. Call it for every record: it takes nanoseconds,
    /// because it delivers only positions that differ enough from the last one.
    void OnProgress(int step, bool flag);

private:
    struct Stretch;
    std::unique_ptr<Stretch> stretch_;
};
