// Preloaded into the game by bench/measure-startup: stamps the wall-clock time of the first frame shown,
// that is of the first buffer swap, into the file named by ORANE_FIRST_FRAME_FILE.

#include <GL/glx.h>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>

namespace
{

using SwapBuffers = void (*)(Display*, GLXDrawable);

std::atomic<bool> stamped{false};

void stampFirstFrame()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const char* path = std::getenv("ORANE_FIRST_FRAME_FILE");
    if (path == nullptr)
        return;
    if (FILE* file = std::fopen(path, "w")) {
        std::fprintf(file, "%lld\n", static_cast<long long>(now.tv_sec) * 1000000000LL + now.tv_nsec);
        std::fclose(file);
    }
}

} // namespace

extern "C" void glXSwapBuffers(Display* display, GLXDrawable drawable)
{
    static const auto real = reinterpret_cast<SwapBuffers>(dlsym(RTLD_NEXT, "glXSwapBuffers"));
    if (real != nullptr)
        real(display, drawable);
    // Stamped once the frame is handed over, not when it is asked for.
    if (!stamped.exchange(true))
        stampFirstFrame();
}
