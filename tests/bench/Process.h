#pragma once

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace tapalong::bench {

/// What this process has used so far, all threads together.
inline double cpuMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// The same of another one, in the scheduler's nanoseconds: /proc/PID/stat counts in hundredths of a second.
inline double cpuMilliseconds(const std::string& process) {
    double total = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/" + process + "/task")) {
        double nanoseconds = 0;
        std::ifstream(thread.path() / "schedstat") >> nanoseconds;
        total += nanoseconds / 1e6;
    }
    return total;
}

inline void waitForRest(const std::string& process) {
    constexpr double blinking = 5; // CPU milliseconds that are no work left over
    double spent = 0;
    do {
        const double before = cpuMilliseconds(process);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        spent = cpuMilliseconds(process) - before;
    } while (spent > blinking);
}

inline double residentMebibytes(const std::string& process) {
    std::ifstream file("/proc/" + process + "/status");
    std::string word;
    double kibibytes = 0;
    while (file >> word && word != "VmRSS:") {
    }
    file >> kibibytes;
    return kibibytes / 1024;
}

} // namespace tapalong::bench
