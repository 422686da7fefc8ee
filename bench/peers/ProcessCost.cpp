#include "bench/peers/ProcessCost.hpp"

#include <filesystem>
#include <fstream>
#include <string>

namespace peers {
namespace {

std::filesystem::path folderOf(pid_t process) {
    return std::filesystem::path("/proc") / std::to_string(process);
}

/// Adds up the numbers of all lines with that name.
double sumOf(const std::filesystem::path& path, const std::string& name) {
    std::ifstream file(path);
    double sum = 0;
    for (std::string word; file >> word;)
        if (double value = 0; word == name && file >> value) sum += value;
    return sum;
}

}  // namespace

Memory memoryOf(pid_t process) {
    const std::filesystem::path file = folderOf(process) / "smaps_rollup";
    return {sumOf(file, "Pss:"), sumOf(file, "Private_Clean:") + sumOf(file, "Private_Dirty:")};
}

Work workOf(pid_t process) {
    constexpr double nanosecondsEach = 1e6;
    Work work;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) / "task")) {
        std::ifstream schedule(thread.path() / "schedstat");
        double nanoseconds = 0;
        schedule >> nanoseconds;
        work.processorMilliseconds += nanoseconds / nanosecondsEach;
        work.wakeUps += sumOf(thread.path() / "status", "voluntary_ctxt_switches:");
    }
    return work;
}

}  // namespace peers
