#pragma once

#include <ryn/core/assert.hpp>

#include <string>
#include <vector>

namespace ryn::test
{

/// Installs, for its lifetime, a handler that records every failed check and lets the
/// program go on, so that tests can see what the code does after a report.
class RecordedAsserts
{
public:
    RecordedAsserts()
        : previous_(ryn::setAssertHandler(&record))
    {
        expressions().clear();
    }
    ~RecordedAsserts() { ryn::setAssertHandler(previous_); }
    RecordedAsserts(const RecordedAsserts&) = delete;
    RecordedAsserts& operator=(const RecordedAsserts&) = delete;

    /// The condition texts reported so far, in order.
    [[nodiscard]] const std::vector<std::string>& reported() const { return expressions(); }
    void clear() { expressions().clear(); }

private:
    static std::vector<std::string>& expressions()
    {
        static std::vector<std::string> list;
        return list;
    }
    static int record(const char* expression, const char*, const char*, int)
    {
        expressions().push_back(expression ? expression : "");
        return 1;
    }

    ryn::AssertHandler previous_ = nullptr;
};

} // namespace ryn::test
