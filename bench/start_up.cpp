// SPDX-License-Identifier: MIT
// Measures the time from the start of a process until its window is painted on the screen, and the memory that it and
// its children use at that point. The programs alternate, so that other load on the machine affects them equally.
// Usage: start_up <rounds> <program>... on a separate display without a window manager and with a black root window.
// Prints one line for each program: path,median milliseconds,median CPU milliseconds,window kB,children kB.
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr std::chrono::seconds kPatience{20};
constexpr std::chrono::microseconds kBetweenLooks{500};
constexpr std::chrono::milliseconds kUntilAtRest{400}; // enough for work deferred until the window is shown
constexpr int kSmallestWindow = 400;                   // pixels; helper windows are smaller

struct Program
{
    std::string path;
    std::vector<double> milliseconds;
    std::vector<double> onProcessor; // CPU milliseconds of the process itself, until it is idle
    long windowKb = 0;
    long childrenKb = 0;
};

int ignoreError(Display *, XErrorEvent *)
{
    return 0; // a window may vanish between two queries
}

// Checks the window's corners: unpainted areas are black.
bool isPainted(Display *display, Window window, const XWindowAttributes &size)
{
    const std::array<std::array<int, 2>, 4> places{
        {{4, 4}, {size.width - 4, 4}, {4, size.height - 4}, {size.width - 4, size.height - 4}}};
    for (const auto &[x, y] : places) {
        XImage *image = XGetImage(display, window, x, y, 1, 1, AllPlanes, ZPixmap);
        if (!image)
            return false;
        const bool black = (XGetPixel(image, 0, 0) & 0xFFFFFF) == 0;
        XDestroyImage(image);
        if (black)
            return false;
    }
    return true;
}

bool hasPaintedWindow(Display *display)
{
    Window root = 0;
    Window parent = 0;
    Window *windows = nullptr;
    unsigned count = 0;
    if (!XQueryTree(display, DefaultRootWindow(display), &root, &parent, &windows, &count))
        return false;
    bool painted = false;
    for (unsigned i = 0; i < count && !painted; ++i) {
        XWindowAttributes size{};
        if (XGetWindowAttributes(display, windows[i], &size) && size.map_state == IsViewable &&
            size.width >= kSmallestWindow)
            painted = isPainted(display, windows[i], size);
    }
    if (windows)
        XFree(windows);
    return painted;
}

// Returns VmRSS from /proc/<pid>/status.
long residentKb(pid_t process)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmRSS:", 0) == 0)
            return std::strtol(line.c_str() + std::strlen("VmRSS:"), nullptr, 10);
    return 0;
}

long childrenKb(pid_t process)
{
    const std::string id = std::to_string(process);
    std::ifstream children("/proc/" + id + "/task/" + id + "/children");
    long sum = 0;
    for (pid_t child = 0; children >> child;)
        sum += residentKb(child);
    return sum;
}

double milliseconds(const timeval &time)
{
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
}

// Ignores the first round, which fills the disk caches.
double medianOfRest(std::vector<double> values)
{
    values.erase(values.begin());
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool startOnce(Display *display, Program &program)
{
    char *arguments[] = {program.path.data(), nullptr};
    pid_t process = 0;
    const Clock::time_point begun = Clock::now();
    if (posix_spawn(&process, program.path.c_str(), nullptr, nullptr, arguments, environ) != 0)
        return false;
    bool painted = false;
    while (!painted && Clock::now() - begun < kPatience) {
        std::this_thread::sleep_for(kBetweenLooks);
        painted = hasPaintedWindow(display);
    }
    program.milliseconds.push_back(Milliseconds(Clock::now() - begun).count());
    std::this_thread::sleep_for(kUntilAtRest);
    program.windowKb = residentKb(process);
    program.childrenKb = childrenKb(process);
    kill(process, SIGTERM);
    rusage used{};
    wait4(process, nullptr, 0, &used);
    program.onProcessor.push_back(milliseconds(used.ru_utime) + milliseconds(used.ru_stime));
    const Clock::time_point ended = Clock::now();
    while (hasPaintedWindow(display) && Clock::now() - ended < kPatience)
        std::this_thread::sleep_for(kBetweenLooks);
    return painted;
}

} // namespace

int main(int argc, char *argv[])
{
    Display *display = XOpenDisplay(nullptr);
    if (!display || argc < 3) {
        std::fprintf(stderr, "usage: start_up <rounds> <program>..., with a display\n");
        return 2;
    }
    XSetErrorHandler(ignoreError);
    std::vector<Program> programs;
    for (int i = 2; i < argc; ++i)
        programs.push_back({argv[i], {}, {}});
    for (long round = std::strtol(argv[1], nullptr, 10); round >= 0; --round) {
        for (Program &program : programs) {
            if (!startOnce(display, program)) {
                std::fprintf(stderr, "%s shows no window\n", program.path.c_str());
                return 1;
            }
        }
    }
    for (const Program &program : programs)
        std::printf("%s,%.1f,%.1f,%ld,%ld\n", program.path.c_str(), medianOfRest(program.milliseconds),
                    medianOfRest(program.onProcessor), program.windowKb, program.childrenKb);
    XCloseDisplay(display);
    return 0;
}
