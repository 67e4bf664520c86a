#pragma once

#include <ctime>

/// How many seconds of the processor the work takes: a busy machine does not count.
template <class Work>
double processorSeconds(Work work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}
