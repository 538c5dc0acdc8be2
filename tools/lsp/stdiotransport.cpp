#include "stdiotransport.hpp"

#include "languageserver.hpp"
#include "messagereader.hpp"

#include <cerrno>
#include <csignal>
#include <poll.h>
#include <unistd.h>

namespace orane::lsp
{

StdioTransport::StdioTransport(int input, int output)
    : input_(input)
    , output_(output)
{
    // A client that goes away must end the server through the end of its input, not a signal.
    std::signal(SIGPIPE, SIG_IGN);
    reader_ = std::thread([this] { read(); });
}

StdioTransport::~StdioTransport()
{
    stopping_ = true;
    reader_.join();
}

void StdioTransport::read()
{
    MessageReader reader;
    char buffer[1 << 16];
    while (!stopping_) {
        pollfd waiting{input_, POLLIN, 0};
        // Wakes up now and then to see whether the server has finished.
        const int ready = ::poll(&waiting, 1, 100);
        if (ready == 0 || (ready < 0 && errno == EINTR))
            continue;
        const ssize_t count = ready < 0 ? -1 : ::read(input_, buffer, sizeof(buffer));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0) {
            push(Incoming{Incoming::KIND::END, nullptr, {}});
            return;
        }
        reader.feed(buffer, static_cast<std::size_t>(count));
        while (std::optional<MessageReader::Frame> frame = reader.next()) {
            if (!frame->valid) {
                push(Incoming{Incoming::KIND::UNREADABLE, nullptr, frame->text});
                continue;
            }
            Json message = Json::parse(frame->text, nullptr, false);
            if (message.is_discarded()) {
                push(Incoming{Incoming::KIND::UNREADABLE, nullptr, "the body is not JSON"});
                // A Content-Length too large swallows the start of the next message: read it again.
                const std::size_t next = frame->text.find("Content-Length:");
                if (next != std::string::npos)
                    reader.unread(frame->text.substr(next));
                continue;
            }
            if (message.is_object() && message.value("method", Json()) == "$/cancelRequest") {
                const std::lock_guard<std::mutex> lock(mutex_);
                cancelled_.insert(message.value("/params/id"_json_pointer, Json()).dump());
                continue;
            }
            push(Incoming{Incoming::KIND::MESSAGE, std::move(message), {}});
        }
    }
}

void StdioTransport::push(Incoming incoming)
{
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        queue_.push_back(std::move(incoming));
    }
    arrived_.notify_one();
}

StdioTransport::Incoming StdioTransport::next()
{
    std::unique_lock<std::mutex> lock(mutex_);
    arrived_.wait(lock, [this] { return !queue_.empty(); });
    Incoming incoming = std::move(queue_.front());
    queue_.pop_front();
    return incoming;
}

bool StdioTransport::idle()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return queue_.empty();
}

bool StdioTransport::takeCancellation(const Json& id)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return cancelled_.erase(id.dump()) > 0;
}

bool StdioTransport::send(const Json& message)
{
    // Story files may hold bytes that are not UTF-8: they go out as U+FFFD, never as an exception.
    const std::string body = message.dump(-1, ' ', false, Json::error_handler_t::replace);
    const std::string frame = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
    std::size_t written = 0;
    while (written < frame.size()) {
        const ssize_t count = ::write(output_, frame.data() + written, frame.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

int runLanguageServer(int input, int output, std::vector<std::string> fontDirectories)
{
    StdioTransport transport(input, output);
    LanguageServer server([&transport](const Json& message) { static_cast<void>(transport.send(message)); },
                          std::move(fontDirectories));
    for (;;) {
        StdioTransport::Incoming incoming = transport.next();
        if (incoming.kind == StdioTransport::Incoming::KIND::END)
            return server.exitCode();
        if (incoming.kind == StdioTransport::Incoming::KIND::UNREADABLE)
            server.rejectUnreadable(incoming.fault);
        else if (incoming.message.is_object() && incoming.message.contains("id") && incoming.message.contains("method")
                 && transport.takeCancellation(incoming.message["id"]))
            server.cancelled(incoming.message["id"]);
        else
            server.handle(incoming.message);
        if (server.finished())
            return server.exitCode();
        // Edits that arrive together are checked once, after the last of them.
        if (transport.idle())
            server.publishDiagnostics();
    }
}

} // namespace orane::lsp
