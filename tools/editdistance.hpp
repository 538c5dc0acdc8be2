#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace orane
{

/// Levenshtein distance between two sequences of characters (bytes or code points), for the
/// short names and words a slip is compared with.
template <typename Text>
[[nodiscard]] std::size_t editDistance(const Text& a, const Text& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

} // namespace orane
