#pragma once

#include "protocol.hpp"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace orane::lsp
{

/// The base protocol over two file descriptors. A reader thread frames and parses what
/// arrives, so that a cancellation is seen while earlier requests are still waiting; the
/// server's thread takes the messages in order and writes the answers.
class StdioTransport
{
public:
    /// One thing read: a message, a body that is not JSON, or the end of the input.
    struct Incoming
    {
        enum class KIND
        {
            MESSAGE,
            UNREADABLE,
            END,
        };
        KIND kind = KIND::MESSAGE;
        Json message;
        std::string fault;
    };

    StdioTransport(int input, int output);
    ~StdioTransport();
    StdioTransport(const StdioTransport&) = delete;
    StdioTransport& operator=(const StdioTransport&) = delete;

    /// Waits for the next thing read.
    [[nodiscard]] Incoming next();
    /// True when nothing read is waiting.
    [[nodiscard]] bool idle();
    /// True when the client asked, by "$/cancelRequest", to cancel the request `id`; forgets it.
    [[nodiscard]] bool takeCancellation(const Json& id);

    /// Frames and writes one message; false once the output is closed.
    bool send(const Json& message);

private:
    void read();
    void push(Incoming incoming);

    int input_;
    int output_;
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Incoming> queue_;
    std::set<std::string> cancelled_;
    std::atomic<bool> stopping_{false};
    std::thread reader_;
};

/// Serves the protocol over two file descriptors until "exit" or the end of the input;
/// answers the process's exit status. `fontDirectories`: see PageMeasure.
int runLanguageServer(int input, int output, std::vector<std::string> fontDirectories);

} // namespace orane::lsp
