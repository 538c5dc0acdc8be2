#include "scene/choice.hpp"

#include <ryn/core/console.hpp>

namespace orane
{

bool Choice::isValid() const
{
    return !briefDescription.isEmpty() && !longDescription.isEmpty() && !nextSceneName.isEmpty();
}

bool Choice::printMissingFields() const
{
    if (briefDescription.isEmpty())
        ryn::console::writeLine(std::string("-------- Brief description is empty."));
    if (longDescription.isEmpty())
        ryn::console::writeLine(std::string("-------- Long description is empty."));
    if (nextSceneName.isEmpty())
        ryn::console::writeLine(std::string("-------- Next scene name is empty."));
    return isValid();
}

} // namespace orane
