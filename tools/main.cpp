#include "storycommands.hpp"

int main(int argc, char* argv[])
{
    return orane::runStoryCommand(argc, argv);
}
