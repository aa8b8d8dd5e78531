// Peak-memory measurement shared by the benchmarks: the kernel's own figures for this process.
#ifndef VYRBASE_BENCH_BENCHMEMORY_H
#define VYRBASE_BENCH_BENCHMEMORY_H

#include <fstream>
#include <string>

namespace vyrbench {

// A value of /proc/self/status (VmHWM: peak resident set, VmRSS: resident set), in bytes; -1
// when it is not there.
inline long StatusBytes(const char* key) {
    std::ifstream status("/proc/self/status");
    std::string line;
    const size_t n = std::char_traits<char>::length(key);
    while (std::getline(status, line))
        if (line.compare(0, n, key) == 0)
            return std::stol(line.substr(n + 1)) * 1024;
    return -1;
}

// Resets the peak resident set to the current one; false where the kernel does not allow it.
inline bool ResetPeak() {
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.close();
    return static_cast<bool>(clear);
}

}  // namespace vyrbench

#endif
