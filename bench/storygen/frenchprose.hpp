#pragma once

#include <cstdint>
#include <random>
#include <string>

namespace orane::bench
{

/// Endless, deterministic French prose for generated stories, in UTF-8. Every text is safe in
/// both story languages: no token of ours ("SCENE", "ORANE", "*", "->" ...) and none of ink's
/// markup characters ({ } [ ] | # ~ / < >), and no line starts with "-", "=" or "+".
class FrenchProse
{
public:
    /// The same seed gives the same texts, on every machine.
    explicit FrenchProse(std::uint32_t seed);

    /// What Orane reports: who did what, where, when.
    std::string observation();
    /// What Nathan asks or answers back.
    std::string remark();

    /// A short answer to show on a button, and the sentence Nathan writes when it is taken.
    struct Answer
    {
        std::string label;
        std::string text;
    };
    Answer answer();

private:
    template <std::size_t N>
    const char* pick(const char* const (&words)[N]);

    std::mt19937 random_;
};

} // namespace orane::bench
