#include <ryn/core/assert.hpp>
#include <ryn/core/console.hpp>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace ryn
{
namespace
{

AssertHandler installedHandler = &defaultAssertHandler;

std::string formatReport(const char* expression, const char* message, const char* file, int line)
{
    std::string report = std::string(file ? file : "") + "(" + std::to_string(line) + "): Assert Failure: ";
    if (expression)
        report += std::string("'") + expression + "' ";
    if (message)
        report += message;
    return report;
}

} // namespace

int reportAssert(const char* expression, const char* file, int line, const char* format, ...)
{
    constexpr std::size_t MESSAGE_CAPACITY = 1024;
    char message[MESSAGE_CAPACITY] = {};
    const char* formatted = nullptr;
    if (format) {
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(message, MESSAGE_CAPACITY, format, arguments);
        va_end(arguments);
        formatted = message;
    }
    return installedHandler(expression, formatted, file, line);
}

int defaultAssertHandler(const char* expression, const char* message, const char* file, int line)
{
    console::writeLine(formatReport(expression, message, file, line));
    return 0;
}

int reportOnlyAssertHandler(const char* expression, const char* message, const char* file, int line)
{
    defaultAssertHandler(expression, message, file, line);
    return 1;
}

AssertHandler setAssertHandler(AssertHandler handler)
{
    AssertHandler previous = installedHandler;
    installedHandler = handler ? handler : &defaultAssertHandler;
    return previous;
}

AssertHandler assertHandler()
{
    return installedHandler;
}

} // namespace ryn
