#pragma once

#include <QByteArray>
#include <QFile>

#include <cstdio>
#include <ctime>

namespace bench {

/// Milliseconds of the monotonic clock, which all processes of a machine share.
inline double monotonicMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Resident memory of this process in KiB, 0 if the system does not tell.
inline long residentKib() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLong();
    }
    return 0;
}

/// What a side of the start measure tells its parent once its window is drawn.
inline void printStartReport() {
    std::printf("drawn %.3f rss %ld\n", monotonicMilliseconds(), residentKib());
    std::fflush(stdout);
}

}  // namespace bench
