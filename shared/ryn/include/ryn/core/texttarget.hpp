#pragma once

#include <cstdint>

namespace ryn
{

/// Editing commands that reach a text target from keys and control characters.
enum class TextCommand : std::int32_t
{
    BACKSPACE = 0,
    HOME = 1,
    DELETE = 2,
    ESCAPE = 3,
    END = 4,
    LEFT = 5,
    ENTER = 6,
    RIGHT = 7,
};

/// A widget that takes typed text from the input processor.
class TextTarget
{
public:
    virtual ~TextTarget() = default;

    /// Another target replaced this one.
    virtual void textTargetLost() = 0;
    /// One typed character, always below 128.
    virtual void insertCharacter(std::uint32_t code) = 0;
    virtual void editCommand(TextCommand command) = 0;
};

} // namespace ryn
