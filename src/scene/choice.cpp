#include "scene/choice.hpp"

namespace orane
{

bool Choice::isValid() const
{
    return !briefDescription.isEmpty() && !longDescription.isEmpty() && !nextSceneName.isEmpty();
}

std::vector<std::string> Choice::missingFields() const
{
    std::vector<std::string> missing;
    if (briefDescription.isEmpty())
        missing.emplace_back("Brief description is empty.");
    if (longDescription.isEmpty())
        missing.emplace_back("Long description is empty.");
    if (nextSceneName.isEmpty())
        missing.emplace_back("Next scene name is empty.");
    return missing;
}

} // namespace orane
