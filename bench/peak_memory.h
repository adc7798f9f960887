#pragma once

#include <cstdio>
#include <cstring>

/// The most that this process has held in memory so far, in megabytes.
inline double peak_memory()
{
    double kilobytes = 0;
    char line[256];
    if (FILE* status = std::fopen("/proc/self/status", "r")) {
        while (std::fgets(line, sizeof line, status))
            if (std::sscanf(line, "VmHWM: %lf", &kilobytes) == 1)
                break;
        std::fclose(status);
    }
    return kilobytes / 1024;
}
