// What every benchmark program shares: one figure per process, printed as one line that a table can be made of.
#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {
using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// Median of repeated runs, after one that only warms up: at least five, and as many as fit into a third of a second.
template <class Work>
double medianMilliseconds(Work work)
{
    constexpr size_t Least = 5;
    constexpr size_t Most = 2000;
    constexpr double Budget = 300;
    work();
    std::vector<double> times;
    for (double sum = 0; times.size() < Least || (sum < Budget && times.size() < Most); sum += times.back()) {
        const Clock::time_point start = Clock::now();
        work();
        times.push_back(millisecondsSince(start));
    }
    return median(times);
}

/// Highest resident memory of this program so far, from its own memory map.
inline double peakMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

inline void report(const char *name, double milliseconds)
{
    std::printf("RESULT\t%s\t%.5f\t%.1f\n", name, milliseconds, peakMegabytes());
}

inline QByteArray contentsOf(const char *path)
{
    QFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::ReadOnly)) {
        std::perror(path);
        std::exit(1);
    }
    return file.readAll();
}

/// Keeps the compiler from dropping what led to this value.
template <class Value>
void keep(const Value &value)
{
    asm volatile("" : : "g"(&value) : "memory");
}
} // namespace bench
