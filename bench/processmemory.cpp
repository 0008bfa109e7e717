#include "bench/processmemory.h"

#include <fstream>
#include <string>

double peakMemoryKib()
{
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == "VmHWM:") {
            double kib = 0;
            status >> kib;
            return kib;
        }
    }
    return 0;
}
