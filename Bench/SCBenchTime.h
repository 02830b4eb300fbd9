#ifndef SCBENCHTIME_H
#define SCBENCHTIME_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

// Times of the benchmarks, in milliseconds.
class SCBenchTime
{
public:
    using Clock = std::chrono::steady_clock;

    static double GetMilliseconds(Clock::duration duration)
    {
        return std::chrono::duration<double, std::milli>(duration).count();
    }

    // How long `operation` takes.
    template <class TOperation>
    static double Measure(const TOperation& operation)
    {
        const Clock::time_point start = Clock::now();
        operation();
        return GetMilliseconds(Clock::now() - start);
    }

    static double GetMedian(std::vector<double> values)
    {
        const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
        std::nth_element(values.begin(), middle, values.end());
        return *middle;
    }
};

#endif
