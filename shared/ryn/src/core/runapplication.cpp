#include <ryn/core/application.hpp>
#include <ryn/core/console.hpp>
#include <ryn/core/runapplication.hpp>

#include <cstdlib>
#include <exception>

namespace ryn
{

int runApplication(Application& application)
{
    try {
        if (application.init())
            application.run();
    } catch (const std::exception& error) {
        console::writeLine(error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace ryn
