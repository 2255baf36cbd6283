// What it costs a host to load the library and to call Initialize, in time and in memory, beside loading Qt Widgets
// alone, which a host of this kind has loaded anyway. Each is done by a process of its own, many times; medians.
//   library_benchmark               measures and prints
//   library_benchmark qt|library    what such a process does

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <unistd.h>

#include "support/Table.h"

namespace {

constexpr int kRuns = 21;
/// zelaudiofilterhostui::Initialize() as the loader knows it.
constexpr char kInitialize[] = "_ZN20zelaudiofilterhostui10InitializeEv";

double GetMilliseconds(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// Memory of this process that is no file's.
double GetOwnKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("RssAnon:", 0) == 0) return std::atof(line.c_str() + std::strlen("RssAnon:"));
    return 0.0;
}

struct Figures {
    double load = 0.0;
    double initialize = 0.0;
    double memory = 0.0;
};

/// Prints its figures on a line.
int RunOne(const std::string& what) {
    Figures figures;
    const double before = GetOwnKilobytes();
    auto begin = std::chrono::steady_clock::now();
    void* const library = dlopen(what == "qt" ? ZEL_QT_WIDGETS : ZEL_LIBRARY, RTLD_NOW);
    figures.load = GetMilliseconds(begin);
    if (library == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    if (what != "qt") {
        auto* const initialize = reinterpret_cast<void (*)()>(dlsym(library, kInitialize));
        if (initialize == nullptr) return 1;
        begin = std::chrono::steady_clock::now();
        initialize();
        figures.initialize = GetMilliseconds(begin);
    }
    figures.memory = GetOwnKilobytes() - before;
    std::printf("%f %f %f\n", figures.load, figures.initialize, figures.memory);
    std::fflush(stdout);
    _exit(0);
}

bool RunProcess(const std::string& program, const char* what, Figures& figures) {
    std::FILE* const pipe = popen(("'" + program + "' " + what).c_str(), "r");
    if (pipe == nullptr) return false;
    const int fields = std::fscanf(pipe, "%lf %lf %lf", &figures.load, &figures.initialize, &figures.memory);
    return pclose(pipe) == 0 && fields == 3;
}

double GetMedian(const std::vector<Figures>& runs, double Figures::*member) {
    std::vector<double> values;
    for (const Figures& run : runs) values.push_back(run.*member);
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2) return RunOne(argv[1]);
    std::vector<Figures> qt(kRuns);
    std::vector<Figures> library(kRuns);
    for (int i = 0; i < kRuns; ++i) {
        if (!RunProcess(argv[0], "qt", qt[static_cast<std::size_t>(i)]) ||
            !RunProcess(argv[0], "library", library[static_cast<std::size_t>(i)]))
            return 1;
    }
    const double load = GetMedian(library, &Figures::load);
    const double initialize = GetMedian(library, &Figures::initialize);
    const double memory = GetMedian(library, &Figures::memory);
    const double bareLoad = GetMedian(qt, &Figures::load);
    const double bareMemory = GetMedian(qt, &Figures::memory);
    std::printf("load %.2f ms (Qt Widgets alone %.2f), Initialize %.3f ms, memory of its own %.0f kB (%.0f)\n", load,
                bareLoad, initialize, memory, bareMemory);
    zelbench::AddTableRow("load the library and Initialize", "ms", load + initialize, "load Qt Widgets alone",
                          bareLoad);
    zelbench::AddTableRow("memory of its own, the library loaded", "kB", memory, "Qt Widgets alone", bareMemory);
    return 0;
}
