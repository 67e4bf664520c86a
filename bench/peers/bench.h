// One figure per process: warm up, repeat, print "RESULT peer median_ms peak_MB".
#pragma once
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using Clock = std::chrono::steady_clock;
inline double since(Clock::time_point t)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - t).count();
}

inline double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

// Repeats f for about 0.3 s, at least `least` times, after one run that is not counted.
template <class F>
double timed(F f, int least = 5, double budget_ms = 300, bool warm = true)
{
    if (warm)
        f();
    std::vector<double> v;
    for (double sum = 0; int(v.size()) < least || (sum < budget_ms && v.size() < 2000); sum += v.back()) {
        auto t = Clock::now();
        f();
        v.push_back(since(t));
    }
    return median(v);
}

// From this program's own memory map: rusage would count what the launcher held before the exec.
inline double peakMB()
{
    double kB = 0;
    if (FILE *f = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, f) && std::sscanf(line, "VmHWM: %lf", &kB) != 1) { }
        std::fclose(f);
    }
    return kB / 1024;
}

inline void report(const std::string &peer, double ms)
{
    std::printf("RESULT\t%s\t%.5f\t%.1f\n", peer.c_str(), ms, peakMB());
}

inline std::string slurp(const std::string &path)
{
    int fd = open(path.c_str(), O_RDONLY);
    if (fd < 0) {
        std::perror(path.c_str());
        std::exit(1);
    }
    struct stat st;
    fstat(fd, &st);
    std::string s(st.st_size, 0);
    for (size_t at = 0; at < s.size();) {
        ssize_t n = read(fd, s.data() + at, s.size() - at);
        if (n <= 0)
            break;
        at += n;
    }
    close(fd);
    return s;
}

// The compiler may not drop what led to this value.
template <class T>
inline void keep(const T &v)
{
    asm volatile("" : : "g"(&v) : "memory");
}
