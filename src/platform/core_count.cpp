// What limits the cores of a process: where it may run, and the time that its control groups give it.
#include "platform/core_count.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <sched.h>
#include <sstream>
#include <thread>

namespace NBrenmark {

static std::string textOfFile(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Microseconds of time in so many: "200000 100000". A group without a limit says "max", an old one -1.
static unsigned coresOfQuota(const std::string& text)
{
    std::istringstream words(text);
    double quota = 0.0;
    double period = 0.0;
    const bool isLimited = static_cast<bool>(words >> quota >> period) && quota > 0.0 && period > 0.0;
    return isLimited ? static_cast<unsigned>(std::clamp(std::ceil(quota / period), 1.0, 65536.0)) : 0;
}

static unsigned coresOfFolder(const std::string& folder)
{
    const unsigned cores = coresOfQuota(textOfFile(folder + "/cpu.max"));
    if (cores > 0)
        return cores;
    return coresOfQuota(textOfFile(folder + "/cpu.cfs_quota_us") + ' ' + textOfFile(folder + "/cpu.cfs_period_us"));
}

static unsigned coresOfAffinity()
{
    cpu_set_t set;
    if (sched_getaffinity(0, sizeof set, &set) == 0) // fails where there are more cores than a set has room for
        return static_cast<unsigned>(CPU_COUNT(&set));
    return std::thread::hardware_concurrency();
}

unsigned coresOfControlGroup(const std::string& root, const std::string& members)
{
    unsigned least = 0;
    std::istringstream lines(members);
    // Lines such as "0::/user.slice/session" and, of the older kind, "4:cpu,cpuacct:/docker/2f1c".
    for (std::string line; std::getline(lines, line);) {
        const std::size_t first = line.find(':');
        const std::size_t second = first == std::string::npos ? first : line.find(':', first + 1);
        if (second == std::string::npos)
            continue;
        const std::string controllers = line.substr(first + 1, second - first - 1);
        const bool isOld = !controllers.empty();
        if (isOld && (',' + controllers + ',').find(",cpu,") == std::string::npos)
            continue;
        std::string mount = root;
        if (isOld)
            mount.append(1, '/').append(controllers);
        for (std::string path = line.substr(second + 1);; path.erase(path.rfind('/'))) {
            const unsigned cores = coresOfFolder(mount + path);
            if (cores > 0)
                least = least == 0 ? cores : std::min(least, cores);
            if (path.find('/') == std::string::npos)
                break;
        }
    }
    return least;
}

unsigned availableCores()
{
    const unsigned granted = coresOfControlGroup("/sys/fs/cgroup", textOfFile("/proc/self/cgroup"));
    const unsigned cores = std::max(coresOfAffinity(), 1u);
    return granted > 0 ? std::min(cores, granted) : cores;
}

} // namespace NBrenmark
